// Tests tagging wrappers and lists, with element functions that count their calls.
#include <dlfcn.h>

#include <functional>

#include "allocator.h"
#include "support.h"

// Replaces the two list functions that fail when memory is exhausted. They call those of the list
// library, except where a test makes them fail.
namespace {

constexpr int no_limit = -1;
bool lists_can_be_made = true;
int appends_allowed = no_limit;

}  // namespace

extern "C" {

List *List_new(int32_t reserved) {
  using Function = List *(int32_t);
  if (!lists_can_be_made) return nullptr;
  return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, "List_new"))(reserved);
}

int32_t List_append(List *list, void *element, int32_t reserved) {
  using Function = int32_t(List *, void *, int32_t);
  if (appends_allowed == 0) return 0;
  if (appends_allowed != no_limit) --appends_allowed;
  return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, "List_append"))(list, element, reserved);
}

}  // extern "C"

namespace {

using support::Bytes;
using support::encode_with;
using support::hex;
using support::Input;
using support::trace_lines;
using support::operator+;
using Lines = std::vector<std::string>;

/// The element of these tests: an INTEGER of one content octet.
struct Leaf {
  uint8_t octet;
  int releases;
};

constexpr uint8_t unencodable = 0xEE;        // leaf_e returns 0 for it, leaf_d NULL
constexpr uint8_t left_in_the_slot = 0xEF;   // leaf_d returns NULL, but its record stays
constexpr uint8_t second_pass_fails = 0xED;  // leaf_e writes and then returns 0

/// The arguments of a call of leaf_d.
struct Call {
  long octets;  // from `z` to `end`
  uint32_t impl_tag;
  bool slot_empty;
  uint32_t depth;
};

// Every leaf that was made. They stay, so that a second release is counted, too.
std::vector<std::unique_ptr<Leaf>> leaves;
std::vector<Call> calls;

Leaf *make_leaf(uint8_t octet) {
  leaves.push_back(std::make_unique<Leaf>(Leaf{octet, 0}));
  return leaves.back().get();
}

int releases_of_nothing = 0;

void leaf_free(Leaf *leaf) { ++(leaf != nullptr ? leaf->releases : releases_of_nothing); }

uint32_t leaf_e(uint8_t **pp, const Leaf *leaf) {
  if (leaf->octet == unencodable) return 0;
  const uint32_t size = asn1_TagLength_e(pp, 2, 1) + 1;
  if (pp != nullptr) *(*pp)++ = leaf->octet;
  return pp != nullptr && leaf->octet == second_pass_fails ? 0 : size;
}

const uint8_t *leaf_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, Leaf **place,
                      uint32_t depth) {
  calls.push_back({end - z, impl_tag, *place == nullptr, depth});
  uint32_t length = 0;
  z = asn1_TagLength_d(z, end, impl_tag, 2, nullptr, &length, nullptr, depth);
  if (z == nullptr || length != 1 || *z == unencodable) return nullptr;
  *place = make_leaf(*z);
  return *z == left_in_the_slot ? nullptr : z + 1;
}

struct FreeList {
  void operator()(List *list) const { List_free(list, leaf_free); }
};
using Leaves = std::unique_ptr<List, FreeList>;

Leaves make_list(const Bytes &octets) {
  Leaves list(List_new(0));
  for (const uint8_t octet : octets) EXPECT_NE(0, List_append(list.get(), make_leaf(octet), 0));
  return list;
}

Bytes octets_of(const List *list) {
  Bytes out;
  for (int32_t i = 0; i < List_len(list); ++i) {
    out.push_back(static_cast<const Leaf *>(List_get(list, i))->octet);
  }
  return out;
}

/// A call of one of the list decoders.
struct Result {
  long consumed;
  Leaves list;
};

using Decoder = std::function<const uint8_t *(const uint8_t *, const uint8_t *, List **, uint32_t)>;

Result decode_list(const Decoder &list_d, const Bytes &octets, uint32_t depth = 0) {
  const Input input(octets);
  List *list = nullptr;
  const uint8_t *next = list_d(input.z(), input.end(), &list, depth);
  return {next != nullptr ? next - input.z() : -1, Leaves(list)};
}

const uint8_t *seq_of_leaves(const uint8_t *z, const uint8_t *end, List **list, uint32_t depth) {
  return asn1_SeqOf_d(z, end, 0, leaf_d, leaf_free, list, depth);
}

const uint8_t *expl_seq_of_leaves(const uint8_t *z, const uint8_t *end, List **list,
                                  uint32_t depth) {
  return asn1_expl_SeqOf_d(z, end, 0x80, leaf_d, leaf_free, list, depth);
}

/// Begins a test without leaves. Checks at the end that each was released exactly once.
class ElementTest : public testing::Test {
 protected:
  void SetUp() override {
    leaves.clear();
    calls.clear();
    releases_of_nothing = 0;
  }
  void TearDown() override {
    for (const auto &leaf : leaves) EXPECT_EQ(1, leaf->releases) << "leaf " << int{leaf->octet};
    leaves.clear();
  }
};

class ImplicitEncoder : public ElementTest {};
class ExplicitEncoder : public ElementTest {};
class ExplicitDecoder : public ElementTest {};
class ListEncoder : public ElementTest {};
class ListDecoder : public ElementTest {};
class ExplicitListDecoder : public ElementTest {};
class ListCodec : public ElementTest {};
class WrapperTrace : public ElementTest {};

/// Returns the octets that an encoder writes into 0xAA-filled room. Checks that it returns
/// `result`.
template <class Encode>
Bytes write_into_room(uint32_t result, Encode f) {
  uint8_t room[16];
  std::fill(room, room + sizeof room, uint8_t{0xAA});
  uint8_t *cursor = room;
  EXPECT_EQ(result, f(&cursor));
  return Bytes(room, cursor);
}

// -- Implicit tags ------------------------------------------------------------------------------

TEST_F(ImplicitEncoder, ReplacesTheTagAndKeepsTheFormOfAPrimitiveElement) {
  uint8_t data[] = {0x41, 0x42};
  const OctetString string{2, data};
  for (const uint32_t tag : {0x82U, 0xA2U, 0x182U}) {
    EXPECT_EQ(hex("82 02 41 42"), encode_with([&](uint8_t **pp) {
                return asn1_implicit_e(pp, tag, &string, asn1_OctetString_e);
              }))
        << tag;
  }
}

TEST_F(ImplicitEncoder, ReplacesTheTagAndKeepsTheFormOfAConstructedElement) {
  uint32_t arcs[] = {1, 2};
  ObjId oid{2, arcs};
  const AlgId sequence{&oid, nullptr};
  for (const uint32_t tag : {0x82U, 0xA2U}) {
    EXPECT_EQ(hex("A2 03 06 01 2A"), encode_with([&](uint8_t **pp) {
                return asn1_implicit_e(pp, tag, &sequence, asn1_AlgId_e);
              }))
        << tag;
  }
}

TEST_F(ImplicitEncoder, WritesNothingForAnElementThatFails) {
  const Leaf leaf{unencodable, 0};
  uint8_t room[] = {0xAA};
  uint8_t *cursor = room;
  EXPECT_EQ(0U, asn1_implicit_e(nullptr, 0x82, &leaf, leaf_e));
  EXPECT_EQ(0U, asn1_implicit_e(&cursor, 0x82, &leaf, leaf_e));
  EXPECT_EQ(room, cursor);
  EXPECT_EQ(0xAA, room[0]);
}

TEST_F(ImplicitEncoder, LeavesTheTagOfAnElementThatFailsAsItWrites) {
  const Leaf leaf{second_pass_fails, 0};
  EXPECT_EQ(hex("02 01 ED"), write_into_room(0, [&](uint8_t **pp) {
              return asn1_implicit_e(pp, 0x82, &leaf, leaf_e);
            }));
}

TEST(ListCodecDeathTest, ImplicitEncoderWithoutElementOrEncoder) {
  const Leaf leaf{1, 0};
  EXPECT_ASSERT(asn1_implicit_e(nullptr, 0x82, nullptr, leaf_e), "asn1_implicit_e", "pElement");
  EXPECT_ASSERT(asn1_implicit_e(nullptr, 0x82, &leaf, nullptr), "asn1_implicit_e", "element_e");
  EXPECT_ASSERT(asn1_implicit_e(nullptr, 0x82, nullptr, nullptr), "asn1_implicit_e", "pElement");
}

// -- Explicit tags ------------------------------------------------------------------------------

TEST_F(ExplicitEncoder, SetsTheConstructedBitOfTheTag) {
  const Leaf leaf{5, 0};
  for (const uint32_t tag : {0x80U, 0xA0U, 0x180U}) {
    EXPECT_EQ(hex("A0 03 02 01 05"),
              encode_with([&](uint8_t **pp) { return asn1_explicit_e(pp, tag, &leaf, leaf_e); }))
        << tag;
  }
}

TEST_F(ExplicitEncoder, WritesALongLengthWhereTheElementIsLong) {
  const struct {
    uint32_t length;
    const char *header;  // of the wrapper
  } rows[] = {{125, "A1 7F"},
              {126, "A1 81 80"},
              {200, "A1 81 CB"},
              {252, "A1 81 FF"},
              {253, "A1 82 01 00"}};
  for (const auto &row : rows) {
    Bytes data(row.length, 0x55);
    const OctetString string{row.length, data.data()};
    EXPECT_EQ(hex(row.header) + support::element(0x04, data), encode_with([&](uint8_t **pp) {
                return asn1_explicit_e(pp, 0x81, &string, asn1_OctetString_e);
              }));
  }
}

TEST_F(ExplicitEncoder, WritesNothingForAnElementThatFails) {
  const Leaf leaf{unencodable, 0};
  EXPECT_EQ(0U, asn1_explicit_e(nullptr, 0x80, &leaf, leaf_e));
  EXPECT_EQ(Bytes{}, write_into_room(0, [&](uint8_t **pp) {
              return asn1_explicit_e(pp, 0x80, &leaf, leaf_e);
            }));
}

TEST_F(ExplicitEncoder, DoesNotLookAtTheResultOfTheWritingPass) {
  const Leaf leaf{second_pass_fails, 0};
  EXPECT_EQ(hex("A0 03 02 01 ED"), write_into_room(5, [&](uint8_t **pp) {
              return asn1_explicit_e(pp, 0x80, &leaf, leaf_e);
            }));
}

TEST(ListCodecDeathTest, ExplicitEncoderWithoutElementOrEncoder) {
  const Leaf leaf{1, 0};
  EXPECT_ASSERT(asn1_explicit_e(nullptr, 0x80, nullptr, leaf_e), "asn1_explicit_e", "pElement");
  EXPECT_ASSERT(asn1_explicit_e(nullptr, 0x80, &leaf, nullptr), "asn1_explicit_e", "element_e");
  EXPECT_ASSERT(asn1_explicit_e(nullptr, 0x80, nullptr, nullptr), "asn1_explicit_e", "pElement");
}

/// A call of asn1_explicit_d under the tag [0] with leaf_d: the octets consumed, or -1.
long explicit_leaf(const Bytes &octets, Leaf **leaf, uint32_t depth = 0, uint32_t tag = 0x80) {
  const Input input(octets);
  const uint8_t *next = asn1_explicit_d(input.z(), input.end(), tag, leaf_d, leaf, depth);
  return next != nullptr ? next - input.z() : -1;
}

TEST_F(ExplicitDecoder, GivesTheElementTheContentOfTheWrapper) {
  for (const uint32_t tag : {0x80U, 0xA0U, 0x180U}) {
    calls.clear();
    Leaf *leaf = nullptr;
    EXPECT_EQ(5, explicit_leaf(hex("A0 03 02 01 05 FF"), &leaf, 7, tag));
    ASSERT_NE(nullptr, leaf);
    EXPECT_EQ(5, leaf->octet);
    ASSERT_EQ(1U, calls.size());
    EXPECT_EQ(3, calls[0].octets);
    EXPECT_EQ(0U, calls[0].impl_tag);
    EXPECT_EQ(7U, calls[0].depth);
    leaf_free(leaf);
  }
}

TEST_F(ExplicitDecoder, AcceptsAWrapperInPrimitiveForm) {
  Leaf *leaf = nullptr;
  EXPECT_EQ(5, explicit_leaf(hex("80 03 02 01 05"), &leaf));
  leaf_free(leaf);
}

TEST_F(ExplicitDecoder, RefusesOtherHeadersWithoutACallOfTheElement) {
  for (const char *octets : {
           "A0 80 02 01 05 00 00",  // indefinite
           "A1 03 02 01 05",        // another number
           "02 01 05",              // no wrapper
           "A0 04 02 01 05",        // past the end
           "A0",
           "",
       }) {
    Leaf *leaf = nullptr;
    EXPECT_EQ(-1, explicit_leaf(hex(octets), &leaf)) << octets;
    EXPECT_EQ(nullptr, leaf);
    EXPECT_TRUE(calls.empty()) << octets;
  }
}

TEST_F(ExplicitDecoder, HandsTheElementAnEmptyRange) {
  Leaf *leaf = nullptr;
  EXPECT_EQ(-1, explicit_leaf(hex("A0 00 02 01 05"), &leaf));
  ASSERT_EQ(1U, calls.size());
  EXPECT_EQ(0, calls[0].octets);
  EXPECT_EQ(nullptr, leaf);
}

TEST_F(ExplicitDecoder, GivesTheResultOfTheElementAsItStands) {
  // BOOLEAN takes the end of the range for an absent value, and does not fail.
  const Input input(hex("A0 00"));
  uint32_t value = 9;
  EXPECT_EQ(input.end(), asn1_explicit_d(input.z(), input.end(), 0x80, asn1_Boolean_d, &value, 0));
  EXPECT_EQ(9U, value);
}

TEST_F(ExplicitDecoder, DoesNotCheckThatTheElementFillsTheWrapper) {
  Leaf *leaf = nullptr;
  EXPECT_EQ(5, explicit_leaf(hex("A0 06 02 01 05 FF FF FF"), &leaf));
  leaf_free(leaf);
}

TEST_F(ExplicitDecoder, KeepsTheElementInsideTheWrapper) {
  Leaf *leaf = nullptr;
  EXPECT_EQ(-1, explicit_leaf(hex("A0 02 02 01 05"), &leaf));
  EXPECT_EQ(nullptr, leaf);
}

TEST_F(ExplicitDecoder, PutsTheLimitOfATopBitLengthBelowTheElement) {
  for (const char *length : {"84 80 00 00 00", "84 FF FF FF FF", "84 FF FF FF FC"}) {
    calls.clear();
    Leaf *leaf = nullptr;
    EXPECT_EQ(-1, explicit_leaf(hex("A0") + hex(length) + hex("02 01 05"), &leaf)) << length;
    ASSERT_EQ(1U, calls.size());
    EXPECT_GE(0, calls[0].octets);
    EXPECT_EQ(nullptr, leaf);

    const Input input(hex("A0") + hex(length) + hex("01 01 FF"));
    uint32_t value = 9;
    EXPECT_EQ(input.z() + 6,
              asn1_explicit_d(input.z(), input.end(), 0x80, asn1_Boolean_d, &value, 0));
    EXPECT_EQ(9U, value);
  }
}

TEST(ListCodecDeathTest, ExplicitDecoderWithoutCursorPlaceDecoderOrEnd) {
  const uint8_t octets[] = {0xA0, 0x00};
  const uint8_t *end = octets + 2;
  Leaf *leaf = nullptr;
  EXPECT_ASSERT(asn1_explicit_d(nullptr, end, 0x80, leaf_d, &leaf, 0), "asn1_explicit_d", "z");
  EXPECT_ASSERT(asn1_explicit_d(octets, end, 0x80, leaf_d, nullptr, 0), "asn1_explicit_d",
                "ppElement");
  EXPECT_ASSERT(asn1_explicit_d(octets, end, 0x80, nullptr, &leaf, 0), "asn1_explicit_d",
                "element_d");
  EXPECT_ASSERT(asn1_explicit_d(octets, nullptr, 0x80, leaf_d, &leaf, 0), "asn1_Tag_d",
                "end != NULL");
}

// -- Lists, both directions ---------------------------------------------------------------------

struct Form {
  const char *name;
  const char *header;        // of the list
  const char *outer_header;  // of the wrapper of a list of two leaves, or NULL
  const char *empty;         // an empty list
  std::function<uint32_t(uint8_t **, const List *)> encode;
  Decoder decode;
};

const std::vector<Form> &forms() {
  static const std::vector<Form> all{
      {"List 16", "30", "", "30 00",
       [](uint8_t **pp, const List *list) { return asn1_List_e(pp, 16, list, leaf_e); },
       [](const uint8_t *z, const uint8_t *end, List **list, uint32_t depth) {
         return asn1_List_d(z, end, 0, 16, leaf_d, leaf_free, list, depth);
       }},
      {"List [5]", "A5", "", "A5 00",
       [](uint8_t **pp, const List *list) { return asn1_List_e(pp, 0x85, list, leaf_e); },
       [](const uint8_t *z, const uint8_t *end, List **list, uint32_t depth) {
         return asn1_List_d(z, end, 0x85, 16, leaf_d, leaf_free, list, depth);
       }},
      {"SetOf", "31", "", "31 00",
       [](uint8_t **pp, const List *list) { return asn1_SetOf_e(pp, list, leaf_e); },
       [](const uint8_t *z, const uint8_t *end, List **list, uint32_t depth) {
         return asn1_SetOf_d(z, end, 0, leaf_d, leaf_free, list, depth);
       }},
      {"SeqOf", "30", "", "30 00",
       [](uint8_t **pp, const List *list) { return asn1_SeqOf_e(pp, list, leaf_e); },
       [](const uint8_t *z, const uint8_t *end, List **list, uint32_t depth) {
         return asn1_SeqOf_d(z, end, 0, leaf_d, leaf_free, list, depth);
       }},
      {"expl_List", "A7", "A0 08", "A0 02 A7 00",
       [](uint8_t **pp, const List *list) {
         return asn1_expl_List_e(pp, 0x80, 0x87, list, leaf_e);
       },
       [](const uint8_t *z, const uint8_t *end, List **list, uint32_t depth) {
         return asn1_expl_List_d(z, end, 0x80, 0x87, leaf_d, leaf_free, list, depth);
       }},
      {"expl_SetOf", "31", "A1 08", "A1 02 31 00",
       [](uint8_t **pp, const List *list) { return asn1_expl_SetOf_e(pp, 0x81, list, leaf_e); },
       [](const uint8_t *z, const uint8_t *end, List **list, uint32_t depth) {
         return asn1_expl_SetOf_d(z, end, 0x81, leaf_d, leaf_free, list, depth);
       }},
      {"expl_SeqOf", "30", "A2 08", "A2 02 30 00",
       [](uint8_t **pp, const List *list) { return asn1_expl_SeqOf_e(pp, 0xA2, list, leaf_e); },
       [](const uint8_t *z, const uint8_t *end, List **list, uint32_t depth) {
         return asn1_expl_SeqOf_d(z, end, 0xA2, leaf_d, leaf_free, list, depth);
       }},
  };
  return all;
}

/// Returns the leaves 'B' and 'A' in a form, the higher octet first. DER sorts it last (X.690,
/// 11.6).
Bytes two_leaves(const Form &form) {
  return hex(form.outer_header) + hex(form.header) + hex("06 02 01 42 02 01 41");
}

TEST_F(ListCodec, EveryFormWritesTheElementsUnsortedInListOrder) {
  for (const Form &form : forms()) {
    const Leaves list = make_list(hex("42 41"));
    EXPECT_EQ(two_leaves(form),
              encode_with([&](uint8_t **pp) { return form.encode(pp, list.get()); }))
        << form.name;
  }
}

TEST_F(ListCodec, EveryFormReadsTheElementsInInputOrder) {
  for (const Form &form : forms()) {
    const Bytes octets = two_leaves(form);
    const Result result = decode_list(form.decode, octets + hex("FF FF"));
    EXPECT_EQ(static_cast<long>(octets.size()), result.consumed) << form.name;
    EXPECT_EQ(hex("42 41"), octets_of(result.list.get())) << form.name;
  }
}

TEST_F(ListCodec, EveryFormWritesAnEmptyListAsAnEmptyValue) {
  for (const Form &form : forms()) {
    const Leaves list = make_list({});
    EXPECT_EQ(hex(form.empty),
              encode_with([&](uint8_t **pp) { return form.encode(pp, list.get()); }))
        << form.name;
  }
}

TEST_F(ListCodec, EveryFormReadsAnEmptyValueAsAPresentEmptyList) {
  for (const Form &form : forms()) {
    const Bytes octets = hex(form.empty);
    const Result result = decode_list(form.decode, octets + hex("02 01 05"));
    EXPECT_EQ(static_cast<long>(octets.size()), result.consumed) << form.name;
    ASSERT_NE(nullptr, result.list) << form.name;
    EXPECT_EQ(0, List_len(result.list.get()));
    EXPECT_TRUE(calls.empty());
  }
}

TEST_F(ListCodec, EveryFormKeepsDuplicates) {
  for (const Form &form : forms()) {
    const Leaves list = make_list(hex("07 07"));
    const Bytes octets = encode_with([&](uint8_t **pp) { return form.encode(pp, list.get()); });
    EXPECT_EQ(hex(form.outer_header) + hex(form.header) + hex("06 02 01 07 02 01 07"), octets);
    const Result result = decode_list(form.decode, octets);
    EXPECT_EQ(hex("07 07"), octets_of(result.list.get())) << form.name;
  }
}

TEST_F(ListCodec, EveryFormFailsToWriteWhereAnElementDoes) {
  for (const Form &form : forms()) {
    for (const Bytes &octets : {hex("EE"), hex("01 EE"), hex("EE 01"), hex("01 EE 01")}) {
      const Leaves list = make_list(octets);
      EXPECT_EQ(0U, form.encode(nullptr, list.get())) << form.name;
      EXPECT_EQ(Bytes{},
                write_into_room(0, [&](uint8_t **pp) { return form.encode(pp, list.get()); }))
          << form.name;
    }
  }
}

TEST_F(ListCodec, NoFormLooksAtTheResultsOfTheWritingPass) {
  for (const Form &form : forms()) {
    const Leaves list = make_list(hex("ED 05"));
    const Bytes expected = hex(form.outer_header) + hex(form.header) + hex("06 02 01 ED 02 01 05");
    EXPECT_EQ(expected, write_into_room(static_cast<uint32_t>(expected.size()),
                                        [&](uint8_t **pp) { return form.encode(pp, list.get()); }))
        << form.name;
  }
}

TEST_F(ListCodec, EveryFormAcceptsPrimitiveHeaders) {
  for (const Form &form : forms()) {
    Bytes octets = two_leaves(form);
    octets[0] &= 0xDF;
    if (*form.outer_header != '\0') octets[2] &= 0xDF;
    const Result result = decode_list(form.decode, octets);
    EXPECT_EQ(static_cast<long>(octets.size()), result.consumed) << form.name;
    EXPECT_EQ(hex("42 41"), octets_of(result.list.get())) << form.name;
  }
}

TEST_F(ListCodec, CarriesThousandsOfElements) {
  Bytes octets;
  for (int i = 0; i < 5000; ++i) octets.push_back(static_cast<uint8_t>(i % 128));
  const Leaves list = make_list(octets);
  const Bytes encoded =
      encode_with([&](uint8_t **pp) { return asn1_SeqOf_e(pp, list.get(), leaf_e); });
  EXPECT_EQ(hex("30 82 3A 98 02 01 00 02 01 01"), Bytes(encoded.begin(), encoded.begin() + 10));
  EXPECT_EQ(15004U, encoded.size());
  const Result result = decode_list(seq_of_leaves, encoded);
  EXPECT_EQ(15004, result.consumed);
  EXPECT_EQ(octets, octets_of(result.list.get()));
}

TEST_F(ListEncoder, TakesNoListForAnEmptyOne) {
  EXPECT_EQ(hex("30 00"),
            encode_with([](uint8_t **pp) { return asn1_SeqOf_e(pp, nullptr, leaf_e); }));
}

TEST_F(ListEncoder, FailsWithoutAFunctionForItsElements) {
  List *const list = List_new(0);
  uint8_t element = 0;
  ASSERT_EQ(1, List_append(list, &element, 0));
  EXPECT_EQ(0U, asn1_SeqOf_e(nullptr, list, nullptr));
  EXPECT_EQ(Bytes{},
            write_into_room(0, [&](uint8_t **pp) { return asn1_SeqOf_e(pp, list, nullptr); }));
  List_free(list, nullptr);
}

TEST_F(ListEncoder, InAnExplicitTagFailsWithoutAList) {
  EXPECT_EQ(0U, asn1_expl_List_e(nullptr, 0x80, 16, nullptr, leaf_e));
  EXPECT_EQ(0U, asn1_expl_SetOf_e(nullptr, 0x80, nullptr, leaf_e));
  EXPECT_EQ(0U, asn1_expl_SeqOf_e(nullptr, 0x80, nullptr, leaf_e));
  EXPECT_EQ(Bytes{}, write_into_room(0, [](uint8_t **pp) {
              return asn1_expl_List_e(pp, 0x80, 16, nullptr, leaf_e);
            }));
}

TEST_F(ListEncoder, TakesTheLowEightBitsOfItsTags) {
  const Leaves list = make_list(hex("05"));
  EXPECT_EQ(hex("A0 05 31 03 02 01 05"), encode_with([&](uint8_t **pp) {
              return asn1_expl_List_e(pp, 0x380, 0x211, list.get(), leaf_e);
            }));
}

// -- Large sums ---------------------------------------------------------------------------------

/// An element encoder that counts octets and writes none: the number of them is the element.
uint32_t count_e(uint8_t **, const uint32_t *octets) { return *octets; }

/// Checks the sum, and the headers, which are all that is written.
template <class Encode>
void expect_sum(uint32_t sum, const char *headers, Encode encode) {
  SCOPED_TRACE(sum);
  EXPECT_EQ(sum, encode(nullptr));
  EXPECT_EQ(hex(headers), write_into_room(sum, encode));
}

TEST(LargeSums, OfExplicitTagsAreCountedUpTo32Bits) {
  const struct {
    uint32_t octets, sum;
    const char *headers;
  } rows[] = {{0x7FFFFFF9, 0x7FFFFFFF, "A0 84 7F FF FF F9"},
              {0x7FFFFFFA, 0x80000000, "A0 84 7F FF FF FA"},
              {0x80000000, 0x80000006, "A0 84 80 00 00 00"},
              {0xFFFFFFF9, 0xFFFFFFFF, "A0 84 FF FF FF F9"},
              {0xFFFFFFFA, 0, ""},
              {0xFFFFFFFF, 0, ""}};
  for (const auto &row : rows) {
    expect_sum(row.sum, row.headers,
               [&](uint8_t **pp) { return asn1_explicit_e(pp, 0x80, &row.octets, count_e); });
  }
}

TEST(LargeSums, OfListsAreCountedUpTo32Bits) {
  const struct {
    uint32_t first, second, sum;
    const char *headers;
  } rows[] = {{0x40000000, 0x3FFFFFFA, 0x80000000, "31 84 7F FF FF FA"},
              {0x40000000, 0x40000000, 0x80000006, "31 84 80 00 00 00"},
              {0x80000000, 0x7FFFFFF9, 0xFFFFFFFF, "31 84 FF FF FF F9"},
              {0x80000000, 0x7FFFFFFA, 0, ""},  // the header does not fit
              {0x80000000, 0x7FFFFFFF, 0, ""},
              {0x80000000, 0x80000000, 0, ""},  // nor the elements
              {0xFFFFFFFF, 0xFFFFFFFF, 0, ""}};
  for (const auto &row : rows) {
    uint32_t first = row.first, second = row.second;
    List *const list = List_new(0);
    List_append(list, &first, 0);
    List_append(list, &second, 0);
    expect_sum(row.sum, row.headers, [&](uint8_t **pp) { return asn1_SetOf_e(pp, list, count_e); });
    List_free(list, nullptr);
  }
}

TEST(LargeSums, OfListsInExplicitTagsAreCountedUpTo32Bits) {
  const struct {
    uint32_t octets, sum;
    const char *headers;
  } rows[] = {{0x7FFFFFF4, 0x80000000, "A0 84 7F FF FF FA 30 84 7F FF FF F4"},
              {0x80000000, 0x8000000C, "A0 84 80 00 00 06 30 84 80 00 00 00"},
              {0xFFFFFFF3, 0xFFFFFFFF, "A0 84 FF FF FF F9 30 84 FF FF FF F3"},
              {0xFFFFFFF4, 0, ""},
              {0xFFFFFFFA, 0, ""}};
  for (const auto &row : rows) {
    uint32_t octets = row.octets;
    List *const list = List_new(0);
    List_append(list, &octets, 0);
    expect_sum(row.sum, row.headers,
               [&](uint8_t **pp) { return asn1_expl_SeqOf_e(pp, 0x80, list, count_e); });
    List_free(list, nullptr);
  }
}

// -- Decoding lists -----------------------------------------------------------------------------

TEST_F(ListDecoder, GivesEachElementAnEmptySlotTheLimitAndNoTag) {
  const Result result = decode_list(seq_of_leaves, hex("30 06 02 01 01 02 01 02 02 01 03"), 4);
  EXPECT_EQ(8, result.consumed);
  ASSERT_EQ(2U, calls.size());
  for (const Call &call : calls) {
    EXPECT_EQ(0U, call.impl_tag);
    EXPECT_TRUE(call.slot_empty);
    EXPECT_EQ(5U, call.depth);
  }
  EXPECT_EQ(6, calls[0].octets);
  EXPECT_EQ(3, calls[1].octets);
}

TEST_F(ListDecoder, KeepsDepthZeroForTheElements) {
  decode_list(seq_of_leaves, hex("30 03 02 01 01"), 0);
  ASSERT_EQ(1U, calls.size());
  EXPECT_EQ(0U, calls[0].depth);
}

TEST_F(ListDecoder, CountsTheDepthOfTheElementsInThirtyTwoBits) {
  decode_list(seq_of_leaves, hex("30 03 02 01 01"), 65535);
  decode_list(seq_of_leaves, hex("30 03 02 01 01"), 65536);
  ASSERT_EQ(2U, calls.size());
  EXPECT_EQ(65536U, calls[0].depth);
  EXPECT_EQ(65537U, calls[1].depth);
}

TEST_F(ListDecoder, TakesAnImplicitTagWithAndWithoutItsConstructedBit) {
  for (const uint32_t impl_tag : {0x81U, 0xA1U, 0x181U}) {
    const auto list_d = [=](const uint8_t *z, const uint8_t *end, List **list, uint32_t depth) {
      return asn1_SetOf_d(z, end, impl_tag, leaf_d, leaf_free, list, depth);
    };
    EXPECT_EQ(5, decode_list(list_d, hex("A1 03 02 01 05")).consumed);
    EXPECT_EQ(5, decode_list(list_d, hex("81 03 02 01 05")).consumed);
    EXPECT_EQ(-1, decode_list(list_d, hex("31 03 02 01 05")).consumed);
  }
}

TEST_F(ListDecoder, TakesAnImplicitTagOfLowByteZeroForNone) {
  const auto list_d = [](const uint8_t *z, const uint8_t *end, List **list, uint32_t depth) {
    return asn1_SetOf_d(z, end, 0x100, leaf_d, leaf_free, list, depth);
  };
  EXPECT_EQ(5, decode_list(list_d, hex("31 03 02 01 05")).consumed);
}

TEST_F(ListDecoder, LeavesAnEmptyListBehindARefusedHeader) {
  for (const char *octets : {
           "31 00",           // another tag
           "02 01 05",        // another tag
           "30 04 02 01 05",  // past the end
           "30 82 00",        // length octets past the end
           "30 85 00 00 00 00 00",
           "30",
           "",
       }) {
    const Result result = decode_list(seq_of_leaves, hex(octets));
    EXPECT_EQ(-1, result.consumed) << octets;
    ASSERT_NE(nullptr, result.list) << octets;
    EXPECT_EQ(0, List_len(result.list.get()));
    EXPECT_TRUE(calls.empty());
  }
}

TEST_F(ListDecoder, LeavesNoListBehindAFirstElementThatFails) {
  for (const char *octets :
       {"30 03 02 01 EE", "30 03 04 01 05", "30 02 02 00", "30 01 02", "30 02 02 01 05"}) {
    const Result result = decode_list(seq_of_leaves, hex(octets));
    EXPECT_EQ(-1, result.consumed) << octets;
    EXPECT_EQ(nullptr, result.list) << octets;
    EXPECT_TRUE(leaves.empty());
  }
}

TEST_F(ListDecoder, ReleasesTheElementsBeforeTheOneThatFailsOnceEach) {
  const Result result = decode_list(seq_of_leaves, hex("30 09 02 01 01 02 01 02 02 01 EE"));
  EXPECT_EQ(-1, result.consumed);
  EXPECT_EQ(nullptr, result.list);
  EXPECT_EQ(2U, leaves.size());
}

TEST_F(ListDecoder, ReleasesARecordThatAFailingElementLeftInTheSlot) {
  const Result result = decode_list(seq_of_leaves, hex("30 06 02 01 01 02 01 EF"));
  EXPECT_EQ(-1, result.consumed);
  EXPECT_EQ(nullptr, result.list);
  EXPECT_EQ(2U, leaves.size());
}

TEST_F(ListDecoder, FailsOnAnElementThatReachesBehindTheListButNotTheInput) {
  const Result result = decode_list(seq_of_leaves, hex("30 05 02 01 01 02 01 02"));
  EXPECT_EQ(-1, result.consumed);
  EXPECT_EQ(nullptr, result.list);
  EXPECT_EQ(1U, leaves.size());
}

TEST_F(ListDecoder, LeavesNoListWhereNoneCanBeMade) {
  const Input input(hex("30 03 02 01 01"));
  List *const before = List_new(0);
  List *list = before;
  lists_can_be_made = false;
  const uint8_t *next = asn1_SeqOf_d(input.z(), input.end(), 0, leaf_d, leaf_free, &list, 0);
  lists_can_be_made = true;
  EXPECT_EQ(nullptr, next);
  EXPECT_EQ(nullptr, list);
  EXPECT_TRUE(calls.empty());
  List_free(before, nullptr);
}

// The destructor must take NULL: it comes to the slot of every list that fails, whatever is in there.
TEST_F(ListDecoder, ReleasesAnEmptySlotToo) {
  for (const char *octets : {
           "30 03 02 01 EE",                    // the first element fails
           "30 09 02 01 01 02 01 02 02 01 EE",  // or a later one
           "30 80",                             // no end-of-contents, and no element yet
           "30 80 00 01",
       }) {
    SCOPED_TRACE(octets);
    releases_of_nothing = 0;
    EXPECT_EQ(-1, decode_list(seq_of_leaves, hex(octets)).consumed);
    EXPECT_EQ(1, releases_of_nothing);
    releases_of_nothing = 0;
    EXPECT_EQ(-1, decode_list(expl_seq_of_leaves, support::element(0xA0, hex(octets))).consumed);
    EXPECT_EQ(1, releases_of_nothing);
  }
  const Input input(hex("30 00"));
  List *list = nullptr;
  releases_of_nothing = 0;
  lists_can_be_made = false;
  EXPECT_EQ(nullptr, asn1_SeqOf_d(input.z(), input.end(), 0, leaf_d, leaf_free, &list, 0));
  lists_can_be_made = true;
  EXPECT_EQ(1, releases_of_nothing);
}

TEST_F(ListDecoder, ReleasesNoEmptySlotWhereNothingFailsOrTheSlotIsFull) {
  EXPECT_EQ(5, decode_list(seq_of_leaves, hex("30 03 02 01 01")).consumed);
  EXPECT_EQ(-1, decode_list(seq_of_leaves, hex("30 03 02 01 EF")).consumed);
  EXPECT_EQ(-1, decode_list(seq_of_leaves, hex("31 00")).consumed);  // a header leaves its list
  appends_allowed = 0;
  EXPECT_EQ(-1, decode_list(seq_of_leaves, hex("30 03 02 01 01")).consumed);
  appends_allowed = no_limit;
  EXPECT_EQ(0, releases_of_nothing);
}

TEST_F(ListDecoder, ReleasesTheElementThatCannotBeAppendedAndThoseBeforeOnceEach) {
  for (const int allowed : {0, 1, 2}) {
    const size_t before = leaves.size();
    appends_allowed = allowed;
    const Result result = decode_list(seq_of_leaves, hex("30 09 02 01 01 02 01 02 02 01 03"));
    appends_allowed = no_limit;
    EXPECT_EQ(-1, result.consumed);
    EXPECT_EQ(nullptr, result.list);
    EXPECT_EQ(before + static_cast<size_t>(allowed) + 1, leaves.size());
  }
}

TEST_F(ListDecoder, KeepsTheNullThatADecoderWithoutARecordLeaves) {
  const Input input(hex("30 04 05 00 05 00"));
  List *list = nullptr;
  EXPECT_EQ(input.end(), asn1_SeqOf_d(input.z(), input.end(), 0, asn1_Null_d, leaf_free, &list, 0));
  EXPECT_EQ(2, List_len(list));
  EXPECT_EQ(nullptr, List_get(list, 0));
  EXPECT_EQ(nullptr, List_get(list, 1));
  List_free(list, leaf_free);
}

TEST_F(ListDecoder, ReadsTheIndefiniteFormWhereItsEndIsTheEndOfTheInput) {
  const Result empty = decode_list(seq_of_leaves, hex("30 80 00 00"));
  EXPECT_EQ(4, empty.consumed);
  ASSERT_NE(nullptr, empty.list);
  EXPECT_EQ(0, List_len(empty.list.get()));

  const Result one = decode_list(seq_of_leaves, hex("30 80 02 01 05 00 00"));
  EXPECT_EQ(7, one.consumed);
  EXPECT_EQ(hex("05"), octets_of(one.list.get()));

  const Result two = decode_list(seq_of_leaves, hex("30 80 02 01 05 02 01 06 00 00"));
  EXPECT_EQ(10, two.consumed);
  EXPECT_EQ(hex("05 06"), octets_of(two.list.get()));
}

TEST_F(ListDecoder, EndsTheRangeOfAnIndefiniteElementTwoOctetsBeforeTheEnd) {
  decode_list(seq_of_leaves, hex("30 80 02 01 05 00 00"));
  ASSERT_EQ(1U, calls.size());
  EXPECT_EQ(3, calls[0].octets);
}

TEST_F(ListDecoder, RunsTheElementOnTheEndOfContentsWhereMoreFollows) {
  for (const char *octets : {"30 80 02 01 05 00 00 FF", "30 80 02 01 05 00 00 00"}) {
    calls.clear();
    const size_t before = leaves.size();
    const Result result = decode_list(seq_of_leaves, hex(octets));
    EXPECT_EQ(-1, result.consumed) << octets;
    EXPECT_EQ(nullptr, result.list);
    ASSERT_EQ(2U, calls.size());
    EXPECT_EQ(1, calls[1].octets);
    EXPECT_EQ(before + 1, leaves.size());
  }
}

TEST_F(ListDecoder, TakesZeroOctetsInFrontOfTheLastTwoForAnElement) {
  const Input input(hex("30 80 00 00 00 00"));
  List *list = nullptr;
  EXPECT_EQ(input.end(),
            asn1_SeqOf_d(input.z(), input.end(), 0, asn1_Any_d, asn1_Any_free, &list, 0));
  ASSERT_EQ(1, List_len(list));
  EXPECT_EQ(hex("00 00"), support::value(static_cast<const Any *>(List_get(list, 0))));
  List_free(list, asn1_Any_free);
}

TEST_F(ListDecoder, ReleasesEachElementOnceWhereTheEndOfContentsIsMissing) {
  for (const char *octets : {"30 80 02 01 05 02 01 06 01 00", "30 80 02 01 05 02 01 06 00 01"}) {
    const size_t before = leaves.size();
    const Result result = decode_list(seq_of_leaves, hex(octets));
    EXPECT_EQ(-1, result.consumed) << octets;
    EXPECT_EQ(nullptr, result.list);
    EXPECT_EQ(before + 2, leaves.size());
  }
}

TEST_F(ListDecoder, FailsOnAnIndefiniteFormWithoutElementsAndWithoutAnEnd) {
  for (const char *octets : {"30 80", "30 80 00", "30 80 01", "30 80 00 01", "30 80 01 00"}) {
    const Result result = decode_list(seq_of_leaves, hex(octets));
    EXPECT_EQ(-1, result.consumed) << octets;
    EXPECT_EQ(nullptr, result.list) << octets;
    EXPECT_TRUE(calls.empty());
  }
}

TEST_F(ListDecoder, TakesATopBitLengthForAnEmptyList) {
  for (const char *length : {"84 80 00 00 00", "84 FF FF FF FF", "84 FF FF FF FA"}) {
    const Result result = decode_list(seq_of_leaves, hex("30") + hex(length) + hex("02 01 05"));
    EXPECT_EQ(6, result.consumed) << length;
    ASSERT_NE(nullptr, result.list);
    EXPECT_EQ(0, List_len(result.list.get()));
    EXPECT_TRUE(calls.empty());
  }
}

TEST_F(ListDecoder, FailsWithoutAFunctionForItsElements) {
  const Input input(hex("30 03 02 01 05"));
  List *list = nullptr;
  EXPECT_EQ(nullptr, asn1_SeqOf_d(input.z(), input.end(), 0, nullptr, nullptr, &list, 0));
  EXPECT_EQ(nullptr, list);
}

TEST_F(ListDecoder, GivesNothingWithoutACursor) {
  const uint8_t octet = 0;
  List *const before = List_new(0);
  List *list = before;
  EXPECT_EQ(nullptr, asn1_List_d(nullptr, &octet, 0, 16, leaf_d, leaf_free, &list, 0));
  EXPECT_EQ(before, list);
  EXPECT_EQ(nullptr, asn1_SetOf_d(nullptr, &octet, 0, leaf_d, leaf_free, &list, 0));
  EXPECT_EQ(before, list);
  EXPECT_EQ(nullptr, asn1_SeqOf_d(nullptr, &octet, 0, leaf_d, leaf_free, &list, 0));
  EXPECT_EQ(before, list);
  List_free(before, nullptr);
}

TEST(ListCodecDeathTest, ListDecodersWithoutAPlaceOrAnEnd) {
  const uint8_t octets[] = {0x30, 0x00};
  const uint8_t *end = octets + 2;
  List *list = nullptr;
  EXPECT_ASSERT(asn1_List_d(octets, end, 0, 16, leaf_d, leaf_free, nullptr, 0), "asn1_List_d",
                "ppList != NULL");
  EXPECT_ASSERT(asn1_List_d(nullptr, end, 0, 16, leaf_d, leaf_free, nullptr, 0), "asn1_List_d",
                "ppList != NULL");
  EXPECT_ASSERT(asn1_SetOf_d(octets, end, 0, leaf_d, leaf_free, nullptr, 0), "asn1_List_d",
                "ppList != NULL");
  EXPECT_ASSERT(asn1_SeqOf_d(octets, end, 0, leaf_d, leaf_free, nullptr, 0), "asn1_List_d",
                "ppList != NULL");
  EXPECT_ASSERT(asn1_List_d(octets, nullptr, 0, 16, leaf_d, leaf_free, &list, 0), "asn1_Tag_d",
                "end != NULL");
  EXPECT_ASSERT(asn1_expl_List_d(octets, nullptr, 16, 16, leaf_d, leaf_free, &list, 0),
                "asn1_Tag_d", "end != NULL");
}

// -- Decoding lists inside explicit tags --------------------------------------------------------

TEST_F(ExplicitListDecoder, GivesNothingWithoutACursorOrAPlace) {
  const uint8_t octets[] = {0xA0, 0x02, 0x30, 0x00};
  const uint8_t *end = octets + 4;
  List *list = nullptr;
  EXPECT_EQ(nullptr, asn1_expl_List_d(nullptr, end, 0x80, 16, leaf_d, leaf_free, &list, 0));
  EXPECT_EQ(nullptr, asn1_expl_SetOf_d(nullptr, end, 0x80, leaf_d, leaf_free, &list, 0));
  EXPECT_EQ(nullptr, asn1_expl_SeqOf_d(nullptr, end, 0x80, leaf_d, leaf_free, &list, 0));
  EXPECT_EQ(nullptr, list);
  EXPECT_EQ(nullptr, asn1_expl_List_d(octets, end, 0x80, 16, leaf_d, leaf_free, nullptr, 0));
  EXPECT_EQ(nullptr, asn1_expl_SetOf_d(octets, end, 0x80, leaf_d, leaf_free, nullptr, 0));
  EXPECT_EQ(nullptr, asn1_expl_SeqOf_d(octets, end, 0x80, leaf_d, leaf_free, nullptr, 0));
}

TEST_F(ExplicitListDecoder, LeavesThePlaceAloneBehindARefusedWrapper) {
  for (const char *octets : {
           "A1 02 30 00",        // another tag
           "30 00",              // no wrapper
           "A0 80 30 00 00 00",  // indefinite
           "A0 03 30 00",        // past the end
           "",
       }) {
    const Result result = decode_list(expl_seq_of_leaves, hex(octets));
    EXPECT_EQ(-1, result.consumed) << octets;
    EXPECT_EQ(nullptr, result.list) << octets;
  }
}

TEST_F(ExplicitListDecoder, LeavesAnEmptyListBehindARefusedListHeader) {
  for (const char *octets : {"A0 02 31 00", "A0 00", "A0 02 30 01 02", "A0 00 30 00"}) {
    const Result result = decode_list(expl_seq_of_leaves, hex(octets));
    EXPECT_EQ(-1, result.consumed) << octets;
    ASSERT_NE(nullptr, result.list) << octets;
    EXPECT_EQ(0, List_len(result.list.get()));
  }
}

TEST_F(ExplicitListDecoder, LeavesNoListBehindAnElementThatFails) {
  const Result result = decode_list(expl_seq_of_leaves, hex("A0 08 30 06 02 01 01 02 01 EE"));
  EXPECT_EQ(-1, result.consumed);
  EXPECT_EQ(nullptr, result.list);
  EXPECT_EQ(1U, leaves.size());
}

TEST_F(ExplicitListDecoder, ReadsAnIndefiniteListInsideADefiniteWrapper) {
  const Result result = decode_list(expl_seq_of_leaves, hex("A0 07 30 80 02 01 05 00 00 FF FF"));
  EXPECT_EQ(9, result.consumed);
  EXPECT_EQ(hex("05"), octets_of(result.list.get()));
}

TEST_F(ExplicitListDecoder, FailsWhereTheIndefiniteListDoesNotEndWithTheWrapper) {
  const Result result = decode_list(expl_seq_of_leaves, hex("A0 08 30 80 02 01 05 00 00 FF"));
  EXPECT_EQ(-1, result.consumed);
  EXPECT_EQ(nullptr, result.list);
  EXPECT_EQ(1U, leaves.size());
}

TEST_F(ExplicitListDecoder, DoesNotCheckThatTheListFillsTheWrapper) {
  EXPECT_EQ(4, decode_list(expl_seq_of_leaves, hex("A0 04 30 00 FF FF")).consumed);
}

TEST_F(ExplicitListDecoder, FailsOnAWrapperWithATopBitLength) {
  for (const char *length : {"84 80 00 00 00", "84 FF FF FF FF"}) {
    const Result result = decode_list(expl_seq_of_leaves, hex("A0") + hex(length) + hex("30 00"));
    EXPECT_EQ(-1, result.consumed) << length;
    ASSERT_NE(nullptr, result.list) << "the header of the list is refused";
    EXPECT_EQ(0, List_len(result.list.get()));
  }
}

TEST_F(ExplicitListDecoder, TakesATopBitLengthInsideForAnEmptyList) {
  const Result result = decode_list(expl_seq_of_leaves, hex("A0 09 30 84 FF FF FF FF 02 01 05"));
  EXPECT_EQ(8, result.consumed);
  ASSERT_NE(nullptr, result.list);
  EXPECT_EQ(0, List_len(result.list.get()));
}

// -- Trace --------------------------------------------------------------------------------------

Lines list_trace(const Decoder &list_d, const char *octets, uint32_t depth) {
  return trace_lines([&] { decode_list(list_d, hex(octets), depth); });
}

TEST_F(WrapperTrace, AListStandsBetweenBracesWithItsElementsOneLevelDeeper) {
  EXPECT_EQ((Lines{"SEQUENCE {", ". INTEGER", ". INTEGER", "}"}),
            list_trace(seq_of_leaves, "30 06 02 01 01 02 01 02", 1));
  EXPECT_EQ((Lines{". . SEQUENCE {", ". . . INTEGER", ". . }"}),
            list_trace(seq_of_leaves, "30 03 02 01 01", 3));
  EXPECT_EQ((Lines{"SEQUENCE {", "}"}), list_trace(seq_of_leaves, "30 00", 1));
  EXPECT_EQ((Lines{"SEQUENCE", ". INTEGER", "}"}), list_trace(seq_of_leaves, "10 03 02 01 01", 1));
}

TEST_F(WrapperTrace, ASetAndATaggedListBearTheirTags) {
  const auto set_of = [](const uint8_t *z, const uint8_t *end, List **list, uint32_t depth) {
    return asn1_SetOf_d(z, end, 0, leaf_d, leaf_free, list, depth);
  };
  const auto tagged = [](const uint8_t *z, const uint8_t *end, List **list, uint32_t depth) {
    return asn1_SetOf_d(z, end, 0x81, leaf_d, leaf_free, list, depth);
  };
  EXPECT_EQ((Lines{"SET {", ". INTEGER", "}"}), list_trace(set_of, "31 03 02 01 01", 1));
  EXPECT_EQ((Lines{"CONTEXT-SPECIFIC CONSTRUCTED [1] {", ". INTEGER", "}"}),
            list_trace(tagged, "A1 03 02 01 01", 1));
}

TEST_F(WrapperTrace, AnIndefiniteListIsClosedLikeADefiniteOne) {
  EXPECT_EQ((Lines{"SEQUENCE {", ". INTEGER", "}"}),
            list_trace(seq_of_leaves, "30 80 02 01 05 00 00", 1));
}

TEST_F(WrapperTrace, AListThatFailsIsNotClosed) {
  EXPECT_EQ((Lines{"SEQUENCE {", ". INTEGER"}), list_trace(seq_of_leaves, "30 03 02 01 EE", 1));
  EXPECT_EQ((Lines{"SEQUENCE {", ". INTEGER"}),
            list_trace(seq_of_leaves, "30 80 02 01 05 01 00", 1));
  EXPECT_EQ((Lines{"SEQUENCE {", "z larger than end!"}), list_trace(seq_of_leaves, "30 01", 1));
  EXPECT_EQ(Lines{}, list_trace(seq_of_leaves, "31 00", 1));
}

TEST_F(WrapperTrace, ATopBitListOpensAndCloses) {
  EXPECT_EQ((Lines{"SEQUENCE {", "}"}), list_trace(seq_of_leaves, "30 84 80 00 00 00 02 01 05", 1));
}

TEST_F(WrapperTrace, AnExplicitTagStandsAtTheLevelOfItsElementAndIsNotClosed) {
  Leaf *leaf = nullptr;
  EXPECT_EQ((Lines{". CONTEXT-SPECIFIC CONSTRUCTED [0] {", ". INTEGER"}),
            trace_lines([&] { explicit_leaf(hex("A0 03 02 01 05"), &leaf, 2); }));
  leaf_free(leaf);
  EXPECT_EQ((Lines{"CONTEXT-SPECIFIC PRIMITIVE [0] {", "INTEGER"}),
            trace_lines([&] { explicit_leaf(hex("80 03 02 01 05"), &leaf, 1); }));
  leaf_free(leaf);
}

TEST_F(WrapperTrace, AnExplicitTagOfAListStandsAtTheLevelOfTheList) {
  EXPECT_EQ((Lines{". CONTEXT-SPECIFIC CONSTRUCTED [0] {", ". SEQUENCE {", ". . INTEGER", ". }"}),
            list_trace(expl_seq_of_leaves, "A0 05 30 03 02 01 05", 2));
}

TEST_F(WrapperTrace, IsSilentAtDepthZero) {
  EXPECT_EQ(Lines{}, list_trace(expl_seq_of_leaves, "A0 05 30 03 02 01 05", 0));
  EXPECT_EQ(Lines{}, list_trace(seq_of_leaves, "30 01", 0));
}

#ifndef ORVELASN1_TESTS_SANITIZED

// -- Exhausted memory ---------------------------------------------------------------------------

TEST(ListMemory, TheDecoderGivesAndStoresNullWhereAnAllocationFails) {
  Bytes content;
  for (int i = 0; i < 9; ++i) content = content + hex("02 01 05");
  const Input input(support::element(0x30, content));
  const long allocations = support::expect_failure_at_each_allocation([&] {
    List *list = nullptr;
    const uint8_t *next =
        asn1_SeqOf_d(input.z(), input.end(), 0, asn1_Integer_d, asn1_Integer_free, &list, 0);
    EXPECT_EQ(next != nullptr, list != nullptr);
    List_free(list, asn1_Integer_free);
    return next != nullptr;
  });
  EXPECT_LT(18, allocations) << "two for each element, and at least one for the list";
}

TEST(ListMemory, AppendThatFailsLeavesTheListAsItWas) {
  List *list = List_new(0);
  int elements[200];
  int32_t failures = 0;
  for (int &element : elements) {
    const int32_t before = List_len(list);
    int32_t appended = 0;
    {
      const support::FailingAllocation failing(0);
      appended = List_append(list, &element, 0);
    }
    EXPECT_EQ(before + appended, List_len(list));
    if (appended == 0) {
      ++failures;
      EXPECT_EQ(1, List_append(list, &element, 0));
    }
  }
  EXPECT_LT(0, failures);
  for (int32_t i = 0; i < 200; ++i) EXPECT_EQ(elements + i, List_get(list, i));
  List_free(list, nullptr);
}

TEST(ListMemory, CloneGivesNullAndKeepsNothingWhereAnAllocationFails) {
  List *list = List_new(0);
  for (int i = 0; i < 9; ++i) {
    EXPECT_EQ(1, List_append(list, asn1_Integer_clone(asn1_Integer_3()), 0));
  }
  EXPECT_LT(18, support::expect_failure_at_each_allocation([&] {
              List *copy = List_clone(list, asn1_Integer_clone, asn1_Integer_free);
              EXPECT_TRUE(copy == nullptr || List_len(copy) == 9);
              List_free(copy, asn1_Integer_free);
              return copy != nullptr;
            }));
  List_free(list, asn1_Integer_free);
}

#endif

}  // namespace
