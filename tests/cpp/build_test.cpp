// Making records out of C++ values. Expected octets are put together by hand from X.690 and RFC 5280.
#include <gtest/gtest.h>

#include <orvelasn1.hpp>

#include "certificate.h"

namespace build_test {

namespace {

namespace pki = orvel::pki;
namespace oid = orvel::oid;
using namespace orvel::literals;
using namespace std::chrono_literals;
using orvel::Builder;
using orvel::make;
using std::chrono::sys_days;
using support::Bytes;
using support::element;
using support::hex;
using support::some_certificate;
using support::text;
using support::operator+;

Bytes bytes(orvel::Octets octets) {
  Bytes all;
  for (const std::byte octet : octets) all.push_back(std::to_integer<uint8_t>(octet));
  return all;
}

/// The octets of a record, or none where there is a fault.
template <class T>
Bytes octets(const orvel::Result<orvel::Owned<T>> &result) {
  EXPECT_TRUE(result) << result.error();
  if (!result) return {};
  const auto encoded = orvel::encode(*result);
  EXPECT_TRUE(encoded) << encoded.error();
  return encoded ? bytes(*encoded) : Bytes();
}

/// The fault of a result.
template <class T>
std::string fault(const orvel::Result<T> &result) {
  if (result) return "there is none";
  return std::string(result.error().path()) + ": " + std::string(result.error().sentence());
}

Bytes sequence(const Bytes &content) { return element(0x30, content); }

const Bytes ed25519 = sequence(hex("06 03 2B 65 70"));
const Bytes some_name = sequence(element(0x31, sequence(hex("06 03 55 04 06 13 02 44 45"))) +
                                 element(0x31, sequence(hex("06 03 55 04 03 0C 01 41"))));
const Bytes key(32, 7), signature(64, 8);

auto algorithm() { return orvel::algorithm("1.3.101.112"_oid); }

auto validity() {
  return Builder<pki::Validity>()
      .set<&pki::Validity::notBefore>(sys_days(2026y / 1 / 31) + 12h)
      .set<&pki::Validity::notAfter>(sys_days(2050y / 1 / 1));
}

auto public_key() {
  return Builder<pki::SubjectPKI>()
      .set<&pki::SubjectPKI::algorithm>(algorithm())
      .set<&pki::SubjectPKI::subjectPublicKey>(key);
}

// ---------------------------------------------------------------------------------------------
// Certificates and requests
// ---------------------------------------------------------------------------------------------

TEST(CppBuilder, MakesACertificate) {
  using Tbs = pki::Certificate_TBS;
  auto tbs =
      Builder<Tbs>()
          .set<&Tbs::version>(2)
          .set<&Tbs::serialNumber>(orvel::Magnitude(hex("8A 01")))
          .set<&Tbs::signature>(algorithm())
          .set<&Tbs::issuer>("CN=A,C=DE")
          .set<&Tbs::validity>(validity())
          .set<&Tbs::subject>("CN=A,C=DE")
          .set<&Tbs::subjectPublicKeyInfo>(public_key())
          .set<&Tbs::extensions>(
              orvel::critical_extension(oid::id_ce_keyUsage, make<pki::KeyUsage>(orvel::NamedBits{
                                                                 orvel::key_usage::digitalSignature,
                                                                 orvel::key_usage::cRLSign})),
              orvel::extension(oid::id_ce_subjectAltName,
                               make<pki::GeneralNames>(
                                   orvel::choose<pki::GeneralName::dNSName>("a.example"),
                                   orvel::choose<pki::GeneralName::iPAddress>(hex("C0000207")))))
          .build();
  const Bytes expected_tbs = sequence(
      hex("A0 03 02 01 02 02 03 00 8A 01") + ed25519 + some_name +
      sequence(element(23, text("260131120000Z")) + element(24, text("20500101000000Z"))) +
      some_name + sequence(ed25519 + element(3, hex("00") + key)) +
      element(0xA3, sequence(sequence(hex("06 03 55 1D 0F 01 01 FF 04 04 03 02 01 82")) +
                             sequence(hex("06 03 55 1D 11") +
                                      element(4, sequence(element(0x82, text("a.example")) +
                                                          hex("87 04 C0 00 02 07")))))));
  EXPECT_EQ(expected_tbs, octets(tbs));
  EXPECT_EQ("/c(19)=DE/cn(12)=A", (*tbs)->subject_text());
  const auto certificate = Builder<pki::Certificate>()
                               .set<&pki::Certificate::tbsCertificate>(std::move(tbs))
                               .set<&pki::Certificate::signatureAlgorithm>(algorithm())
                               .set<&pki::Certificate::signatureValue>(signature)
                               .build();
  EXPECT_EQ(sequence(expected_tbs + ed25519 + element(3, hex("00") + signature)),
            octets(certificate));
}

TEST(CppBuilder, MakesARequest) {
  using Info = pki::CertRequestInfo;
  const auto request =
      Builder<pki::CertificationRequest>()
          .set<&pki::CertificationRequest::certificationRequestInfo>(
              Builder<Info>()
                  .set<&Info::version>(0)
                  .set<&Info::subject>("CN=A,C=DE")
                  .set<&Info::subjectPKInfo>(public_key())
                  .set<&Info::attributes>(orvel::attribute(
                      oid::extensionRequest, make<pki::Extensions>(orvel::extension(
                                                 oid::id_ce_basicConstraints, hex("30 00"))))))
          .set<&pki::CertificationRequest::signatureAlgorithm>(algorithm())
          .set<&pki::CertificationRequest::signature>(signature)
          .build();
  const Bytes extensions = sequence(sequence(hex("06 03 55 1D 13 04 02 30 00")));
  const Bytes attributes =
      sequence(hex("06 09 2A 86 48 86 F7 0D 01 09 0E") + element(0x31, extensions));
  EXPECT_EQ(sequence(sequence(hex("02 01 00") + some_name +
                              sequence(ed25519 + element(3, hex("00") + key)) +
                              element(0xA0, attributes)) +
                     ed25519 + element(3, hex("00") + signature)),
            octets(request));
}

TEST(CppBuilder, ChangesARecordAndForgetsWhatWasKeptOfIt) {
  auto certificate = orvel::decode<pki::Certificate>(some_certificate).value();
  auto tbs = Builder<pki::Certificate_TBS>(orvel::clone(certificate->tbsCertificate()).value())
                 .set<&pki::Certificate_TBS::subject>("CN=A,C=DE")
                 .clear<&pki::Certificate_TBS::extensions>()
                 .clear<&pki::Certificate_TBS::version>()
                 .build();
  ASSERT_TRUE(tbs);
  EXPECT_EQ("/c(19)=DE/cn(12)=A", (*tbs)->subject_text());
  EXPECT_TRUE((*tbs)->subject_encoded().empty());
  EXPECT_FALSE((*tbs)->extensions());
  EXPECT_FALSE((*tbs)->issuer_encoded().empty());
  const auto changed = Builder<pki::Certificate>(std::move(certificate))
                           .set<&pki::Certificate::tbsCertificate>(*tbs)
                           .build();
  ASSERT_TRUE(changed);
  EXPECT_TRUE(changed->tbsCertificate_encoded().empty());
  const auto again = orvel::decode<pki::Certificate>(octets(changed));
  ASSERT_TRUE(again);
  EXPECT_EQ("CN=A,C=DE", again->subject().rfc4514());
  EXPECT_EQ("CN=Some One,O=A\\, B,C=DE", again->issuer().rfc4514());
  EXPECT_TRUE(again->extensions().empty());
}

// ---------------------------------------------------------------------------------------------
// Faults
// ---------------------------------------------------------------------------------------------

TEST(CppBuilder, SaysWhichFieldIsMissing) {
  EXPECT_EQ(
      "notAfter: ",
      fault(
          Builder<pki::Validity>().set<&pki::Validity::notBefore>(sys_days(2026y / 1 / 1)).build())
          .substr(0, 10));
}

TEST(CppBuilder, KeepsTheFirstFaultAndItsPath) {
  const auto certificate =
      Builder<pki::Certificate>()
          .set<&pki::Certificate::tbsCertificate>(Builder<pki::Certificate_TBS>()
                                                      .set<&pki::Certificate_TBS::issuer>("no name")
                                                      .set<&pki::Certificate_TBS::serialNumber>(7))
          .set<&pki::Certificate::signatureValue>(signature)
          .clear<&pki::Certificate::signatureValue>()
          .build();
  EXPECT_EQ("tbsCertificate.issuer: the text is no name of RFC 4514, or memory is exhausted",
            fault(certificate));
}

TEST(CppBuilder, TakesAFaultFromAnotherResult) {
  EXPECT_EQ("subject: the text is no name of RFC 4514, or memory is exhausted",
            fault(Builder<pki::Certificate_TBS>()
                      .set<&pki::Certificate_TBS::subject>(make<pki::RDNSequence>("x"))
                      .build()));
  EXPECT_EQ("extnValue: expected",
            fault(Builder<pki::Extension>()
                      .set<&pki::Extension::extnValue>(orvel::decode<pki::KeyUsage>(hex("04 00")))
                      .build())
                .substr(0, 19));
  EXPECT_EQ("validity: there is no record",
            fault(Builder<pki::Certificate_TBS>()
                      .set<&pki::Certificate_TBS::validity>(orvel::Owned<pki::Validity>())
                      .build()));
  EXPECT_EQ("validity: there is no record",
            fault(Builder<pki::Certificate_TBS>()
                      .set<&pki::Certificate_TBS::validity>(pki::Validity())
                      .build()));
  EXPECT_EQ(": there is no record",
            fault(Builder<pki::Validity>(orvel::Owned<pki::Validity>()).build()));
}

TEST(CppBuilder, RefusesTextsThatTheTypeDoesNotHave) {
  EXPECT_EQ(": the type does not have the character of octet 1",
            fault(orvel::choose<pki::GeneralName::dNSName>("b\xFC"
                                                           "cher.example")));
  EXPECT_EQ(": the type does not have the character of octet 2",
            fault(orvel::choose<pki::Iso4217CurrencyCode::alphabetic>("EU*")));
  EXPECT_EQ(hex("13 03") + text("EU?"),
            octets(orvel::choose<pki::Iso4217CurrencyCode::alphabetic>("EU?")));
  EXPECT_EQ(": the type does not have the character of octet 0",
            fault(orvel::choose<pki::DisplayText::visibleString>("\n")));
  EXPECT_EQ(hex("16 01 0A"), octets(orvel::choose<pki::DisplayText::ia5String>("\n")));
  EXPECT_EQ(": the type does not have the character of octet 0", fault(make<pki::CPSuri>("\x80")));
}

TEST(CppBuilder, RefusesTextsThatAreNotUtf8) {
  for (const char *good : {"", "a", "\xC3\xBC", "\xE2\x82\xAC", "\xF0\x9F\x98\x80", "\xED\x9F\xBF",
                           "\xEE\x80\x80", "\xF4\x8F\xBF\xBF"}) {
    EXPECT_TRUE(orvel::choose<pki::DisplayText::utf8String>(good)) << good;
  }
  for (const char *bad :
       {"\x80", "\xC0\x80", "\xC1\xBF", "\xC3", "\xC3 ", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xE2\x82",
        "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF"}) {
    EXPECT_EQ(": the octets are not UTF-8",
              fault(orvel::choose<pki::DisplayText::utf8String>(bad)));
  }
}

TEST(CppBuilder, RefusesOctetsThatAreNoElement) {
  EXPECT_EQ("parameters: the octets are not one whole element",
            fault(orvel::algorithm("1.2.3"_oid, hex("05 00 05 00"))));
  EXPECT_EQ("parameters: the octets are not one whole element",
            fault(orvel::algorithm("1.2.3"_oid, hex("05"))));
  EXPECT_EQ("parameters: the octets are not one whole element",
            fault(orvel::algorithm("1.2.3"_oid, orvel::Octets())));
  EXPECT_EQ(sequence(hex("06 02 2A 03 05 00")),
            octets(orvel::algorithm("1.2.3"_oid, orvel::null())));
  EXPECT_EQ(sequence(hex("06 02 2A 03 06 02 2A 04")),
            octets(orvel::algorithm("1.2.3"_oid, make<orvel::asn1::ObjId>("1.2.4"_oid))));
}

TEST(CppBuilder, RefusesYearsThatTheTypeDoesNotHave) {
  const auto date = [](auto day) { return fault(make<pki::InvalidityDate>(sys_days(day))); };
  EXPECT_EQ("there is none", date(9999y / 12 / 31));
  EXPECT_EQ("there is none", date(0y / 1 / 1));
  EXPECT_EQ(": the type has no such year", date(10000y / 1 / 1));
  EXPECT_EQ(": the type has no such year", date(-1y / 12 / 31));
}

// ---------------------------------------------------------------------------------------------
// Types of liborvelasn1
// ---------------------------------------------------------------------------------------------

using asn1_key = orvel::asn1::PublicKeyAndChallenge;
using asn1_signed = orvel::asn1::SignedPublicKeyAndChallenge;

TEST(CppBuilder, MakesWhatNoRfcHas) {
  using Parameters = orvel::asn1::DssParms;
  EXPECT_EQ(sequence(hex("02 01 07 02 01 05 02 01 02")), octets(Builder<Parameters>()
                                                                    .set<&Parameters::p>(7)
                                                                    .set<&Parameters::q>(5)
                                                                    .set<&Parameters::g>(2)
                                                                    .build()));
  using Mac = orvel::asn1::PublicKeyMAC;
  EXPECT_EQ(
      sequence(hex("04 01 01 04 02 02 03")),
      octets(
          Builder<Mac>().set<&Mac::octets1>(hex("01")).set<&Mac::octets2>(hex("02 03")).build()));
}

TEST(CppBuilder, WritesASignedChallengeAlsoWhereItWasDecoded) {
  const Bytes odd(64, 9);  // liborvelasn1 writes no zero bits at the end
  const Bytes expected_key =
      sequence(sequence(ed25519 + element(3, hex("00") + key)) + element(22, text("go")));
  const Bytes expected = sequence(expected_key + ed25519 + element(3, hex("00") + odd));
  const auto made =
      Builder<asn1_signed>()
          .set<&asn1_signed::publicKeyAndChallenge>(Builder<asn1_key>()
                                                        .set<&asn1_key::spki>(public_key())
                                                        .set<&asn1_key::challenge>("go"))
          .set<&asn1_signed::signatureAlgorithm>(algorithm())
          .set<&asn1_signed::signature>(odd)
          .build();
  EXPECT_EQ(expected, octets(made));
  const auto decoded = orvel::decode<asn1_signed>(expected);
  ASSERT_TRUE(decoded);
  EXPECT_EQ(expected_key, bytes(decoded->publicKeyAndChallenge_encoded()));
  EXPECT_EQ(expected, octets(decoded));
  EXPECT_EQ(expected_key, bytes(decoded->publicKeyAndChallenge_encoded()));
}

TEST(CppBuilder, SaysWhichFieldIsMissingInPlaceOfEndingTheProcess) {
  // Without these fields the encoders of liborvelasn1 abort.
  EXPECT_EQ("spki: is missing", fault(Builder<asn1_key>().set<&asn1_key::challenge>("go").build()));
  EXPECT_EQ("publicKeyAndChallenge: is missing", fault(Builder<asn1_signed>().build()));
  EXPECT_EQ("spki.algorithm: is missing",
            fault(Builder<asn1_key>()
                      .set<&asn1_key::spki>(orvel::Owned<pki::SubjectPKI>(pki_SubjectPKI_new()))
                      .set<&asn1_key::challenge>("go")
                      .build()));
  EXPECT_EQ("privateKeyAlgorithm: is missing",
            fault(Builder<orvel::asn1::PrivateKeyInfo>()
                      .set<&orvel::asn1::PrivateKeyInfo::version>(0)
                      .set<&orvel::asn1::PrivateKeyInfo::privateKey>(key)
                      .build()));
  EXPECT_EQ("root: is missing", fault(Builder<orvel::asn1::GDO>().build()));
}

// ---------------------------------------------------------------------------------------------
// Values
// ---------------------------------------------------------------------------------------------

TEST(CppMake, WritesNumbersInTheShortestForm) {
  const auto number = [](auto value) { return octets(make<pki::CRLNumber>(value)); };
  EXPECT_EQ(hex("02 01 00"), number(0));
  EXPECT_EQ(hex("02 01 7F"), number(127));
  EXPECT_EQ(hex("02 02 00 80"), number(128U));
  EXPECT_EQ(hex("02 02 01 00"), number(std::int16_t{256}));
  EXPECT_EQ(hex("02 01 FF"), number(-1));
  EXPECT_EQ(hex("02 01 80"), number(-128));
  EXPECT_EQ(hex("02 02 FF 7F"), number(-129L));
  EXPECT_EQ(hex("02 08 80 00 00 00 00 00 00 00"), number(INT64_MIN));
  EXPECT_EQ(hex("02 09 00 FF FF FF FF FF FF FF FF"), number(UINT64_MAX));
  EXPECT_EQ(hex("02 01 00"), number(orvel::Magnitude(Bytes())));
  EXPECT_EQ(hex("02 01 01"), number(orvel::Magnitude(hex("00 00 01"))));
  EXPECT_EQ(hex("02 03 00 80 01"), number(orvel::Magnitude(hex("80 01"))));
  const auto certificate = orvel::decode<pki::Certificate>(some_certificate).value();
  EXPECT_EQ(element(2, hex("0A1B2C3D4E5F60718293")), number(certificate->serialNumber()));
}

TEST(CppMake, WritesTimesAsCertificatesHaveThem) {
  const auto time = [](auto value) { return octets(make<orvel::asn1::Time>(value)); };
  EXPECT_EQ(element(24, text("19491231235959Z")), time(sys_days(1950y / 1 / 1) - 1s));
  EXPECT_EQ(element(23, text("500101000000Z")), time(sys_days(1950y / 1 / 1)));
  EXPECT_EQ(element(23, text("491231235959Z")), time(sys_days(2050y / 1 / 1) - 1s));
  EXPECT_EQ(element(24, text("20500101000000Z")), time(sys_days(2050y / 1 / 1)));
  EXPECT_EQ(element(23, text("240229010203Z")), time(sys_days(2024y / 2 / 29) + 1h + 2min + 3s));
  EXPECT_EQ(element(23, text("2401010000Z")), time(orvel::Instant(23, "2401010000Z")));
  EXPECT_EQ(element(24, text("20240229000000Z")),
            octets(make<pki::InvalidityDate>(orvel::Instant(23, "2402290000Z"))));
  EXPECT_EQ(": the text is no time", fault(make<pki::InvalidityDate>(orvel::Instant(23, "x"))));
  EXPECT_EQ(": the text is no time", fault(make<pki::InvalidityDate>(orvel::Instant())));
  EXPECT_FALSE(make<orvel::asn1::Time>(orvel::Instant()));
}

TEST(CppMake, WritesBits) {
  using orvel::NamedBits;
  EXPECT_EQ(hex("03 02 01 06"), octets(make<pki::KeyUsage>(NamedBits{5, 6})));
  EXPECT_EQ(hex("03 03 07 00 80"), octets(make<pki::KeyUsage>(NamedBits{8})));
  EXPECT_EQ(hex("03 01 00"), octets(make<pki::KeyUsage>(NamedBits{})));
  EXPECT_EQ(hex("03 09 00 80 00 00 00 00 00 00 01"),
            octets(make<pki::KeyUsage>(NamedBits{0, 63, 64})));
  const auto certificate = orvel::decode<pki::Certificate>(some_certificate).value();
  const auto copied = make<orvel::asn1::BitString>(certificate->signatureValue());
  ASSERT_TRUE(copied);
  EXPECT_EQ(Bytes(some_certificate.end() - 64, some_certificate.end()), bytes(copied->octets()));
  EXPECT_EQ(512U, copied->size());
}

TEST(CppMake, MakesListsOfElementsOrOfARange) {
  const Bytes both = sequence(hex("06 02 2A 03 06 02 2A 04"));
  EXPECT_EQ(both, octets(make<pki::ExtKeyUsageSyntax>("1.2.3"_oid, "1.2.4"_oid)));
  const std::vector<orvel::Oid> purposes = {"1.2.3"_oid, "1.2.4"_oid};
  EXPECT_EQ(both, octets(make<pki::ExtKeyUsageSyntax>(purposes)));
  EXPECT_EQ(both, octets(make<pki::ExtKeyUsageSyntax>(make<pki::ExtKeyUsageSyntax>(purposes))));
  EXPECT_EQ(sequence({}), octets(make<pki::ExtKeyUsageSyntax>()));
  EXPECT_EQ(sequence({}), octets(make<pki::ExtKeyUsageSyntax>(std::vector<orvel::Oid>())));
  const auto list = orvel::decode<pki::ExtKeyUsageSyntax>(both).value();
  EXPECT_EQ(both, octets(make<pki::ExtKeyUsageSyntax>(list)));
  EXPECT_EQ(sequence(hex("06 02 2A 04 06 02 2A 03 06 02 2A 04")),
            octets(make<pki::ExtKeyUsageSyntax>((*list)[1], list)));
  const Bytes legislation = sequence(element(19, text("DE")) + element(19, text("FR")));
  EXPECT_EQ(legislation, octets(make<pki::QcCClegislation>("DE", std::string("FR"))));
  EXPECT_EQ(legislation, octets(make<pki::QcCClegislation>(std::vector<std::string>{"DE", "FR"})));
  EXPECT_EQ(": the type does not have the character of octet 0",
            fault(make<pki::QcCClegislation>("DE", "*")));
}

TEST(CppMake, TakesListsWithoutANameOfTheirOwn) {
  const auto notice = Builder<pki::NoticeReference>()
                          .set<&pki::NoticeReference::organization>(
                              orvel::choose<pki::DisplayText::utf8String>("A"))
                          .set<&pki::NoticeReference::noticeNumbers>(1, 2)
                          .build();
  const Bytes expected = sequence(hex("0C 01 41") + sequence(hex("02 01 01 02 01 02")));
  EXPECT_EQ(expected, octets(notice));
  EXPECT_EQ(sequence(hex("0C 01 41") + sequence(hex("02 01 01 02 01 02"))),
            octets(Builder<pki::NoticeReference>()
                       .set<&pki::NoticeReference::organization>((*notice)->organization())
                       .set<&pki::NoticeReference::noticeNumbers>((*notice)->noticeNumbers())
                       .build()));
}

TEST(CppMake, ChoosesAlternativesWithAndWithoutAValue) {
  EXPECT_EQ(hex("80 00"), octets(orvel::choose<pki::OCSPCertStatus::good>()));
  EXPECT_EQ(element(0xA4, sequence(element(0x31, sequence(hex("06 03 55 04 03 0C 01 41"))))),
            octets(orvel::choose<pki::GeneralName::directoryName>("CN=A")));
  EXPECT_EQ(hex("88 02 2A 03"), octets(orvel::choose<pki::GeneralName::registeredID>("1.2.3"_oid)));
  EXPECT_EQ(hex("88 03 55 1D 0F"),
            octets(orvel::choose<pki::GeneralName::registeredID>(asn1_Get_id_ce_keyUsage())));
}

TEST(CppMake, ReadsIdentifiersThatAreKnownWhenTheProgramRuns) {
  const auto identifier = [](std::string_view digits) {
    return orvel::choose<pki::GeneralName::registeredID>(digits);
  };
  EXPECT_EQ(hex("88 03 55 1D 0F"), octets(identifier("2.5.29.15")));
  for (const std::string_view bad : {"", "2", "2.5.", "1.40", "2.05", "2.5 "}) {
    EXPECT_EQ(": the text is no object identifier, or memory is exhausted", fault(identifier(bad)))
        << bad;
  }
  EXPECT_FALSE(identifier(std::string_view("2.5\0", 4)));
}

TEST(CppMake, CopiesConstantsOfTheLibrary) {
  // Were the constant stored, releasing the record would release it.
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(sequence(hex("06 03 55 1D 0F 05 00")),
              octets(orvel::algorithm(asn1_Get_id_ce_keyUsage(), orvel::null())));
  }
  EXPECT_EQ(hex("02 01 01"), octets(make<pki::CRLNumber>(orvel::Number(asn1_Integer_1()))));
}

TEST(CppMake, MovesARecordThatItMayTake) {
  auto names = make<pki::GeneralNames>(orvel::choose<pki::GeneralName::dNSName>("a")).value();
  const ::List *const record = names.c();
  const auto moved = make<pki::GeneralNames>(std::move(names)).value();
  EXPECT_EQ(record, moved.c());
  const auto copied = make<pki::GeneralNames>(moved).value();
  EXPECT_NE(record, copied.c());
  EXPECT_EQ(moved, copied);
}

TEST(CppMake, MakesBooleansAsDerHasThem) {
  EXPECT_EQ(sequence(hex("01 01 FF 02 01 03")),
            octets(Builder<pki::BasicConstraints>()
                       .set<&pki::BasicConstraints::cA>(true)
                       .set<&pki::BasicConstraints::pathLenConstraint>(3)
                       .build()));
  EXPECT_EQ(
      sequence({}),
      octets(Builder<pki::BasicConstraints>().set<&pki::BasicConstraints::cA>(false).build()));
}

TEST(CppMake, RefusesNumbersThatAMemberDoesNotHold) {
  const auto response = [](auto status) {
    return fault(
        Builder<pki::OCSPResponse>().set<&pki::OCSPResponse::responseStatus>(status).build());
  };
  EXPECT_EQ("there is none", response(1));
  EXPECT_EQ("responseStatus: the number is out of range", response(-1));
  EXPECT_EQ("responseStatus: the number is out of range", response(std::int64_t{1} << 32));
}

}  // namespace

}  // namespace build_test
