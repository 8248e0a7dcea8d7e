// The command "oid" for identifiers whose arcs have more than 32 bits.
#include "tool.h"

namespace oid_test {

namespace {

using namespace tool_tests;

using ToolLargeOid = Tool;

// 2^32 has five digits to the base 128: 16, 0, 0, 0, 0.
TEST_F(ToolLargeOid, TranslatesArcsOfAnySize) {
  const std::string all =
      "dotted   2.5.4294967296\n"
      "encoded  06 06 55 90 80 80 80 00\n"
      "name     unknown\n";
  for (const char *const text : {"2.5.4294967296", "0606559080808000"}) {
    const Outcome result = run({"oid", text});
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_EQ(all, result.out) << text;
  }
}

TEST_F(ToolLargeOid, AgreesWithOpenssl) {
  const std::string digits(700, '9');
  for (const std::string &dotted :
       {std::string("2.25.329800735698586629295641978511506172918"), std::string("2.4294967296"),
        "1.2." + digits + ".3." + digits}) {
    openssl({"asn1parse", "-noout", "-genstr", "OID:" + dotted, "-out", path("oid")});
    std::string encoded;
    for (const char c : read_file(path("oid"))) {
      char octet[4];
      std::snprintf(octet, sizeof octet, " %02X", static_cast<unsigned char>(c));
      encoded += octet;
    }
    const Outcome result = run({"oid", dotted, encoded.substr(1)});
    EXPECT_EQ(0, result.status) << result.err;
    const std::string all = "dotted   " + dotted + "\nencoded " + encoded + "\nname     unknown\n";
    EXPECT_EQ(all + "\n" + all, result.out);
  }
}

TEST_F(ToolLargeOid, RefusesWhatNobodyMeans) {
  const std::string dotted = "2.25." + std::string(4096, '1');
  const Outcome text = run({"oid", dotted});
  EXPECT_EQ(1, text.status);
  EXPECT_EQ("orvelasn1: \"" + dotted + "\": not a dotted identifier, such as 2.5.4.3\n", text.err);
  std::string octets = "06 82 08 01 2A";
  for (int i = 0; i < 2048; ++i) octets += " 01";
  const Outcome encoded = run({"oid", octets});
  EXPECT_EQ(1, encoded.status);
  EXPECT_EQ("orvelasn1: \"" + octets + "\": more octets than any identifier has\n", encoded.err);
  // A first number of two octets that begins with 80.
  EXPECT_EQ(1, run({"oid", "0603805503"}).status);
}

}  // namespace

}  // namespace oid_test
