// "orvelasn1 tree", and the outlines of "show": whole outputs for octets made by hand, and places in
// certificates that openssl makes, which it finds there, too.
#include "nest.h"
#include "tool.h"

namespace tree_test {

namespace {

using namespace tool_tests;
using support::Nest;
using support::text;

// Extension ::= SEQUENCE { extnID, critical, extnValue }, of basicConstraints.
constexpr const char *constraints = "30 0F 06 03 55 1D 13 01 01 FF 04 05 30 03 01 01 FF";

class ToolTree : public Tool {
 protected:
  Outcome tree(const Bytes &octets, std::vector<std::string> words = {}) const {
    words.insert(words.begin(), "tree");
    return run(words, characters(octets));
  }

  /// The outline of sound octets.
  std::string outline(const Bytes &octets, const std::vector<std::string> &words = {}) const {
    const Outcome result = tree(octets, words);
    EXPECT_EQ(0, result.status);
    EXPECT_EQ("", result.err);
    return result.out;
  }

  /// The message about octets with a fault, after the name of the element.
  std::string message(const Bytes &octets, const std::vector<std::string> &words = {}) const {
    const Outcome result = tree(octets, words);
    EXPECT_EQ(1, result.status);
    const std::string start = "orvelasn1: standard input: element 1";
    EXPECT_TRUE(result.err.starts_with(start)) << result.err;
    return result.err.substr(std::min(start.size(), result.err.size()));
  }
};

// ---- Sound octets -------------------------------------------------------------------------------

TEST_F(ToolTree, HasOffsetsLengthsTypesAndValues) {
  EXPECT_EQ(
      " 0  2+42   SEQUENCE\n"
      " 2  2+1      BOOLEAN TRUE\n"
      " 5  2+2      INTEGER -129\n"
      " 9  2+2      BIT STRING A8 (3 unused bits)\n"
      "13  2+3      OCTET STRING 01 02 03\n"
      "18  2+0      NULL\n"
      "20  2+3      OBJECT IDENTIFIER commonName\n"
      "25  2+2      OBJECT IDENTIFIER 2.999\n"
      "29  2+1      ENUMERATED 6\n"
      "32  2+4      UTF8String \"na\\xEFn\"\n"
      "38  2+4      [5] \"abcd\"\n",
      outline(
          hex("30 2A 01 01 FF 02 02 FF 7F 03 02 03 A8 04 03 01 02 03 05 00 06 03 55 04 03 06 02 88 "
              "37 0A 01 06 0C 04 6E 61 EF 6E 85 04 61 62 63 64"),
          {"--type", "any"}));
}

TEST_F(ToolTree, HasTheFieldsOfAType) {
  EXPECT_EQ(
      " 0  2+15   Extension: SEQUENCE\n"
      " 2  2+3      extnID: OBJECT IDENTIFIER basicConstraints\n"
      " 7  2+1      critical: BOOLEAN TRUE\n"
      "10  2+5      extnValue: OCTET STRING\n"
      "12  2+3        BasicConstraints: SEQUENCE\n"
      "14  2+1          cA: BOOLEAN TRUE\n",
      outline(hex(constraints), {"--type", "extension"}));
}

TEST_F(ToolTree, HasAlternativesNumbersAndExplicitTags) {
  // A GeneralNames of a name, a directoryName (explicit) without attributes, and an address.
  EXPECT_EQ(
      " 0  2+13   GeneralNames: SEQUENCE\n"
      " 2  2+1      [0].dNSName: [2] \"a\"\n"
      " 5  2+2      [1].directoryName: [4]\n"
      " 7  2+0        SEQUENCE\n"
      " 9  2+4      [2].iPAddress: [7] 7F 00 00 01\n",
      outline(hex("30 0D 82 01 61 A4 02 30 00 87 04 7F 00 00 01"), {"--type", "general-names"}));
}

// The content of a ContentInfo is known by what is around it, and around the outermost is nothing.
TEST_F(ToolTree, KnowsThatNothingIsAroundTheOutermostRecord) {
  EXPECT_EQ(
      " 0  2+18   ContentInfo: SEQUENCE\n"
      " 2  2+9      contentType: OBJECT IDENTIFIER data\n"
      "13  2+5      content: [0]\n"
      "15  2+3        OCTET STRING 61 62 63\n",
      outline(hex("30 12 06 09 2A 86 48 86 F7 0D 01 07 01 A0 05 04 03 61 62 63"),
              {"--type", "content-info"}));
}

TEST_F(ToolTree, LooksIntoStrings) {
  // An OCTET STRING and a BIT STRING that hold an element, and some that only look like it.
  EXPECT_EQ(
      " 0  2+29   SEQUENCE\n"
      " 2  2+5      OCTET STRING\n"
      " 4  2+3        SEQUENCE\n"
      " 6  2+1          INTEGER 7\n"
      " 9  2+4      BIT STRING\n"
      "12  2+1        INTEGER 7\n"
      "15  2+4      BIT STRING 02 01 00 (1 unused bit)\n"
      "21  2+4      OCTET STRING 02 01 07 00\n"
      "27  2+2      OCTET STRING 30 02\n",
      outline(hex("30 1D 04 05 30 03 02 01 07 03 04 00 02 01 07 03 04 01 02 01 00 04 04 02 01 07 "
                  "00 04 02 "
                  "30 02"),
              {"--type", "any"}));
}

TEST_F(ToolTree, TakesIndefiniteLengthsAndLargeTags) {
  EXPECT_EQ(
      " 0  2+inf  SEQUENCE\n"
      " 2  2+inf    constructed OCTET STRING\n"
      " 4  2+1        OCTET STRING 61\n"
      " 7  2+0        end-of-contents\n"
      " 9  3+2      [APPLICATION 33]\n"
      "12  2+0        NULL\n"
      "14  10+0     SET\n"
      "24  2+0      end-of-contents\n",
      outline(hex("30 80 24 80 04 01 61 00 00 7F 21 02 05 00 31 88 00 00 00 00 00 00 00 00 00 00"),
              {"--type", "any"}));
}

TEST_F(ToolTree, TellsHowDeepDeepElementsAre) {
  Nest nest(hex("05 00"));
  for (int i = 0; i < 100000; ++i) nest.wrap(0x30);
  const std::string out = outline(nest.octets(), {"--type", "any"});
  EXPECT_EQ(100001, std::ranges::count(out, '\n'));
  EXPECT_TRUE(out.ends_with(std::string(60, ' ') + "(100000 deep) NULL\n"))
      << out.substr(out.size() - 200);
}

TEST_F(ToolTree, PrintsNoOctetOfTheInputAsItIs) {
  EXPECT_EQ("0  2+4    UTF8String \"\\x1B[2J\"\n", outline(hex("0C 04 1B 5B 32 4A")));
}

TEST_F(ToolTree, CutsLongValuesUnlessInFull) {
  const Bytes octets = element(0x04, Bytes(30, 0xAB));
  EXPECT_EQ(
      " 0  2+30   OCTET STRING AB AB AB AB AB AB AB AB AB AB AB AB AB AB AB AB ... (30 octets)\n",
      outline(octets, {"--type", "any"}));
  std::string all;
  for (int i = 0; i < 30; ++i) all += " AB";
  EXPECT_EQ(" 0  2+30   OCTET STRING" + all + "\n", outline(octets, {"--type", "any", "--full"}));
}

TEST_F(ToolTree, HasADumpBelowEachLine) {
  EXPECT_EQ(
      "0  2+5    SEQUENCE\n"
      "0         30 05                                            0.\n"
      "2  2+3      IA5String \"abc\"\n"
      "2         16 03 61 62 63                                   ..abc\n",
      outline(hex("30 05 16 03 61 62 63"), {"--type", "any", "--hex"}));
}

TEST_F(ToolTree, ColoursTheDumpAsTheField) {
  EXPECT_EQ(
      "\x1B[2m0  2+3  \x1B[0m  \x1B[32mBasicConstraints\x1B[0m: SEQUENCE\n"
      "\x1B[2m0\x1B[0m         \x1B[2m30 03\x1B[0m                                            0.\n"
      "\x1B[2m2  2+1  \x1B[0m    \x1B[35mcA\x1B[0m: BOOLEAN TRUE\n"
      "\x1B[2m2\x1B[0m         \x1B[2m01 01\x1B[0m \x1B[35mFF\x1B[0m                               "
      "          ...\n",
      outline(hex("30 03 01 01 FF"),
              {"--type", "basic-constraints", "--hex", "--color", "always"}));
}

// ---- Faults -------------------------------------------------------------------------------------

struct Broken {
  const char *octets;
  const char *type;
  const char *outline;
  const char *message;
};

class ToolTreeOfBroken : public ToolTree, public testing::WithParamInterface<Broken> {};

TEST_P(ToolTreeOfBroken, GoesOnPastTheFault) {
  const Outcome result = tree(hex(GetParam().octets), {"--type", GetParam().type});
  EXPECT_EQ(1, result.status);
  EXPECT_EQ(GetParam().outline, result.out);
  EXPECT_EQ(std::string("orvelasn1: standard input: element 1, ") + GetParam().message + "\n",
            result.err);
}

INSTANTIATE_TEST_SUITE_P(
    Inputs, ToolTreeOfBroken,
    testing::Values(
        // The input ends too soon.
        Broken{"30 08 02 01 05 04 05 41 42", "any",
               "0  2+8    SEQUENCE\n"
               "0  fault  the header 30 08 promises 8 octets, but only 7 are left\n"
               "2  2+1      INTEGER 5\n"
               "5  2+5      OCTET STRING\n"
               "7  rest     2 octets: 41 42\n",
               "offset 0: the header 30 08 promises 8 octets, but only 7 are left"},
        // An element does not fit the one around it.
        Broken{"30 09 30 03 02 05 41 05 00 05 00", "any",
               " 0  2+9    SEQUENCE\n"
               " 2  2+3      SEQUENCE\n"
               " 4  2+5        INTEGER\n"
               " 4  fault      the header 02 05 promises 5 octets, but only 1 is left\n"
               " 6  rest       1 octet: 41\n"
               " 7  2+0      NULL\n"
               " 9  2+0      NULL\n",
               "offset 4: the header 02 05 promises 5 octets, but only 1 is left"},
        Broken{"30 80 02 01 05", "any",
               "0  2+inf  SEQUENCE\n"
               "2  2+1      INTEGER 5\n"
               "5  fault    expected the end-of-contents\n",
               "offset 5: expected the end-of-contents"},
        Broken{"30 04 00 00 00 00", "any",
               "0  2+4    SEQUENCE\n"
               "2  fault    a tag of 0, which no element has\n"
               "2  rest     4 octets: 00 00 00 00\n",
               "offset 2: a tag of 0, which no element has"},
        Broken{"30 03 02 80 05", "any",
               "0  2+3    SEQUENCE\n"
               "2  fault    a primitive element of indefinite length\n"
               "2  rest     3 octets: 02 80 05\n",
               "offset 2: a primitive element of indefinite length"},
        // What is inside a string is not of its type.
        Broken{"30 0E 06 03 55 1D 13 01 01 FF 04 04 30 02 05 00", "extension",
               " 0  2+14   Extension: SEQUENCE\n"
               " 2  2+3      extnID: OBJECT IDENTIFIER basicConstraints\n"
               " 7  2+1      critical: BOOLEAN TRUE\n"
               "10  2+4      extnValue: OCTET STRING\n"
               "12  2+2        BasicConstraints: SEQUENCE\n"
               "14  2+0          NULL\n"
               "14  fault        extnValue: found NULL (05), where the value ends\n",
               "offset 14: extnValue: found NULL (05), where the value ends"},
        Broken{"30 0B 06 03 55 1D 13 04 04 30 00 05 00", "extension",
               " 0  2+11   Extension: SEQUENCE\n"
               " 2  2+3      extnID: OBJECT IDENTIFIER basicConstraints\n"
               " 7  2+4      extnValue: OCTET STRING\n"
               " 9  2+0        BasicConstraints: SEQUENCE\n"
               "11  2+0        NULL\n"
               "11  fault      extnValue: expected the end, found NULL\n",
               "offset 11: extnValue: expected the end, found NULL"},
        Broken{"30 07 06 03 55 1D 13 04 00", "extension",
               "0  2+7    Extension: SEQUENCE\n"
               "2  2+3      extnID: OBJECT IDENTIFIER basicConstraints\n"
               "7  2+0      extnValue: OCTET STRING\n"
               "9  fault      extnValue: expected SEQUENCE (30), but the enclosing element ends\n",
               "offset 9: extnValue: expected SEQUENCE (30), but the enclosing element ends"},
        // A field is not there, or is another.
        Broken{"30 02 05 00", "validity",
               "0  2+2    Validity: SEQUENCE\n"
               "2  2+0      notBefore: NULL\n"
               "2  fault    notBefore: expected one of UTCTime (17), GeneralizedTime (18), found "
               "NULL (05)\n",
               "offset 2: notBefore: expected one of UTCTime (17), GeneralizedTime (18), found "
               "NULL (05)"},
        Broken{"30 06 30 04 06 02 2A 03 ", "ocsp-signature",
               "0  2+6    Signature: SEQUENCE\n"
               "2  2+4      signatureAlgorithm: SEQUENCE\n"
               "4  2+2        algorithm: OBJECT IDENTIFIER 1.2.3\n"
               "8  fault    signature: expected BIT STRING (03), but the enclosing element ends\n",
               "offset 8: signature: expected BIT STRING (03), but the enclosing element ends"}));

TEST_F(ToolTree, MarksOneValueAndNamesTheNext) {
  // Two extensions: the value of the first is no GeneralNames, the second is sound.
  const Bytes first = hex("30 09 06 03 55 1D 11 04 02 05 00");
  const Outcome result = tree(sequence(first + hex(constraints)), {"--type", "extensions"});
  EXPECT_EQ(1, result.status);
  EXPECT_NE(
      std::string::npos,
      result.out.find("11  2+0          GeneralNames: NULL\n"
                      "11  fault        [0].extnValue: expected SEQUENCE (30), found NULL (05)\n"
                      "13  2+15     [1]: SEQUENCE\n"))
      << result.out;
  EXPECT_NE(std::string::npos, result.out.find("cA: BOOLEAN TRUE\n"));
}

TEST_F(ToolTree, NeedsNoTypeForSoundOctets) {
  // Nothing is known of these, and nothing is wrong.
  for (const char *octets : {"30 03 02 01 05", "30 05 30 03 02 01 05", "A0 02 05 00", "13 01 41"})
    outline(hex(octets));
}

// ---- Paths --------------------------------------------------------------------------------------

TEST_F(ToolTree, ShowsThePlaceOfAPath) {
  const Bytes octets = sequence(hex(constraints) + hex("30 09 06 03 55 1D 0E 04 02 04 00"));
  const std::string value =
      "12  2+5        extnValue: OCTET STRING\n"
      "14  2+3          BasicConstraints: SEQUENCE\n"
      "16  2+1            cA: BOOLEAN TRUE\n";
  for (const char *path : {"[0].extnValue", "[basicConstraints].extnValue", "[2.5.29.19].extnValue",
                           "[id_ce_basicConstraints].extnValue", "[BASICCONSTRAINTS].extnValue"})
    EXPECT_EQ(value, outline(octets, {"--type", "extensions", "--path", path})) << path;
  EXPECT_EQ("16  2+1            cA: BOOLEAN TRUE\n",
            outline(octets, {"--type", "extensions", "--path", "[0].extnValue.cA"}));
  EXPECT_EQ("21  2+3        extnID: OBJECT IDENTIFIER subjectKeyIdentifier\n",
            outline(octets, {"--type", "extensions", "--path", "[subjectKeyIdentifier].extnID"}));
}

TEST_F(ToolTree, TakesPathsWithAndWithoutAlternatives) {
  const Bytes names = hex("30 07 82 01 61 A4 02 30 00");
  for (const char *path : {"[0]", "[0].dNSName"})
    EXPECT_EQ("2  2+1      [0].dNSName: [2] \"a\"\n",
              outline(names, {"--type", "general-names", "--path", path}));
}

TEST_F(ToolTree, NumbersWhatHasNoNames) {
  const Bytes octets = hex("30 0A 02 01 05 04 05 30 03 02 01 07");
  EXPECT_EQ(" 9  2+1          INTEGER 7\n", outline(octets, {"--type", "any", "--path", "[1][0]"}));
}

TEST_F(ToolTree, SaysWhereAPathStopsAndWhatThereIs) {
  const Bytes octets = sequence(hex(constraints));
  const auto why = [&](const std::string &path) {
    return message(octets, {"--type", "extensions", "--path", path});
  };
  EXPECT_EQ(": there is no x; there is [basicConstraints]\n", why("x"));
  EXPECT_EQ(": there is no [keyUsage]; there is [basicConstraints]\n", why("[keyUsage].extnID"));
  EXPECT_EQ(": there is no y in [0]; there is extnID, critical, extnValue\n", why("[0].y"));
  EXPECT_EQ(": there is no [1] in [0].extnValue; there is cA\n", why("[0].extnValue[1]"));
  EXPECT_EQ(": there is no z in [0].critical, which has nothing inside\n", why("[0].critical.z"));
}

TEST_F(ToolTree, RefusesWhatIsNoPath) {
  for (const char *path : {"a..b", "a.", ".a", "a[", "[]", "a[0]b", "a.[0]"}) {
    const Outcome result = run({"tree", "--path", path});
    EXPECT_EQ(2, result.status) << path;
    EXPECT_NE(std::string::npos, result.err.find("expected names with dots between them"))
        << result.err;
  }
}

TEST_F(ToolTree, FindsThePathOfAFault) {
  const Bytes octets = sequence(hex("30 09 06 03 55 1D 11 04 02 05 00"));
  const Outcome all = tree(octets, {"--type", "extensions"});
  EXPECT_NE(std::string::npos, all.err.find(" [0].extnValue: "));
  const Outcome place = tree(octets, {"--type", "extensions", "--path", "[0].extnValue"});
  EXPECT_EQ(1, place.status);
  EXPECT_EQ(
      " 9  2+2        extnValue: OCTET STRING\n"
      "11  2+0          GeneralNames: NULL\n"
      "11  fault        [0].extnValue: expected SEQUENCE (30), found NULL (05)\n",
      place.out);
  // The fault is not in this place.
  EXPECT_EQ("4  2+3        extnID: OBJECT IDENTIFIER subjectAltName\n",
            outline(octets, {"--type", "extensions", "--path", "[0].extnID"}).substr(1));
}

TEST_F(ToolTree, WritesTheOctetsOfAPlace) {
  const std::vector<std::string> place{"--type", "extension", "--path", "extnValue"};
  auto words = place;
  words.push_back("--extract");
  EXPECT_EQ(characters(hex("04 05 30 03 01 01 FF")), outline(hex(constraints), words));
  words.back() = "--content";
  EXPECT_EQ(characters(hex("30 03 01 01 FF")), outline(hex(constraints), words));
}

TEST_F(ToolTree, WritesElementsOfIndefiniteLength) {
  const Bytes octets = hex("30 80 24 80 04 01 61 00 00 05 00 00 00");
  EXPECT_EQ(characters(hex("24 80 04 01 61 00 00")),
            outline(octets, {"--type", "any", "--path", "[0]", "--extract"}));
  EXPECT_EQ(characters(hex("04 01 61")),
            outline(octets, {"--type", "any", "--path", "[0]", "--content"}));
  EXPECT_EQ(characters(octets), outline(octets, {"--type", "any", "--extract"}));
}

// ---- Files --------------------------------------------------------------------------------------

TEST_F(ToolTree, FindsThePartsOfACertificateThatOpensslFinds) {
  const std::string pem =
      make_certificate(ec_key, {"-addext", "subjectAltName=DNS:example.org,IP:127.0.0.1"});
  const auto part = [&](const std::string &path, const std::string &form) {
    const Outcome result = run({"tree", "--path", path, form}, pem);
    EXPECT_EQ(0, result.status) << result.err;
    return result.out;
  };
  const std::string key = openssl({"x509", "-noout", "-pubkey"}, pem);
  EXPECT_EQ(openssl({"pkey", "-pubin", "-outform", "DER"}, key),
            part("tbsCertificate.subjectPublicKeyInfo", "--extract"));
  // 6 and 11 octets, "example.org" and an address, in a SEQUENCE.
  EXPECT_EQ(characters(hex("30 13 82 0B 65 78 61 6D 70 6C 65 2E 6F 72 67 87 04 7F 00 00 01")),
            part("tbsCertificate.extensions[subjectAltName].extnValue", "--content"));
  EXPECT_EQ(to_der(pem), part("", "--extract"));
  const Outcome all = run({"tree"}, pem);
  EXPECT_EQ(0, all.status) << all.err;
  for (const char *field :
       {"Certificate: SEQUENCE\n", "serialNumber: INTEGER ", "notAfter.utcTime: UTCTime 20",
        "parameters.namedCurve: OBJECT IDENTIFIER secp256r1\n",
        "[0].dNSName: [2] \"example.org\"\n", "[1].iPAddress: [7] 7F 00 00 01\n",
        "ECDSA-Sig-Value: SEQUENCE\n", "r: INTEGER 0x"})
    EXPECT_NE(std::string::npos, all.out.find(field)) << field << '\n' << all.out;
}

TEST_F(ToolTree, GoesIntoStoresRequestsAndKeys) {
  const std::string pem = make_certificate({"rsa:1024"}, {"-addext", "keyUsage=cRLSign"});
  const std::string key = read_file(path("key.pem"));
  const std::string store = openssl(
      {"pkcs12", "-export", "-nokeys", "-certpbe", "NONE", "-nomac", "-passout", "pass:"}, pem);
  const std::string request = openssl(
      {"req", "-new", "-key", path("key.pem"), "-subj", "/CN=a", "-addext", "keyUsage=cRLSign"});
  const auto expect = [&](const std::string &input, const std::vector<std::string> &fields) {
    const Outcome result = run({"tree"}, input);
    EXPECT_EQ(0, result.status) << result.err;
    for (const std::string &field : fields)
      EXPECT_NE(std::string::npos, result.out.find(field)) << field << '\n' << result.out;
  };
  expect(key, {"privateKey: OCTET STRING\n", "RSAPrivateKey: SEQUENCE\n",
               "publicExponent: INTEGER 65537\n"});
  expect(store, {"AuthenticatedSafe: SEQUENCE\n", "SafeContents: SEQUENCE\n", "CertBag: SEQUENCE\n",
                 "Certificate: SEQUENCE\n", "KeyUsage: BIT STRING 02 (1 unused bit)\n"});
  expect(request,
         {"extnID: OBJECT IDENTIFIER keyUsage\n", "KeyUsage: BIT STRING 02 (1 unused bit)\n"});
}

TEST_F(ToolTree, ReadsElementAfterElement) {
  const std::string der = file("two.der", hex("30 02 05 00 30 02 01 01") + hex("FF"));
  const Outcome result = run({"tree", der, "/nonexistent"});
  EXPECT_EQ(1, result.status);
  EXPECT_TRUE(result.out.starts_with("0  2+2    SEQUENCE\n2  2+0      NULL\n0  2+2    SEQUENCE\n"))
      << result.out;
  EXPECT_NE(std::string::npos, result.err.find("/nonexistent"));
}

// ---- Outlines of "show" -------------------------------------------------------------------------

TEST_F(ToolTree, IsWhatShowShowsOfRefusedElements) {
  const Outcome result = run({"show", "--type", "validity"}, characters(hex("30 02 05 00")));
  EXPECT_EQ(1, result.status);
  EXPECT_EQ(
      "Outline  standard input: element 1\n"
      "  0  2+2    Validity: SEQUENCE\n"
      "  2  2+0      notBefore: NULL\n"
      "  2  fault    notBefore: expected one of UTCTime (17), GeneralizedTime (18), found NULL "
      "(05)\n\n",
      result.out);
  EXPECT_TRUE(result.err.starts_with(
      "orvelasn1: standard input: element 1, offset 2: notBefore: expected one of"))
      << result.err;
}

TEST_F(ToolTree, IsWhatShowShowsOfElementsThatNoTypeFits) {
  const Outcome result = run({"show"}, characters(hex("30 05 13 03 61 62 63")));
  EXPECT_EQ(1, result.status);
  EXPECT_EQ(
      "Outline  standard input: element 1\n"
      "  0  2+5    SEQUENCE\n"
      "  2  2+3      PrintableString \"abc\"\n\n",
      result.out);
}

TEST_F(ToolTree, IsNoPartOfShortFormsAndJson) {
  const std::string octets = characters(hex("30 05 13 03 61 62 63"));
  EXPECT_EQ("", run({"show", "--short", "--type", "validity"}, octets).out);
  EXPECT_TRUE(
      json::parse(run({"show", "--json", "--type", "validity"}, octets).out).contains("error"));
}

}  // namespace

}  // namespace tree_test
