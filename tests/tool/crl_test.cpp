// The command "crl": what it says of serial numbers and certificates, its summaries, and its status.
#include "records.h"

namespace crl_test {

namespace {

using namespace tool_tests;

Bytes utc(const char *text) { return element(0x17, support::text(text)); }

Bytes extension(const char *identifier, const Bytes &value) {
  return sequence(oid(identifier) + octet_string(value));
}
Bytes reason(const char *code) { return extension("55 1D 15", element(0x0A, hex(code))); }

Bytes entry(const char *serial, const Bytes &extensions = {}, const char *date = "200102030405Z") {
  return sequence(integer(serial) + utc(date) +
                  (extensions.empty() ? extensions : sequence(extensions)));
}

const Bytes number_16 = extension("55 1D 14", hex("02 01 10"));

/// A CRL of version 2, of 2020 to 2030.
Bytes crl(const Bytes &entries, const Bytes &extensions = number_16, const char *issuer = "CA") {
  return sequence(sequence(hex("02 01 01") + hex(ed25519) + common_name(issuer) +
                           utc("200101000000Z") + utc("300101000000Z") + sequence(entries) +
                           (extensions.empty() ? Bytes() : element(0xA0, sequence(extensions)))) +
                  hex(ed25519) + element(0x03, hex("00 01 02 03 05")));
}

/// A certificate of this issuer.
Bytes certificate(const char *serial, const char *issuer) {
  return sequence(sequence(hex("A0 03 02 01 02") + integer(serial) + hex(ed25519) +
                           common_name(issuer) +
                           sequence(utc("200101000000Z") + utc("300101000000Z")) +
                           common_name("leaf") + sequence(hex(ed25519) + hex("03 02 00 01"))) +
                  hex(ed25519) + element(0x03, hex("00 01")));
}

const Bytes entries =
    entry("10 00", reason("01")) + entry("00 F1 A2", {}, "190203040506Z") +
    entry("05", reason("08")) +
    entry("07", extension("55 1D 18", element(0x18, support::text("20200101000000Z"))));

class Crl : public Records {
 protected:
  /// What a question is answered, after the status.
  std::string answer(std::vector<std::string> more, const Bytes &list) const {
    more.insert(more.begin(), "crl");
    const Outcome result = run(std::move(more), characters(list));
    return std::to_string(result.status) + " " + result.out + result.err;
  }
  std::string of_serial(const std::string &serial) const {
    return answer({"--serial", serial}, crl(entries));
  }
};

TEST_F(Crl, SaysWhenAndWhyACertificateIsRevoked) {
  EXPECT_EQ("0 1000: revoked on 2020-01-02 03:04:05 UTC, keyCompromise\n", of_serial("1000"));
  EXPECT_EQ("0 00F1A2: revoked on 2019-02-03 04:05:06 UTC, no reason given\n", of_serial("F1A2"));
  EXPECT_EQ(
      "0 07: revoked on 2020-01-02 03:04:05 UTC, no reason given, not to be trusted from "
      "2020-01-01 00:00:00 UTC on\n",
      of_serial("7"));
  EXPECT_EQ("1 1001: not revoked (dec:1001 would be the decimal number)\n", of_serial("1001"));
  EXPECT_EQ("1 0A: not revoked\n", of_serial("0A"));
}

TEST_F(Crl, ARemovalFromADeltaIsNoRevocation) {
  EXPECT_EQ("1 05: revoked no longer, since 2020-01-02 03:04:05 UTC, removeFromCRL\n",
            of_serial("05"));
}

TEST_F(Crl, ReadsTheFormsOfASerialNumber) {
  for (const char *const form : {"00F1A2", "F1:A2", "0xf1a2", "f1 a2", "0XF1A2", "dec:61858"})
    EXPECT_EQ("0 00F1A2: revoked on 2019-02-03 04:05:06 UTC, no reason given\n", of_serial(form))
        << form;
  EXPECT_EQ("0 FF7F: revoked on 2020-01-02 03:04:05 UTC, no reason given\n",
            answer({"--serial=-81"}, crl(entry("FF 7F"))));
  EXPECT_EQ("0 80: revoked on 2020-01-02 03:04:05 UTC, no reason given\n",
            answer({"--serial=-dec:128"}, crl(entry("80"))));
  EXPECT_EQ("0 00: revoked on 2020-01-02 03:04:05 UTC, no reason given\n",
            answer({"--serial", "0"}, crl(entry("00"))));
}

TEST_F(Crl, AWrongSerialNumberIsWrongUsage) {
  for (const char *const form : {"0x", "12G4", "dec:", "dec:1A", ":", "F1:A", "-"})
    EXPECT_TRUE(
        answer({std::string("--serial=") + form}, crl(entries))
            .starts_with("2 orvelasn1: --serial: expected 0A1B, 0a:1b, 0x0A1B or dec:2587\n"))
        << form;
  EXPECT_EQ(2, run({"crl", "--serial=dec:" + std::string(1001, '1')}).status);
}

TEST_F(Crl, AnswersSeveralQuestionsAtOnce) {
  EXPECT_EQ("0 1000: revoked on 2020-01-02 03:04:05 UTC, keyCompromise\n0A: not revoked\n",
            answer({"--serial", "0A", "--serial", "1000"}, crl(entries)));
}

TEST_F(Crl, AsksForCertificatesOfTheIssuer) {
  const std::string revoked = file("revoked.der", certificate("10 00", "CA"));
  const std::string good_one = file("good.der", certificate("10 02", "CA"));
  const std::string other = file("other.der", certificate("10 00", "Other CA"));
  EXPECT_EQ(
      "0 " + revoked + ": element 1: 1000: revoked on 2020-01-02 03:04:05 UTC, keyCompromise\n",
      answer({"--certificate", revoked}, crl(entries)));
  EXPECT_EQ("1 " + good_one + ": element 1: 1002: not revoked\n",
            answer({"--certificate", good_one}, crl(entries)));
  EXPECT_EQ("2 orvelasn1: " + other +
                ": element 1: - has no CRL of its issuer, commonName=Other CA: ask the CRL that "
                "the certificate names\n",
            answer({"--certificate", other}, crl(entries)));
  EXPECT_EQ("0 standard input: element 2: " + other +
                ": element 1: 1000: revoked on 2020-01-02 03:04:05 UTC, superseded\n",
            answer({"--certificate", other},
                   crl(entries) + crl(entry("10 00", reason("04")), {}, "Other CA")));
}

TEST_F(Crl, AnEntryMayNameTheIssuerOfItAndOfThoseAfterIt) {
  const Bytes name = extension("55 1D 1D", sequence(element(0xA4, common_name("Other CA"))));
  const Bytes list = crl(entry("01") + entry("02", name) + entry("03"));
  const std::string own = file("own.der", certificate("03", "CA"));
  const std::string other = file("other.der", certificate("03", "Other CA"));
  EXPECT_EQ("1 " + own + ": element 1: 03: not revoked\n", answer({"--certificate", own}, list));
  EXPECT_EQ("0 " + other +
                ": element 1: 03: revoked on 2020-01-02 03:04:05 UTC, no reason given, issued by "
                "commonName=Other CA\n",
            answer({"--certificate", other}, list));
  EXPECT_EQ("0 01: revoked on 2020-01-02 03:04:05 UTC, no reason given\n",
            answer({"--serial", "01"}, list));
}

TEST_F(Crl, ADeltaDoesNotSayThatACertificateIsNotRevoked) {
  const Bytes delta = crl(entries, number_16 + extension("55 1D 1B", hex("02 01 0F")));
  EXPECT_EQ(
      "2 0A: not revoked\norvelasn1: standard input: element 1: a delta CRL lists only what has "
      "changed: ask the CRL that it is based on, number 0F\n",
      answer({"--serial", "0A"}, delta));
  EXPECT_EQ("0 1000: revoked on 2020-01-02 03:04:05 UTC, keyCompromise\n",
            answer({"--serial", "0x1000"}, delta));
}

TEST_F(Crl, ExtensionsThatCannotBeReadMayBeThoseOfADelta) {
  EXPECT_EQ(
      "2 0A: not revoked\norvelasn1: standard input: element 1: its extensions cannot be read: "
      "whether it lists all that is revoked is not known\n",
      answer({"--serial", "0A"}, crl(entries, extension("55 1D 1B", hex("05 00")))));
}

TEST_F(Crl, WhatCannotBeReadIsNeitherRevokedNorNot) {
  // The second entry ends at offset 86, where its date should be.
  const Bytes broken = crl(entry("01") + sequence(integer("02")) + entry("03"), {});
  const std::string fault =
      "orvelasn1: standard input: element 1, offset 86: revocationDate: expected one of several "
      "alternatives, but the enclosing element ends\n";
  EXPECT_EQ("2 02: not among the entries that can be read\n" + fault,
            answer({"--serial", "0x2"}, broken));
  EXPECT_EQ("2 03: revoked on 2020-01-02 03:04:05 UTC, no reason given\n" + fault,
            answer({"--serial", "3"}, broken));
  EXPECT_EQ("2 02: not among the entries that can be read\n" + fault,
            answer({"--serial", "0x2"}, crl(entry("01") + sequence(integer("02")), {})));
  const json object = json::parse(run({"crl", "--json", "--serial", "2"}, characters(broken)).out);
  EXPECT_TRUE(object["revoked"].is_null());
}

TEST_F(Crl, AnEntryThatIsMalformedIsRevokedAllTheSame) {
  EXPECT_EQ(
      "2 01: revoked on \"2001020304\\x1B\", no reason given\norvelasn1: standard input: element "
      "1, offset 68: revocationDate.utcTime: a time with other characters\n",
      answer({"--serial", "1"}, crl(entry("01", {}, "2001020304\x1B"), {})));
  EXPECT_EQ(
      "2 01: revoked on \"201302030405Z\", no reason given\norvelasn1: standard input: element 1, "
      "offset 68: the revocation date \"201302030405Z\" is no date\n",
      answer({"--serial", "1"}, crl(entry("01", {}, "201302030405Z"), {})));
  EXPECT_EQ(
      "2 01: revoked on 2020-01-02 03:04:05 UTC, a reason that cannot be read\norvelasn1: standard "
      "input: element 1, offset 61: the reason of the revocation is no CRLReason\n",
      answer({"--serial", "1"}, crl(entry("01", extension("55 1D 15", hex("02 01 01"))), {})));
}

TEST_F(Crl, OtherInputsAreNotAnswered) {
  EXPECT_EQ(
      "2 orvelasn1: standard input: element 1, offset 4: no CRL: tbsCertList.signature: expected "
      "SEQUENCE (30), found [0] (A0)\n",
      answer({"--serial", "1"}, certificate("01", "CA")));
  EXPECT_EQ("2 orvelasn1: /nowhere: No such file or directory\n", answer({"/nowhere"}, {}));
  EXPECT_EQ("2 orvelasn1: /nowhere: No such file or directory\n",
            answer({"--certificate", "/nowhere"}, crl(entries)));
  EXPECT_EQ("2 orvelasn1: standard input: element 1: the input is empty\n",
            answer({"--serial", "1"}, {}));
  const std::string no_certificate = file("list.crl", crl(entries));
  EXPECT_EQ(2, run({"crl", "--certificate", no_certificate}, characters(crl(entries))).status);
}

TEST_F(Crl, AgreesWithWhatOpensslRevokes) {
  file("crlnumber", "1F\n");
  file("index",
       "R\t350101000000Z\t200102030405Z,keyCompromise\t0A1B\tunknown\t/CN=a\n"
       "R\t350101000000Z\t210102030405Z\tF1A2\tunknown\t/CN=b\n"
       "R\t350101000000Z\t220102030405Z,keyTime,20200101000000Z\t2000\tunknown\t/CN=d\n");
  file("config", "[ca]\ndefault_ca=d\n[d]\ndatabase=" + path("index") +
                     "\ncrlnumber=" + path("crlnumber") + "\ndefault_md=sha256\n");
  const std::string ca = file("ca.pem", make_certificate(ec_key, {"-subj", "/CN=CA"}));
  const std::string list =
      file("ca.crl", openssl({"ca", "-config", path("config"), "-gencrl", "-crldays", "30", "-cert",
                              ca, "-keyfile", path("key.pem")}));
  const Outcome several = run({"crl", list, "--serial", "0A1B", "--serial", "F1A2", "--serial",
                               "2000", "--serial", "00B1", "--certificate", ca});
  EXPECT_EQ(0, several.status) << several.err;
  EXPECT_EQ(
      "0A1B: revoked on 2020-01-02 03:04:05 UTC, keyCompromise\n"
      "2000: revoked on 2022-01-02 03:04:05 UTC, keyCompromise, not to be trusted from 2020-01-01 "
      "00:00:00 UTC on\n"
      "00F1A2: revoked on 2021-01-02 03:04:05 UTC, no reason given\n"
      "00B1: not revoked\n",
      several.out.substr(0, several.out.find(ca)));
  EXPECT_TRUE(several.out.ends_with(": not revoked\n")) << several.out;
  EXPECT_EQ(1, run({"crl", list, "--certificate", ca}).status);
}

TEST_F(Crl, RubbishIsSkipped) {
  const Outcome result = run({"crl"}, std::string(1000, '\0'));
  EXPECT_EQ(2, result.status);
  EXPECT_EQ("", result.out);
  EXPECT_LE(std::ranges::count(result.err, '\n'), 17) << result.err;
}

// ---- The summary --------------------------------------------------------------------------------

TEST_F(Crl, SumsUpAList) {
  EXPECT_EQ(R"(CertificateRevocationList  standard input: element 1
  issuer           commonName=CA
  thisUpdate       2020-01-01 00:00:00 UTC
  nextUpdate       2030-01-01 00:00:00 UTC, 31 days left
  crlNumber        10
  baseCrlNumber    0F, a delta CRL
  entries          4
  firstRevocation  2019-02-03 04:05:06 UTC
  lastRevocation   2020-01-02 03:04:05 UTC
  reasons          2 no reason given
                   1 keyCompromise
                   1 removeFromCRL

)",
            good({"crl", "--at", "2029-12-01"},
                 crl(entries, number_16 + extension("55 1D 1B", hex("02 01 0F")))));
  EXPECT_EQ(R"(CertificateRevocationList  standard input: element 1
  issuer      commonName=CA
  thisUpdate  2020-01-01 00:00:00 UTC
  nextUpdate  2030-01-01 00:00:00 UTC, EXPIRED 1 day ago
  entries     0

)",
            good({"crl", "--at", "2030-01-02"}, crl({}, {})));
}

TEST_F(Crl, TheSummaryAsJson) {
  EXPECT_EQ(json::parse(R"({
    "file": "standard input", "element": 1, "issuer": "commonName=CA",
    "thisUpdate": "2020-01-01T00:00:00Z", "nextUpdate": "2030-01-01T00:00:00Z",
    "crlNumber": "10", "entries": 4,
    "reasons": {"none": 2, "keyCompromise": 1, "removeFromCRL": 1},
    "firstRevocation": "2019-02-03T04:05:06Z", "lastRevocation": "2020-01-02T03:04:05Z"})"),
            json::parse(good({"crl", "--json"}, crl(entries))));
}

TEST_F(Crl, AnAnswerAsJson) {
  const std::string leaf = file("leaf.der", certificate("07", "CA"));
  EXPECT_EQ(json::parse(R"({"file": "standard input", "element": 1, "serialNumber": "07",
                            "certificate": ")" +
                        leaf + R"(: element 1", "revoked": true,
                            "revocationDate": "2020-01-02T03:04:05Z", "reason": null,
                            "invalidityDate": "2020-01-01T00:00:00Z"})"),
            json::parse(good({"crl", "--json", "--certificate", leaf}, crl(entries))));
  const Outcome missing = run({"crl", "--json", "--serial", "0A"}, characters(crl(entries)));
  EXPECT_EQ(1, missing.status);
  EXPECT_EQ(json::parse(R"({"file": "standard input", "element": 1, "serialNumber": "0A",
                            "revoked": false})"),
            json::parse(missing.out));
}

TEST_F(Crl, SaysWhatIsMalformedOutsideTheEntries) {
  // Past the version, the algorithm and a name of 15 octets stands thisUpdate, at offset 29.
  const Bytes broken =
      sequence(sequence(hex("02 01 01") + hex(ed25519) + common_name("CA") + utc("201301000000Z") +
                        element(0xA0, sequence(extension("55 1D 14", hex("05 00"))))) +
               hex(ed25519) + element(0x03, hex("00 01")));
  const Outcome result = run({"crl"}, characters(broken));
  EXPECT_EQ(2, result.status);
  EXPECT_EQ(
      "orvelasn1: standard input: element 1, offset 29: thisUpdate: \"201301000000Z\" is no date\n"
      "orvelasn1: standard input: element 1, offset 46: crlExtensions: the value of cRLNumber is "
      "no "
      "INTEGER\n",
      result.err);
  const Bytes no_name = sequence(sequence(hex("02 01 01") + hex(ed25519) +
                                          sequence(hex("31 02 05 00")) + utc("200101000000Z")) +
                                 hex(ed25519) + element(0x03, hex("00 01")));
  const Outcome unnamed = run({"crl"}, characters(no_name));
  EXPECT_EQ(2, unnamed.status);
  EXPECT_TRUE(unnamed.err.starts_with("orvelasn1: standard input: element 1, offset 18: issuer"))
      << unnamed.err;
}

TEST_F(Crl, SaysWhereTheEntriesAreMalformed) {
  Bytes many;
  for (int i = 0; i < 20; ++i) many = many + sequence(integer("02"));
  const Outcome result = run({"crl"}, characters(crl(many + entry("01"), {})));
  EXPECT_EQ(2, result.status);
  EXPECT_TRUE(result.out.find("entries          1\n") != std::string::npos) << result.out;
  EXPECT_EQ(9, std::ranges::count(result.err, '\n')) << result.err;
  EXPECT_TRUE(result.err.ends_with("element 1: further faults of its entries are not reported\n"))
      << result.err;
}

}  // namespace

}  // namespace crl_test
