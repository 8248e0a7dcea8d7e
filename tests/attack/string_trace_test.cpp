// The trace of a string while memory is exhausted: what it says is what the steps say that stand
// ahead of the allocation that fails, and nothing is closed that did not end well.
#include <octets.h>
#include <support.h>

#include "guard.h"

namespace string_trace_test {

namespace {

using namespace attack;
using support::Bytes;
using support::element;
using support::operator+;
using Lines = std::vector<std::string>;

constexpr uint32_t depth = 3;

struct Type {
  const char *name;
  uint8_t tag;
  const char *word;  ///< what the trace calls it
  bool (*decode)(const Bytes &octets);

  bool has_bits() const { return tag == 3; }
};

void PrintTo(const Type &type, std::ostream *out) { *out << type.name; }

/// Decodes with the trace on and releases. Whether there was a record.
template <auto Decode, auto Free, class Record>
bool decode(const Bytes &octets) {
  Record *record = nullptr;
  const uint8_t *const end = octets.data() + octets.size();
  const bool decoded = Decode(octets.data(), end, 0, &record, depth) != nullptr;
  EXPECT_EQ(decoded, record != nullptr);
  Free(record);
  return decoded;
}

/// A string and the steps of its decoder: the lines, and how many of them stand ahead of each
/// allocation.
struct Value {
  Bytes octets;
  Lines lines;
  std::vector<size_t> allocations;
  bool is_empty;

  void line(uint32_t at_depth, const std::string &text) {
    lines.push_back((at_depth == 3 ? ". . " : ". ") + text);
  }
  void allocation() { allocations.push_back(lines.size()); }
};

Lines first_lines(const Value &value, size_t count) {
  return Lines(value.lines.begin(), value.lines.begin() + static_cast<ptrdiff_t>(count));
}

Bytes in_form(bool indefinite, uint8_t identifier, const Bytes &content) {
  return indefinite ? Bytes{identifier, 0x80} + content + Bytes{0, 0}
                    : element(identifier, content);
}

/// The header, the record, the unused bits, the room for the octets, their dump.
Value primitive(const Type &type, std::string_view octets, bool indefinite) {
  const Bytes content(octets.begin(), octets.end());
  Value value{in_form(indefinite, type.tag, type.has_bits() ? Bytes{0} + content : content),
              {},
              {},
              octets.empty()};
  value.line(depth, type.word);
  value.allocation();
  if (type.has_bits()) value.line(depth, "  (0 unused bits)");
  if (octets.empty()) return value;
  value.allocation();
  std::string dump = "  0x00000000 ";
  char octet[4];
  for (const char c : octets) {
    std::snprintf(octet, sizeof octet, "%02X ", static_cast<unsigned>(c));
    dump += octet;
  }
  value.line(depth, dump + std::string(3 * (16 - octets.size()), ' ') + std::string(octets));
  return value;
}

/// The header, the record, for each segment its own steps and the room for its octets, the closing
/// line.
Value constructed(const Type &type, const std::vector<Value> &segments, bool indefinite) {
  Value value{{}, {}, {}, true};
  Bytes content;
  value.line(depth, std::string(type.word) + " {");
  value.allocation();
  for (const Value &segment : segments) {
    content = content + segment.octets;
    for (const size_t lines : segment.allocations) {
      value.allocations.push_back(value.lines.size() + lines);
    }
    value.lines.insert(value.lines.end(), segment.lines.begin(), segment.lines.end());
    if (segment.is_empty) continue;
    value.allocation();
    value.is_empty = false;
  }
  value.line(depth - 1, "}");
  value.octets = in_form(indefinite, type.tag | 0x20, content);
  return value;
}

struct Outcome {
  bool decoded;
  bool failed;  ///< an allocation did
  Lines lines;
};

Outcome decode_with(long successes, const Type &type, const Value &value) {
  Outcome outcome{};
  Guard guard;
  guard.fail_after(successes);
  outcome.lines = support::trace_lines(
      [&] { EXPECT_TRUE(guard.run([&] { outcome.decoded = type.decode(value.octets); })); });
  outcome.failed = guard.has_failed();
  EXPECT_EQ(0U, guard.blocks());
  return outcome;
}

/// The decoder may do with fewer allocations than there are steps that need room, but each of its
/// own stands at one of them, and in their order. A block that cannot be made smaller is no
/// failure.
void expect_the_order_of_the_steps(const Type &type, const Value &value) {
  size_t step = 0;
  for (long successes = 0;; ++successes) {
    SCOPED_TRACE(testing::Message() << "allocation " << successes);
    const Outcome outcome = decode_with(successes, type, value);
    if (outcome.decoded) {
      EXPECT_EQ(value.lines, outcome.lines);
      if (!outcome.failed) break;
      continue;
    }
    ASSERT_TRUE(outcome.failed);
    while (step < value.allocations.size() && value.allocations[step] < outcome.lines.size()) {
      ++step;
    }
    ASSERT_LT(step, value.allocations.size()) << testing::PrintToString(outcome.lines);
    ASSERT_EQ(value.allocations[step], outcome.lines.size())
        << testing::PrintToString(outcome.lines);
    EXPECT_EQ(first_lines(value, outcome.lines.size()), outcome.lines);
    if (successes == 0) {
      EXPECT_EQ(0U, step) << "the record comes first";
    }
  }
}

#define TYPE(name, record, tag, word) \
  Type { #name, tag, word, decode < asn1_##name##_d, asn1_##name##_free, record> }

class StringTrace : public testing::TestWithParam<Type> {};

INSTANTIATE_TEST_SUITE_P(Of, StringTrace,
                         testing::Values(TYPE(BitString, BitString, 3, "BITSTRING"),
                                         TYPE(OctetString, ASN1String, 4, "OCTETSTRING"),
                                         TYPE(UTF8String, ASN1String, 12, "UTF8STRING"),
                                         TYPE(NumericString, ASN1String, 18, "NUMERICSTRING "),
                                         TYPE(PrintableString, ASN1String, 19, "PRINTABLESTRING "),
                                         TYPE(TeletexString, ASN1String, 20, "TELETEXSTRING "),
                                         TYPE(VideotextString, ASN1String, 21, "VIDEOTEXTSTRING "),
                                         TYPE(IA5String, ASN1String, 22, "IA5STRING "),
                                         TYPE(GraphicString, ASN1String, 25, "GRAPHICSTRING "),
                                         TYPE(VisibleString, ASN1String, 26, "VISIBLESTRING "),
                                         TYPE(GeneralString, ASN1String, 27, "GENERALSTRING "),
                                         TYPE(UniversalString, ASN1String, 28, "UNIVERSALSTRING ")),
                         [](const auto &type) { return std::string(type.param.name); });

// Its allocations are the steps themselves.
TEST_P(StringTrace, OfAPrimitiveValueStopsAtTheAllocationThatFails) {
  const Type &type = GetParam();
  for (const bool indefinite : {false, true}) {
    for (const char *octets : {"", "A", "ABCDEFGH"}) {
      SCOPED_TRACE(octets);
      const Value value = primitive(type, octets, indefinite);
      for (size_t i = 0; i < value.allocations.size(); ++i) {
        const Outcome outcome = decode_with(static_cast<long>(i), type, value);
        EXPECT_FALSE(outcome.decoded);
        EXPECT_EQ(first_lines(value, value.allocations[i]), outcome.lines);
      }
      const Outcome outcome = decode_with(static_cast<long>(value.allocations.size()), type, value);
      EXPECT_TRUE(outcome.decoded);
      EXPECT_FALSE(outcome.failed);
      EXPECT_EQ(value.lines, outcome.lines);
    }
  }
}

TEST_P(StringTrace, OfAConstructedValueStopsAtTheAllocationThatFails) {
  const Type &type = GetParam();
  for (const bool indefinite : {false, true}) {
    const Value none = primitive(type, "", indefinite);
    const Value one = primitive(type, "A", !indefinite);
    const Value more = primitive(type, "BCDEFGH", indefinite);
    const Value inner = constructed(type, {more, none, one}, !indefinite);
    const Value empty = constructed(type, {}, indefinite);
    Value nested = constructed(type, {one, inner}, indefinite);
    // More levels than there is room for from the start.
    for (int i = 0; i < 20; ++i) nested = constructed(type, {nested, more}, i % 2 == 0);
    for (const Value &value :
         {empty, constructed(type, {none}, indefinite), constructed(type, {one}, indefinite),
          constructed(type, {one, more, one}, indefinite), inner,
          constructed(type, {one, inner, empty, more}, indefinite), nested}) {
      expect_the_order_of_the_steps(type, value);
    }
  }
}

}  // namespace

}  // namespace string_trace_test
