// The statements of qualified certificates (RFC 3739; ETSI EN 319 412-5). The octets are made by hand.
#include "forms.h"

namespace rfc3739_test {

namespace {

using support::Bytes;
using support::dotted;
using support::element;
using support::element_of;
using support::expect_exact;
using support::expect_form_refused;
using support::expect_kept;
using support::expect_unfilled;
using support::hex;
using support::sequence;
using support::text;
using support::value;
using support::operator+;

TEST(QCStatementsForm, HasStatementsWithInformationAndWithout) {
  const auto family = FORM_LIST(QCStatements, List);
  const auto statement = FORM(QCStatement, pki_QCStatement);
  const Bytes compliance = sequence(hex("06 06 04 00 8E 46 01 01"));
  const Bytes retention = hex("06 06 04 00 8E 46 01 03 02 01 0F");
  expect_exact(statement, 0x30, retention);
  expect_exact(family, 0x30, compliance + sequence(retention));
  const auto statements = expect_kept(family, sequence(compliance + sequence(retention)));
  ASSERT_EQ(2, List_len(statements.get()));
  const auto *first = &element_of<pki_QCStatement>(statements.get(), 0);
  EXPECT_EQ("0.4.0.1862.1.1", dotted(first->statementId));
  EXPECT_EQ(nullptr, first->statementInfo);
  const auto *second = &element_of<pki_QCStatement>(statements.get(), 1);
  EXPECT_EQ("0.4.0.1862.1.3", dotted(second->statementId));
  EXPECT_EQ(hex("02 01 0F"), value(second->statementInfo));
  expect_unfilled(statement);
  expect_form_refused(statement, sequence(hex("02 01 0F")));
}

TEST(SemanticsInformationForm, LacksEitherFieldOrBoth) {
  const auto family = FORM(SemanticsInformation, pki_SemanticsInformation);
  const Bytes identifier = hex("06 07 04 00 8B EC 49 01 01");
  const Bytes authorities = sequence(element(0x86, text("http://a/")));
  expect_exact(family, 0x30, identifier + authorities);
  const auto both = expect_kept(family, sequence(identifier + authorities));
  EXPECT_EQ("0.4.0.194121.1.1", dotted(both->semanticsIdentifier));
  EXPECT_EQ(6, element_of<GeneralName>(both->nameRegistrationAuthorities, 0).kind);
  EXPECT_EQ(nullptr, expect_kept(family, sequence(identifier))->nameRegistrationAuthorities);
  EXPECT_EQ(nullptr, expect_kept(family, sequence(authorities))->semanticsIdentifier);
  expect_unfilled(family, hex("30 00"));
  expect_form_refused(family, sequence(authorities + identifier));
}

TEST(MonetaryValueForm, HasACurrencyByLettersOrByNumber) {
  const auto family = FORM(MonetaryValue, pki_MonetaryValue);
  const auto currency = FORM(Iso4217CurrencyCode, pki_Iso4217CurrencyCode);
  expect_exact(family, 0x30, hex("13 03 45 55 52 02 01 05 02 01 03"));
  const auto letters = expect_kept(family, sequence(hex("13 03 45 55 52 02 01 05 02 01 03")));
  EXPECT_EQ(19, letters->currency->kind);
  EXPECT_EQ(text("EUR"), value(static_cast<const ASN1String *>(letters->currency->value)));
  EXPECT_EQ(5U, asn1_Integer_get(letters->amount));
  EXPECT_EQ(3U, asn1_Integer_get(letters->exponent));
  const auto number = expect_kept(family, sequence(hex("02 02 03 D2 02 01 05 02 01 FF")));
  EXPECT_EQ(2, number->currency->kind);
  EXPECT_EQ(978U, asn1_Integer_get(static_cast<const Integer *>(number->currency->value)));
  EXPECT_EQ(1U, number->exponent->negative);
  expect_kept(currency, hex("13 03 45 55 52"));
  expect_kept(currency, hex("02 02 03 D2"));
  expect_unfilled(family);
  expect_unfilled(currency);
  expect_form_refused(currency, hex("0C 03 45 55 52"));
  expect_form_refused(currency, hex("82 02 03 D2"));
  expect_form_refused(family, sequence(hex("13 03 45 55 52 02 01 05")));
}

TEST(QcEuRetentionPeriodForm, IsANumber) {
  const auto family = FORM_LIST(QcEuRetentionPeriod, Integer);
  expect_exact(family, 2, hex("0F"));
  EXPECT_EQ(15U, asn1_Integer_get(expect_kept(family, hex("02 01 0F")).get()));
}

TEST(PdsLocationsForm, HasPlacesEachWithALanguage) {
  const auto family = FORM_LIST(PdsLocations, List);
  const auto location = FORM(PdsLocation, pki_PdsLocation);
  const Bytes english = element(22, text("https://a/en")) + hex("13 02 65 6E");
  expect_exact(location, 0x30, english);
  expect_exact(family, 0x30, sequence(english) + sequence(english));
  const auto locations = expect_kept(family, sequence(sequence(english)));
  EXPECT_EQ(text("https://a/en"), value(element_of<pki_PdsLocation>(locations.get(), 0).url));
  EXPECT_EQ(text("en"), value(element_of<pki_PdsLocation>(locations.get(), 0).language));
  expect_unfilled(location);
  expect_form_refused(location, sequence(element(22, text("https://a/en"))));
  expect_form_refused(location, sequence(element(22, text("https://a/en")) + hex("0C 02 65 6E")));
}

TEST(QcTypeForm, IsAListOfIdentifiers) {
  const auto family = FORM_LIST(QcType, List);
  expect_exact(family, 0x30, hex("06 07 04 00 8E 46 01 06 01"));
  const auto types = expect_kept(family, sequence(hex("06 07 04 00 8E 46 01 06 01")));
  EXPECT_EQ("0.4.0.1862.1.6.1", dotted(&element_of<ObjId>(types.get(), 0)));
}

TEST(QcCClegislationForm, IsAListOfCountries) {
  const auto family = FORM_LIST(QcCClegislation, List);
  expect_exact(family, 0x30, hex("13 02 43 48 13 02 55 53"));
  const auto countries = expect_kept(family, sequence(hex("13 02 43 48 13 02 55 53")));
  EXPECT_EQ(text("US"), value(&element_of<PrintableString>(countries.get(), 1)));
  expect_form_refused(family, sequence(hex("16 02 43 48")));
}

}  // namespace

}  // namespace rfc3739_test
