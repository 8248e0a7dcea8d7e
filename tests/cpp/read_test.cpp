// Reading in C++: records that own themselves, views, lists, CHOICE, times, faults. The facts about
// the certificate are those that `openssl x509 -text` prints.
#include <gtest/gtest.h>

#include <algorithm>
#include <orvelasn1.hpp>
#include <sstream>
#include <vector>

#include "certificate.h"

namespace read_test {

namespace {

namespace pki = orvel::pki;
namespace asn1 = orvel::asn1;
using namespace orvel::literals;
using namespace std::chrono_literals;
using orvel::decode;
using support::Bytes;
using support::element;
using support::hex;
using support::some_certificate;
using support::text;
using support::operator+;

orvel::Owned<pki::Certificate> certificate() {
  return decode<pki::Certificate>(some_certificate).value();
}

Bytes bytes(orvel::Octets octets) {
  Bytes all;
  for (const std::byte octet : octets) all.push_back(std::to_integer<uint8_t>(octet));
  return all;
}

// ---------------------------------------------------------------------------------------------
// Decoding
// ---------------------------------------------------------------------------------------------

TEST(CppDecode, GivesTheRecord) {
  const auto result = decode<pki::Certificate>(some_certificate);
  ASSERT_TRUE(result.has_value());
  EXPECT_TRUE(result);
  EXPECT_EQ("0A1B2C3D4E5F60718293", result->serialNumber().hex());
  EXPECT_EQ("CN=Some One,O=A\\, B,C=DE", result->subject().rfc4514());
  ASSERT_TRUE(result->version());
  EXPECT_EQ(2, *result->version());
  EXPECT_EQ("1.3.101.112", result->signatureAlgorithm().algorithm().text());
  EXPECT_FALSE(result->signatureAlgorithm().parameters());
  EXPECT_EQ(512U, result->signatureValue().size());
  EXPECT_FALSE(result->issuerUniqueID());
}

TEST(CppDecode, SaysWhereAndWhyOctetsAreRefused) {
  Bytes broken = some_certificate;
  broken[13] = 0x30;  // the identifier octet of the serial number
  const auto result = decode<pki::Certificate>(broken);
  ASSERT_FALSE(result);
  EXPECT_EQ(13U, result.error().offset());
  EXPECT_EQ("tbsCertificate.serialNumber", result.error().path());
  EXPECT_EQ("expected INTEGER (02), found SEQUENCE (30)", result.error().sentence());
  EXPECT_EQ("offset 13, tbsCertificate.serialNumber: expected INTEGER (02), found SEQUENCE (30)",
            result.error().text());
  std::ostringstream shown;
  shown << result.error();
  EXPECT_EQ(result.error().text(), shown.str());
}

TEST(CppDecode, RefusesOctetsThatAreLeftOver) {
  const auto two = decode<pki::Certificate>(some_certificate + hex("05 00"));
  ASSERT_FALSE(two);
  EXPECT_EQ(some_certificate.size(), two.error().offset());
  EXPECT_EQ("", two.error().path());
  EXPECT_EQ("expected the end of the input, found 2 more octets", two.error().sentence());
  const auto one = decode<pki::Certificate>(some_certificate + hex("05"));
  ASSERT_FALSE(one);
  EXPECT_EQ("offset 452: expected the end of the input, found 1 more octet", one.error().text());
}

TEST(CppDecode, TakesOneValueAfterTheOther) {
  const Bytes input = some_certificate + some_certificate;
  orvel::Octets rest = orvel::Input(input).octets();
  ASSERT_TRUE(orvel::decode_next<pki::Certificate>(rest));
  EXPECT_EQ(some_certificate.size(), rest.size());
  ASSERT_TRUE(orvel::decode_next<pki::Certificate>(rest));
  EXPECT_TRUE(rest.empty());
  EXPECT_FALSE(orvel::decode_next<pki::Certificate>(rest));
}

TEST(CppDecode, TakesNoOctets) {
  EXPECT_FALSE(decode<pki::Certificate>(orvel::Octets()));
  EXPECT_FALSE(decode<pki::Certificate>(Bytes()));
  EXPECT_FALSE(decode<asn1::GDO>(orvel::Octets()));
  EXPECT_FALSE(decode<asn1::IA5String>(orvel::Octets()));
}

TEST(CppDecode, TakesAnyOctetsInARow) {
  const std::vector<char> characters(some_certificate.begin(), some_certificate.end());
  const std::string string(characters.begin(), characters.end());
  EXPECT_TRUE(decode<pki::Certificate>(characters));
  EXPECT_TRUE(decode<pki::Certificate>(string));
  EXPECT_TRUE(decode<pki::Certificate>(std::string_view(string)));
  EXPECT_TRUE(decode<pki::Certificate>(std::span(characters)));
  const uint8_t array[] = {0x30, 0x00};
  EXPECT_TRUE(decode<pki::BasicConstraints>(array));
}

TEST(CppDecode, AsksBeforeADecoderThatCouldEndTheProcess) {
  // A value under the identifier octet 100: asn1_Name_d() would abort.
  const Bytes name = element(0x30, element(0x31, element(0x30, hex("06 03 55 04 03 64 01 41"))));
  const auto result = decode<asn1::Name>(name);
  ASSERT_FALSE(result);
  EXPECT_NE("", result.error().sentence());
  const auto good = decode<asn1::Name>(
      element(0x30, element(0x31, element(0x30, hex("06 03 55 04 03 0C 01 41")))));
  ASSERT_TRUE(good);
  EXPECT_EQ("/cn(12)=A", good->text());
}

// ---------------------------------------------------------------------------------------------
// Results
// ---------------------------------------------------------------------------------------------

TEST(CppResult, ThrowsOnlyWhereItIsAsked) {
  try {
    (void)decode<pki::Certificate>(hex("30 00")).value();
    FAIL() << "there is no value";
  } catch (const orvel::FaultError &error) {
    EXPECT_EQ("tbsCertificate", error.fault().path());
    EXPECT_EQ(error.fault().text(), error.what());
  }
}

TEST(CppResult, GoesOnWithTheValueOrTheFault) {
  const auto size = [](orvel::Owned<pki::Certificate> owned) { return orvel::encoded_size(owned); };
  EXPECT_EQ(some_certificate.size(),
            decode<pki::Certificate>(some_certificate).transform(size).value());
  EXPECT_EQ(7U, decode<pki::Certificate>(hex("30 00")).transform(size).value_or(7U));
  EXPECT_EQ(some_certificate.size(),
            decode<pki::Certificate>(some_certificate)
                .and_then([](orvel::Owned<pki::Certificate> owned) { return orvel::encode(owned); })
                .value()
                .size());
  EXPECT_EQ("tbsCertificate",
            decode<pki::Certificate>(hex("30 00"))
                .and_then([](orvel::Owned<pki::Certificate> owned) { return orvel::encode(owned); })
                .error()
                .path());
}

TEST(CppResult, Moves) {
  auto good = decode<pki::Certificate>(some_certificate);
  auto bad = decode<pki::Certificate>(hex("30 00"));
  auto moved = std::move(good);
  EXPECT_TRUE(moved->extensions());
  moved = std::move(bad);
  ASSERT_FALSE(moved);
  EXPECT_EQ("tbsCertificate", moved.error().path());
  moved = certificate();
  EXPECT_TRUE(moved);
}

// ---------------------------------------------------------------------------------------------
// Ownership
// ---------------------------------------------------------------------------------------------

static_assert(sizeof(orvel::Owned<pki::Certificate>) == sizeof(void *));
static_assert(sizeof(orvel::Owned<pki::GeneralNames>) == sizeof(void *));
static_assert(std::is_nothrow_move_constructible_v<orvel::Owned<pki::Certificate>>);
static_assert(!std::is_copy_constructible_v<orvel::Owned<pki::Certificate>>);
static_assert(std::is_trivially_copyable_v<pki::Certificate>);

TEST(CppOwned, MovesAndIsEmptyAfterwards) {
  orvel::Owned<pki::Certificate> first = certificate();
  const ::Certificate *const record = first.c();
  orvel::Owned<pki::Certificate> second = std::move(first);
  EXPECT_EQ(record, second.c());
  EXPECT_FALSE(first);  // NOLINT(bugprone-use-after-move): this is what is tested
  EXPECT_TRUE(first->extensions().empty());
  second = certificate();
  orvel::Owned<pki::Certificate> &itself = second;
  second = std::move(itself);
  EXPECT_TRUE(second);
}

TEST(CppOwned, IsTakenOverFromCAndHandedToIt) {
  ::Certificate *record = nullptr;
  ASSERT_NE(nullptr,
            pki_Certificate_d(some_certificate.data(),
                              some_certificate.data() + some_certificate.size(), 0, &record, 0));
  orvel::Owned<pki::Certificate> owned(record);
  EXPECT_EQ(record, owned.c());
  EXPECT_EQ(record, owned->c());
  ::Certificate *const released = owned.release();
  EXPECT_EQ(record, released);
  EXPECT_FALSE(owned);
  pki_Certificate_free(released);
}

TEST(CppOwned, IsCopiedByNameOnly) {
  const auto first = certificate();
  const auto second = orvel::clone(first).value();
  EXPECT_NE(first.c(), second.c());
  EXPECT_EQ(*first, *second);
  const auto validity = orvel::clone(first->validity());
  ASSERT_TRUE(validity);
  EXPECT_EQ(first->validity(), **validity);
  const auto nothing = orvel::clone(pki::Certificate());
  ASSERT_FALSE(nothing);
  EXPECT_EQ("there is no record", nothing.error().sentence());
}

// ---------------------------------------------------------------------------------------------
// Encoding
// ---------------------------------------------------------------------------------------------

TEST(CppEncode, WritesTheSameOctets) {
  const auto owned = certificate();
  const auto octets = orvel::encode(owned);
  ASSERT_TRUE(octets);
  EXPECT_EQ(some_certificate, bytes(*octets));
  EXPECT_EQ(some_certificate.size(), orvel::encoded_size(owned));
  const auto part = orvel::encode(owned->validity());
  ASSERT_TRUE(part);
  EXPECT_EQ(hex("30 20 17 0D") + text("261123020950Z") + hex("18 0F") + text("21261030020950Z"),
            bytes(*part));
}

TEST(CppEncode, WritesIntoABufferThatIsLargeEnough) {
  const auto owned = certificate();
  std::vector<std::byte> buffer(some_certificate.size() + 3, std::byte{0xEE});
  const auto written = orvel::encode_into(owned, buffer);
  ASSERT_TRUE(written);
  EXPECT_EQ(buffer.data(), written->data());
  EXPECT_EQ(some_certificate, bytes(*written));
  EXPECT_EQ(std::byte{0xEE}, buffer[some_certificate.size()]);
  const auto refused = orvel::encode_into(owned, std::span(buffer).first(451));
  ASSERT_FALSE(refused);
  EXPECT_EQ("the buffer has 451 octets, the value 452", refused.error().sentence());
}

TEST(CppEncode, SaysWhichFieldIsMissing) {
  const orvel::Owned<pki::Validity> empty(pki_Validity_new());
  const auto refused = orvel::encode(empty);
  ASSERT_FALSE(refused);
  EXPECT_EQ("notBefore", refused.error().path());
  EXPECT_EQ(0U, orvel::encoded_size(empty));
  const auto nothing = orvel::encode(pki::Validity());
  ASSERT_FALSE(nothing);
  EXPECT_EQ("there is no record", nothing.error().sentence());
}

// ---------------------------------------------------------------------------------------------
// Lists and CHOICE
// ---------------------------------------------------------------------------------------------

TEST(CppList, IsARangeOfItsElements) {
  const auto owned = certificate();
  std::string identifiers;
  for (const pki::Extension extension : owned->extensions()) {
    identifiers += extension.extnID().text() + (extension.critical() ? "! " : " ");
  }
  EXPECT_EQ("2.5.29.19! 2.5.29.15! 2.5.29.17 2.5.29.14 ", identifiers);
  EXPECT_EQ(4U, owned->extensions().size());
  EXPECT_EQ("2.5.29.15"_oid, owned->extensions()[1].extnID());
  EXPECT_EQ("2.5.29.19"_oid, owned->extensions().front().extnID());
  EXPECT_FALSE(owned->extensions()[4]);
  EXPECT_FALSE(owned->extensions()[SIZE_MAX]);
}

TEST(CppList, WorksWithTheAlgorithmsOfTheStandardLibrary) {
  static_assert(std::ranges::random_access_range<pki::Extensions>);
  static_assert(std::ranges::sized_range<pki::Extensions>);
  static_assert(std::ranges::borrowed_range<pki::Extensions>);
  static_assert(std::ranges::view<pki::Extensions>);
  const auto owned = certificate();
  const auto extensions = owned->extensions();
  EXPECT_EQ(2, std::ranges::count_if(extensions, &pki::Extension::critical));
  const auto found = std::ranges::find_if(extensions, [](const pki::Extension &extension) {
    return extension.extnID() == orvel::oid::id_ce_subjectAltName;
  });
  EXPECT_EQ(2, found - extensions.begin());
  EXPECT_EQ(found, extensions.begin() + 2);
  EXPECT_EQ(found, 2 + extensions.begin());
  EXPECT_EQ(found, extensions.end() - 2);
  EXPECT_TRUE(found[1].extnID() == "2.5.29.14"_oid);
  EXPECT_LT(found, extensions.end());
  auto walk = found;
  EXPECT_EQ(found, walk++);
  EXPECT_EQ(found, --walk);
  EXPECT_EQ(found, walk--);
  walk += 1;
  walk -= 0;
  EXPECT_EQ(found, walk);
}

TEST(CppList, IsEmptyWhereItsRecordHasNone) {
  const pki::Extensions none;
  EXPECT_FALSE(none);
  EXPECT_TRUE(none.empty());
  EXPECT_EQ(0U, none.size());
  EXPECT_EQ(none.begin(), none.end());
  EXPECT_FALSE(none.front());
}

TEST(CppList, IsFoundByIdentifier) {
  const auto owned = certificate();
  const auto usage = orvel::find(owned->extensions(), orvel::oid::id_ce_keyUsage);
  ASSERT_TRUE(usage);
  EXPECT_EQ(hex("03 02 01 06"), bytes(usage->extnValue()));
  EXPECT_FALSE(orvel::find(owned->extensions(), "2.5.29.99"_oid));
  EXPECT_FALSE(orvel::find(pki::Extensions(), orvel::oid::id_ce_keyUsage));
  const auto names = owned->subject();
  EXPECT_EQ(text("DE"), bytes(orvel::find(names[0], orvel::oid::id_at_countryName)->value()));
}

std::string shown(const pki::GeneralName &name) {
  return name.visit(orvel::Overloaded{
      [](pki::GeneralName::dNSName dns) { return "DNS " + std::string(*dns); },
      [](pki::GeneralName::rfc822Name mail) { return "mail " + std::string(*mail); },
      [](pki::GeneralName::uniformResourceIdentifier uri) { return "URI " + std::string(*uri); },
      [](pki::GeneralName::iPAddress ip) { return "IP " + orvel::hex(*ip); },
      [](pki::GeneralName::registeredID id) { return "ID " + id->text(); },
      [](pki::GeneralName::directoryName directory) {
        return "directory " + directory->rfc4514().value_or("?");
      },
      [](pki::GeneralName::otherName other) {
        return "other " + other->type().text() + " " + orvel::hex(other->value());
      },
      [](pki::GeneralName::x400Address) { return std::string("X.400"); },
      [](pki::GeneralName::ediPartyName) { return std::string("EDI"); },
      [](orvel::Unknown unknown) { return "kind " + std::to_string(unknown.kind); }});
}

TEST(CppChoice, IsVisited) {
  const auto owned = certificate();
  const auto names = decode<pki::GeneralNames>(
      orvel::find(owned->extensions(), orvel::oid::id_ce_subjectAltName)->extnValue());
  ASSERT_TRUE(names);
  std::string all;
  for (const pki::GeneralName name : **names) all += shown(name) + "\n";
  EXPECT_EQ(
      "DNS a.example\nmail b@example.org\nURI https://c.example/\nIP C0000207\nID 1.2.3.4\n"
      "directory CN=Dir\nother 1.2.3 0C0178\n",
      all);
}

TEST(CppChoice, IsAskedForOneAlternative) {
  const auto name = decode<pki::GeneralName>(element(0x82, text("a.example")));
  ASSERT_TRUE(name);
  EXPECT_TRUE(name->is<pki::GeneralName::dNSName>());
  EXPECT_EQ("a.example", name->get<pki::GeneralName::dNSName>());
  EXPECT_FALSE(name->is<pki::GeneralName::rfc822Name>());
  EXPECT_FALSE(name->get<pki::GeneralName::rfc822Name>());
  EXPECT_EQ(2, name->kind());
}

TEST(CppChoice, OfAnUnknownKindIsVisitedAsSuch) {
  ::GeneralName record = {77, nullptr};
  EXPECT_EQ("kind 77", shown(pki::GeneralName(&record)));
  EXPECT_EQ("kind 0", shown(pki::GeneralName()));
  record.kind = 4;  // a directory name, and no value
  EXPECT_EQ("directory ?", shown(pki::GeneralName(&record)));
  record.kind = 2;
  EXPECT_EQ("DNS ", shown(pki::GeneralName(&record)));
  record.kind = 8;
  EXPECT_EQ("ID ", shown(pki::GeneralName(&record)));
}

TEST(CppChoice, MayHaveAnAlternativeWithoutAValue) {
  const auto status = decode<pki::OCSPCertStatus>(hex("80 00"));
  ASSERT_TRUE(status);
  EXPECT_TRUE(status->is<pki::OCSPCertStatus::good>());
  EXPECT_TRUE(status->get<pki::OCSPCertStatus::good>());
  EXPECT_FALSE(status->get<pki::OCSPCertStatus::revoked>());
}

// ---------------------------------------------------------------------------------------------
// Records that are not filled
// ---------------------------------------------------------------------------------------------

TEST(CppView, OfARecordThatIsNotFilledHasNothing) {
  const orvel::Owned<pki::Certificate> empty(pki_Certificate_new());
  EXPECT_TRUE(empty);
  EXPECT_FALSE(empty->tbsCertificate());
  EXPECT_FALSE(empty->tbsCertificate().validity().notAfter());
  EXPECT_FALSE(empty->validity().notAfter().seconds());
  EXPECT_EQ("", empty->validity().notAfter().text());
  EXPECT_FALSE(empty->serialNumber().value());
  EXPECT_EQ("00", empty->serialNumber().hex());
  EXPECT_TRUE(empty->subjectPublicKeyInfo().subjectPublicKey().empty());
  EXPECT_FALSE(empty->subjectPublicKeyInfo().subjectPublicKey()[0]);
  EXPECT_EQ("", empty->subjectPublicKeyInfo().algorithm().algorithm().text());
  EXPECT_TRUE(empty->subjectPublicKeyInfo().algorithm().algorithm().arcs().empty());
  EXPECT_TRUE(empty->extensions().empty());
  EXPECT_FALSE(empty->subject().rfc4514());
  EXPECT_TRUE(empty->tbsCertificate_encoded().empty());
  EXPECT_FALSE(empty->version());
  EXPECT_FALSE(pki::Extension().critical());
  EXPECT_TRUE(pki::Extension().extnValue().empty());
  EXPECT_TRUE(pki::PdsLocation().url().empty());
}

// ---------------------------------------------------------------------------------------------
// Values
// ---------------------------------------------------------------------------------------------

TEST(CppTexts, AreStringViews) {
  const auto location = decode<pki::PdsLocation>(
      element(0x30, element(22, text("https://d.example")) + element(19, text("en"))));
  ASSERT_TRUE(location);
  static_assert(std::is_same_v<std::string_view, decltype(location->url())>);
  EXPECT_EQ("https://d.example", location->url());
  EXPECT_EQ("en", location->language());
  const auto uri = decode<pki::CPSuri>(element(22, text("u")));
  ASSERT_TRUE(uri);
  EXPECT_EQ("u", uri->text());
  const auto owned = certificate();
  EXPECT_EQ("/c(19)=DE/o(12)=A/, B/cn(12)=Some One", owned->tbsCertificate().subject_text());
  EXPECT_EQ(owned->tbsCertificate().subject_text(), owned->subject().text());
}

TEST(CppTimes, AreSecondsInUtc) {
  const auto owned = certificate();
  const orvel::Instant from = owned->validity().notBefore(), to = owned->validity().notAfter();
  EXPECT_EQ(std::chrono::sys_seconds(1795399790s), from.seconds());
  EXPECT_EQ(std::chrono::sys_seconds(4948999790s), to.seconds());
  EXPECT_EQ("261123020950Z", from.text());
  EXPECT_EQ(23, from.kind());
  EXPECT_EQ("21261030020950Z", to.text());
  EXPECT_EQ(24, to.kind());
  EXPECT_LT(from, to);
  EXPECT_LT(from, std::chrono::sys_seconds(1795399791s));
  EXPECT_EQ(from, std::chrono::sys_seconds(1795399790s));
  const auto date = decode<pki::InvalidityDate>(element(24, text("20261123020950Z")));
  ASSERT_TRUE(date);
  EXPECT_EQ(from, date->instant());
}

TEST(CppTimes, ThatAreNoneHaveNoOrder) {
  const orvel::Instant none, bad(23, "x"), same(24, "x"), other(23, "y"), good(23, "260101000000Z");
  EXPECT_FALSE(bad.seconds());
  EXPECT_EQ(bad, bad);
  EXPECT_EQ(bad, same);
  EXPECT_NE(bad, other);
  EXPECT_NE(bad, good);
  EXPECT_FALSE(bad < good || bad > good);
  EXPECT_EQ(none, none);
  EXPECT_NE(none, bad);
  EXPECT_FALSE(bad < std::chrono::sys_seconds(0s));
}

/// A number that lasts as long as the tests.
pki::CRLNumber number(std::string_view content) {
  static std::vector<orvel::Owned<pki::CRLNumber>> all;
  all.push_back(decode<pki::CRLNumber>(element(2, hex(content))).value());
  return *all.back();
}

TEST(CppNumbers, HaveValuesThatFit) {
  EXPECT_EQ(0U, number("00").value());
  EXPECT_EQ(0, number("00").signed_value());
  EXPECT_EQ(127U, number("7F").value());
  EXPECT_EQ(128U, number("00 80").value());
  EXPECT_EQ(UINT64_MAX, number("00 FF FF FF FF FF FF FF FF").value());
  EXPECT_FALSE(number("00 FF FF FF FF FF FF FF FF").signed_value());
  EXPECT_FALSE(number("01 00 00 00 00 00 00 00 00").value());
  EXPECT_EQ(INT64_MAX, number("7F FF FF FF FF FF FF FF").signed_value());
  EXPECT_EQ(INT64_MIN, number("80 00 00 00 00 00 00 00").signed_value());
  EXPECT_FALSE(number("FF 7F FF FF FF FF FF FF FF").signed_value());
  EXPECT_EQ(-1, number("FF").signed_value());
  EXPECT_FALSE(number("FF").value());
  EXPECT_TRUE(number("FF").is_negative());
}

TEST(CppNumbers, HaveDigits) {
  EXPECT_EQ("00", number("00").hex());
  EXPECT_EQ("80", number("00 80").hex());
  EXPECT_EQ("0A1B", number("0A 1B").hex());
  EXPECT_EQ("-01", number("FF").hex());
  EXPECT_EQ("-80", number("80").hex());
  EXPECT_EQ("-81", number("FF 7F").hex());
  EXPECT_EQ("-0100", number("FF 00").hex());
  EXPECT_EQ("-8000", number("80 00").hex());
}

TEST(CppNumbers, HaveTheirOrder) {
  const char *const ascending[] = {"80 00 00 00 00 00 00 00 00",
                                   "80 00",
                                   "FF 7F",
                                   "80",
                                   "FF",
                                   "00",
                                   "01",
                                   "7F",
                                   "00 80",
                                   "01 00",
                                   "00 80 00 00 00 00 00 00 00",
                                   "01 00 00 00 00 00 00 00 00"};
  for (size_t i = 0; i < std::size(ascending); ++i) {
    for (size_t k = 0; k < std::size(ascending); ++k) {
      EXPECT_EQ(i < k, number(ascending[i]) < number(ascending[k])) << i << " " << k;
      EXPECT_EQ(i == k, number(ascending[i]) == number(ascending[k])) << i << " " << k;
    }
  }
  EXPECT_EQ(number("00 80"), 128);
  EXPECT_EQ(number("00 80"), 128U);
  EXPECT_GT(number("00 80"), -128);
  EXPECT_LT(number("80"), 0U);
  EXPECT_EQ(number("80"), -128);
  EXPECT_LT(number("80 00 00 00 00 00 00 00 00"), INT64_MIN);
  EXPECT_GT(number("01 00 00 00 00 00 00 00 00"), UINT64_MAX);
  EXPECT_GT(number("00 80 00 00 00 00 00 00 00"), INT64_MAX);
  EXPECT_LT(orvel::Number(), 0);
  EXPECT_LT(orvel::Number(), number("80"));
  EXPECT_EQ(orvel::Number(), orvel::Number());
}

TEST(CppNumbers, MayHaveNeedlessOctetsInARecordOfC) {
  uint8_t digits[] = {0, 0, 1}, negative[] = {0xFF, 0xFF, 0x80};
  const ::Integer one = {3, digits, 0}, low = {3, negative, 1}, empty = {0, nullptr, 0};
  EXPECT_EQ(orvel::Number(&one), 1);
  EXPECT_EQ(orvel::Number(&low), -128);
  EXPECT_EQ("-80", orvel::Number(&low).hex());
  EXPECT_EQ(0U, orvel::Number(&empty).value());
}

TEST(CppIdentifiers, CompareWithConstants) {
  const auto purposes = decode<pki::ExtKeyUsageSyntax>(
      element(0x30, hex("06 08 2B 06 01 05 05 07 03 01 06 03 55 1D 25")));
  ASSERT_TRUE(purposes);
  const orvel::Identifier server = (**purposes)[0], usage = (**purposes)[1];
  EXPECT_EQ(server, "1.3.6.1.5.5.7.3.1"_oid);
  EXPECT_EQ(server, orvel::oid::id_kp_serverAuth);
  EXPECT_EQ(server, asn1_Get_id_kp_serverAuth());
  EXPECT_NE(server, "1.3.6.1.5.5.7.3"_oid);
  EXPECT_NE(server, orvel::oid::id_kp_clientAuth);
  EXPECT_EQ(usage, orvel::Oid("2.5.29.37"));
  EXPECT_LT(server, usage);
  EXPECT_GT(server, "1.3.6.1.5.5.7.3"_oid);
  EXPECT_EQ("1.3.6.1.5.5.7.3.1", server.text());
  EXPECT_EQ(std::vector<uint32_t>({2, 5, 29, 37}),
            std::vector<uint32_t>(usage.arcs().begin(), usage.arcs().end()));
  EXPECT_NE(orvel::Identifier(), "2.5"_oid);
}

TEST(CppIdentifiers, MayHaveAnyArcs) {
  const auto large = decode<pki::ExtKeyUsageSyntax>(element(0x30, hex("06 03 88 37 03")));
  ASSERT_TRUE(large);
  EXPECT_EQ("2.999.3"_oid, (**large)[0]);
  const auto huge =
      decode<pki::ExtKeyUsageSyntax>(element(0x30, hex("06 07 55 90 80 80 80 80 00")));
  ASSERT_TRUE(huge);
  EXPECT_EQ("2.5.549755813888", (**huge)[0].text());
}

TEST(CppBits, AreCounted) {
  const auto usage = decode<pki::KeyUsage>(hex("03 02 01 06"));
  ASSERT_TRUE(usage);
  EXPECT_EQ(7U, usage->size());
  EXPECT_TRUE((**usage)[5]);
  EXPECT_TRUE((**usage)[6]);
  EXPECT_FALSE((**usage)[4]);
  EXPECT_FALSE((**usage)[7]);
  EXPECT_FALSE((**usage)[SIZE_MAX]);
  EXPECT_EQ(hex("06"), bytes(usage->octets()));
}

// ---------------------------------------------------------------------------------------------
// Values that are alike
// ---------------------------------------------------------------------------------------------

TEST(CppEquality, ComparesAllFields) {
  const auto first = certificate(), second = certificate();
  EXPECT_EQ(*first, *second);
  EXPECT_EQ(first->extensions(), second->extensions());
  EXPECT_EQ(first->subject(), first->issuer());
  const size_t inside[] = {24, 60, 110, 160, 220, 300, 330, 390, 446};
  int compared = 0;
  for (const size_t at : inside) {
    Bytes changed = some_certificate;
    changed[at] ^= 1;
    const auto other = decode<pki::Certificate>(changed);
    if (!other) continue;
    ++compared;
    EXPECT_NE(*first, **other) << at;
  }
  EXPECT_LE(5, compared);
  EXPECT_NE(*first, pki::Certificate());
  EXPECT_EQ(pki::Certificate(), pki::Certificate());
}

TEST(CppEquality, ComparesAlternatives) {
  const auto dns = decode<pki::GeneralName>(element(0x82, text("a"))).value();
  const auto same = decode<pki::GeneralName>(element(0x82, text("a"))).value();
  const auto other = decode<pki::GeneralName>(element(0x82, text("b"))).value();
  const auto mail = decode<pki::GeneralName>(element(0x81, text("a"))).value();
  EXPECT_EQ(*dns, *same);
  EXPECT_NE(*dns, *other);
  EXPECT_NE(*dns, *mail);
}

TEST(CppEquality, DoesNotCountTheKeptOctets) {
  const Bytes ber =
      hex("30 80") + Bytes(some_certificate.begin() + 4, some_certificate.end()) + hex("00 00");
  const auto first = certificate();
  const auto second = decode<pki::Certificate>(ber);
  ASSERT_TRUE(second);
  EXPECT_EQ(*first, **second);
}

// ---------------------------------------------------------------------------------------------
// Objects of smart cards
// ---------------------------------------------------------------------------------------------

Bytes card_object(uint8_t id, const Bytes &content) {
  return element(0x30, hex("06 01") + Bytes{id} + content);
}
const Bytes leaf = card_object(5, hex("04 02 41 42"));
const Bytes other_leaf = card_object(6, hex("04 01 43"));
const Bytes container = card_object(0x10, element(4, element(0x31, leaf + other_leaf)));
const Bytes container_of_sets =
    card_object(0x11, element(4, element(0x31, element(0x31, leaf) + element(0x31, other_leaf))));
const Bytes holder =
    card_object(0x20, element(3, element(0x31, element(0x30, hex("06 04 78 56 34 12 04 01 AA")))));
const Bytes card = element(0x30, container + container_of_sets + holder + leaf);

TEST(CppCard, ShowsObjectsByTheirPlace) {
  const auto result = decode<asn1::GDO>(card);
  ASSERT_TRUE(result) << result.error();
  const asn1::GDOObjectSetOf root = result->root();
  EXPECT_EQ(0x10U, root.id());
  ASSERT_EQ(2U, root.children().size());
  EXPECT_EQ(5U, root.children()[0].id());
  EXPECT_EQ("4142", orvel::hex(root.children()[0].value()));
  EXPECT_EQ("43", orvel::hex(root.children()[1].value()));
  EXPECT_TRUE(root.value().empty());

  const asn1::GDOObjectSetOfSetOf sets = result->set1();
  ASSERT_EQ(2U, sets.sets().size());
  EXPECT_EQ(6U, sets.sets()[1][0].id());
  EXPECT_FALSE(sets.attributes());

  ASSERT_TRUE(result->set2().holds_attributes());
  EXPECT_EQ(0x12345678U, result->set2().attributes()[0].id());
  EXPECT_EQ("AA", orvel::hex(result->set2().attributes()[0].value()));
  EXPECT_FALSE(result->set2().sets());

  EXPECT_EQ("4142", orvel::hex(result->set3().value()));
  EXPECT_FALSE(result->set4());
}

TEST(CppCard, ComparesShowsAndWritesThem) {
  const auto a = decode<asn1::GDO>(card);
  const auto b = decode<asn1::GDO>(card);
  ASSERT_TRUE(a && b);
  EXPECT_EQ(*a, *b);
  EXPECT_FALSE(a->root() == asn1::GDOObjectSetOf());
  EXPECT_FALSE(a->root().children()[0] == a->root().children()[1]);
  EXPECT_FALSE(a->set1() == a->set2());
  EXPECT_EQ(
      "{root: 0x10 [0x05 4142, 0x06 43], set1: 0x11 [[0x05 4142], [0x06 43]], "
      "set2: 0x20 [0x12345678 AA], set3: 0x05 4142}",
      orvel::to_string(*a));
  const auto plain = decode<asn1::GDOObjectSetOf>(container);
  ASSERT_TRUE(plain);
  const auto written = orvel::encode(*plain);
  ASSERT_TRUE(written) << written.error();
  EXPECT_TRUE(std::ranges::equal(std::as_bytes(std::span(container)), *written));
}

TEST(CppCard, AnEmptyViewHasNothing) {
  const asn1::GDOObjectSetOfSetOf none;
  EXPECT_EQ(0U, none.id());
  EXPECT_TRUE(none.value().empty());
  EXPECT_FALSE(none.sets());
  EXPECT_FALSE(none.attributes());
  EXPECT_FALSE(asn1::GDOObjectSetOf().children());
}

}  // namespace

}  // namespace read_test
