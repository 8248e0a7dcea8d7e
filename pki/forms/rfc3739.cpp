// The statements of qualified certificates (RFC 3739, 3.2.6; ETSI EN 319 412-5, 4.2, 4.3).
#include "pki/export.h"
#include "pki/forms/names.h"
#include "pki/forms/renamed.h"

using namespace pki;

// clang-format off

// QCStatement ::= SEQUENCE {
//   statementId    OBJECT IDENTIFIER,
//   statementInfo  ANY DEFINED BY statementId OPTIONAL }
using QCStatementTable = Sequence<pki_QCStatement,
    Required<&pki_QCStatement::statementId, ObjIdCodec>,
    Optional<&pki_QCStatement::statementInfo, AnyCodec>>;
EXPORT_FORM(QCStatement, pki_QCStatement, "QCStatement", QCStatementTable)

// QCStatements ::= SEQUENCE OF QCStatement
using QCStatementsTable = SequenceOf<QCStatementCodec>;
EXPORT_FORM_LIST(QCStatements, List, "QCStatements", QCStatementsTable)

// SemanticsInformation ::= SEQUENCE {
//   semanticsIdentifier          OBJECT IDENTIFIER OPTIONAL,
//   nameRegistrationAuthorities  SEQUENCE OF GeneralName OPTIONAL }
using Semantics = pki_SemanticsInformation;
using SemanticsInformationTable = Sequence<Semantics,
    Optional<&Semantics::semanticsIdentifier, ObjIdCodec>,
    Optional<&Semantics::nameRegistrationAuthorities, GeneralNamesCodec>>;
EXPORT_FORM(SemanticsInformation, pki_SemanticsInformation, "SemanticsInformation",
            SemanticsInformationTable)

// Iso4217CurrencyCode ::= CHOICE {
//   alphabetic  PrintableString,
//   numeric     INTEGER }
using Iso4217CurrencyCodeTable = Choice<pki_Iso4217CurrencyCode,
    Alternative<tag::printable_string, "alphabetic", PrintableStringCodec>,
    Alternative<tag::integer, "numeric", IntegerCodec>>;
EXPORT_FORM(Iso4217CurrencyCode, pki_Iso4217CurrencyCode, "Iso4217CurrencyCode",
            Iso4217CurrencyCodeTable)

// MonetaryValue ::= SEQUENCE {
//   currency  Iso4217CurrencyCode,
//   amount    INTEGER,
//   exponent  INTEGER }
using MonetaryValueTable = Sequence<pki_MonetaryValue,
    Required<&pki_MonetaryValue::currency, Iso4217CurrencyCodeCodec>,
    Required<&pki_MonetaryValue::amount, IntegerCodec>,
    Required<&pki_MonetaryValue::exponent, IntegerCodec>>;
EXPORT_FORM(MonetaryValue, pki_MonetaryValue, "MonetaryValue", MonetaryValueTable)

// QcEuRetentionPeriod ::= INTEGER
using QcEuRetentionPeriodTable = Renamed<IntegerCodec, Kind::integer>;
EXPORT_FORM_LIST(QcEuRetentionPeriod, Integer, "QcEuRetentionPeriod", QcEuRetentionPeriodTable)

// PdsLocation ::= SEQUENCE {
//   url       IA5String,
//   language  PrintableString }
using PdsLocationTable = Sequence<pki_PdsLocation,
    Required<&pki_PdsLocation::url, IA5StringCodec>,
    Required<&pki_PdsLocation::language, PrintableStringCodec>>;
EXPORT_FORM(PdsLocation, pki_PdsLocation, "PdsLocation", PdsLocationTable)

// PdsLocations ::= SEQUENCE OF PdsLocation
using PdsLocationsTable = SequenceOf<PdsLocationCodec>;
EXPORT_FORM_LIST(PdsLocations, List, "PdsLocations", PdsLocationsTable)

// QcType ::= SEQUENCE OF OBJECT IDENTIFIER
using QcTypeTable = SequenceOf<ObjIdCodec>;
EXPORT_FORM_LIST(QcType, List, "QcType", QcTypeTable)

// CountryName ::= PrintableString
// QcCClegislation ::= SEQUENCE OF CountryName
using QcCClegislationTable = SequenceOf<PrintableStringCodec>;
EXPORT_FORM_LIST(QcCClegislation, List, "QcCClegislation", QcCClegislationTable)
