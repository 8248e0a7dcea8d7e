// The command "diff": what it says of two elements, how the elements of lists are matched, and its
// status.
#include "records.h"

namespace diff_test {

namespace {

using namespace tool_tests;

Bytes utc(const char *text) { return element(0x17, support::text(text)); }

Bytes extension(const char *identifier, const Bytes &value, bool critical = false) {
  return sequence(oid(identifier) + (critical ? hex("01 01 FF") : Bytes()) + octet_string(value));
}

constexpr const char *alt_name = "55 1D 11";
constexpr const char *constraints = "55 1D 13";

Bytes dns(const char *name) { return element(0x82, support::text(name)); }

/// What a certificate is made of, so that tests may change a part.
struct Parts {
  Bytes serial = integer("01");
  Bytes algorithm = hex(ed25519);
  Bytes issuer = common_name("CA");
  const char *until = "300101000000Z";
  Bytes key = hex("00 01 02 03");
  Bytes extensions = extension(alt_name, sequence(dns("a.example") + dns("b.example"))) +
                     extension(constraints, sequence(hex("01 01 FF")));
  Bytes signature = hex("00 01 02 03 04");
};

Bytes certificate(const Parts &parts) {
  const Bytes extensions =
      parts.extensions.empty() ? Bytes() : element(0xA3, sequence(parts.extensions));
  return sequence(sequence(hex("A0 03 02 01 02") + parts.serial + parts.algorithm + parts.issuer +
                           sequence(utc("200101000000Z") + utc(parts.until)) + common_name("leaf") +
                           sequence(hex(ed25519) + element(0x03, parts.key)) + extensions) +
                  parts.algorithm + element(0x03, parts.signature));
}

Bytes entry(const char *serial, const char *reason = "01") {
  return sequence(integer(serial) + utc("200102030405Z") +
                  sequence(extension("55 1D 15", element(0x0A, hex(reason)))));
}

Bytes crl(const Bytes &entries) {
  return sequence(sequence(hex("02 01 01") + hex(ed25519) + common_name("CA") +
                           utc("200101000000Z") + utc("300101000000Z") +
                           (entries.empty() ? Bytes() : sequence(entries))) +
                  hex(ed25519) + element(0x03, hex("00 01")));
}

class Diff : public Records {
 protected:
  /// What is said of two inputs, after the status and without the names of the files.
  std::string between(const Bytes &a, const Bytes &b,
                      const std::vector<std::string> &more = {}) const {
    std::vector<std::string> words{"diff", file("a", a), file("b", b)};
    words.insert(words.end(), more.begin(), more.end());
    const Outcome result = run(words);
    EXPECT_EQ("", result.err);
    const std::string heading =
        "--- " + path("a") + ": element 1\n+++ " + path("b") + ": element 1\n";
    std::string out = result.out;
    if (out.starts_with(heading)) out.erase(0, heading.size());
    return std::to_string(result.status) + "\n" + out;
  }

  /// The JSON of the differences.
  std::vector<json> objects(const Bytes &a, const Bytes &b) const {
    const Outcome result = run({"diff", "--json", file("a", a), file("b", b)});
    std::vector<json> lines;
    std::istringstream text(result.out);
    for (std::string line; std::getline(text, line);) lines.push_back(json::parse(line));
    return lines;
  }
};

TEST_F(Diff, NothingIsSaidOfWhatIsAlike) {
  EXPECT_EQ("0\n", between(certificate({}), certificate({})));
  const std::string der = file("der", certificate({}));
  const Outcome pem = run({"diff", der, "-"}, to_pem(certificate({})));
  EXPECT_EQ(0, pem.status);
  EXPECT_EQ("", pem.out + pem.err);
  // Not even where nothing can be read of it.
  EXPECT_EQ("0\n", between(sequence(hex("30 03 02 01 01")), sequence(hex("30 03 02 01 01"))));
}

TEST_F(Diff, EachDifferenceStandsUnderItsPath) {
  Parts other;
  other.serial = integer("02");
  other.until = "310101000000Z";
  other.issuer = common_name("Other CA");
  EXPECT_EQ(R"(1
--- A: element 1
+++ B: element 1
tbsCertificate.serialNumber
- 01
+ 02
tbsCertificate.issuer
- commonName=CA
+ commonName=Other CA
tbsCertificate.validity.notAfter
- 2030-01-01 00:00:00 UTC
+ 2031-01-01 00:00:00 UTC
)",
            [&] {
              const Outcome result =
                  run({"diff", file("a", certificate({})), file("b", certificate(other))});
              std::string out = std::to_string(result.status) + "\n" + result.out;
              out.replace(out.find(path("a")), path("a").size(), "A");
              return out.replace(out.find(path("b")), path("b").size(), "B");
            }());
}

TEST_F(Diff, AnAlgorithmIsOneValue) {
  Parts other;
  other.algorithm = hex("30 0D 06 09 2A 86 48 86 F7 0D 01 01 0B 05 00");
  EXPECT_EQ(R"(1
tbsCertificate.signature
- Ed25519
+ sha256WithRSAEncryption
signatureAlgorithm
- Ed25519
+ sha256WithRSAEncryption
)",
            between(certificate({}), certificate(other)));
}

TEST_F(Diff, LongOctetsAreOneLine) {
  Parts one;
  Parts other;
  one.signature = Bytes(100);
  other.signature = Bytes(101);
  other.signature[40] = 1;
  EXPECT_EQ("1\nsignatureValue\n  99 and 100 octets, different from octet 40 on\n",
            between(certificate(one), certificate(other)));
  other.signature = hex("00 01 02 03 05");
  EXPECT_EQ("1\nsignatureValue\n- 01020304\n+ 01020305\n",
            between(certificate({}), certificate(other)));
}

TEST_F(Diff, ExtensionsAreMatchedByTheirIdentifiers) {
  Parts other;
  other.extensions = extension(constraints, sequence({}), true) +
                     extension("55 1D 0F", hex("03 02 07 80")) +
                     extension(alt_name, sequence(dns("b.example") + dns("c.example")));
  EXPECT_EQ(R"(1
tbsCertificate.extensions[subjectAltName]
- DNS a.example
+ DNS c.example
tbsCertificate.extensions[basicConstraints]
- CA
+ not a CA
tbsCertificate.extensions[basicConstraints].critical
- FALSE
+ TRUE
tbsCertificate.extensions[keyUsage]
+ digitalSignature
tbsCertificate.extensions
  the elements stand in another order
)",
            between(certificate({}), certificate(other)));
}

TEST_F(Diff, AnotherOrderIsADifference) {
  Parts other;
  other.extensions = extension(constraints, sequence(hex("01 01 FF"))) +
                     extension(alt_name, sequence(dns("a.example") + dns("b.example")));
  EXPECT_EQ("1\ntbsCertificate.extensions\n  the elements stand in another order\n",
            between(certificate({}), certificate(other)));
}

TEST_F(Diff, TwoExtensionsOfOneKindAreMatchedInTheirOrder) {
  Parts one;
  Parts other;
  const auto name = [](const char *text) { return extension(alt_name, sequence(dns(text))); };
  one.extensions = name("a") + name("b");
  other.extensions = name("a") + name("c") + name("d");
  EXPECT_EQ(R"(1
tbsCertificate.extensions[subjectAltName]
- DNS b
+ DNS c
+ DNS d
)",
            between(certificate(one), certificate(other)));
}

TEST_F(Diff, WhatOnlyOneHasIsShownWhole) {
  Parts other;
  other.extensions = {};
  EXPECT_EQ(R"(1
tbsCertificate.extensions
- subjectAltName    DNS a.example
-                   DNS b.example
- basicConstraints  CA
)",
            between(certificate({}), certificate(other)));
}

TEST_F(Diff, AnExtensionThatIsNotReadIsComparedByItsOctets) {
  Parts one;
  Parts other;
  one.extensions = extension("2A 03 04", hex("01 02"));
  other.extensions = extension("2A 03 04", hex("01 03"), true);
  EXPECT_EQ(
      "1\ntbsCertificate.extensions[1.2.3.4].critical\n- FALSE\n+ TRUE\n"
      "tbsCertificate.extensions[1.2.3.4].extnValue\n- 0102\n+ 0103\n",
      between(certificate(one), certificate(other)));
}

TEST_F(Diff, ANameWithOtherTagsReadsTheSame) {
  Parts other;
  other.issuer = common_name("CA", 0x13);
  EXPECT_EQ(
      "1\ntbsCertificate.issuer\n  commonName=CA\n  reads the same, and is encoded otherwise\n",
      between(certificate({}), certificate(other)));
}

TEST_F(Diff, OctetsThatAreNotShownMakeADifferenceToo) {
  // A FALSE that need not be there.
  Parts other;
  other.extensions = sequence(oid(alt_name) + hex("01 01 00") +
                              octet_string(sequence(dns("a.example") + dns("b.example")))) +
                     extension(constraints, sequence(hex("01 01 FF")));
  const size_t size = certificate({}).size();
  EXPECT_EQ("1\n(encoding)\n  " + std::to_string(size) + " and " + std::to_string(size + 3) +
                " octets, different from offset 2 on, in nothing that is shown\n",
            between(certificate({}), certificate(other)));
  EXPECT_EQ(json::parse(R"([{"element": 1, "path": "", "difference": "encoding", "offset": 2}])"),
            json(objects(certificate({}), certificate(other))));
}

TEST_F(Diff, EntriesAreMatchedByTheirSerialNumbers) {
  const Bytes one = crl(entry("01") + entry("02") + entry("03"));
  const Bytes other = crl(entry("02", "04") + entry("03") + entry("04"));
  EXPECT_EQ(R"(1
tbsCertList.revokedCertificates[01]
- 2020-01-02 03:04:05 UTC
- cRLReason keyCompromise
tbsCertList.revokedCertificates[02].crlEntryExtensions[cRLReason]
- keyCompromise
+ superseded
tbsCertList.revokedCertificates[04]
+ 2020-01-02 03:04:05 UTC
+ cRLReason keyCompromise
)",
            between(one, other));
}

TEST_F(Diff, AListThatOnlyOneHasIsCut) {
  Bytes entries;
  for (int i = 0; i < 100; ++i) entries = entries + entry("01");
  const std::string said = between(crl(entries), crl({}));
  EXPECT_TRUE(said.starts_with("1\ntbsCertList.revokedCertificates\n- 01   2020-01-02")) << said;
  EXPECT_TRUE(said.ends_with("- ...  and 84 more\n")) << said;
}

TEST_F(Diff, RecordsWithoutAnIdentityAreComparedByTheirPlace) {
  const auto point = [](const char *uri) {
    return sequence(element(0xA0, element(0xA0, element(0x86, support::text(uri)))));
  };
  const auto points = [&](const Bytes &list) {
    Parts parts;
    parts.extensions = extension("55 1D 1F", sequence(list));
    return certificate(parts);
  };
  EXPECT_EQ(R"(1
tbsCertificate.extensions[cRLDistributionPoints][1].fullName
- URI b
+ URI x
)",
            between(points(point("a") + point("b") + point("c")),
                    points(point("a") + point("x") + point("c"))));
  EXPECT_EQ(R"(1
tbsCertificate.extensions[cRLDistributionPoints][1]
- URI b
)",
            between(points(point("a") + point("b") + point("c")), points(point("a") + point("c"))));
}

TEST_F(Diff, OtherTypesAreSaid) {
  EXPECT_EQ("1\n(type)\n- certificate\n+ crl\n", between(certificate({}), crl({})));
}

TEST_F(Diff, ElementsAreComparedPairByPair) {
  Parts other;
  other.serial = integer("02");
  const Outcome result = run({"diff", file("a", certificate({}) + certificate({})),
                              file("b", certificate({}) + certificate(other) + certificate({}))});
  EXPECT_EQ(1, result.status);
  EXPECT_EQ(
      "--- " + path("a") + ": element 2\n+++ " + path("b") +
          ": element 2\ntbsCertificate.serialNumber\n- 01\n+ 02\n(only in the second file)\n+ " +
          path("b") + ": element 3, " + std::to_string(certificate({}).size()) + " octets\n",
      result.out);
}

TEST_F(Diff, RubbishIsSkipped) {
  const std::string zeros = file("zeros", std::string(3000, '\0'));
  const std::string others =
      file("others", std::string(1500, '\0') + "\x05" + std::string(1499, '\0'));
  const Outcome both = run({"diff", zeros, others});
  EXPECT_EQ(2, both.status);
  EXPECT_LE(std::ranges::count(both.err, '\n'), 33) << both.err;
  Bytes many;
  for (int i = 0; i < 20; ++i) many = many + certificate({});
  const Outcome alone = run({"diff", file("a", certificate({})), file("b", many)});
  EXPECT_EQ(1, alone.status);
  EXPECT_EQ(2 * 17, std::ranges::count(alone.out, '\n')) << alone.out;
  EXPECT_TRUE(alone.out.ends_with("(only in one file)\n+ and 3 more elements\n")) << alone.out;
}

TEST_F(Diff, AsJson) {
  Parts other;
  other.serial = integer("02");
  other.extensions = extension(alt_name, sequence(dns("b.example")));
  EXPECT_EQ(json::parse(R"([
    {"element": 1, "path": "tbsCertificate.serialNumber", "difference": "value", "a": "01",
     "b": "02"},
    {"element": 1, "path": "tbsCertificate.extensions[subjectAltName]", "difference": "onlyA",
     "a": {"kind": 2, "kindName": "DNS", "value": "a.example"}},
    {"element": 1, "path": "tbsCertificate.extensions[basicConstraints]", "difference": "onlyA",
     "a": {"extnID": "2.5.29.19", "extnIDName": "basicConstraints", "critical": false,
           "extnValue": "30030101FF", "decoded": {"cA": true}}}])"),
            json(objects(certificate({}), certificate(other))));
  EXPECT_EQ(json::parse(R"([{"element": 1, "path": "", "difference": "type", "a": "certificate",
                             "b": "crl"}])"),
            json(objects(certificate({}), crl({}))));
}

TEST_F(Diff, WhatCannotBeReadIsNotCompared) {
  const Bytes broken = sequence(sequence(hex("02 01 01")) + hex(ed25519) + hex("03 01 00"));
  const Outcome result = run({"diff", file("a", certificate({})), file("b", broken)});
  EXPECT_EQ(2, result.status);
  EXPECT_EQ("", result.out);
  EXPECT_TRUE(result.err.starts_with("orvelasn1: " + path("b") + ": element 1")) << result.err;
  EXPECT_EQ(2, run({"diff", path("a"), "/nowhere"}).status);
  EXPECT_EQ(2, run({"diff", path("a")}).status);
  EXPECT_EQ(2, run({"diff", path("a"), file("empty", "")}).status);
}

TEST_F(Diff, HostileOctetsAreEscaped) {
  Parts other;
  other.issuer = common_name("\x1B[2J");
  const std::string said = between(certificate({}), certificate(other));
  EXPECT_EQ("1\ntbsCertificate.issuer\n- commonName=CA\n+ commonName=\\x1B[2J\n", said);
}

TEST_F(Diff, LongListsInAnotherOrderTakeLinearTime) {
  Bytes forward;
  Bytes backward;
  for (int i = 0; i < 20000; ++i) {
    const auto serial = [](int number) {
      return sequence(
          element(0x02, {0x01, static_cast<uint8_t>(number >> 8), static_cast<uint8_t>(number)}) +
          utc("200102030405Z"));
    };
    const Bytes one = serial(i);
    const Bytes other = serial(19999 - i);
    forward.insert(forward.end(), one.begin(), one.end());
    backward.insert(backward.end(), other.begin(), other.end());
  }
  EXPECT_EQ("1\ntbsCertList.revokedCertificates\n  the elements stand in another order\n",
            between(crl(forward), crl(backward)));
}

}  // namespace

}  // namespace diff_test
