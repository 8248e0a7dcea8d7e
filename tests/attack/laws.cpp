#include "laws.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <memory>

#include "guard.h"

namespace attack {

namespace {

// Identifier octets (X.690, 8.1.2). SEQUENCE and SET are those of the primitive form, which the
// library takes too.
constexpr uint8_t constructed_bit = 0x20;
constexpr uint8_t class_bits = 0xC0;
constexpr uint8_t context = 0x80;
constexpr uint8_t object_identifier = 6;
constexpr uint8_t sequence = 0x10;
constexpr uint8_t set = 0x11;

/// Whether the decoder of OBJECT IDENTIFIER takes this content to its end: it stops after five
/// octets of a number, and before octets that end none.
bool is_taken_whole(Octets identifier) {
  size_t octets = 0;
  for (const uint8_t octet : identifier) {
    if (++octets > 5) return false;
    if (octet < 0x80) octets = 0;
  }
  return octets == 0;
}

/// Calls `f(tag, length, hidden)` for each header in turn. Returns false where the octets are not
/// whole elements of definite length, one in the other, or the library would go on in the middle of
/// one. Looks into SEQUENCE and SET in their primitive form too, as the library does. The library
/// does the same with a context-specific tag in its primitive form where its type is a constructed
/// one, which is not known here: `hidden` is the content of these.
template <class F>
bool for_each_header(Octets input, F f) {
  std::vector<size_t> ends{input.size()};
  size_t at = 0;
  while (at < input.size()) {
    while (at == ends.back()) ends.pop_back();
    const uint8_t tag = input[at++];
    if (at == ends.back()) return false;
    LengthPlace length{at, 1, input[at]};
    ++at;
    if (length.value >= 0x80) {
      const size_t octets = length.value & 0x7F;
      if (octets == 0 || octets > 4 || octets > ends.back() - at) return false;
      length = {length.offset, 1 + octets, 0};
      for (size_t i = 0; i < octets; ++i) length.value = length.value << 8 | input[at++];
    }
    const bool constructed = (tag & constructed_bit) != 0 || tag == sequence || tag == set;
    const Octets content = input.subspan(at, std::min<size_t>(length.value, ends.back() - at));
    const bool hides = !constructed && (tag & class_bits) == context;
    f(tag, length, hides ? content : Octets());
    if (length.value > content.size() || (tag == object_identifier && !is_taken_whole(content)))
      return false;
    if (constructed)
      ends.push_back(at + length.value);
    else
      at += length.value;
  }
  return true;
}

std::string text_of(const Bytes &octets) { return {octets.begin(), octets.end()}; }

/// Counts the octets that went to the trace, which goes nowhere else while this program runs.
size_t traced_octets() {
  static size_t octets = 0;
  static FILE *const stream = [] {
    const auto count = [](void *, const char *, size_t size) {
      octets += size;
      return static_cast<ssize_t>(size);
    };
    FILE *const made = fopencookie(nullptr, "w", {nullptr, count, nullptr, nullptr});
    asn1_LogStart(made);
    return made;
  }();
  std::fflush(stream);
  return octets;
}

/// A copy of the octets in a block of exactly their number, or with more after them.
class Copy {
 public:
  explicit Copy(Octets octets, size_t after = 0, uint8_t filling = 0)
      : size_(octets.size()), block_(new uint8_t[octets.size() + after]) {
    std::ranges::copy(octets, block_.get());
    std::fill_n(block_.get() + size_, after, filling);
  }
  Octets octets() const { return {block_.get(), size_}; }

 private:
  size_t size_;
  std::unique_ptr<uint8_t[]> block_;
};

/// One input under the laws. A member that finds one broken throws it, as it does where the process
/// would have ended.
class Trial {
 public:
  explicit Trial(const Family &family) : family_(family) {}

  struct Broken {
    std::string law;
  };
  struct Ended {
    std::string words;
  };

  void run(Octets input);
  void run_in_place(Octets input);
  void explain(Octets input);

 private:
  struct Decoded {
    long consumed = -1;
    void *record = nullptr;
  };

  static void demand(bool holds, const char *law) {
    if (!holds) throw Broken{law};
  }

  template <class F>
  void call(F f) {
    if (!guard_.run(f)) throw Ended{guard_.last_words()};
    demand(!guard_.released_a_stranger(), "what is released is a block, once");
  }

  Decoded decode(Octets input, uint32_t depth);
  Bytes encode(const void *record);
  void free(void *record) {
    call([&] { family_.free(record); });
  }
  void expect_same(const Decoded &expected, const Bytes &octets, Octets input, uint32_t depth,
                   const char *law);
  void read_again(Octets input, const Bytes &written);
  void copy(const void *record, void **copied);
  void compare(const void *record, const void *copied);

  const Family &family_;
  Guard guard_;
};

Trial::Decoded Trial::decode(Octets input, uint32_t depth) {
  const uint8_t *const z = input.data();
  const uint8_t *const end = z + input.size();
  uint8_t stranger = 0;
  Decoded out;
  const uint8_t *next = nullptr;
  void *place = &stranger;
  const size_t traced = traced_octets();
  call([&] { next = family_.decode(z, end, 0, &place, depth); });
  if (depth == 0) demand(traced_octets() == traced, "depth 0 writes no trace");
  if (next == nullptr) {
    if (place == &stranger || place == nullptr) return out;
    demand(family_.has(may_leave_a_list), "a failed decoder leaves the place alone or clears it");
    free(place);
    return out;
  }
  demand(next >= z && next <= end, "the cursor stays in the range");
  out.consumed = next - z;
  out.record = place == &stranger ? nullptr : place;
  return out;
}

Bytes Trial::encode(const void *record) {
  if (family_.encode == nullptr) return {};
  uint32_t measured = 0, written = 0;
  call([&] { measured = family_.encode(nullptr, record); });
  const std::unique_ptr<uint8_t[]> buffer(new uint8_t[measured]);
  uint8_t *cursor = buffer.get();
  call([&] { written = family_.encode(&cursor, record); });
  const auto moved = static_cast<uint32_t>(cursor - buffer.get());
  if (family_.has(is_not_written)) {
    demand(written == 0 && moved == 0, "what is not written moves nothing");
    return {};
  }
  demand(written == measured && moved == measured, "what measures n octets writes n octets");
  return Bytes(buffer.get(), cursor);
}

void Trial::expect_same(const Decoded &expected, const Bytes &octets, Octets input, uint32_t depth,
                        const char *law) {
  const Decoded again = decode(input, depth);
  demand(again.consumed == expected.consumed, law);
  if (again.consumed < 0) return;
  demand(encode(again.record) == octets, law);
  free(again.record);
}

void Trial::read_again(Octets input, const Bytes &written) {
  if (written.empty() || family_.has(is_not_read_back)) return;
  if (family_.has(keeps_any) && !has_shortest_lengths(input)) return;
  if (family_.has(writes_attribute_values) && (has_tag(input, 3) || has_constructed_value(input)))
    return;
  const auto says = [&](const char *text) {
    return text_of(written).find(text) != std::string::npos;
  };
  if (family_.has(cannot_read_sn) && says("sn(")) return;
  if (family_.has(cannot_read_negative_arcs) && says(".-")) return;
  const Decoded again = decode(Copy(written).octets(), 0);
  demand(again.consumed == static_cast<long>(written.size()), "what was written is read");
  demand(encode(again.record) == written, "what was written and read is written alike");
  free(again.record);
}

void Trial::copy(const void *record, void **copied) {
  if (family_.clone == nullptr || record == nullptr) return;
  call([&] { *copied = family_.clone(record); });
  demand(*copied != nullptr || family_.has(may_lack_copies), "a record has a copy");
}

void Trial::compare(const void *record, const void *copied) {
  if (family_.compare == nullptr || record == nullptr) return;
  int32_t with_itself = 0, with_copy = 0;
  call([&] { with_itself = family_.compare(record, record); });
  demand(with_itself == 0 || family_.has(may_not_compare), "a record is like itself");
  if (copied == nullptr || family_.has(copy_forgets_value_tags)) return;
  call([&] { with_copy = family_.compare(record, copied); });
  demand(with_copy == with_itself, "a record is like its copy");
}

void Trial::run_in_place(Octets input) {
  const Decoded plain = decode(input, 0);
  if (plain.consumed >= 0) free(plain.record);
  demand(guard_.blocks() == 0, "everything is released");
}

void Trial::explain(Octets input) {
  const uint8_t *const z = input.data();
  pki_Fault fault;
  std::memset(&fault, 0xAA, sizeof fault);
  int32_t found = -1;
  guard_.fail_after(0);
  const bool returned =
      guard_.run([&] { found = pki_explain(family_.type, z, z + input.size(), &fault); });
  demand(returned, "an explanation does not end the process");
  demand(!guard_.has_failed() && !guard_.released_a_stranger(),
         "an explanation allocates and releases nothing");
  guard_.fail_no_more();
  demand(found == 0 || found == 1, "an explanation returns 0 or 1");
  demand(fault.offset <= input.size(), "the offset of a fault lies inside the input");
  demand(std::memchr(fault.path, 0, sizeof fault.path) != nullptr &&
             std::memchr(fault.sentence, 0, sizeof fault.sentence) != nullptr,
         "the texts of a fault end");
  demand(found == 0 || fault.sentence[0] != '\0', "a fault has a sentence");
  if (family_.has(is_never_read)) {
    demand(found == 1, "nothing is a value of a type that is never read");
    return;
  }
  long consumed = -1;
  try {
    const Decoded decoded = decode(input, 0);
    consumed = decoded.consumed;
    if (consumed >= 0) free(decoded.record);
  } catch (const Ended &) {
    demand(found == 1, "what ends the process has a fault");
    throw;
  }
  demand((found == 0) == (consumed >= 0), "nothing is wrong where the decoder takes the octets");
  demand(consumed < 0 || fault.offset == static_cast<size_t>(consumed),
         "the offset is the number of octets that the decoder takes");
}

void Trial::run(Octets input) {
  const Decoded plain = decode(Copy(input).octets(), 0);
  const Bytes octets = plain.consumed < 0 ? Bytes() : encode(plain.record);
  expect_same(plain, octets, Copy(input).octets(), 1, "the trace changes nothing");
  expect_same(plain, octets, Copy(input, 8, 0x00).octets(), 0,
              "what stands after the end changes nothing");
  expect_same(plain, octets, Copy(input, 8, 0xFF).octets(), 0,
              "what stands after the end changes nothing");
  if (plain.consumed >= 0) {
    demand(!family_.is_form() || !octets.empty(), "what was decoded as a form is encoded");
    read_again(input, octets);
    void *copied = nullptr;
    copy(plain.record, &copied);
    compare(plain.record, copied);
    free(plain.record);
    if (copied != nullptr) {
      demand(family_.has(copy_forgets_value_tags) || encode(copied) == octets,
             "a copy is written as its original");
      free(copied);
    }
  }
  demand(guard_.blocks() == 0, "everything is released");
}

}  // namespace

std::vector<LengthPlace> lengths(Octets input) {
  std::vector<LengthPlace> found;
  for_each_header(input,
                  [&](uint8_t, const LengthPlace &place, Octets) { found.push_back(place); });
  return found;
}

bool has_shortest_lengths(Octets input) {
  bool all = true;
  const auto may_begin_a_length = [](uint8_t octet) { return octet >= 0x80 && octet <= 0x84; };
  const auto is_sure = [&](Octets hidden) {
    return std::ranges::none_of(hidden, may_begin_a_length) && is_taken_whole(hidden);
  };
  const auto check = [&](uint8_t, const LengthPlace &length, Octets hidden) {
    size_t octets = 1;
    if (length.value >= 0x80)
      for (uint32_t rest = length.value; rest != 0; rest >>= 8) ++octets;
    all = all && length.octets == octets && !(length.octets == 1 && length.value == 0x80) &&
          is_sure(hidden);
  };
  return for_each_header(input, check) && all;
}

bool has_tag(Octets input, uint8_t number) {
  bool found = false;
  const auto is_tag = [&](uint8_t octet) { return (octet & ~constructed_bit) == number; };
  const auto check = [&](uint8_t tag, const LengthPlace &, Octets hidden) {
    found = found || is_tag(tag) || std::ranges::any_of(hidden, is_tag);
  };
  return !for_each_header(input, check) || found;
}

bool has_constructed_value(Octets input) {
  bool found = false;
  std::array<uint8_t, 2> before{};
  const auto is_identifier = [](uint8_t octet) { return octet == object_identifier; };
  const auto check = [&](uint8_t tag, const LengthPlace &, Octets hidden) {
    const bool in_assertion =
        (before[0] & ~constructed_bit) == sequence && is_identifier(before[1]);
    found = found || (in_assertion && (tag & constructed_bit) != 0) ||
            std::ranges::any_of(hidden, is_identifier);
    before = {before[1], tag};
  };
  return !for_each_header(input, check) || found;
}

bool is_promised_ending(const std::string &words) {
  constexpr std::string_view promised[] = {
      // The identifier octet of a value in a name that is 100 or more.
      "asn1_x501: asn1_RDNSequence_to_Name: valueTag does not fit \"(%i)=\" in six octets\n",
      // A ContentInfo without a usable type.
      "asn1_x680: asn1_ObjId_cmp: assertion \"oid2 != NULL\" failed\n",
      // An EncryptedContentInfo, or a bag, without its content.
      "asn1_x680: asn1_implicit_e: assertion \"pElement\" failed\n",
      "asn1_x680: asn1_explicit_e: assertion \"pElement\" failed\n",
  };
  return std::ranges::find(promised, words) != std::end(promised);
}

namespace {

template <class F>
std::string broken_law_of(const Family &family, Endings *endings, F f) {
  try {
    Trial trial(family);
    f(trial);
  } catch (const Trial::Broken &broken) {
    return broken.law;
  } catch (const Trial::Ended &ended) {
    if (family.is_form() || !is_promised_ending(ended.words))
      return "only promised inputs end the process: " + ended.words;
    if (endings != nullptr) ++(*endings)[ended.words];
  }
  return {};
}

}  // namespace

std::string broken_law(const Family &family, Octets input, Endings *endings) {
  return broken_law_of(family, endings, [&](Trial &trial) { trial.run(input); });
}

std::string broken_law_in_place(const Family &family, Octets input) {
  return broken_law_of(family, nullptr, [&](Trial &trial) { trial.run_in_place(input); });
}

std::string broken_agreement(const Family &family, Octets input) {
  return broken_law_of(family, nullptr, [&](Trial &trial) { trial.explain(input); });
}

}  // namespace attack
