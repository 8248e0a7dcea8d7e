// The objects of a smart card, all made by hand.
#include "records.h"

namespace card_test {

namespace {

using namespace tool_tests;

using ToolCard = Records;

Bytes object(const char *id, const Bytes &content) { return sequence(oid(id) + content); }
Bytes leaf(const char *id, const Bytes &value) { return object(id, octet_string(value)); }
Bytes container(const char *id, const Bytes &objects) { return leaf(id, set(objects)); }

/// An attribute, whose identifier has its least significant octet first.
Bytes attribute(const char *id, const char *value) {
  return sequence(oid(id) + octet_string(hex(value)));
}

const Bytes printable_leaf = leaf("05", hex("41 42"));
const Bytes holder = leaf("20", set(attribute("78 56 34 12", "AA") + attribute("01 00 00 00", "")));

/// A tree with an object of each role in each kind of place.
const Bytes gdo =
    sequence(container("10", printable_leaf + container("11", leaf("06", hex("01")) + holder) +
                                 leaf("07", {})) +
             container("12", set(leaf("05", hex("02")) + leaf("06", hex("03"))) + set({})) +
             leaf("01", hex("78")) + container("21", {}) +
             object("20", element(0x03, set(attribute("02 00 00 00", "04")))));

/// The identifier octet and the length in front of so many octets, the last octet first.
Bytes header_backwards(uint8_t tag, size_t size) {
  Bytes out;
  for (size_t rest = size; size >= 0x80 && rest != 0; rest >>= 8)
    out.push_back(static_cast<uint8_t>(rest));
  out.push_back(static_cast<uint8_t>(size < 0x80 ? size : 0x80 + out.size()));
  out.push_back(tag);
  return out;
}

/// A tree of so many containers, one inside the other. It is put together from its end.
Bytes nested(size_t levels) {
  Bytes tree(printable_leaf.rbegin(), printable_leaf.rend());
  const auto put = [&tree](const Bytes &octets) {
    tree.insert(tree.end(), octets.begin(), octets.end());
  };
  for (size_t i = 0; i < levels; ++i) {
    put(header_backwards(0x31, tree.size()));
    put(header_backwards(0x04, tree.size()));
    put(hex("10 01 06"));
    put(header_backwards(0x30, tree.size()));
  }
  return sequence(Bytes(tree.rbegin(), tree.rend()) + leaf("01", {}) + leaf("02", {}) +
                  leaf("03", {}));
}

TEST_F(ToolCard, ShowsTheObjectsAsATree) {
  EXPECT_EQ(
      "GDO  standard input: element 1\n"
      "  root 10            container, 3 objects\n"
      "  ├─ 05              leaf, 4142  \"AB\"\n"
      "  ├─ 11              container, 2 objects\n"
      "  │  ├─ 06           leaf, 01\n"
      "  │  └─ 20           attribute holder, 2 attributes\n"
      "  │     ├─ 12345678  AA\n"
      "  │     └─ 00000001  (empty)\n"
      "  └─ 07              leaf, (empty)\n"
      "  set1 12            container, 2 sets\n"
      "  ├─ set             2 objects\n"
      "  │  ├─ 05           leaf, 02\n"
      "  │  └─ 06           leaf, 03\n"
      "  └─ set             0 objects\n"
      "  set2 01            leaf, 78  \"x\"\n"
      "  set3 21            container, 0 sets\n"
      "  set4 20            attribute holder, 1 attribute\n"
      "  └─ 00000002        04\n",
      page(gdo, "gdo"));
}

TEST_F(ToolCard, IsRecognisedByItsStructure) {
  EXPECT_EQ("gdo", type_of(gdo));
  EXPECT_EQ("card-info", type_of(sequence(hex("04 00 04 00 04 00 04 00 04 00 04 00"))));
  EXPECT_EQ("public-key-mac", type_of(sequence(hex("04 01 0A 04 00"))));
}

TEST_F(ToolCard, HasAShortForm) {
  EXPECT_EQ(
      "standard input      GDO                    root 10, container, 3 objects\n"
      "    set1 12, container, 2 sets, set2 01, leaf, set3 21, container, 0 sets, set4 20, "
      "attribute holder, 1 attribute\n",
      good({"show", "--short"}, gdo));
}

TEST_F(ToolCard, HasItsSetsAsNestedArrays) {
  EXPECT_EQ(json::parse(R"({
    "root": {"id": "10", "role": "container", "children": [
      {"id": "05", "role": "leaf", "value": "4142", "text": "AB"},
      {"id": "11", "role": "container", "children": [
        {"id": "06", "role": "leaf", "value": "01"},
        {"id": "20", "role": "attribute holder", "children": [
          {"id": "12345678", "value": "AA"}, {"id": "00000001", "value": ""}]}]},
      {"id": "07", "role": "leaf", "value": ""}]},
    "set1": {"id": "12", "role": "container", "children": [
      [{"id": "05", "role": "leaf", "value": "02"}, {"id": "06", "role": "leaf", "value": "03"}],
      []]},
    "set2": {"id": "01", "role": "leaf", "value": "78", "text": "x"},
    "set3": {"id": "21", "role": "container", "children": []},
    "set4": {"id": "20", "role": "attribute holder",
             "children": [{"id": "00000002", "value": "04"}]}})"),
            fields(gdo));
}

TEST_F(ToolCard, ShowsAnObjectAtEitherPlace) {
  EXPECT_EQ(
      "GDOObject  standard input: element 1\n"
      "  10     container, 1 object\n"
      "  └─ 05  leaf, 4142  \"AB\"\n",
      page(container("10", printable_leaf), "gdo-object"));
  EXPECT_EQ(
      "GDOObject  standard input: element 1\n"
      "  10        container, 1 set\n"
      "  └─ set    1 object\n"
      "     └─ 05  leaf, 4142  \"AB\"\n",
      page(container("10", set(printable_leaf)), "gdo-object-of-sets"));
  fields(container("10", printable_leaf), "gdo-object");
  fields(container("10", set(printable_leaf)), "gdo-object-of-sets");
}

TEST_F(ToolCard, CutsLongValuesBesideTheLinesOfTheTree) {
  const Bytes tree =
      container("10", leaf("05", Bytes(100, 0x00)) + container("11", leaf("06", hex("00"))));
  const std::string cut = page(tree, "gdo-object");
  EXPECT_EQ(
      "GDOObject  standard input: element 1\n"
      "  10        container, 2 objects\n"
      "  ├─ 05     leaf\n"
      "  │         00000000 00000000 00000000 00000000\n"
      "  │         00000000 00000000 00000000 00000000\n"
      "  │         00000000 00000000 00000000 00000000\n"
      "  │         00000000 00000000 00000000 00000000\n"
      "  │         ... and 36 more octets\n"
      "  └─ 11     container, 1 object\n"
      "     └─ 06  leaf, 00\n",
      cut);
  const std::string full = page(tree, "gdo-object", {"--full"});
  EXPECT_EQ(std::string::npos, full.find("more"));
  EXPECT_NE(std::string::npos, full.find("  │         00000000\n  └─ 11"));
}

TEST_F(ToolCard, EscapesWhatIsNotSafeToPrint) {
  EXPECT_EQ(
      "GDOObject  standard input: element 1\n"
      "  05  leaf, 1B5B41\n",
      page(leaf("05", hex("1B 5B 41")), "gdo-object"));
}

TEST_F(ToolCard, MayBeNestedDeeply) {
  const Bytes deep = nested(500);
  const std::string text = page(deep, "gdo");
  EXPECT_NE(std::string::npos, text.find(" 468 more below\n")) << text;
  EXPECT_TRUE(text.ends_with("set3 03                                 leaf, (empty)\n")) << text;
  json object = fields(deep)["root"];
  size_t levels = 0;
  for (; object.contains("children"); ++levels) {
    const json below = object["children"][0];
    object = below;
  }
  EXPECT_EQ(32U, levels);
  EXPECT_EQ(468, object["omitted"]);
}

TEST_F(ToolCard, IsRefusedWhereTheNestingTakesTooMuchStack) {
  const Outcome result = run({"show", "--type", "gdo"}, characters(nested(100000)));
  EXPECT_EQ(1, result.status);
  EXPECT_TRUE(result.out.starts_with("Outline  standard input: element 1\n")) << result.out;
  EXPECT_TRUE(matches(result.out, "\\.\\.\\. and more from offset [0-9]+ on: --full shows it"));
}

TEST_F(ToolCard, ComesBackWithoutAttributes) {
  expect_recodes(container("10", printable_leaf + leaf("06", {})), "gdo-object");
  expect_recodes(container("10", set(printable_leaf) + set({})), "gdo-object-of-sets");
  expect_recodes(nested(3), "gdo");
}

TEST_F(ToolCard, SaysThatAttributesAreWrittenDifferently) {
  const Bytes object = leaf("20", set(attribute("78 56 34 12", "AA")));
  const Outcome result = run({"recode", "--type", "gdo-object"}, characters(object));
  EXPECT_EQ(1, result.status);
  EXPECT_TRUE(matches(result.out,
                      "^standard input: element 1: different from offset [0-9]+, 20 "
                      "octets in, 2[04] out\n"))
      << result.out;
}

TEST_F(ToolCard, SaysWhatIsWrongWithAnObject) {
  EXPECT_EQ(", offset 4: id: an identifier that is not one octet\n",
            message({"show", "--type", "gdo-object"}, sequence(hex("06 02 05 06 04 00"))));
}

TEST_F(ToolCard, ShowsTheFlatRecords) {
  const Bytes info = sequence(hex("04 01 0A 04 00 04 02 0B 0C 04 00 04 00 04 01 41"));
  EXPECT_EQ(
      "CardInfo  standard input: element 1\n"
      "  octets1  0A\n"
      "  octets2  (empty)\n"
      "  octets3  0B0C\n"
      "  octets4  (empty)\n"
      "  octets5  (empty)\n"
      "  octets6  41\n",
      page(info, "card-info"));
  expect_recodes(info, "card-info");
  const Bytes mac = sequence(hex("04 01 0A 04 02 0B 0C"));
  EXPECT_EQ(
      "PublicKeyMAC  standard input: element 1\n"
      "  octets1  0A\n"
      "  octets2  0B0C\n",
      page(mac, "public-key-mac"));
  EXPECT_EQ(json::parse(R"({"type": "public-key-mac", "file": "standard input", "element": 1,
                            "octets": "300704010A04020B0C", "octets1": "0A", "octets2": "0B0C"})"),
            json::parse(good({"show", "--json"}, mac)));
  fields(info, "card-info");
  fields(mac, "public-key-mac");
  expect_recodes(mac, "public-key-mac");
}

}  // namespace

}  // namespace card_test
