// The command-line tool, run as its users run it: whole outputs, messages and exit statuses. Inputs
// are made by hand, or at test time by the openssl command-line tool, which is also the judge of
// what a certificate says.
#include "schema.h"

namespace tool_test {

namespace {

using namespace tool_tests;

// ---- Hand-made certificates ---------------------------------------------------------------------

/// What a certificate is made of; by default a sound one. It bears no signature that anyone could
/// verify.
struct Parts {
  Bytes version = hex("A0 03 02 01 02");
  Bytes serial = hex("02 09 12 34 56 78 9A BC DE F0 11");
  Bytes issuer = common_name("Example CA");
  Bytes not_before = element(0x17, support::text("200101000000Z"));
  Bytes not_after = element(0x17, support::text("300101000000Z"));
  Bytes subject = common_name("www.example.org");
  Bytes extensions;
  Bytes signature = hex(ed25519);  ///< the algorithm outside of the signed part
};

Bytes certificate(const Parts &parts) {
  const Bytes key = sequence(hex(ed25519) + element(0x03, Bytes(33, 0x00)));
  const Bytes extensions =
      parts.extensions.empty() ? Bytes() : element(0xA3, sequence(parts.extensions));
  return sequence(sequence(parts.version + parts.serial + hex(ed25519) + parts.issuer +
                           sequence(parts.not_before + parts.not_after) + parts.subject + key +
                           extensions) +
                  parts.signature + element(0x03, hex("00 01 02 03 04")));
}

Bytes certificate_for(const Bytes &subject) {
  Parts parts;
  parts.subject = subject;
  return certificate(parts);
}

Bytes certificate_with(const Bytes &extensions) {
  Parts parts;
  parts.extensions = extensions;
  return certificate(parts);
}

/// A name for whose text there is no room in liborvelasn1: decoding it as the type "name" ends the
/// process.
Bytes ending_name() { return common_name("x", 0x84); }

/// The short form of the certificate as of 2029-12-01, when it stands in this element.
std::string short_form(const std::string &name = "standard input    ") {
  return name + "  31 days left           www.example.org\n    Ed25519, by Example CA\n";
}

// ---- show ---------------------------------------------------------------------------------------

using ToolShow = Tool;

TEST_F(ToolShow, PrintsAPage) {
  const Bytes extensions = sequence(hex("06 03 55 1D 0F 01 01 FF 04 04 03 02 05 A0")) +
                           sequence(hex("06 03 55 1D 0E 04 06 04 04 0A 0B 0C 0D")) +
                           sequence(hex("06 03 55 1D 13 01 01 FF 04 08 30 06 01 01 FF 02 01 00")) +
                           sequence(hex("06 03 55 1D 14 04 04 02 02 10 00")) +
                           sequence(hex("06 03 55 1D 11 04 06 30 04 82 02 61 62"));
  const std::string path = file("c.der", certificate_with(extensions));
  const Outcome result = run({"show", "--at", "2029-12-01", path});
  EXPECT_EQ(0, result.status);
  EXPECT_EQ("", result.err);
  EXPECT_EQ("Certificate  " + path +
                ": element 1\n"
                "  version                     3\n"
                "  serialNumber                123456789ABCDEF011\n"
                "  key                         Ed25519\n"
                "  signature                   Ed25519\n"
                "Subject\n"
                "  commonName                  www.example.org\n"
                "Issuer\n"
                "  commonName                  Example CA\n"
                "Validity (UTC)\n"
                "  notBefore                   2020-01-01 00:00:00\n"
                "  notAfter                    2030-01-01 00:00:00, 31 days left\n"
                "Extensions\n"
                "  keyUsage, critical          digitalSignature, keyEncipherment\n"
                "  subjectKeyIdentifier        0A0B0C0D\n"
                "  basicConstraints, critical  CA, path length 0\n"
                "  cRLNumber                   4096\n"
                "  subjectAltName              DNS ab\n",
            result.out.substr(0, result.out.find("Public key\n")));  // digests follow
}

TEST_F(ToolShow, ReadsTheValuesOfExtensions) {
  struct Row {
    const char *identifier;  ///< the arc after 2.5.29
    const char *value;
    std::vector<const char *> lines;
  };
  const std::vector<Row> rows{
      {"11", "30 04 81 02 61 40", {"email a@"}},
      {"11", "30 04 86 02 78 3A", {"URI x:"}},
      {"11", "30 06 87 04 C0 00 02 01", {"IP 192.0.2.1"}},
      {"11", "30 12 87 10 20 01 0D B8 00 00 00 00 00 00 00 00 00 00 00 01", {"IP 2001:db8::1"}},
      {"11", "30 05 87 03 01 02 03", {"IP 010203"}},
      {"11", "30 05 88 03 55 04 03", {"identifier commonName"}},
      {"11", "30 0B A0 09 06 03 2A 03 04 A0 02 05 00", {"other name 1.2.3.4, 0500"}},
      {"11",
       "30 11 A4 0F 30 0D 31 0B 30 09 06 03 55 04 06 13 02 44 45",
       {"directory countryName=DE"}},
      {"12", "30 08 82 02 61 62 82 02 63 1B", {"DNS ab", "DNS c\\x1B"}},
      {"23", "30 08 80 02 0A 0B 82 02 10 00", {"0A0B", "serial 1000"}},
      {"23", "30 06 A1 04 82 02 61 62", {"issuer DNS ab"}},
      {"1F", "30 0A 30 08 A0 06 A0 04 86 02 78 3A", {"URI x:"}},
      {"1F",
       "30 0E 30 0C A0 06 A0 04 86 02 78 3A 81 02 06 40",
       {"URI x:", "  only for keyCompromise"}},
      {"20", "30 08 30 06 06 04 55 1D 20 00", {"anyPolicy"}},
      {"20",
       "30 18 30 16 06 04 55 1D 20 00 30 0E 30 0C 06 08 2B 06 01 05 05 07 02 01 16 00",
       {"anyPolicy", "  CPS "}},
      // What cannot be read stands between what can.
      {"11",
       "30 0E 82 02 61 62 A4 04 30 02 01 00 82 02 63 64",
       {"malformed: offset 10: [1].directoryName[0]: expected SET (31), found BOOLEAN (01)",
        "DNS ab", "DNS cd"}},
      {"11", "30 04 A3 02 05 00", {"X.400 A3020500"}},
      {"1F", "30 08 30 06 A2 04 82 02 61 62", {"  issued by DNS ab"}},
  };
  for (const Row &row : rows) {
    const Bytes extension =
        sequence(hex(std::string("06 03 55 1D ") + row.identifier) + element(0x04, hex(row.value)));
    const Outcome result = run({"show"}, characters(certificate_with(extension)));
    EXPECT_EQ(0, result.status) << result.err;
    for (const char *line : row.lines) {
      EXPECT_NE(std::string::npos, result.out.find(std::string(" ") + line + "\n"))
          << row.identifier << ": " << row.value << "\n"
          << result.out;
    }
  }
}

// An AuthorityKeyIdentifier whose [1] promises more than there is.
TEST_F(ToolShow, MarksAListWhoseHeaderIsRefused) {
  const Bytes extension = sequence(hex("06 03 55 1D 23 04 04 30 02 A1 7F"));
  const Outcome result = run({"show"}, characters(certificate_with(extension)));
  EXPECT_EQ(0, result.status);
  EXPECT_EQ("", result.err);
  EXPECT_NE(
      std::string::npos,
      result.out.find("malformed: offset 2: authorityCertIssuer: the header A1 7F promises 127 "
                      "octets, but only 0 are left\n"))
      << result.out;
}

TEST_F(ToolShow, ShowsAnEmptySubject) {
  const std::string input = characters(certificate_for(sequence({})));
  const Outcome result = run({"show"}, input);
  EXPECT_EQ(0, result.status);
  EXPECT_EQ("", result.err);
  EXPECT_NE(std::string::npos, result.out.find("Subject\n  (empty)\n")) << result.out;
  const json tbs = json::parse(run({"show", "--json"}, input).out)["tbsCertificate"];
  EXPECT_EQ(json::array(), tbs["subjectSequence"]);
  EXPECT_EQ("", tbs["subject"]);
}

TEST_F(ToolShow, HasTheWholeTextOfAnIdentifierOfAnySize) {
  // 2.25.329800735698586629295641978511506172918: the number of a UUID has 128 bits.
  const std::string text = "2.25.329800735698586629295641978511506172918";
  const std::string pem = make_certificate(ec_key, {"-addext", "certificatePolicies=" + text});
  EXPECT_NE(std::string::npos, run({"show"}, pem).out.find("  " + text + "\n"));
  EXPECT_NE(std::string::npos,
            run({"show", "--json"}, pem).out.find("\"policyIdentifier\":\"" + text + "\""));
}

TEST_F(ToolShow, MarksMalformedPolicyConstraints) {
  // The tags are explicit ones, where RFC 5280 has implicit ones.
  const Bytes extension = sequence(hex("06 03 55 1D 24 04 07 30 05 A0 03 02 01 02"));
  const std::string input = characters(certificate_with(extension));
  EXPECT_NE(std::string::npos,
            run({"show"}, input)
                .out.find("requireExplicitPolicy  malformed: offset 2: requireExplicitPolicy: "
                          "expected [0] (80), found [0] (A0)\n"));
  const json object =
      json::parse(run({"show", "--json"}, input).out)["tbsCertificate"]["extensions"][0];
  EXPECT_EQ("A003020102", object["decoded"]["requireExplicitPolicy"]["octets"]);
}

TEST_F(ToolShow, MarksAPolicyThatIsNone) {
  // Two policies, and between them one without an identifier.
  const Bytes extension = sequence(
      hex("06 03 55 1D 20 04 14 30 12 30 05 06 03 2A 03 04 30 02 05 00 30 05 06 03 2A 03 05"));
  const Outcome result = run({"show"}, characters(certificate_with(extension)));
  for (const char *const line :
       {"  1.2.3.4\n", "  1.2.3.5\n",
        "malformed: offset 11: [1].policyIdentifier: expected OBJECT IDENTIFIER (06), found NULL "
        "(05)\n"})
    EXPECT_NE(std::string::npos, result.out.find(line)) << result.out;
}

TEST_F(ToolShow, TellsWhichDirectoryNameCannotBeRead) {
  // In each of them is the name 30 02 01 00, a BOOLEAN where a SET must be.
  const std::array<std::tuple<const char *, const char *, const char *>, 6> rows{{
      {"06 03 55 1D 11", "30 06 A4 04 30 02 01 00", "6: [0].directoryName[0]"},
      {"06 03 55 1D 23", "30 0E 80 01 01 A1 06 A4 04 30 02 01 00 82 01 05",
       "11: authorityCertIssuer[0].directoryName[0]"},
      {"06 03 55 1D 1F", "30 0A 30 08 A2 06 A4 04 30 02 01 00",
       "10: [0].cRLIssuer[0].directoryName[0]"},
      {"06 03 55 1D 1F", "30 0C 30 0A A0 08 A0 06 A4 04 30 02 01 00",
       "12: [0].distributionPoint.fullName[0].directoryName[0]"},
      {"06 03 55 1D 1E", "30 0A A0 08 30 06 A4 04 30 02 01 00",
       "10: permittedSubtrees[0].base.directoryName[0]"},
      {"06 08 2B 06 01 05 05 07 01 01",
       "30 12 30 10 06 08 2B 06 01 05 05 07 30 01 A4 04 30 02 01 00",
       "18: [0].accessLocation.directoryName[0]"},
  }};
  for (const auto &[identifier, value, place] : rows) {
    const Bytes extension = sequence(hex(identifier) + element(0x04, hex(value)));
    const std::string input = characters(certificate_with(extension));
    const std::string why =
        "offset " + std::string(place) + ": expected SET (31), found BOOLEAN (01)";
    const json object =
        json::parse(run({"show", "--json"}, input).out)["tbsCertificate"]["extensions"][0];
    EXPECT_EQ(why, object.value("malformed", "")) << value;
    const std::string page = run({"show"}, input).out;
    EXPECT_NE(std::string::npos, page.find("malformed: " + why + "\n")) << page;
    EXPECT_EQ(std::string::npos, page.find("expected the end")) << page;
  }
}

TEST_F(ToolShow, KnowsTheNamesOfCurrentAlgorithms) {
  const std::array<std::pair<const char *, const char *>, 4> rows{{
      {"2.16.840.1.101.3.4.3.18", "ML-DSA-65"},
      {"2.16.840.1.101.3.4.4.2", "ML-KEM-768"},
      {"2.16.840.1.101.3.4.3.20", "SLH-DSA-SHA2-128s"},
      {"1.2.840.113549.1.1.5", "sha1WithRSAEncryption"},
  }};
  for (const auto &[dotted, name] : rows)
    EXPECT_NE(std::string::npos, run({"oid", name}).out.find(dotted)) << name;
}

TEST_F(ToolShow, ReadsWhereAnIssuerIsFound) {
  // 1.3.6.1.5.5.7.1.1 with 1.3.6.1.5.5.7.48.1 and the URI "x:".
  const Bytes extension = sequence(hex(
      "06 08 2B 06 01 05 05 07 01 01 04 12 30 10 30 0E 06 08 2B 06 01 05 05 07 30 01 86 02 78 3A"));
  const Outcome result = run({"show"}, characters(certificate_with(extension)));
  EXPECT_NE(std::string::npos, result.out.find("  authorityInfoAccess  ocsp, URI x:\n"))
      << result.out;
}

TEST_F(ToolShow, PrintsTwoLines) {
  const Outcome result =
      run({"show", "--short", "--at", "2029-12-01"}, characters(certificate(Parts{})));
  EXPECT_EQ(0, result.status);
  EXPECT_EQ("", result.err);
  EXPECT_EQ(short_form(), result.out);
}

TEST_F(ToolShow, TellsHowValidityStands) {
  const std::string path = file("c.der", certificate(Parts{}));
  const std::array<std::pair<const char *, const char *>, 8> rows{{
      {"2030-01-18", "EXPIRED 17 days ago"},
      {"2030-01-02T00:00:00Z", "EXPIRED 1 day ago"},
      {"2030-01-01T05:00:00Z", "EXPIRED 5 hours ago"},
      {"2030-01-01T00:00:01Z", "EXPIRED under a minute ago"},
      {"2030-01-01T00:00:00Z", "under a minute left"},
      {"2029-12-31T23:58:00Z", "2 minutes left"},
      {"2020-01-01T00:00:00Z", "3653 days left"},
      {"2019-12-30T12:00:00Z", "NOT VALID for another 1 day"},
  }};
  for (const auto &[moment, text] : rows) {
    const Outcome result = run({"show", "--short", "--at", moment, path});
    EXPECT_NE(std::string::npos, result.out.find(std::string("  ") + text + "  "))
        << moment << result.out;
  }
}

TEST_F(ToolShow, DoesNotDependOnTheZoneOrTheLocale) {
  const Outcome result =
      run({"show", "--short", "--at", "2029-12-01"}, characters(certificate(Parts{})),
          {"TZ=Pacific/Kiritimati", "LC_ALL=tr_TR.ISO-8859-9"});
  EXPECT_EQ(short_form(), result.out);
}

TEST_F(ToolShow, ReadsTimesWithOffsetsAndRefusesDatesThatAreNone) {
  const std::array<std::tuple<uint8_t, const char *, const char *>, 10> rows{{
      {0x17, "491231235959Z", "2049-12-31 23:59:59"},
      {0x17, "500101000000Z", "1950-01-01 00:00:00"},
      {0x17, "2501011200Z", "2025-01-01 12:00:00"},
      {0x17, "250101120000+0130", "2025-01-01 10:30:00"},
      {0x18, "99991231235959Z", "9999-12-31 23:59:59"},
      {0x17, "250631120000Z", "\"250631120000Z\""},
      {0x18, "205609082238Z", "2056-09-08 22:38:00"},
      {0x18, "20250101120000.5Z", "2025-01-01 12:00:00"},
      {0x18, "20250101120000,25+0100", "2025-01-01 11:00:00"},
      {0x18, "20250101120000.Z", "\"20250101120000.Z\""},
  }};
  for (const auto &[tag, text, shown] : rows) {
    Parts parts;
    parts.not_after = element(tag, support::text(text));
    const std::string input = characters(certificate(parts));
    const Outcome result = run({"show"}, input);
    EXPECT_NE(std::string::npos, result.out.find(std::string("  ") + shown + ", "))
        << text << result.out;
    // One moment wherever it stands.
    const json object = json::parse(run({"show", "--json"}, input).out);
    EXPECT_EQ(object["notAfter"],
              object["tbsCertificate"]["validity"]["notAfter"].value("time", json(nullptr)))
        << text;
  }
}

TEST_F(ToolShow, ConvertsStringsFromTheStructureOfTheName) {
  const std::array<std::tuple<uint8_t, const char *, const char *>, 9> rows{{
      {0x0C, "5A 6F C3 AB", "Zo\u00EB"},                     // UTF8String
      {0x14, "5A 6F EB", "Zo\u00EB"},                        // TeletexString
      {0x1E, "00 5A 20 AC", "Z\u20AC"},                      // BMPString
      {0x1E, "D8 3D DE 00 00 21", "\U0001F600!"},            // surrogates
      {0x1E, "00 41 D8 00 42", "A\\xD8\\x00\\x42"},          // half of a pair, an odd octet
      {0x1C, "00 01 F6 00", "\U0001F600"},                   // UniversalString
      {0x13, "41 E9", "A\\xE9"},                             // PrintableString
      {0x0C, "61 2C 62 2B 63 5C", "a,b+c\\\\"},              // separators
      {0x04, "01 02", "commonName=OCTET STRING (04) 0102"},  // no string at all
  }};
  for (const auto &[tag, octets, shown] : rows) {
    const Bytes subject = name(hex("06 03 55 04 03"), tag, hex(octets));
    const Outcome result = run({"show", "--short"}, characters(certificate_for(subject)));
    EXPECT_EQ(0, result.status);
    EXPECT_NE(std::string::npos, result.out.find("  " + std::string(shown) + "\n"))
        << octets << "\n"
        << result.out;
  }
}

TEST_F(ToolShow, NeverPrintsWhatATerminalObeys) {
  const std::array<std::pair<const char *, const char *>, 9> rows{{
      {"1B 5B 33 31 6D", "\\x1B[31m"},  // an escape sequence
      {"61 0A 62 0D 00 62", "a\\x0Ab\\x0D\\x00b"},
      {"7F", "\\x7F"},
      {"C2 9B", "\\u{9B}"},             // the one-character form of the escape
      {"E2 80 AE 61", "\\u{202E}a"},    // right to left
      {"E2 80 8B", "\\u{200B}"},        // no width
      {"C0 9B", "\\xC0\\x9B"},          // two octets for one
      {"ED A0 80", "\\xED\\xA0\\x80"},  // half of a surrogate pair
      {"F4 90 80 80", "\\xF4\\x90\\x80\\x80"},
  }};
  for (const auto &[octets, shown] : rows) {
    const Bytes subject = name(hex("06 03 55 04 03"), 0x0C, hex(octets));
    for (const bool brief : {true, false}) {
      const Outcome result =
          run({"show", brief ? "--short" : "--full"}, characters(certificate_for(subject)));
      EXPECT_NE(std::string::npos, result.out.find(std::string(shown) + "\n")) << octets;
      EXPECT_TRUE(std::ranges::none_of(
          result.out, [](char c) { return static_cast<unsigned char>(c) < 0x20 && c != '\n'; }));
    }
  }
}

TEST_F(ToolShow, EscapesFileNamesToo) {
  const Outcome result = run({"show", path("\x1B[31m")});
  EXPECT_EQ(1, result.status);
  EXPECT_EQ("orvelasn1: " + path("\\x1B[31m") + ": No such file or directory\n", result.err);
}

TEST_F(ToolShow, ShowsSharedRelativeNamesTogether) {
  const Bytes subject = sequence(
      element(0x31, sequence(hex("06 03 55 04 0B") + element(0x0C, support::text("a"))) +
                        sequence(hex("06 03 2A 03 04") + element(0x13, support::text("b")))) +
      element(0x31, sequence(hex("06 03 55 04 0A") + element(0x0C, support::text("c")))));
  const std::string input = characters(certificate_for(subject));
  EXPECT_NE(std::string::npos,
            run({"show", "--short"}, input)
                .out.find("  organizationalUnitName=a + 1.2.3.4=b, organizationName=c\n"));
  EXPECT_NE(std::string::npos, run({"show"}, input)
                                   .out.find("  organizationalUnitName  a\n"
                                             "  + 1.2.3.4               b\n"
                                             "  organizationName        c\n"));
}

TEST_F(ToolShow, PutsDottedIdentifiersBesideNames) {
  const Bytes purposes = sequence(hex("06 03 55 1D 25 04 0C 30 0A 06 08 2B 06 01 05 05 07 03 01"));
  const Outcome result = run({"show", "--oids"}, characters(certificate_with(purposes)));
  EXPECT_NE(std::string::npos, result.out.find("  commonName (2.5.4.3)     www.example.org\n"));
  EXPECT_NE(std::string::npos, result.out.find("Ed25519 (1.3.101.112)\n"));
  EXPECT_NE(std::string::npos,
            result.out.find("  extKeyUsage (2.5.29.37)  serverAuth (1.3.6.1.5.5.7.3.1)\n"));
}

TEST_F(ToolShow, WritesIdentifiersAboveTheArcTwoAsTheyAreMeant) {
  const Bytes subject = name(hex("06 03 88 37 01"), 0x0C, support::text("x"));
  EXPECT_NE(
      std::string::npos,
      run({"show", "--short"}, characters(certificate_for(subject))).out.find("  2.999.1=x\n"));
}

TEST_F(ToolShow, CutsLongValuesUnlessAskedForAll) {
  const Bytes value(100, 0xAB);
  const std::string input =
      characters(certificate_with(sequence(hex("06 03 2A 03 04") + element(0x04, value))));
  const std::string cut = run({"show"}, input).out;
  EXPECT_NE(std::string::npos, cut.find("... and 36 more octets\n"));
  EXPECT_EQ(std::string::npos, cut.find("signatureValue"));
  const std::string full = run({"show", "--full"}, input).out;
  EXPECT_EQ(std::string::npos, full.find("more octets"));
  EXPECT_NE(std::string::npos, full.find("  signatureValue    01020304\n"));
}

TEST_F(ToolShow, SaysWhatIsMalformedInAnExtension) {
  const Bytes usage = sequence(hex("06 03 55 1D 0F 04 02 05 00"));
  EXPECT_NE(std::string::npos,
            run({"show"}, characters(certificate_with(usage)))
                .out.find("malformed: offset 0: expected BIT STRING (03), found NULL (05)\n"));
}

TEST_F(ToolShow, ColoursOnlyWhereWanted) {
  const std::string input = characters(certificate(Parts{}));
  EXPECT_EQ(std::string::npos, run({"show"}, input).out.find('\x1B'));
  EXPECT_EQ(std::string::npos, run({"show", "--color", "never"}, input).out.find('\x1B'));
  const std::string expired =
      run({"show", "--short", "--color=always", "--at=2031-01-01"}, input, {"NO_COLOR=1"}).out;
  EXPECT_NE(std::string::npos, expired.find("\x1B[2mEd25519, by Example CA\x1B[0m\n"));
  EXPECT_NE(std::string::npos, expired.find("\x1B[1;31mEXPIRED 365 days ago\x1B[0m  "));
}

TEST_F(ToolShow, DescribesKeys) {
  const std::array<std::tuple<std::vector<std::string>, const char *, const char *>, 3> rows{{
      {{"rsa:1024"}, "RSA, 1024 bits, exponent 65537", "RSA 1024 bits"},
      {ec_key, "EC, secp256r1, 256 bits", "EC secp256r1"},
      {{"ed25519"}, "Ed25519", "Ed25519"},
  }};
  for (const auto &[key, text, brief] : rows) {
    const std::string pem = make_certificate(key);
    EXPECT_NE(std::string::npos, run({"show"}, pem).out.find("  " + std::string(text) + "\n"));
    EXPECT_NE(
        std::string::npos,
        run({"show", "--short"}, pem).out.find("    CA, " + std::string(brief) + ", by itself\n"));
  }
}

TEST_F(ToolShow, PrintsTheParametersOfASignature) {
  const std::string pem = make_certificate(
      {"rsa:2048"},
      {"-sha256", "-sigopt", "rsa_padding_mode:pss", "-sigopt", "rsa_pss_saltlen:32"});
  EXPECT_NE(std::string::npos,
            run({"show"}, pem).out.find("rsassa-pss, sha256, mgf1, sha256, salt 32\n"))
      << run({"show"}, pem).out;
}

TEST_F(ToolShow, PrintsBothAlgorithmsWhereTheyDiffer) {
  Parts parts;
  parts.signature = sequence(hex("06 08 2A 86 48 CE 3D 04 03 02"));
  EXPECT_NE(std::string::npos, run({"show"}, characters(certificate(parts)))
                                   .out.find("  signature       ecdsa-with-SHA256\n"
                                             "                  but Ed25519 in the signed part\n"));
}

TEST_F(ToolShow, PrintsNegativeSerialNumbersAsTheyAre) {
  Parts parts;
  parts.serial = hex("02 02 FF 7F");
  EXPECT_NE(std::string::npos,
            run({"show"}, characters(certificate(parts))).out.find("  serialNumber    -0081\n"));
}

// ---- JSON ---------------------------------------------------------------------------------------

using ToolJson = Tool;

std::string schema_violation(const std::string &line) {
  return Schema("certificate.schema.json").violation(json::parse(line));
}

/// A line "NAME=VALUE" that openssl prints, without the name and the newline.
std::string value_of(const std::string &line) {
  const size_t start = line.find('=') + 1;
  return line.substr(start, line.find('\n') - start);
}

TEST_F(ToolJson, SaysWhatThePeerSays) {
  const std::string pem =
      make_certificate({"rsa:1024"}, {"-addext", "keyUsage=critical,digitalSignature,keyCertSign",
                                      "-addext", "extendedKeyUsage=serverAuth,1.2.3.4"});
  const std::string start =
      value_of(openssl({"x509", "-noout", "-startdate", "-dateopt", "iso_8601"}, pem));
  const Outcome result = run({"show", "--json", "--at", start}, pem);
  ASSERT_EQ(0, result.status) << result.err;
  EXPECT_EQ(1, std::ranges::count(result.out, '\n'));
  const json object = json::parse(result.out);
  const json &tbs = object["tbsCertificate"];
  const auto peer = [&](const std::string &what) { return openssl({"x509", "-noout", what}, pem); };

  EXPECT_EQ("certificate", object["type"]);
  EXPECT_EQ("standard input", object["file"]);
  EXPECT_EQ(1, object["element"]);
  EXPECT_EQ(pem, object["pem"]);
  EXPECT_EQ(2, tbs["version"]);
  EXPECT_EQ(value_of(peer("-serial")), tbs["serialNumber"]);
  EXPECT_EQ("sha256WithRSAEncryption", object["signatureAlgorithm"]["algorithmName"]);
  EXPECT_EQ("1.2.840.113549.1.1.11", tbs["signature"]["algorithm"]);
  EXPECT_EQ("0500", tbs["signature"]["parameters"]);

  EXPECT_EQ(json::parse(R"([[{"type": "2.5.4.6", "typeName": "countryName", "valueTag": 19,
                              "value": "DE"}],
                            [{"type": "2.5.4.10", "typeName": "organizationName", "valueTag": 12,
                              "value": "Example, Ltd."}],
                            [{"type": "2.5.4.3", "typeName": "commonName", "valueTag": 12,
                              "value": "www.example.org"}]])"),
            tbs["subjectSequence"]);
  EXPECT_EQ("/c(19)=DE/o(12)=Example/, Ltd./cn(12)=www.example.org", tbs["issuer"]);
  EXPECT_EQ(tbs["issuerEncoded"], tbs["subjectEncoded"]);

  const std::string iso = openssl({"x509", "-noout", "-enddate", "-dateopt", "iso_8601"}, pem);
  std::string moment = tbs["validity"]["notAfter"]["time"];
  moment[10] = ' ';
  EXPECT_EQ(value_of(iso), moment);
  EXPECT_EQ("valid", tbs["validity"]["state"]);
  EXPECT_EQ(400, tbs["validity"]["daysLeft"]);

  const json &key = tbs["subjectPublicKeyInfo"];
  EXPECT_EQ("RSA", key["keyKind"]);
  EXPECT_EQ(1024, key["keyBits"]);
  EXPECT_EQ("65537", key["keyExponent"]);
  const std::string modulus = value_of(peer("-modulus"));
  EXPECT_NE(std::string::npos, key["subjectPublicKey"]["data"].get<std::string>().find(modulus));
  EXPECT_EQ(1024, object["signatureValue"]["length"]);

  std::map<std::string, json> extensions;
  for (const json &extension : tbs["extensions"]) extensions[extension["extnIDName"]] = extension;
  EXPECT_EQ(json({"digitalSignature", "keyCertSign"}), extensions["keyUsage"]["decoded"]);
  EXPECT_EQ(true, extensions["keyUsage"]["critical"]);
  EXPECT_EQ(false, extensions["extKeyUsage"]["critical"]);
  EXPECT_EQ(json::parse(R"([{"keyPurposeId": "1.3.6.1.5.5.7.3.1", "keyPurposeIdName": "serverAuth"},
                            {"keyPurposeId": "1.2.3.4"}])"),
            extensions["extKeyUsage"]["decoded"]);
  EXPECT_EQ(json({{"cA", true}}), extensions["basicConstraints"]["decoded"]);
  EXPECT_EQ("", schema_violation(result.out));
}

TEST_F(ToolJson, HasNamesInUtf8WhateverTheirStrings) {
  // A BMPString, whose first octet is NUL.
  const Bytes subject = name(hex("06 03 55 04 03"), 0x1E, hex("00 5A 20 AC"));
  const Outcome result = run({"show", "--json"}, characters(certificate_for(subject)));
  EXPECT_EQ("/cn(30)=Z\u20AC", json::parse(result.out)["tbsCertificate"]["subject"]);
}

TEST_F(ToolJson, GivesBackTheElementItself) {
  const std::string pem = make_certificate(ec_key);
  const json object = json::parse(run({"show", "--json"}, to_der(pem)).out);
  EXPECT_EQ(pem, object["pem"]);
  EXPECT_EQ(to_der(pem), to_der(object["pem"]));
}

TEST_F(ToolJson, NamesTheCurve) {
  const Outcome result = run({"show", "--json"}, make_certificate(ec_key));
  const json key = json::parse(result.out)["tbsCertificate"]["subjectPublicKeyInfo"];
  EXPECT_EQ("EC", key["keyKind"]);
  EXPECT_EQ("secp256r1", key["keyCurve"]);
  EXPECT_EQ(256, key["keyBits"]);
  EXPECT_EQ("", schema_violation(result.out));
}

TEST_F(ToolJson, HasNothingThatTheSchemaDoesNotDescribe) {
  const auto extension = [](const char *oid, const char *value) {
    return sequence(element(0x06, hex(oid)) + element(0x04, hex(value)));
  };
  Parts parts;
  parts.serial = hex("02 01 80");
  parts.subject = name(hex("06 03 2A 03 04"), 0x14, hex("E9"));
  parts.not_before = element(0x18, support::text("never"));
  parts.extensions =
      extension("55 1D 0F", "03 02 05 A0") + extension("55 1D 0E", "04 02 0A 0B") +
      extension("55 1D 25", "30 05 06 03 2A 03 04") + extension("55 1D 13", "30 03 02 01 05") +
      extension("55 1D 24", "30 06 80 01 02 81 01 03") + extension("55 1D 14", "02 01 07") +
      extension("55 1D 14", "02 05 01 02 03 04 05") + extension("55 1D 15", "0A 01 01") +
      extension("55 1D 10", "30 11 80 0F 32 30 32 30 30 31 30 31 30 30 30 30 30 30 5A") +
      extension("55 1D 18", "18 0F 32 30 32 30 30 31 30 31 30 30 30 30 30 30 5A") +
      extension("2B 06 01 05 05 07 30 01 05", "05 00") +
      extension("60 86 48 01 86 F8 42 01 01", "03 02 06 40") +
      extension("60 86 48 01 86 F8 42 01 0D", "16 02 68 69") + extension("2A 03 04", "FF");
  const Outcome result = run({"show", "--json"}, characters(certificate(parts)));
  ASSERT_EQ(0, result.status) << result.err;
  EXPECT_EQ("", schema_violation(result.out));
  const json tbs = json::parse(result.out)["tbsCertificate"];
  EXPECT_EQ("-80", tbs["serialNumber"]);
  EXPECT_EQ("unknown", tbs["validity"]["state"]);
  std::vector<json> decoded;
  for (const json &one : tbs["extensions"]) decoded.push_back(one.value("decoded", json()));
  EXPECT_EQ(json::parse(R"([["digitalSignature", "keyEncipherment"], "0A0B",
                            [{"keyPurposeId": "1.2.3.4"}], {"cA": false, "pathLenConstraint": 5},
                            {"requireExplicitPolicy": 2, "inhibitPolicyMapping": 3}, "07",
                            "0102030405", "keyCompromise",
                            {"notBefore": {"kind": 24, "value": "20200101000000Z",
                                           "time": "2020-01-01T00:00:00Z"}},
                            {"kind": 24, "value": "20200101000000Z",
                             "time": "2020-01-01T00:00:00Z"},
                            true, ["sslServer"], "hi", null])"),
            json(decoded));
}

TEST_F(ToolJson, HasTheNamesAndPlacesInExtensions) {
  const auto extension = [](const char *oid, const char *value) {
    return sequence(element(0x06, hex(oid)) + element(0x04, hex(value)));
  };
  Parts parts;
  parts.extensions =
      extension("55 1D 11",
                "30 28 82 02 61 62 87 04 C0 00 02 01 88 02 2A 03 "
                "A0 07 06 01 2A A0 02 05 00 A4 0F 30 0D 31 0B 30 09 06 03 55 04 06 13 02 44 45") +
      extension("55 1D 23", "30 0E 80 02 0A 0B A1 04 82 02 61 62 82 02 10 00") +
      extension("55 1D 1F", "30 0E 30 0C A0 06 A0 04 86 02 78 3A 81 02 06 40") +
      extension("55 1D 20", "30 08 30 06 06 04 55 1D 20 00") +
      extension("2B 06 01 05 05 07 01 01", "30 10 30 0E 06 08 2B 06 01 05 05 07 30 01 86 02 78 3A");
  const Outcome result = run({"show", "--json"}, characters(certificate(parts)));
  ASSERT_EQ(0, result.status) << result.err;
  EXPECT_EQ("", schema_violation(result.out));
  const json tbs = json::parse(result.out)["tbsCertificate"];
  std::vector<json> decoded;
  for (const json &one : tbs["extensions"]) decoded.push_back(one.value("decoded", json()));
  EXPECT_EQ(json::parse(R"([
    [{"kind": 2, "kindName": "DNS", "value": "ab"},
     {"kind": 7, "kindName": "IP", "value": "192.0.2.1"},
     {"kind": 8, "kindName": "identifier", "value": "1.2.3"},
     {"kind": 0, "kindName": "other name", "type": "1.2", "value": "0500"},
     {"kind": 4, "kindName": "directory", "value": "/c(19)=DE"}],
    {"keyIdentifier": "0A0B",
     "authorityCertIssuer": [{"kind": 2, "kindName": "DNS", "value": "ab"}],
     "authorityCertSerialNumber": "1000"},
    [{"fullName": [{"kind": 6, "kindName": "URI", "value": "x:"}],
      "reasons": ["keyCompromise"]}],
    [{"policyIdentifier": "2.5.29.32.0", "policyIdentifierName": "anyPolicy"}],
    [{"accessMethod": "1.3.6.1.5.5.7.48.1", "accessMethodName": "ocsp",
      "accessLocation": {"kind": 6, "kindName": "URI", "value": "x:"}}]])"),
            json(decoded));
}

TEST_F(ToolJson, TheSchemaRefusesWhatItDoesNotDescribe) {
  json object = json::parse(run({"show", "--json"}, characters(certificate(Parts{}))).out);
  EXPECT_EQ("", schema_violation(object.dump()));
  json extra = object;
  extra["tbsCertificate"]["validity"]["more"] = 1;
  EXPECT_EQ("$.tbsCertificate.validity.more is not described", schema_violation(extra.dump()));
  json missing = object;
  missing.erase("signatureValue");
  EXPECT_EQ("$ lacks signatureValue", schema_violation(missing.dump()));
}

TEST_F(ToolJson, IsValidUtf8WhateverTheNameHolds) {
  const Bytes latin = name(hex("06 03 55 04 03"), 0x0C, hex("5A 6F EB 0A"));
  const json object = json::parse(run({"show", "--json"}, characters(certificate_for(latin))).out);
  const json &attribute = object["tbsCertificate"]["subjectSequence"][0][0];
  EXPECT_EQ("Zo\uFFFD\n", attribute["value"]);
  EXPECT_EQ("5A6FEB0A", attribute["valueOctets"]);
  EXPECT_EQ("/cn(12)=Zo\uFFFD\n", object["tbsCertificate"]["subject"]);
}

// ---- Inputs -------------------------------------------------------------------------------------

using ToolInput = Tool;

/// The lines of `recode`, which are one an element.
std::string same(const std::string &where, size_t octets) {
  return where + ": same, " + std::to_string(octets) + " octets\n";
}

TEST_F(ToolInput, TakesSeveralDerElements) {
  const Bytes one = certificate(Parts{});
  const std::string path = file("two.der", one + one);
  EXPECT_EQ(same(path + ": element 1", one.size()) + same(path + ": element 2", one.size()),
            run({"recode", path}).out);
}

TEST_F(ToolInput, TakesPemBundlesWithTextAroundAndWindowsLineEnds) {
  const Bytes one = certificate(Parts{});
  const std::string pem = to_pem(one);
  const std::string bundle = "0 s:CN = first\n" + pem + "\nsecond:\n" + pem + "the end";
  const auto line_of = [&](size_t position) {
    return std::to_string(
        1 + std::count(bundle.begin(), bundle.begin() + static_cast<ptrdiff_t>(position), '\n'));
  };
  const std::string expected =
      same("standard input: element 1 (line " + line_of(bundle.find("-----BEGIN")) + ")",
           one.size()) +
      same("standard input: element 2 (line " + line_of(bundle.rfind("-----BEGIN")) + ")",
           one.size());
  EXPECT_EQ(expected, run({"recode"}, bundle).out);
  std::string windows;
  for (const char c : bundle) windows += c == '\n' ? std::string("\r\n") : std::string(1, c);
  EXPECT_EQ(expected, run({"recode", "-"}, windows).out);
}

TEST_F(ToolInput, TakesADerStringThatLooksLikePemForWhatItIs) {
  const Bytes value = element(0x16, support::text("\n-----BEGIN CERTIFICATE-----\n"));
  const Bytes one =
      certificate_with(sequence(hex("06 09 60 86 48 01 86 F8 42 01 0D") + element(0x04, value)));
  EXPECT_EQ(same("standard input: element 1", one.size()), run({"recode"}, characters(one)).out);
}

TEST_F(ToolInput, SkipsHeadersOfTheOlderForm) {
  const Bytes one = certificate(Parts{});
  std::string pem = to_pem(one);
  pem.insert(pem.find('\n') + 1, "Content-Domain: RFC822\nX-Note: none\n\n");
  EXPECT_EQ(same("standard input: element 1 (line 1)", one.size()), run({"recode"}, pem).out);
}

/// One input that is bad, the message after "orvelasn1: standard input: ", and what is shown of
/// the elements beside it.
struct BadInput {
  std::string input;
  std::string message;
  std::string out = "";
};

class ToolBadInput : public Tool {
 protected:
  void check(const BadInput &bad) const {
    const Outcome result = run({"show", "--short", "--at", "2029-12-01"}, bad.input);
    EXPECT_EQ(1, result.status);
    EXPECT_EQ("orvelasn1: standard input: element " + bad.message + "\n", result.err);
    EXPECT_EQ(bad.out, result.out);
  }
};

TEST_F(ToolBadInput, Empty) { check({"", "1: the input is empty"}); }

TEST_F(ToolBadInput, NeitherPemNorDer) {
  check({"Dear Sir,\n",
         "1: it is a text without a BEGIN line (PEM) and without DER in base64, which is what this "
         "tool looks for in a text"});
}

TEST_F(ToolBadInput, TruncatedDer) {
  Bytes octets = certificate(Parts{});
  octets.resize(100);
  check({characters(octets),
         "1, offset 0: the header 30 81 A7 promises 167 octets, but only 97 are left"});
}

TEST_F(ToolBadInput, SecondElementTruncated) {
  const Bytes one = certificate(Parts{});
  check({characters(one + hex("30 05 00")),
         "2, offset " + std::to_string(one.size()) +
             ": the header 30 05 promises 5 octets, but only 1 is left",
         short_form()});
}

TEST_F(ToolBadInput, GarbageBehindTheElement) {
  const Bytes one = certificate(Parts{});
  check({characters(one + hex("0A 00 00")),
         "1, offset " + std::to_string(one.size()) +
             ": 3 octets after it are not DER: skipped (0A 00 00)",
         short_form()});
}

TEST_F(ToolBadInput, LengthOfNineOctets) {
  check({characters(hex("30 89 01 00 00 00 00 00 00 00 00")),
         "1, offset 0: a length of 9 octets, which no input has"});
}

TEST_F(ToolBadInput, NoEndOfContents) {
  check({characters(hex("30 80 02 01 00")),
         "1, offset 0: an indefinite length without its end-of-contents"});
}

TEST_F(ToolBadInput, OtherPemLabel) {
  const std::string other = "-----BEGIN SOMETHING-----\nMAA=\n-----END SOMETHING-----\n";
  check(
      {other + to_pem(certificate(Parts{})),
       "1 (line 1): a PEM block of SOMETHING, a label that no type has: \"orvelasn1 types\" lists "
       "them, and --type NAME takes it for one of them",
       short_form("standard input #2 ")});
}

TEST_F(ToolBadInput, NoEndLine) {
  check({"-----BEGIN CERTIFICATE-----\nMAA=\n" + to_pem(certificate(Parts{})),
         "1 (line 1): the PEM block has no END line; it may have been cut short",
         short_form("standard input #2 ")});
}

TEST_F(ToolBadInput, NotBase64) {
  check({"text\n-----BEGIN CERTIFICATE-----\nMA\nA*\n-----END CERTIFICATE-----\n",
         "1 (line 2): line 4: \"*\" is not a base64 character"});
}

TEST_F(ToolBadInput, Base64EndsInsideAGroup) {
  check({"-----BEGIN CERTIFICATE-----\nMAAA\nMA\n-----END CERTIFICATE-----\n",
         "1 (line 1): the base64 text ends inside a group of four; it may have been cut short"});
}

TEST_F(ToolBadInput, OtherEndLabel) {
  check({"-----BEGIN CERTIFICATE-----\nMAA=\n-----END X-----\n",
         "1 (line 1): the PEM block begins as CERTIFICATE and ends as X"});
}

TEST_F(ToolBadInput, WrongType) {
  Parts parts;
  parts.serial = hex("04 01 05");
  check(
      {characters(certificate(parts)),
       "1, offset 11: as certificate: tbsCertificate.serialNumber: expected INTEGER (02), found "
       "OCTET STRING (04); as ocsp-request: tbsRequest.requestList: expected SEQUENCE (30), found "
       "OCTET STRING (04); as basic-ocsp-response: tbsResponseData.responderID: expected one of "
       "[1] (A1), [2] (A2), found OCTET STRING (04)"});
}

TEST_F(ToolBadInput, BrokenInside) {
  Parts parts;
  parts.issuer = hex("30 04 31 7F 30 00");
  check({characters(certificate(parts)),
         "1, offset 31: tbsCertificate.issuer[0]: the header 31 7F promises 127 octets, but only 2 "
         "are left"});
}

TEST_F(ToolBadInput, OctetsAfterTheSignature) {
  Bytes octets = certificate(Parts{});
  const size_t offset = octets.size();
  octets = sequence(Bytes(octets.begin() + 3, octets.end()) + hex("05 00"));
  check({characters(octets),
         "1, offset " + std::to_string(offset) + ": found NULL (05), where the value ends"});
}

TEST_F(ToolBadInput, ElementThatEndsTheProcess) {
  const Bytes one = common_name("a");
  const Outcome result = run({"show", "--short", "--type", "name"},
                             characters(one + ending_name() + one + ending_name()));
  EXPECT_EQ(1, result.status);
  EXPECT_EQ(
      "standard input      Name                   commonName=a\n"
      "standard input #3   Name                   commonName=a\n",
      result.out);
  EXPECT_TRUE(matches(result.err,
                      "^orvelasn1: standard input: element 2: the library ended its process: "
                      "asn1_x501: [^\n]+\n"
                      "orvelasn1: standard input: element 4: the library ended its process: "
                      "asn1_x501: [^\n]+\n$"))
      << result.err;
}

TEST_F(ToolInput, GoesOnWithTheOtherFiles) {
  const std::string good = file("good.der", certificate(Parts{}));
  const std::string bad = file("bad.der", hex("30 00"));
  const Outcome result =
      run({"show", "--short", "--at", "2029-12-01", path("none"), bad, good, path("")});
  EXPECT_EQ(1, result.status);
  EXPECT_EQ(short_form(good), result.out);
  EXPECT_EQ(
      "orvelasn1: " + path("none") + ": No such file or directory\norvelasn1: " + bad +
          ": element 1: it has the structure of no type that is recognised without a PEM label: "
          "\"orvelasn1 types\" lists them, and --type NAME takes it for one of them\n"
          "orvelasn1: " +
          path("") + ": Is a directory; name the files in it\n",
      result.err);
}

TEST_F(ToolInput, TakesThousandsOfElementsOfWhichManyEndTheirProcess) {
  const std::string good = characters(common_name("a"));
  const std::string ending = characters(ending_name());
  std::string input;
  for (int i = 0; i < 3000; ++i) input += i % 100 == 50 ? ending : good;
  const Outcome result = run({"recode", "--type", "name"}, input);
  EXPECT_EQ(1, result.status);
  EXPECT_EQ(2970, std::ranges::count(result.out, '\n'));
  EXPECT_EQ(30, std::ranges::count(result.err, '\n'));
}

TEST_F(ToolInput, EndsQuietlyWhenItsReaderGoes) {
  std::string input;
  const std::string one = characters(certificate(Parts{}));
  for (int i = 0; i < 2000; ++i) input += one;
  const std::string path = file("many.der", input);
  const Outcome result = run_program(
      {"sh", "-c", std::string("'") + ORVELASN1_TOOL_PATH + "' show '" + path + "' | head -n 1"},
      "", {});
  EXPECT_EQ("Certificate  " + path + ": element 1\n", result.out);
  EXPECT_EQ("", result.err);
}

TEST_F(ToolInput, SaysThatItsOutputCannotBeWritten) {
  const std::string input = file("c.der", certificate(Parts{}));
  const Outcome result = run_program(
      {"sh", "-c", std::string("'") + ORVELASN1_TOOL_PATH + "' show '" + input + "' >/dev/full"},
      "", {});
  EXPECT_EQ(3, result.status);
  EXPECT_EQ("orvelasn1: standard output: No space left on device\n", result.err);
}

// ---- trace --------------------------------------------------------------------------------------

using ToolTrace = Tool;

TEST_F(ToolTrace, PrintsTheTraceOfTheLibrary) {
  const std::string input = characters(certificate(Parts{}));
  const Outcome result = run({"trace"}, input);
  EXPECT_EQ(0, result.status);
  EXPECT_EQ("", result.err);
  std::istringstream lines(result.out);
  std::string line;
  std::vector<std::string> messages;
  while (std::getline(lines, line)) messages.push_back(line.substr(line.find("ASN.1: ")));
  ASSERT_LT(10U, messages.size());
  EXPECT_TRUE(messages.front().starts_with("ASN.1: SEQUENCE"));
  EXPECT_EQ("ASN.1: }", messages.back());
}

TEST_F(ToolTrace, GoesAsFarAsTheDecoderDoes) {
  const std::string good = characters(certificate(Parts{}));
  for (const std::string &input :
       {good.substr(0, 60), characters(certificate_for(hex("30 02 05 00"))),
        characters(certificate_for(hex("30 04 31 02 30 00")))}) {
    const Outcome result = run({"trace"}, input);
    EXPECT_EQ(1, result.status);
    EXPECT_NE("", result.err);
    EXPECT_NE(std::string::npos, result.out.find("ASN.1: SEQUENCE"));
  }
}

// ---- recode -------------------------------------------------------------------------------------

using ToolRecode = Tool;

/// An extension that says FALSE where DER says nothing: the field encoders leave it out.
Bytes certificate_with_false() {
  return certificate_with(sequence(hex("06 03 2A 03 04 01 01 00 04 01 07")));
}

TEST_F(ToolRecode, GivesBackEveryOctetFromWhatWasKept) {
  const std::string path = file("c.der", certificate_with_false());
  const Outcome result = run({"recode", path});
  EXPECT_EQ(0, result.status);
  EXPECT_EQ(same(path + ": element 1", certificate_with_false().size()), result.out);
}

TEST_F(ToolRecode, EncodesTheFieldsWhenFresh) {
  const std::string pem = make_certificate({"rsa:1024"});
  const Outcome result = run({"recode", "--fresh"}, pem);
  EXPECT_EQ(0, result.status) << result.out;
  EXPECT_EQ(same("standard input: element 1 (line 1)", to_der(pem).size()), result.out);
}

TEST_F(ToolRecode, ShowsWhereTheOctetsDiffer) {
  // FALSE takes 3 octets, so that the lengths at the start, 184 and 167, become 181 and 164.
  const Outcome result = run({"recode", "--fresh"}, characters(certificate_with_false()));
  EXPECT_EQ(1, result.status);
  EXPECT_EQ("", result.err);
  EXPECT_EQ(
      "standard input: element 1: different from offset 2, 187 octets in, 184 out\n"
      "  in   B8 30 81 A7 A0 03 02 01 02 02 09 12 34 56 78 9A\n"
      "  out  B5 30 81 A4 A0 03 02 01 02 02 09 12 34 56 78 9A\n",
      result.out);
}

TEST_F(ToolRecode, WritesTheEncodings) {
  const std::string pem = make_certificate(ec_key);
  const std::string out = path("out.der");
  EXPECT_EQ(0, run({"recode", "-o", out}, pem + pem).status);
  EXPECT_EQ(to_der(pem) + to_der(pem), read_file(out));
}

TEST_F(ToolRecode, KeepsWhatItWroteWhenAnElementEndsTheProcess) {
  const Bytes one = common_name("a");
  const std::string out = file("out.der", std::string(10000, 'x'));
  const Outcome result =
      run({"recode", "--type", "name", "-o", out}, characters(one + ending_name() + one));
  EXPECT_EQ(1, result.status);
  EXPECT_EQ(characters(one + one), read_file(out));
}

TEST_F(ToolRecode, MayWriteOverItsInput) {
  const std::string pem = make_certificate(ec_key);
  const std::string both = file("c", pem);
  EXPECT_EQ(0, run({"recode", "-o", both, both}).status);
  EXPECT_EQ(to_der(pem), read_file(both));
}

TEST_F(ToolRecode, SaysThatItCannotWrite) {
  const Outcome result = run({"recode", "-o", path("")}, characters(certificate(Parts{})));
  EXPECT_EQ(1, result.status);
  EXPECT_EQ("orvelasn1: " + path("") + ": Is a directory\n", result.err);
  EXPECT_EQ("", result.out);
}

// ---- name ---------------------------------------------------------------------------------------

using ToolName = Tool;

TEST_F(ToolName, EncodesAText) {
  const std::array<std::pair<const char *, const char *>, 3> rows{{
      {"/c(19)=DE", "300D310B3009060355040613024445\n"},
      {"/cn(12)=a//b", "300E310C300A06035504030C03612F62\n"},
      {"/2.5.4.9=x,CN=y",
       "3016311430080603550409130178"
       "30080603550403130179\n"},
  }};
  for (const auto &[text, octets] : rows) {
    const Outcome result = run({"name", text});
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_EQ(octets, result.out) << text;
  }
}

TEST_F(ToolName, GoesThereAndBackThroughAFile) {
  const std::string der = path("name.der");
  const std::string text = "/c(19)=DE/o(12)=A//B/,C/2.5.4.9(20)=Main St,cn(19)=Some One";
  EXPECT_EQ(0, run({"name", "-o", der, text}).status);
  const Outcome result = run({"name", "--der", der});
  EXPECT_EQ(0, result.status) << result.err;
  EXPECT_EQ(text + "\n", result.out);
}

TEST_F(ToolName, ReplacesALongerFile) {
  const std::string der = file("name.der", std::string(1000, 'x'));
  EXPECT_EQ(0, run({"name", "-o", der, "/c(19)=DE"}).status);
  EXPECT_EQ(characters(hex("30 0D 31 0B 30 09 06 03 55 04 06 13 02 44 45")), read_file(der));
  const Outcome refused = run({"name", "-o", path(""), "/c(19)=DE"});
  EXPECT_EQ(1, refused.status);
  EXPECT_EQ("", refused.out);
  EXPECT_EQ("orvelasn1: " + path("") + ": Is a directory\n", refused.err);
}

TEST_F(ToolName, GivesTheTextOfEachName) {
  const Outcome result =
      run({"name", "--der", "-"}, characters(common_name("a") + common_name("b")));
  EXPECT_EQ(0, result.status) << result.err;
  EXPECT_EQ("/cn(12)=a\n/cn(12)=b\n", result.out);
}

TEST_F(ToolName, SaysWhichPartOfATextIsWrong) {
  const std::array<std::pair<const char *, const char *>, 5> rows{{
      {"cn=x", "a name begins with \"/\""},
      {"/c=DE/xx=3", "character 7: expected an attribute and its value, such as cn(12)=Example"},
      {"/sn(19)=1", "character 2: expected an attribute and its value, such as cn(12)=Example"},
      {"/cn=a,", "character 7: expected an attribute and its value, such as cn(12)=Example"},
      {"/cn(300)=a", "character 2: the identifier octet 300 is not between 0 and 255"},
  }};
  for (const auto &[text, message] : rows) {
    const Outcome result = run({"name", text});
    EXPECT_EQ(1, result.status);
    EXPECT_EQ("orvelasn1: \"" + std::string(text) + "\": " + message + "\n", result.err);
    EXPECT_EQ("", result.out);
  }
}

TEST_F(ToolName, SaysWhenATextIsNotTheWholeName) {
  const Bytes serial = name(hex("06 03 55 04 05"), 0x13, support::text("1"));
  const Outcome unreadable = run({"name", "--der", "-"}, characters(serial));
  EXPECT_EQ(1, unreadable.status);
  EXPECT_EQ("/sn(19)=1\n", unreadable.out);
  EXPECT_EQ(
      "orvelasn1: standard input: element 1: the text does not stand for the same octets as the "
      "name\n",
      unreadable.err);
  const Outcome escaped = run({"name", "--der", "-"}, characters(common_name("\x1B[31m")));
  EXPECT_EQ(1, escaped.status);
  EXPECT_EQ("/cn(12)=\\x1B[31m\n", escaped.out);
}

TEST_F(ToolName, ReportsNamesThatAreNone) {
  const std::array<std::pair<const char *, const char *>, 3> rows{{
      {"30 00", ", offset 0: the list is empty, and at least one element is needed"},
      {"30 02 31 05", ", offset 2: [0]: the header 31 05 promises 5 octets, but only 0 are left"},
      {"04 00", ", offset 0: expected SEQUENCE (30), found OCTET STRING (04)"},
  }};
  for (const auto &[octets, message] : rows) {
    const Outcome result = run({"name", "--der", "-"}, characters(hex(octets)));
    EXPECT_EQ(1, result.status);
    EXPECT_EQ("", result.out);
    EXPECT_EQ("orvelasn1: standard input: element 1" + std::string(message) + "\n", result.err);
  }
}

// ---- oid ----------------------------------------------------------------------------------------

using ToolOid = Tool;

TEST_F(ToolOid, TranslatesEachFormIntoTheOthers) {
  const std::string common =
      "dotted   2.5.4.3\n"
      "encoded  06 03 55 04 03\n"
      "name     id_at_commonName\n";
  for (const char *const text : {"2.5.4.3", "0603550403", "06 03 55 04 03", "06:03:55:04:03",
                                 "id_at_commonName", "commonName", "COMMONNAME"}) {
    const Outcome result = run({"oid", text});
    EXPECT_EQ(0, result.status) << text;
    EXPECT_EQ(common, result.out) << text;
  }
}

TEST_F(ToolOid, GivesAllNamesOfAValueAndAllValuesOfAName) {
  EXPECT_EQ(
      "dotted   1.3.6.1.5.5.7.48.1\n"
      "encoded  06 08 2B 06 01 05 05 07 30 01\n"
      "name     id_pkix_ocsp, id_ad_ocsp\n",
      run({"oid", "id_ad_ocsp"}).out);
  EXPECT_EQ(
      "dotted   1.2.840.10040.4.1\n"
      "encoded  06 07 2A 86 48 CE 38 04 01\n"
      "name     id_dsa\n"
      "\n"
      "dotted   1.3.14.3.2.12\n"
      "encoded  06 05 2B 0E 03 02 0C\n"
      "name     dsa\n",
      run({"oid", "id_dsa", "dsa"}).out);
}

TEST_F(ToolOid, KnowsWhatTheRegistryLacks) {
  EXPECT_EQ(
      "dotted   1.2.840.10045.4.3.2\n"
      "encoded  06 08 2A 86 48 CE 3D 04 03 02\n"
      "name     ecdsa-with-SHA256 (not in the registry)\n"
      "\n"
      "dotted   2.999\n"
      "encoded  06 02 88 37\n"
      "name     unknown\n",
      run({"oid", "ecdsa-with-SHA256", "2.999"}).out);
}

TEST_F(ToolOid, RefusesWhatIsNoIdentifierAndGoesOn) {
  const std::array<std::pair<const char *, const char *>, 9> rows{{
      {"2.5.4.", "not a dotted identifier, such as 2.5.4.3"},
      {"3.1.2", "not a dotted identifier, such as 2.5.4.3"},
      {"1.40", "not a dotted identifier, such as 2.5.4.3"},
      {"2.5.04", "not a dotted identifier, such as 2.5.4.3"},
      {"060355040", "not hexadecimal octets"},
      {"0604550403", "offset 0: the header 06 04 promises 4 octets, but only 3 are left"},
      {"0401FF", "offset 0: expected OBJECT IDENTIFIER (06), found OCTET STRING (04)"},
      {"06035504030500", "octets left over after the identifier"},
      {"noSuchName", "no identifier has this name"},
  }};
  for (const auto &[text, message] : rows) {
    const Outcome result = run({"oid", text, "2.5.4.3"});
    EXPECT_EQ(1, result.status) << text;
    EXPECT_EQ("orvelasn1: \"" + std::string(text) + "\": " + message + "\n", result.err);
    EXPECT_TRUE(result.out.starts_with("dotted   2.5.4.3\n"));
  }
}

TEST_F(ToolOid, ListsTheWholeRegistry) {
  const Outcome result = run({"oid", "--list"});
  EXPECT_EQ(0, result.status);
  EXPECT_EQ(169, std::ranges::count(result.out, '\n'));
  EXPECT_NE(std::string::npos, result.out.find("\nid_ce_keyUsage 2.5.29.15\n"));
  EXPECT_NE(std::string::npos, result.out.find("\nkorvaneGlobalIdentifier "
                                               "1.3.6.1.4.1.53917.1.1.2.2.75\n"));
}

// ---- Usage --------------------------------------------------------------------------------------

using ToolUsage = Tool;

TEST_F(ToolUsage, WrongUsageIsTold) {
  const std::vector<std::vector<std::string>> rows{
      {},
      {"frobnicate"},
      {"show", "--none"},
      {"show", "--json", "--short"},
      {"show", "--color", "sometimes"},
      {"show", "--at", "2030-02-30"},
      {"show", "--type", "none"},
      {"name"},
      {"name", "/cn=x", "--der", "file"},
      {"oid"},
      {"recode", "a", "b"},
  };
  for (const auto &words : rows) {
    const Outcome result = run(words);
    EXPECT_EQ(2, result.status) << testing::PrintToString(words);
    EXPECT_TRUE(result.err.starts_with("orvelasn1: ")) << result.err;
    EXPECT_EQ("", result.out);
  }
}

TEST_F(ToolUsage, HelpTeachesByExample) {
  for (const std::string command : {"", "show", "trace", "recode", "name", "oid", "types"}) {
    const Outcome result = command.empty() ? run({"--help"}) : run({command, "--help"});
    EXPECT_EQ(0, result.status);
    EXPECT_NE(std::string::npos, result.out.find("\nExamples:\n  orvelasn1 " + command));
  }
  EXPECT_TRUE(run({"--version"}).out.starts_with("orvelasn1 "));
}

}  // namespace

}  // namespace tool_test
