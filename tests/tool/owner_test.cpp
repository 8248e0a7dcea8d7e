// Values that are read out of octets inside others, which must be there for as long as the values are.
#include "records.h"

namespace owner_test {

namespace {

using namespace tool_tests;

using ToolOwners = Records;

/// A certificate with a subjectAltName of a DNS name and an INTEGER, which is none.
Bytes certificate() {
  const Bytes names = sequence(element(0x82, support::text("a")) + integer("05"));
  return sequence(
      sequence(hex("A0 03 02 01 02") + integer("01") + hex(ed25519) + common_name("a") +
               sequence(element(0x17, support::text("200101000000Z")) +
                        element(0x17, support::text("300101000000Z"))) +
               common_name("a") + sequence(hex(ed25519) + element(0x03, hex("00 01"))) +
               element(0xA3, sequence(sequence(oid("55 1D 11") + octet_string(names))))) +
      hex(ed25519) + element(0x03, hex("00 01")));
}

// The list of names is described when it is printed: then the octets of the certificate, which are
// those of the bag in the bag, must still be there.
TEST_F(ToolOwners, AListInACertificateInABagIsReadWhenItIsPrinted) {
  const Bytes bag =
      sequence(oid("2A 86 48 86 F7 0D 01 09 16 01") + element(0xA0, octet_string(certificate())));
  const Bytes safe_bag = sequence(oid("2A 86 48 86 F7 0D 01 0C 0A 01 03") + element(0xA0, bag));
  const json object = json::parse(good({"show", "--json", "--type", "safe-bag"}, safe_bag));
  const json &extension = object["decoded"]["decoded"]["tbsCertificate"]["extensions"][0];
  EXPECT_EQ(json::parse(R"([{"kind": 2, "kindName": "DNS", "value": "a"}])")[0],
            extension["decoded"][0]);
  EXPECT_EQ("020105", extension["decoded"][1]["octets"]);
  EXPECT_EQ(2U, extension["decoded"].size());
  EXPECT_EQ("", record_violation(object.dump()));
}

}  // namespace

}  // namespace owner_test
