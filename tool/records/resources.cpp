// Blocks of addresses and numbers of autonomous systems (RFC 3779).
#include <arpa/inet.h>

#include <algorithm>
#include <array>

#include "records/values.h"
#include "text/characters.h"
#include "text/integers.h"

namespace tool {

namespace {

constexpr uint8_t inherit_kind = 5;
constexpr uint8_t range_kind = 16;

/// The families of addresses (RFC 3779, 2.2.3.3), by their number.
struct Family {
  std::string name;
  int system = 0;   ///< of inet_ntop(); 0 for one that is not known
  size_t size = 0;  ///< octets of an address
};

Family family_of(const OctetString *identifier) {
  const Octets octets = tool::octets(identifier);
  Family family{"address family " + hex(octets)};
  if (octets.size() < 2 || octets[0] != 0) return family;
  if (octets[1] == 1) family = {"IPv4", AF_INET, 4};
  if (octets[1] == 2) family = {"IPv6", AF_INET6, 16};
  if (family.system != 0 && octets.size() > 2)
    family.name += " (SAFI " + hex(octets.subspan(2)) + ")";
  return family;
}

/// Returns an address whose bits past the given ones are all 0 or all 1.
std::string address(const BitString *bits, const Family &family, bool ones) {
  const Octets given = octets(bits);
  if (family.system == 0 || bits->length > 8 * family.size) return hex(given);
  std::array<uint8_t, 16> all{};
  std::ranges::copy(given, all.begin());
  for (uint32_t i = bits->length; i < 8 * family.size; ++i) {
    const auto bit = static_cast<uint8_t>(0x80 >> (i % 8));
    all[i / 8] = static_cast<uint8_t>(ones ? all[i / 8] | bit : all[i / 8] & ~bit);
  }
  char out[INET6_ADDRSTRLEN];
  return inet_ntop(family.system, all.data(), out, sizeof out);
}

std::string text_of(const pki_IPAddressOrRange *block, const Family &family) {
  if (block->kind != range_kind) {
    const auto *const prefix = static_cast<const BitString *>(block->value);
    return address(prefix, family, false) + "/" + std::to_string(prefix->length);
  }
  const auto *const range = static_cast<const pki_IPAddressRange *>(block->value);
  return address(range->min, family, false) + "-" + address(range->max, family, true);
}

std::string text_of(const pki_ASIdOrRange *block) {
  if (block->kind != range_kind) return number_text(static_cast<const Integer *>(block->value));
  const auto *const range = static_cast<const pki_ASRange *>(block->value);
  return number_text(range->min) + "-" + number_text(range->max);
}

std::vector<std::string> words_of(const pki_IPAddressChoice *choice, const Family &family) {
  if (choice->kind == inherit_kind) return {"inherit"};
  std::vector<std::string> words;
  for (const auto *block : elements<pki_IPAddressOrRange>(static_cast<const List *>(choice->value)))
    words.push_back(text_of(block, family));
  return words;
}

std::vector<std::string> words_of(const pki_ASIdentifierChoice *choice) {
  if (choice->kind == inherit_kind) return {"inherit"};
  std::vector<std::string> words;
  for (const auto *block : elements<pki_ASIdOrRange>(static_cast<const List *>(choice->value)))
    words.push_back(text_of(block));
  return words;
}

}  // namespace

// IPAddressFamily ::= SEQUENCE { addressFamily, ipAddressChoice }
Node describe(const pki_IPAddressFamily *family, const View &view) {
  const Family known = family_of(family->addressFamily);
  const auto words = words_of(family->ipAddressChoice, known);
  Node record = Description(view)
                    .field("addressFamily", family->addressFamily)
                    .field("family", text(known.name, known.name))
                    .field("addresses", text(words, words))
                    .node();
  return with_lines(view, std::move(record), [&] {
    std::vector<std::string> lines{known.name};
    for (const std::string &word : words) lines.push_back("  " + word);
    return lines;
  });
}

// ASIdentifierChoice ::= CHOICE { inherit, asIdsOrRanges }
Node describe(const pki_ASIdentifierChoice *choice, const View &) {
  const auto words = words_of(choice);
  return text(joined(words), words);
}

// ASIdentifiers ::= SEQUENCE { asnum [0], rdi [1] }
Node describe(const pki_ASIdentifiers *identifiers, const View &view) {
  return with_lines(view, Description(view).all("pki_ASIdentifiers", identifiers).node(), [&] {
    std::vector<std::string> lines;
    if (identifiers->asnum != nullptr)
      lines.push_back("AS " + joined(words_of(identifiers->asnum)));
    if (identifiers->rdi != nullptr)
      lines.push_back("routing domain " + joined(words_of(identifiers->rdi)));
    return lines;
  });
}

std::vector<Type> resource_types() {
  return {
      {.syntax = "pki_IPAddrBlocks", .about = "blocks of addresses"},
      {.syntax = "pki_IPAddressFamily",
       .about = "blocks of addresses of one family",
       .by_hand = as<pki_IPAddressFamily>},
      {.syntax = "pki_ASIdentifiers",
       .about = "numbers of autonomous systems and of routing domains",
       .by_hand = as<pki_ASIdentifiers>},
      {.syntax = "pki_ASIdentifierChoice",
       .about = "numbers of autonomous systems",
       .by_hand = as<pki_ASIdentifierChoice>},
      {.syntax = "pki_ASRange",
       .about = "a range of numbers of autonomous systems",
       .hints = {{"min", as<number>}, {"max", as<number>}}},
  };
}

}  // namespace tool
