// What a person sees of values and records, and the common questions about a certificate.
#include <gtest/gtest.h>

#include <orvelasn1.hpp>
#include <sstream>

#include "certificate.h"

namespace show_test {

namespace {

namespace pki = orvel::pki;
using namespace orvel::literals;
using namespace std::chrono_literals;
using orvel::decode;
using orvel::to_string;
using support::Bytes;
using support::element;
using support::hex;
using support::some_certificate;
using support::text;
using support::operator+;

TEST(CppShow, Numbers) {
  EXPECT_EQ("0", to_string(*decode<pki::CRLNumber>(hex("02 01 00"))));
  EXPECT_EQ("-1", to_string(*decode<pki::CRLNumber>(hex("02 01 FF"))));
  EXPECT_EQ("18446744073709551615",
            to_string(*decode<pki::CRLNumber>(hex("02 09 00 FF FF FF FF FF FF FF FF"))));
  EXPECT_EQ("0x010000000000000000",
            to_string(*decode<pki::CRLNumber>(hex("02 09 01 00 00 00 00 00 00 00 00"))));
  EXPECT_EQ("-0x8000000000000001",
            to_string(*decode<pki::CRLNumber>(hex("02 09 FF 7F FF FF FF FF FF FF FF"))));
  EXPECT_EQ("none", to_string(orvel::Number()));
}

TEST(CppShow, IdentifiersTimesAndBits) {
  EXPECT_EQ("2.5.29.17", to_string("2.5.29.17"_oid));
  EXPECT_EQ("2.5.29.17", to_string(orvel::Identifier(asn1_Get_id_ce_subjectAltName())));
  EXPECT_EQ("none", to_string(orvel::Identifier()));
  EXPECT_EQ("2026-01-31 12:00:07 UTC", to_string(orvel::Instant(23, "260131120007Z")));
  EXPECT_EQ("0001-01-01 00:00:00 UTC", to_string(orvel::Instant(24, "00010101000000Z")));
  EXPECT_EQ("\"x\\x1B\"", to_string(orvel::Instant(23, "x\x1B")));
  EXPECT_EQ("none", to_string(orvel::Instant()));
  EXPECT_EQ("06 (7 bits)", to_string(*decode<pki::KeyUsage>(hex("03 02 01 06"))));
  EXPECT_EQ("0600", to_string(*decode<pki::KeyUsage>(hex("03 03 00 06 00"))));
  EXPECT_EQ("none", to_string(orvel::Bits()));
}

TEST(CppShow, TextsOfStrangers) {
  EXPECT_EQ("\"a \\\" \\\\ b\"", orvel::quoted("a \" \\ b"));
  EXPECT_EQ("\"\\x1B[2J\\x7F\\x00\"", orvel::quoted(std::string_view("\x1B[2J\x7F\0", 6)));
  EXPECT_EQ("\"\xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80\"",
            orvel::quoted("\xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80"));
  EXPECT_EQ("\"\\xC2\\x9B\xC2\xA0\"", orvel::quoted("\xC2\x9B\xC2\xA0"));
  EXPECT_EQ("\"a\\xE2\\x80\\xAE-\\xE2\\x81\\xA6-\\xE2\\x80\\x8F-\xE2\x80\x90\"",
            orvel::quoted("a\xE2\x80\xAE-\xE2\x81\xA6-\xE2\x80\x8F-\xE2\x80\x90"));
  EXPECT_EQ("\"\\xFF\\xC3\\xBC\"", orvel::quoted("\xFF\xC3\xBC"));
}

TEST(CppShow, Records) {
  const auto certificate = decode<pki::Certificate>(some_certificate).value();
  EXPECT_EQ("{notBefore: 2026-11-23 02:09:50 UTC, notAfter: 2126-10-30 02:09:50 UTC}",
            to_string(certificate->validity()));
  EXPECT_EQ("CN=Some One,O=A\\, B,C=DE", to_string(certificate->subject()));
  EXPECT_EQ("CN=\\x1B[2J\\\"",
            to_string(*decode<pki::RDNSequence>(
                element(0x30, element(0x31, element(0x30, hex("06 03 55 04 03") +
                                                              element(12, text("\x1B[2J\""))))))));
  EXPECT_EQ("{algorithm: 1.3.101.112}", to_string(certificate->signatureAlgorithm()));
  EXPECT_EQ("{extnID: 2.5.29.15, critical: true, extnValue: 03020106}",
            to_string(certificate->extensions()[1]));
  EXPECT_EQ("none", to_string(pki::Validity()));
  EXPECT_EQ("none", to_string(pki::Extensions()));
  EXPECT_EQ("none", to_string(pki::GeneralName()));
  std::ostringstream out;
  out << certificate;
  EXPECT_TRUE(out.str().starts_with(
      "{tbsCertificate: {version: 2, serialNumber: 0x0A1B2C3D4E5F60718293, signature: {"));
}

TEST(CppShow, ListsAndAlternatives) {
  const auto names = decode<pki::GeneralNames>(
      element(0x30, element(0x82, text("a\n")) + hex("87 04 C0 00 02 07 88 02 2A 03")));
  ASSERT_TRUE(names);
  EXPECT_EQ("[dNSName \"a\\x0A\", iPAddress C0000207, registeredID 1.2.3]", to_string(*names));
  EXPECT_EQ("good NULL", to_string(*decode<pki::OCSPCertStatus>(hex("80 00"))));
  const ::GeneralName unknown = {77, nullptr};
  EXPECT_EQ("unknown 77", to_string(pki::GeneralName(&unknown)));
}

#ifdef __cpp_lib_format
TEST(CppShow, IsFormatted) { EXPECT_EQ("  2.5.29.17", std::format("{:>11}", "2.5.29.17"_oid)); }
#endif

// ---------------------------------------------------------------------------------------------
// Questions
// ---------------------------------------------------------------------------------------------

TEST(CppQuestions, ListNames) {
  const auto certificate = decode<pki::Certificate>(some_certificate).value();
  std::string all;
  for (const std::string_view name : orvel::dns_names(certificate).value()) all.append(name);
  for (const std::string_view name : orvel::mail_addresses(certificate).value()) all.append(name);
  for (const std::string_view name : orvel::uris(certificate).value()) all.append(name);
  EXPECT_EQ("a.exampleb@example.orghttps://c.example/", all);
  const auto addresses = orvel::ip_addresses(certificate);
  ASSERT_TRUE(addresses);
  ASSERT_EQ(1U, addresses->size());
  EXPECT_EQ("C0000207", orvel::hex((*addresses)[0]));
  EXPECT_EQ(0U, addresses->unreadable());
  EXPECT_TRUE(orvel::crl_places(certificate)->empty());
  EXPECT_TRUE(orvel::ocsp_places(certificate)->empty());
  EXPECT_TRUE(orvel::issuer_places(certificate)->empty());
  EXPECT_FALSE(orvel::dns_names(pki::Certificate()));
}

TEST(CppQuestions, CountNamesThatCannotBeRead) {
  Bytes broken = some_certificate;
  const std::string_view name = "a.example";
  *std::search(broken.begin(), broken.end(), name.begin(), name.end()) = 0x80;
  const auto certificate = decode<pki::Certificate>(broken).value();
  const auto names = orvel::dns_names(certificate).value();
  EXPECT_TRUE(names.empty());
  EXPECT_EQ(1U, names.unreadable());
}

TEST(CppQuestions, TellWhatAKeyIsFor) {
  const auto certificate = decode<pki::Certificate>(some_certificate).value();
  EXPECT_EQ(PKI_KEY_CERT_SIGN | PKI_CRL_SIGN, orvel::key_usage_of(certificate).value());
  EXPECT_TRUE(orvel::allows_purpose(certificate, orvel::oid::id_kp_serverAuth).value());
  EXPECT_TRUE(orvel::may_issue(certificate)->allowed);
  EXPECT_EQ(3U, orvel::may_issue(certificate)->path_length);
  EXPECT_FALSE(orvel::key_usage_of(pki::Certificate()));
  EXPECT_FALSE(orvel::allows_purpose(pki::Certificate(), orvel::oid::id_kp_serverAuth));
  EXPECT_FALSE(orvel::may_issue(pki::Certificate()));
}

TEST(CppQuestions, OfACertificateWithoutTheExtensions) {
  auto owned = decode<pki::Certificate>(some_certificate).value();
  auto tbs = orvel::Builder<pki::Certificate_TBS>(orvel::clone(owned->tbsCertificate()).value())
                 .set<&pki::Certificate_TBS::extensions>(orvel::extension(
                     orvel::oid::id_ce_extKeyUsage,
                     orvel::make<pki::ExtKeyUsageSyntax>(orvel::oid::id_kp_clientAuth)))
                 .build();
  const auto certificate = orvel::Builder<pki::Certificate>(std::move(owned))
                               .set<&pki::Certificate::tbsCertificate>(std::move(tbs))
                               .build()
                               .value();
  EXPECT_EQ(std::nullopt, orvel::key_usage_of(certificate).value());
  EXPECT_FALSE(orvel::allows_purpose(certificate, orvel::oid::id_kp_serverAuth).value());
  EXPECT_TRUE(orvel::allows_purpose(certificate, orvel::oid::id_kp_clientAuth).value());
  EXPECT_FALSE(orvel::may_issue(certificate)->allowed);
  EXPECT_TRUE(orvel::subject_key_identifier(certificate).empty());
}

TEST(CppQuestions, FindKeyIdentifiersAndTimes) {
  const auto certificate = decode<pki::Certificate>(some_certificate).value();
  EXPECT_EQ("A3D4C7BDB1CCD16DB435292774D65E720098FAC0",
            orvel::hex(orvel::subject_key_identifier(certificate)));
  EXPECT_TRUE(orvel::authority_key_identifier(certificate).empty());
  const auto first = std::chrono::sys_seconds(1795399790s);
  EXPECT_FALSE(orvel::is_valid_at(certificate, first - 1s));
  EXPECT_TRUE(orvel::is_valid_at(certificate, first));
  const auto last = std::chrono::sys_seconds(4948999790s);
  EXPECT_TRUE(orvel::is_valid_at(certificate, last));
  EXPECT_FALSE(orvel::is_valid_at(certificate, last + 1s));
  EXPECT_FALSE(orvel::is_valid_at(pki::Certificate(), first));
}

// ---------------------------------------------------------------------------------------------
// Revocation lists, messages, responses
// ---------------------------------------------------------------------------------------------

Bytes sequence(const Bytes &content) { return element(0x30, content); }

const Bytes ed25519 = sequence(hex("06 03 2B 65 70"));
const Bytes some_name = sequence(element(0x31, sequence(hex("06 03 55 04 03 0C 01 41"))));
const Bytes reason = sequence(sequence(hex("06 03 55 1D 15 04 03 0A 01 01")));

Bytes crl(const Bytes &entries) {
  const Bytes time = element(23, text("260131120000Z"));
  return sequence(sequence(hex("02 01 01") + ed25519 + some_name + time + time + entries) +
                  ed25519 + hex("03 02 00 01"));
}

TEST(CppCrl, IsReadEntryByEntry) {
  const Bytes list =
      crl(sequence(sequence(hex("02 01 05") + element(23, text("260131120000Z")) + reason) +
                   sequence(hex("02 02 00 80") + element(23, text("260131120001Z")))));
  auto reader = orvel::CrlReader::open(list);
  ASSERT_TRUE(reader) << reader.error();
  EXPECT_EQ("CN=A", to_string(*decode<pki::RDNSequence>(reader->issuer())));
  EXPECT_NE(0U, reader->c().thisUpdate.length);

  const auto first = reader->next().value();
  ASSERT_TRUE(first);
  EXPECT_EQ("05", orvel::hex(first->serialNumber()));
  const std::chrono::sys_seconds noon = std::chrono::sys_days(2026y / 1 / 31) + 12h;
  EXPECT_EQ(noon, first->revocationDate());
  EXPECT_EQ(1, first->reason());
  const auto extensions = decode<pki::Extensions>(first->extensions());
  ASSERT_TRUE(extensions);
  EXPECT_EQ(1U, extensions->size());
  const auto second = reader->next().value();
  ASSERT_TRUE(second);
  EXPECT_EQ("0080", orvel::hex(second->serialNumber()));
  EXPECT_EQ(noon + 1s, second->revocationDate());
  EXPECT_FALSE(second->reason());
  EXPECT_TRUE(second->extensions().empty());
  EXPECT_FALSE(reader->next().value());

  const auto there = decode<pki::CRLNumber>(hex("02 02 00 80"));
  const auto not_there = decode<pki::CRLNumber>(hex("02 01 80"));
  EXPECT_TRUE(reader->find(**there).value());
  EXPECT_FALSE(reader->find(**not_there).value());
  EXPECT_FALSE(reader->find(orvel::Number()));
}

TEST(CppCrl, SaysWhatIsWrong) {
  EXPECT_FALSE(orvel::CrlReader::open(orvel::Octets()));
  const auto certificate = orvel::CrlReader::open(some_certificate);
  ASSERT_FALSE(certificate);
  EXPECT_FALSE(certificate.error().sentence().empty());
  const Bytes broken = crl(sequence(hex("05 00")));
  auto reader = orvel::CrlReader::open(broken);
  ASSERT_TRUE(reader);
  const auto next = reader->next();
  ASSERT_FALSE(next);
  EXPECT_EQ("the octets are no entry of a revocation list", next.error().sentence());
  const auto number = decode<pki::CRLNumber>(hex("02 01 05"));
  EXPECT_FALSE(reader->find(**number));
}

TEST(CppMessages, SignTheirAttributesUnderTheTagOfSetOf) {
  const Bytes attributes = sequence(hex("06 03 2A 03 04 31 02 05 00"));
  const auto signer = [&](const Bytes &signed_attributes) {
    return decode<pki::SignerInfo>(sequence(hex("02 01 03 80 02 AB CD") + ed25519 +
                                            signed_attributes + ed25519 + hex("04 01 01")));
  };
  const auto with = signer(element(0xA0, attributes));
  ASSERT_TRUE(with) << with.error();
  const auto octets = orvel::signed_octets(**with);
  ASSERT_TRUE(octets && *octets);
  EXPECT_EQ(orvel::hex(element(0x31, attributes)), orvel::hex(**octets));
  const auto without = signer({});
  ASSERT_TRUE(without);
  EXPECT_FALSE(*orvel::signed_octets(**without));
  EXPECT_FALSE(*orvel::signed_octets(pki::SignerInfo()));
}

TEST(CppMessages, FindTheBasicResponse) {
  const Bytes time = element(24, text("20260131120000Z"));
  const Bytes basic = sequence(sequence(element(0xA1, some_name) + time + sequence({})) + ed25519 +
                               hex("03 02 00 01"));
  const auto answer = [](const Bytes &type, const Bytes &octets) {
    const auto response = decode<pki::OCSPResponse>(
        sequence(hex("0A 01 00") + element(0xA0, sequence(type + element(4, octets)))));
    return orvel::basic_response(response.value());
  };
  const Bytes id_pkix_ocsp_basic = hex("06 09 2B 06 01 05 05 07 30 01 01");
  const auto good = answer(id_pkix_ocsp_basic, basic);
  ASSERT_TRUE(good) << good.error();
  EXPECT_EQ("2026-01-31 12:00:00 UTC", to_string(good->tbsResponseData().producedAt()));
  EXPECT_FALSE(answer(id_pkix_ocsp_basic, basic + hex("05 00")));
  EXPECT_EQ("responseBytes.responseType", answer(hex("06 02 2A 03"), basic).error().path());
  const auto refused = decode<pki::OCSPResponse>(sequence(hex("0A 01 06")));
  ASSERT_TRUE(refused);
  EXPECT_EQ("offset 0, responseBytes: is missing", orvel::basic_response(**refused).error().text());
}

}  // namespace

}  // namespace show_test
