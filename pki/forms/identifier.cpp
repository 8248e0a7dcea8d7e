#include "pki/forms/identifier.h"

#include <algorithm>

#pragma GCC visibility push(default)
#include "pki_x680.h"
#pragma GCC visibility pop

namespace pki {

namespace {

/// The first number makes two arcs (X.690, 8.19.4): the root, which is 0 to 2, and the one after
/// it, which is below 40 under the roots 0 and 1.
constexpr uint64_t arcs_of_root = 40;
constexpr uint64_t last_root = 2;
constexpr uint64_t most_of_first = last_root * arcs_of_root + UINT32_MAX;

/// Octets in the words of a record that keeps an identifier whole.
constexpr uint32_t octets_of_word = 4;
constexpr uint32_t words_in_front = 2;

uint32_t words_of(uint32_t octets) {
  return words_in_front + (octets + octets_of_word - 1) / octets_of_word;
}

inline ObjId *new_identifier(uint32_t count) {
  auto *const identifier = asn1::new_record<ObjId>();
  if (identifier == nullptr) return nullptr;
  identifier->arcs = asn1::new_array<uint32_t>(count);
  identifier->count = count;
  if (identifier->arcs != nullptr) return identifier;
  std::free(identifier);
  return nullptr;
}

ObjId *whole_identifier(View content) {
  ObjId *const identifier = new_identifier(words_of(content.length));
  if (identifier == nullptr) return nullptr;
  std::memset(identifier->arcs, 0, identifier->count * sizeof(uint32_t));
  identifier->arcs[0] = PKI_LARGE_ARCS;
  identifier->arcs[1] = content.length;
  for (uint32_t i = 0; i < content.length; ++i) {
    identifier->arcs[words_in_front + i / octets_of_word] |=
        uint32_t{content.data[i]} << (8 * (octets_of_word - 1 - i % octets_of_word));
  }
  return identifier;
}

bool is_whole(const ObjId &identifier) {
  return identifier.count > words_in_front && identifier.arcs[0] == PKI_LARGE_ARCS;
}

uint8_t kept_octet(const ObjId &identifier, uint32_t index) {
  return static_cast<uint8_t>(identifier.arcs[words_in_front + index / octets_of_word] >>
                              (8 * (octets_of_word - 1 - index % octets_of_word)));
}

uint32_t octets_of(uint64_t number) {
  uint32_t octets = 1;
  for (; number >= 0x80; number >>= 7) ++octets;
  return octets;
}

uint64_t first_number(const ObjId &identifier) {
  return identifier.arcs[0] * arcs_of_root + identifier.arcs[1];
}

/// Writes a number in front of `to`; returns where it begins.
uint8_t *write_number(uint64_t number, uint8_t *to) {
  *--to = static_cast<uint8_t>(number & 0x7F);
  for (number >>= 7; number != 0; number >>= 7)
    *--to = static_cast<uint8_t>(0x80 | (number & 0x7F));
  return to;
}

}  // namespace

namespace {

/// Reads one number. Fails where it is more than `most`, has needless octets or no end.
[[gnu::always_inline]] inline bool read_number(Reader &in, uint64_t most, uint64_t *number) {
  uint8_t octet = 0;
  if (!in.read_octet(&octet)) return false;
  *number = octet;
  if (octet < 0x80) [[likely]] {
    return true;
  }
  if (octet == 0x80) return false;
  *number = octet & 0x7F;
  do {
    if (!in.read_octet(&octet)) return false;
    *number = *number << 7 | (octet & 0x7F);
    if (*number > most) return false;
  } while (octet >= 0x80);
  return true;
}

/// Reads the numbers of a content into arcs, of which there is one more than numbers.
bool read_arcs(Reader in, uint32_t *arcs) {
  uint64_t number = 0;
  if (!read_number(in, most_of_first, &number)) return false;
  const uint64_t root = number < last_root * arcs_of_root ? number / arcs_of_root : last_root;
  *arcs++ = static_cast<uint32_t>(root);
  *arcs++ = static_cast<uint32_t>(number - root * arcs_of_root);
  while (!in.at_end()) {
    if (!read_number(in, UINT32_MAX, &number)) return false;
    *arcs++ = static_cast<uint32_t>(number);
  }
  return true;
}

}  // namespace

ObjId *identifier_of(View content) {
  const uint8_t *const end = content.data + content.length;
  const auto numbers = std::count_if(content.data, end, [](uint8_t octet) { return octet < 0x80; });
  ObjId *const identifier = new_identifier(static_cast<uint32_t>(numbers) + 1);
  if (identifier == nullptr || read_arcs(Reader(content.data, end), identifier->arcs)) {
    return identifier;
  }
  asn1_ObjId_free(identifier);
  return refuse_identifier(content, 0) == nullptr ? whole_identifier(content) : nullptr;
}

uint32_t identifier_octets(const ObjId &identifier) {
  if (identifier.count < words_in_front || identifier.arcs == nullptr) return 0;
  if (is_whole(identifier)) {
    const uint32_t octets = identifier.arcs[1];
    if (octets > INT32_MAX || words_of(octets) != identifier.count) return 0;
    bool starts = true;
    for (uint32_t i = 0; i < octets; ++i) {
      const uint8_t octet = kept_octet(identifier, i);
      if (starts && octet == 0x80) return 0;
      starts = octet < 0x80;
    }
    return starts ? octets : 0;
  }
  // asn1_ObjId_d() splits the first number of an identifier such as 2.999 into larger roots.
  const bool is_split = identifier.arcs[0] == last_root || identifier.arcs[1] < arcs_of_root;
  if (!is_split || first_number(identifier) > most_of_first) return 0;
  asn1::Measure size;
  size.add(octets_of(first_number(identifier)));
  for (uint32_t i = 2; i < identifier.count; ++i) {
    if (!size.add(octets_of(identifier.arcs[i]))) return 0;
  }
  return size.content();
}

void write_identifier(const ObjId &identifier, uint8_t *to) {
  const uint32_t octets = identifier_octets(identifier);
  if (is_whole(identifier)) {
    for (uint32_t i = 0; i < octets; ++i) to[i] = kept_octet(identifier, i);
    return;
  }
  uint8_t *at = to + octets;
  for (uint32_t i = identifier.count; i > 2; --i) at = write_number(identifier.arcs[i - 1], at);
  write_number(first_number(identifier), at);
}

}  // namespace pki
