// Tests CRLs against the openssl tool. The library reads those that the tool makes, and those by
// hand that the tool reads and verifies first, as the tool does. The tool reads and verifies those
// of the library.
#include <cstring>

#include "revocation.h"

namespace crl_test {

namespace {

using namespace support;

using ListPointer = Owned<CertificateRevocationList, asn1_CertificateRevocationList_free>;

ListPointer decoded_list(const Bytes &der) {
  return record_of<asn1_CertificateRevocationList_free>(asn1_CertificateRevocationList_d, der);
}

/* ------------------------------------------------------------------------------------------- */
/* A decoded list compared with what the tool prints                                             */
/* ------------------------------------------------------------------------------------------- */

/// Returns the lines in which the tool prints the entries.
Lines entry_lines(const List *revoked) {
  Lines lines;
  for (const CRLEntry *entry : elements_of<CRLEntry>(revoked)) {
    lines.push_back("Serial Number: " + serial_text(entry->userCertificate));
    lines.push_back("Revocation Date: " + gmt_text(full_year(entry->revocationDate)));
    for (std::string &line : extension_lines("CRL entry extensions:", entry->crlEntryExtensions))
      lines.push_back(std::move(line));
  }
  return lines;
}

Lines printed_entries(const std::string &report) {
  return section("Revoked Certificates:", report, {"Signature Algorithm:"});
}

std::string report_of(const std::string &file, const std::string &name_options) {
  return openssl("crl -inform DER -noout -in " + file + name_options +
                 " -issuer -lastupdate -nextupdate -dateopt iso_8601 -text");
}

/// Checks version, issuer and both dates.
Lines printed_fields(const std::string &report) {
  return {after("Version ", report), after("issuer=", report), after("lastUpdate=", report),
          after("nextUpdate=", report)};
}

/// Checks that every field has the value that `openssl crl` prints for the list.
void expect_printed_values(const CertificateRevocationList *crl, const std::string &file) {
  const CertificateList_TBS *tbs = crl->tbsCertList;
  const std::string report = report_of(file, as_encoded);
  const uint32_t version = tbs->version == nullptr ? 0 : asn1_Integer_get(tbs->version);
  EXPECT_EQ((Lines{std::to_string(version + 1) + " (0x" + std::to_string(version) + ")",
                   name_text(tbs->issuerSequence), date_text(tbs->thisUpdate),
                   tbs->nextUpdate == nullptr ? "NONE" : date_text(tbs->nextUpdate)}),
            printed_fields(report));
  EXPECT_EQ(List_len(tbs->revokedCertificates) == 0,
            report.find("No Revoked Certificates.") != std::string::npos);
  expect_same_lines(printed_entries(report), entry_lines(tbs->revokedCertificates));
}

/// Checks that every field has the octets that `openssl asn1parse` finds in its place.
void expect_same_octets(const CertificateRevocationList *crl, const std::string &file) {
  const Element whole = take_apart(file);
  ASSERT_EQ(3U, whole.parts.size());
  EXPECT_EQ(whole.parts[0].whole, value(crl->tbsEncoded));
  EXPECT_EQ(whole.parts[1].whole, encode(asn1_AlgId_e, crl->signatureAlgorithm));
  EXPECT_EQ(whole.parts[2].whole, encode(asn1_BitString_BER_e, crl->signatureValue));

  const CertificateList_TBS *tbs = crl->tbsCertList;
  const std::vector<Element> &fields = whole.parts[0].parts;
  auto field = fields.begin();
  const auto next_is = [&](std::string_view type) {
    return field != fields.end() && field->type == type;
  };
  ASSERT_EQ(next_is("INTEGER"), tbs->version != nullptr);
  if (tbs->version != nullptr) {
    EXPECT_EQ(field++->whole, encode(asn1_Integer_e, tbs->version));
  }
  ASSERT_LE(3, fields.end() - field);
  EXPECT_EQ(field++->whole, encode(asn1_AlgId_e, tbs->signature));
  EXPECT_EQ(field++->whole, value(tbs->issuerEncoded));
  EXPECT_EQ(field++->whole, encode(asn1_Time_e, tbs->thisUpdate));
  ASSERT_EQ(next_is("UTCTIME") || next_is("GENERALIZEDTIME"), tbs->nextUpdate != nullptr);
  if (tbs->nextUpdate != nullptr) {
    EXPECT_EQ(field++->whole, encode(asn1_Time_e, tbs->nextUpdate));
  }
  ASSERT_EQ(next_is("SEQUENCE"), tbs->revokedCertificates != nullptr);
  if (tbs->revokedCertificates != nullptr) {
    const std::vector<const CRLEntry *> entries = elements_of<CRLEntry>(tbs->revokedCertificates);
    ASSERT_EQ(field->parts.size(), entries.size());
    for (size_t i = 0; i < entries.size(); ++i) {
      const std::vector<Element> &parts = field->parts[i].parts;
      EXPECT_EQ(parts[0].whole, encode(asn1_Integer_e, entries[i]->userCertificate));
      EXPECT_EQ(parts[1].whole, encode(asn1_Time_e, entries[i]->revocationDate));
      ASSERT_EQ(parts.size() == 3, entries[i]->crlEntryExtensions != nullptr);
      if (parts.size() == 3) expect_same_extensions(parts[2], entries[i]->crlEntryExtensions);
    }
    ++field;
  }
  ASSERT_EQ(next_is("cont [ 0 ]"), tbs->crlExtensions != nullptr);
  if (tbs->crlExtensions != nullptr)
    expect_same_extensions(field++->parts.at(0), tbs->crlExtensions);
  EXPECT_EQ(fields.end(), field);
}

/// Checks that the list and its copies are written as they were: from the stored octets, from the
/// fields, and from the issuer's text.
void expect_round_trips(CertificateRevocationList *crl, const Bytes &der) {
  const auto comes_back = [&](const CertificateRevocationList *from) {
    return der == encode(asn1_CertificateRevocationList_e, from);
  };
  const auto copy_comes_back = [&] {
    return comes_back(ListPointer(asn1_CertificateRevocationList_clone(crl)).get());
  };
  CertificateList_TBS *tbs = crl->tbsCertList;
  EXPECT_TRUE(comes_back(crl)) << "from the stored octets";
  EXPECT_TRUE(copy_comes_back()) << "from a copy of the stored octets";
  release(asn1_OctetString_free, crl->tbsEncoded);
  EXPECT_TRUE(comes_back(crl)) << "issuer from its octets";
  EXPECT_TRUE(copy_comes_back()) << "from a copy of the fields";
  release(asn1_OctetString_free, tbs->issuerEncoded);
  EXPECT_TRUE(comes_back(crl)) << "issuer from its sequence";
  release(asn1_RDNSequence_free, tbs->issuerSequence);
  EXPECT_TRUE(comes_back(crl)) << "issuer from its text, " << tbs->issuer;
}

const Extension *found(const Extensions *extensions, const ObjId *id) {
  for (const Extension *extension : elements_of<Extension>(extensions))
    if (asn1_ObjId_cmp(extension->extnID, id) == 0) return extension;
  throw std::runtime_error("no extension " + identifier_text(id));
}

/* ------------------------------------------------------------------------------------------- */
/* Reading what the tool makes                                                                   */
/* ------------------------------------------------------------------------------------------- */

/// Makes the authority with the key of a kind sign a list of what is revoked in its index.
Bytes list_of_the_authority(const std::string &kind, const std::string &arguments,
                            const std::string &extensions, const std::string &file) {
  const std::string settings = "database=index.txt\nunique_subject=no\ndefault_md=sha256\n";
  write_file("crl.cnf", text("[plain]\n" + settings + "[numbered]\n" + settings +
                             "crlnumber=number\n[extensions]\n" + extensions));
  write_file("number", text("0102030405060708090A\n"));
  openssl("ca -gencrl -config crl.cnf -cert " + authority(kind) + " -keyfile " + key(kind) + " " +
          arguments + (extensions.empty() ? "" : " -crlexts extensions") + " -out crl.pem");
  openssl("crl -in crl.pem -outform DER -out " + file);
  return read_file(file);
}

struct Shape {
  const char *name;
  const char *key;
  uint32_t version;
  const char *arguments;
  const char *extensions;
  std::vector<Indexed> index;
};

void PrintTo(const Shape &shape, std::ostream *out) { *out << shape.name; }

const std::vector<Indexed> revoked_without_reasons = {
    {"260131120000Z", "01"}, {"", "02"}, {"491231235959Z", "7F"}, {"500101000000Z", "80"}};

const Shape shapes[] = {
    {"Version1", "ec", 1, "-name plain -crldays 30", "", revoked_without_reasons},
    {"Version1OfNothingRevoked", "ec", 1, "-name plain -crldays 30", "", {{"", "01"}}},
    {"Version2", "ec", 2, "-name numbered -crldays 30", "", revoked_without_reasons},
    {"Version2OfNothingRevoked", "ec", 2, "-name numbered -crldays 30", "", {}},
    {"Version2ForItsReasons", "ec", 2, "-name plain -crldays 30", "", revoked_for_all_reasons},
    {"GeneralizedTimePast2050", "ec", 1,
     "-name plain -crl_lastupdate 20491231235959Z -crl_nextupdate 20500101000000Z", "",
     revoked_without_reasons},
    {"Rsa", "rsa", 2, "-name numbered -crlhours 1", "", revoked_for_all_reasons},
    {"RsaPss", "rsa", 2,
     "-name numbered -crlhours 1 -md sha384 -sigopt rsa_padding_mode:pss -sigopt "
     "rsa_pss_saltlen:48",
     "", revoked_for_all_reasons},
    {"Ed25519", "ed25519", 2, "-name numbered -crlsec 1", "", revoked_for_all_reasons},
    {"AllExtensions", "ec", 2, "-name numbered -crldays 30",
     "authorityKeyIdentifier=keyid:always,issuer:always\n"
     "deltaCRL=critical,ASN1:INTEGER:0x80\n"
     "issuingDistributionPoint=critical,@point\n"
     "issuerAltName=email:a@b.example,URI:http://a.example/\n"
     "authorityInfoAccess=caIssuers;URI:http://a.example/c\n"
     "freshestCRL=URI:http://a.example/d.crl\n"
     "1.2.3.4.5=ASN1:NULL\n"
     "[point]\nfullname=URI:http://a.example/1.crl\nonlysomereasons=keyCompromise,CACompromise\n"
     "indirectCRL=TRUE\n",
     revoked_for_all_reasons},
};

class RevocationListOfOpenssl : public testing::TestWithParam<Shape> {};

TEST_P(RevocationListOfOpenssl, ReadsAsItIsReportedAndComesBack) {
  const Shape &shape = GetParam();
  write_index(shape.index);
  const Bytes der =
      list_of_the_authority(shape.key, shape.arguments, shape.extensions, "shape.der");
  const ListPointer crl = decoded_list(der);
  const Integer *version = crl->tbsCertList->version;
  EXPECT_EQ(shape.version, version == nullptr ? 1 : asn1_Integer_get(version) + 1);
  expect_printed_values(crl.get(), "shape.der");
  expect_same_octets(crl.get(), "shape.der");
  expect_round_trips(crl.get(), der);
}

INSTANTIATE_TEST_SUITE_P(Shapes, RevocationListOfOpenssl, testing::ValuesIn(shapes),
                         [](const auto &shape) { return std::string(shape.param.name); });

// A hundred thousand entries have the values of the index, in its order of serial numbers.
TEST(RevocationListOfOpensslOfMany, ReadsAsItIsReportedAndComesBack) {
  constexpr uint32_t count = 100000;
  static const std::pair<const char *, uint32_t> reasons[] = {
      {"", 0}, {",keyCompromise", 1}, {",superseded", 4}, {",cessationOfOperation", 5}};
  const auto serial = [](uint32_t i) { return 0x7FFF0000 + i * 3; };
  const auto date = [](uint32_t i) {
    char out[32];
    std::snprintf(out, sizeof out, "26%02u%02u%02u%02u%02uZ", i % 12 + 1, i % 28 + 1, i % 24,
                  i / 60 % 60, i % 60);
    return std::string(out);
  };
  std::vector<Indexed> index;
  for (uint32_t i = 0; i < count; ++i) {
    char digits[9];
    std::snprintf(digits, sizeof digits, "%08X", serial(i));
    index.push_back({date(i) + reasons[i % 4].first, digits});
  }
  write_index(index);
  const Bytes der = list_of_the_authority("ec", "-name plain -crldays 1", "", "many.der");
  const ListPointer crl = decoded_list(der);

  const auto entries = elements_of<CRLEntry>(crl->tbsCertList->revokedCertificates);
  ASSERT_EQ(count, entries.size());
  for (uint32_t i = 0; i < count; ++i) {
    const CRLEntry *entry = entries[i];
    ASSERT_EQ(serial(i), asn1_Integer_get(entry->userCertificate)) << i;
    ASSERT_EQ(0U, entry->userCertificate->negative) << i;
    ASSERT_EQ(date(i), entry->revocationDate->value) << i;
    ASSERT_EQ(i % 4 != 0, entry->crlEntryExtensions != nullptr) << i;
    if (i % 4 == 0) continue;
    ASSERT_EQ(1, List_len(entry->crlEntryExtensions)) << i;
    const Bytes reason{10, 1, static_cast<uint8_t>(reasons[i % 4].second)};
    ASSERT_EQ(reason,
              value(found(entry->crlEntryExtensions, asn1_Get_id_ce_cRLReason())->extnValue))
        << i;
  }
  expect_printed_values(crl.get(), "many.der");
  expect_round_trips(crl.get(), der);
}

/* ------------------------------------------------------------------------------------------- */
/* The values of the tool's extensions                                                           */
/* ------------------------------------------------------------------------------------------- */

/// Returns the value of the one extension of a list that the tool makes with that setting.
Bytes value_of_extension(const std::string &setting, const ObjId *id) {
  write_index({});
  const ListPointer crl = decoded_list(
      list_of_the_authority("ec", "-name numbered -crldays 1", setting, "extension.der"));
  return value(found(crl->tbsCertList->crlExtensions, id)->extnValue);
}

std::string uri_text(const GeneralName *name) {
  if (name->kind != 6) throw std::runtime_error("no URI, but " + std::to_string(name->kind));
  const Bytes octets = value(static_cast<const IA5String *>(name->value));
  return std::string(octets.begin(), octets.end());
}

TEST(RevocationListExtensionOfOpenssl, NumbersAreIntegers) {
  const Bytes number = value_of_extension("", asn1_Get_id_ce_cRLNumber());
  EXPECT_EQ("0102030405060708090A",
            serial_text(record_of<asn1_Integer_free>(asn1_Integer_d, number).get()));
  const Bytes base = value_of_extension("deltaCRL=critical,ASN1:INTEGER:0x80\n",
                                        asn1_Get_id_ce_deltaCRLIndicator());
  EXPECT_EQ("80", serial_text(record_of<asn1_Integer_free>(asn1_Integer_d, base).get()));
}

TEST(RevocationListExtensionOfOpenssl, FreshestListIsADistributionPoint) {
  const Bytes octets = value_of_extension(
      "freshestCRL=point\n[point]\nfullname=URI:http://a.example/d\n"
      "reasons=keyCompromise,superseded\n",
      asn1_Get_id_ce_freshestCRL());
  List *list = nullptr;
  const Input input(octets);
  ASSERT_EQ(input.end(), asn1_SeqOf_d(input.z(), input.end(), 0, asn1_DistributionPoint_d,
                                      asn1_DistributionPoint_free, &list, 0));
  ASSERT_EQ(1, List_len(list));
  const auto *point = static_cast<const DistributionPoint *>(List_get(list, 0));
  const DistributionPointName *name = point->distributionPoint;
  ASSERT_EQ(0, name->kind);
  const auto names = elements_of<GeneralName>(static_cast<const List *>(name->value));
  ASSERT_EQ(1U, names.size());
  EXPECT_EQ("http://a.example/d", uri_text(names[0]));
  // keyCompromise is bit 1, superseded bit 4.
  EXPECT_EQ(5U, point->reasons->length);
  EXPECT_EQ(hex("48"), value(point->reasons));
  EXPECT_EQ(octets, encode_with([&](uint8_t **pp) {
              return asn1_SeqOf_e(pp, list, asn1_DistributionPoint_e);
            }));
  List_free(list, asn1_DistributionPoint_free);
}

TEST(RevocationListExtensionOfOpenssl, IssuingDistributionPointHasADistributionPointName) {
  write_file("point.der",
             value_of_extension("issuingDistributionPoint=critical,@point\n[point]\n"
                                "fullname=URI:http://a.example/1,URI:http://a.example/2\n"
                                "onlysomereasons=keyCompromise\nindirectCRL=TRUE\n",
                                asn1_Get_id_ce_issuingDistributionPoint()));
  const Bytes octets = take_apart("point.der").parts.at(0).content;
  const auto name =
      record_of<asn1_DistributionPointName_free>(asn1_DistributionPointName_d, octets);
  const auto names = elements_of<GeneralName>(static_cast<const List *>(name->value));
  ASSERT_EQ(2U, names.size());
  EXPECT_EQ("http://a.example/1", uri_text(names[0]));
  EXPECT_EQ("http://a.example/2", uri_text(names[1]));
  EXPECT_EQ(octets, encode(asn1_DistributionPointName_e, name.get()));
}

TEST(RevocationListExtensionOfOpenssl, AuthorityInformationIsAListOfAccessDescriptions) {
  const Bytes octets = value_of_extension(
      "authorityInfoAccess=caIssuers;URI:http://a.example/c,OCSP;URI:http://a.example/o\n",
      asn1_Get_id_pe_authorityInfoAccess());
  const auto access =
      record_of<asn1_AuthorityInfoAccessSyntax_free>(asn1_AuthorityInfoAccessSyntax_d, octets);
  const auto rows = elements_of<AccessDescription>(access.get());
  ASSERT_EQ(2U, rows.size());
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_id_ad_caIssuers(), rows[0]->accessMethod));
  EXPECT_EQ("http://a.example/c", uri_text(rows[0]->accessLocation));
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_id_ad_ocsp(), rows[1]->accessMethod));
  EXPECT_EQ("http://a.example/o", uri_text(rows[1]->accessLocation));
  EXPECT_EQ(octets, encode(asn1_AuthorityInfoAccessSyntax_e, access.get()));
}

// The public form has implicit tags. None of its fields is recognised.
TEST(RevocationListExtensionOfOpenssl, AuthorityKeyIdentifierReadsAsAnEmptyRecord) {
  const Bytes octets = value_of_extension("authorityKeyIdentifier=keyid:always,issuer:always\n",
                                          asn1_Get_id_ce_authorityKeyIdentifier());
  const auto result = decode(asn1_AuthorityKeyIdentifier_d, octets);
  const Owned<AuthorityKeyIdentifier, asn1_AuthorityKeyIdentifier_free> identifier(result.record);
  ASSERT_LT(octets.size(), 0x80U);
  EXPECT_EQ(2, result.consumed);
  EXPECT_EQ(0x80, octets[2]);
  ASSERT_NE(nullptr, identifier);
  EXPECT_EQ(nullptr, identifier->keyIdentifier);
  EXPECT_EQ(nullptr, identifier->authorityCertIssuer);
  EXPECT_EQ(nullptr, identifier->authorityCertSerialNumber);
}

/* ------------------------------------------------------------------------------------------- */
/* Lists by hand, which the tool reads and verifies first                                        */
/* ------------------------------------------------------------------------------------------- */

/// Fields that `openssl ca` does not write: those before the algorithm, and those from thisUpdate
/// on.
struct Fields {
  const char *name;
  const char *version;
  Bytes others;
};

void PrintTo(const Fields &fields, std::ostream *out) { *out << fields.name; }

const Bytes in_2020 = element(0x17, text("200131120000Z"));
const Bytes in_2021 = element(0x17, text("210131120000Z"));
const Bytes entry_1 = element(0x30, hex("02 01 01") + in_2020);
const Bytes entries_of_1 = element(0x30, entry_1);
const Bytes number_5 = hex("30 0A 06 03 55 1D 14 04 03 02 01 05");
const Bytes extensions_of_number_5 = element(0xA0, element(0x30, number_5));

const Fields fields_by_hand[] = {
    {"OnlyWhatIsRequired", "", in_2020},
    {"NoNextUpdate", "02 01 01", in_2020 + entries_of_1 + extensions_of_number_5},
    {"NoNextUpdateNorEntries", "02 01 01", in_2020 + extensions_of_number_5},
    {"ExtensionsWithoutAVersion", "", in_2020 + in_2021 + entries_of_1 + extensions_of_number_5},
    {"Version1Written", "02 01 00", in_2020 + in_2021 + entries_of_1},
    {"EmptyListOfEntries", "", in_2020 + in_2021 + hex("30 00")},
    {"EmptyListOfEntriesWithoutNextUpdate", "02 01 01", in_2020 + hex("30 00")},
    {"EmptyExtensions", "02 01 01",
     in_2020 + in_2021 + element(0x30, element(0x30, hex("02 01 01") + in_2020 + hex("30 00"))) +
         hex("A0 02 30 00")},
    {"GeneralizedTimesBefore2050", "02 01 01",
     element(0x18, text("20200131120000Z")) + element(0x18, text("20210131120000Z")) +
         element(0x30, element(0x30, hex("02 01 01") + element(0x18, text("19500101000000Z"))))},
    {"SerialNumbersOfAllSigns", "02 01 01",
     in_2020 + in_2021 +
         element(0x30, element(0x30, hex("02 01 80") + in_2020) +
                           element(0x30, hex("02 02 FF 00") + in_2020) +
                           element(0x30, hex("02 01 00") + in_2020) +
                           element(0x30, hex("02 02 00 80") + in_2020))},
    {"CriticalEntryExtension", "02 01 01",
     in_2020 + in_2021 +
         element(0x30,
                 element(0x30, hex("02 01 01") + in_2020 +
                                   hex("30 0F 30 0D 06 03 55 1D 15 01 01 FF 04 03 0A 01 01")))},
};

/// Returns a signed part with these fields. The rest is from a list of the EC authority.
Bytes signed_part(const Fields &fields, const Element &pieces) {
  const std::vector<Element> &tbs = pieces.parts.at(0).parts;
  return element(0x30, hex(fields.version) + tbs.at(0).whole + tbs.at(1).whole + fields.others);
}

Element pieces_of_a_list() {
  write_index({});
  list_of_the_authority("ec", "-name plain -crldays 1", "", "pieces.der");
  return take_apart("pieces.der");
}

/// Returns the list of these fields, with a correct signature.
Bytes list_by_hand(const Fields &fields) {
  const Element pieces = pieces_of_a_list();
  const Bytes tbs = signed_part(fields, pieces);
  return element(0x30,
                 tbs + pieces.parts.at(1).whole + element(3, Bytes{0} + signature_over(tbs, "ec")));
}

void expect_verified(const std::string &kind, const std::string &file) {
  EXPECT_EQ("verify OK\n",
            openssl("crl -inform DER -noout -CAfile " + authority(kind) + " -in " + file));
}

class RevocationListByHand : public testing::TestWithParam<Fields> {};

TEST_P(RevocationListByHand, IsVerifiedByOpensslReadsAsItIsReportedAndComesBack) {
  const Bytes der = list_by_hand(GetParam());
  write_file("by_hand.der", der);
  expect_verified("ec", "by_hand.der");
  const ListPointer crl = decoded_list(der);
  expect_printed_values(crl.get(), "by_hand.der");
  expect_same_octets(crl.get(), "by_hand.der");
  expect_round_trips(crl.get(), der);
}

INSTANTIATE_TEST_SUITE_P(Shapes, RevocationListByHand, testing::ValuesIn(fields_by_hand),
                         [](const auto &fields) { return std::string(fields.param.name); });

/// Returns a list of one entry with one extension. `others` comes after its identifier.
Fields with_entry_extension(const char *others) {
  const Bytes extension = element(0x30, hex("06 03 55 1D 15") + hex(others));
  return {
      "", "02 01 01",
      in_2020 + element(0x30, element(0x30, hex("02 01 01") + in_2020 + element(0x30, extension)))};
}

TEST(RevocationListByHandDeparture, LosesAnExplicitFalseWhereItIsWrittenAnew) {
  const Bytes der = list_by_hand(with_entry_extension("01 01 00 04 03 0A 01 01"));
  write_file("by_hand.der", der);
  expect_verified("ec", "by_hand.der");
  const ListPointer crl = decoded_list(der);
  expect_printed_values(crl.get(), "by_hand.der");
  EXPECT_EQ(der, encode(asn1_CertificateRevocationList_e, crl.get()));
  release(asn1_OctetString_free, crl->tbsEncoded);
  const Element whole = take_apart("by_hand.der");
  const Element pieces = pieces_of_a_list();
  EXPECT_EQ(element(0x30, signed_part(with_entry_extension("04 03 0A 01 01"), pieces) +
                              whole.parts.at(1).whole + whole.parts.at(2).whole),
            encode(asn1_CertificateRevocationList_e, crl.get()));
}

// Zero bits at the end of a signature are kept, and so are its unused bits.
TEST(RevocationListByHandSignature, StaysAsItStands) {
  const Element pieces = pieces_of_a_list();
  for (const char *signature : {"03 01 00", "03 02 00 00", "03 05 00 30 00 00 00", "03 03 07 80 00",
                                "03 03 04 AB F0", "03 02 01 80"}) {
    const Bytes der =
        element(0x30, pieces.parts.at(0).whole + pieces.parts.at(1).whole + hex(signature));
    write_file("by_hand.der", der);
    const ListPointer crl = decoded_list(der);
    expect_printed_values(crl.get(), "by_hand.der");
    expect_same_octets(crl.get(), "by_hand.der");
    expect_round_trips(crl.get(), der);
  }
}

/* ------------------------------------------------------------------------------------------- */
/* Making what the tool reads                                                                    */
/* ------------------------------------------------------------------------------------------- */

/// Makes the tool sign the list with the key of a kind, and writes it to `file`.
void sign(CertificateRevocationList *crl, const std::string &kind, const std::string &file) {
  const Bytes tbs = encode(asn1_CertificateList_TBS_e, crl->tbsCertList);
  ASSERT_FALSE(tbs.empty());
  asn1_BitString_free(crl->signatureValue);
  crl->signatureValue = bit_string(signature_over(tbs, kind));
  write_file(file, encode(asn1_CertificateRevocationList_e, crl));
}

CRLEntry *entry(Integer *serial, Time *date, Extensions *extensions) {
  CRLEntry *result = asn1_CRLEntry_new();
  result->userCertificate = serial;
  result->revocationDate = date;
  result->crlEntryExtensions = extensions;
  return result;
}

Integer *minus_five() {
  Integer *result = asn1_Integer_new(1);
  result->data[0] = 0xFB;
  result->negative = 1;
  return result;
}

Extension *reason(uint32_t number) {
  return extension(asn1_Get_id_ce_cRLReason(), 0,
                   encode_with([&](uint8_t **pp) { return asn1_Enumerated_e(pp, number); }));
}

Extension *invalidity(const char *date) {
  const Owned<GeneralizedTime, asn1_GeneralizedTime_free> time(asn1_GeneralizedTime_clone(date));
  return extension(asn1_Get_id_ce_invalidityDate(), 0xFF,
                   encode(asn1_GeneralizedTime_e, time.get()));
}

Extension *hold_instruction(const char *dotted) {
  const Owned<ObjId, asn1_ObjId_free> code(asn1_ObjId_parse(&dotted));
  return extension(asn1_Get_id_ce_holdInstructionCode(), 0, encode(asn1_ObjId_e, code.get()));
}

Extension *number(const ObjId *id, uint32_t critical, uint32_t value) {
  const Owned<Integer, asn1_Integer_free> integer(asn1_Integer_set(value));
  return extension(id, critical, encode(asn1_Integer_e, integer.get()));
}

GeneralName *uri(const char *address) {
  GeneralName *name = asn1_GeneralName_new();
  name->kind = 6;
  name->value = asn1_ASN1String_new(0, reinterpret_cast<const uint8_t *>(address));
  return name;
}

DistributionPointName *point_name(const char *address) {
  DistributionPointName *name = asn1_DistributionPointName_new();
  name->value = owning_list({uri(address)});
  return name;
}

/// Returns an issuingDistributionPoint of its name alone, which is the first field of a
/// DistributionPoint, too.
Extension *issuing_point(const char *address) {
  const Owned<DistributionPoint, asn1_DistributionPoint_free> point(asn1_DistributionPoint_new());
  point->distributionPoint = point_name(address);
  return extension(asn1_Get_id_ce_issuingDistributionPoint(), 0xFF,
                   encode(asn1_DistributionPoint_e, point.get()));
}

Extension *freshest(const char *address) {
  DistributionPoint *point = asn1_DistributionPoint_new();
  point->distributionPoint = point_name(address);
  point->reasons = asn1_BitString_new(0);
  asn1_BitString_set(point->reasons, 1, 1);
  asn1_BitString_set(point->reasons, 4, 1);
  List *points = owning_list({point});
  const Bytes octets =
      encode_with([&](uint8_t **pp) { return asn1_SeqOf_e(pp, points, asn1_DistributionPoint_e); });
  List_free(points, asn1_DistributionPoint_free);
  return extension(asn1_Get_id_ce_freshestCRL(), 0, octets);
}

Extension *issuers(const char *address) {
  AccessDescription *access = asn1_AccessDescription_new();
  access->accessMethod = asn1_ObjId_clone(asn1_Get_id_ad_caIssuers());
  access->accessLocation = uri(address);
  const Owned<AuthorityInfoAccessSyntax, asn1_AuthorityInfoAccessSyntax_free> list(
      owning_list({access}));
  return extension(asn1_Get_id_pe_authorityInfoAccess(), 0,
                   encode(asn1_AuthorityInfoAccessSyntax_e, list.get()));
}

/// Returns a list with the required fields only, of the authority that has the key of a kind.
ListPointer smallest_list(const std::string &kind) {
  CertificateRevocationList *crl = asn1_CertificateRevocationList_new();
  CertificateList_TBS *tbs = asn1_CertificateList_TBS_new();
  crl->tbsCertList = tbs;
  crl->signatureAlgorithm = signature_algorithm(kind);
  tbs->signature = signature_algorithm(kind);
  tbs->issuer = asn1_Name_clone(authority_name);
  tbs->thisUpdate = utc_time("200131120000Z");
  return ListPointer(crl);
}

class RevocationListForOpenssl : public testing::TestWithParam<const char *> {};

TEST_P(RevocationListForOpenssl, OfTheRequiredFieldsIsPrintedAndVerified) {
  const ListPointer crl = smallest_list(GetParam());
  sign(crl.get(), GetParam(), "smallest.der");
  expect_verified(GetParam(), "smallest.der");
  const std::string report = report_of("smallest.der", " -nameopt sname,sep_comma_plus");
  EXPECT_EQ((Lines{"1 (0x0)", "C=DE,O=Example,CN=Authority", "2020-01-31 12:00:00Z", "NONE"}),
            printed_fields(report));
  EXPECT_NE(std::string::npos, report.find("\nNo Revoked Certificates.\n"));
  EXPECT_EQ(std::string::npos, report.find("CRL extensions:"));
}

TEST_P(RevocationListForOpenssl, OfAllFieldsIsPrintedAndVerified) {
  const ListPointer crl = smallest_list(GetParam());
  CertificateList_TBS *tbs = crl->tbsCertList;
  tbs->version = asn1_Integer_set(1);
  release(asn1_Name_free, tbs->issuer);
  tbs->issuerSequence = asn1_Name_to_RDNSequence(authority_name);
  tbs->nextUpdate = generalized_time("99991231235959Z");
  tbs->revokedCertificates = owning_list({
      entry(asn1_Integer_set(0), utc_time("200131120000Z"), nullptr),
      entry(asn1_Integer_set(0x80), utc_time("500201000001Z"), owning_list({reason(1)})),
      entry(asn1_Integer_set(0xFFFFFFFF), generalized_time("20500201000000Z"),
            owning_list(
                {reason(6), hold_instruction("1.2.840.10040.2.3"), invalidity("19491231235959Z")})),
      entry(minus_five(), utc_time("491231235959Z"), owning_list({reason(10)})),
  });
  tbs->crlExtensions = owning_list({
      number(asn1_Get_id_ce_cRLNumber(), 0, 0x80000000),
      number(asn1_Get_id_ce_deltaCRLIndicator(), 0xFF, 4711),
      issuing_point("http://a.example/1.crl"),
      freshest("http://a.example/d.crl"),
      issuers("http://a.example/c"),
  });
  sign(crl.get(), GetParam(), "all.der");
  expect_verified(GetParam(), "all.der");

  const std::string report = report_of("all.der", " -nameopt sname,sep_comma_plus");
  EXPECT_EQ((Lines{"2 (0x1)", "C=DE,O=Example,CN=Authority", "2020-01-31 12:00:00Z",
                   "9999-12-31 23:59:59Z"}),
            printed_fields(report));
  EXPECT_EQ((Lines{
                "Serial Number: 00",
                "Revocation Date: Jan 31 12:00:00 2020 GMT",
                "Serial Number: 80",
                "Revocation Date: Feb  1 00:00:01 1950 GMT",
                "CRL entry extensions:",
                "X509v3 CRL Reason Code:",
                "Key Compromise",
                "Serial Number: FFFFFFFF",
                "Revocation Date: Feb  1 00:00:00 2050 GMT",
                "CRL entry extensions:",
                "X509v3 CRL Reason Code:",
                "Certificate Hold",
                "Hold Instruction Code:",
                "Hold Instruction Reject",
                "Invalidity Date: critical",
                "Dec 31 23:59:59 1949 GMT",
                "Serial Number: -05",
                "Revocation Date: Dec 31 23:59:59 2049 GMT",
                "CRL entry extensions:",
                "X509v3 CRL Reason Code:",
                "AA Compromise",
            }),
            printed_entries(report));
  size_t at = 0;
  for (const char *text : {
           "X509v3 CRL Number:",
           " 2147483648\n",
           "X509v3 Delta CRL Indicator: critical",
           " 4711\n",
           "X509v3 Issuing Distribution Point: critical",
           "Full Name:",
           " URI:http://a.example/1.crl",
           "X509v3 Freshest CRL:",
           "Full Name:",
           " URI:http://a.example/d.crl",
           "Reasons:",
           " Key Compromise, Superseded\n",
           "Authority Information Access:",
           " CA Issuers - URI:http://a.example/c",
       }) {
    at = report.find(text, at);
    ASSERT_NE(std::string::npos, at) << text << " is missing in\n" << report;
    at += std::strlen(text);
  }
}

TEST_P(RevocationListForOpenssl, IsVerifiedAfterADecodedOneWasChanged) {
  const std::string kind = GetParam();
  write_index(revoked_for_all_reasons);
  const ListPointer crl =
      decoded_list(list_of_the_authority(kind, "-name numbered -crldays 30", "", "before.der"));
  release(asn1_OctetString_free, crl->tbsEncoded);
  CertificateList_TBS *tbs = crl->tbsCertList;
  ASSERT_EQ(1, List_append(tbs->revokedCertificates,
                           entry(asn1_Integer_set(0x4711), utc_time("260301000000Z"), nullptr), 0));
  sign(crl.get(), kind, "changed.der");
  expect_verified(kind, "changed.der");

  const Lines before = printed_entries(openssl("crl -inform DER -in before.der -noout -text"));
  const Lines added = {"Serial Number: 4711", "Revocation Date: Mar  1 00:00:00 2026 GMT"};
  expect_same_lines(printed_entries(openssl("crl -inform DER -in changed.der -noout -text")),
                    before + added);
}

INSTANTIATE_TEST_SUITE_P(Keys, RevocationListForOpenssl, testing::Values("rsa", "ec", "ed25519"),
                         [](const auto &kind) { return std::string(kind.param); });

}  // namespace

}  // namespace crl_test
