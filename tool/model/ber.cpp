#include "model/ber.h"

#include <orvelpki.h>

#include <algorithm>

#include "text/characters.h"
#include "text/object_identifiers.h"

namespace tool::ber {

namespace {

constexpr uint8_t more_follows = 0x80;
constexpr uint8_t low_bits = 0x7F;

/// Reads the identifier octets. Moves `at` past them.
void read_identifier(Octets rest, size_t &at, Header &header) {
  header.identifier = rest[at++];
  header.number = header.identifier & tag::number_bits;
  if (header.number != tag::number_bits) return;
  header.number = 0;
  for (;;) {
    if (at == rest.size()) {
      header.fault = "the input ends inside the identifier octets";
      return;
    }
    if (header.number >> 56 != 0) {
      header.fault = "a tag number of more than 63 bits";
      return;
    }
    const uint8_t octet = rest[at++];
    header.number = header.number << 7 | (octet & low_bits);
    if (octet < more_follows) return;
  }
}

/// Reads the length octets. Moves `at` past them.
void read_length(Octets rest, size_t &at, Header &header) {
  if (at == rest.size()) {
    header.fault = "the input ends after the identifier octet " + hex(rest.first(1));
    return;
  }
  const uint8_t first = rest[at++];
  header.length = first;
  if (first < more_follows) return;
  header.length = 0;
  header.indefinite = first == more_follows;
  if (header.indefinite && !header.constructed())
    header.fault = "a primitive element of indefinite length";
  for (size_t count = first & low_bits; count != 0; --count) {
    if (at == rest.size()) {
      header.fault = "the input ends inside the length octets";
      return;
    }
    if (header.length >> (8 * (sizeof header.length - 1)) != 0) {
      header.fault = "a length of " + counted(first & low_bits, "octet") + ", which no input has";
      return;
    }
    header.length = header.length << 8 | rest[at++];
  }
}

bool is_text(Octets octets) {
  return std::ranges::all_of(octets, [](uint8_t c) { return c >= 0x20 && c != 0x7F; });
}

/// Whether a primitive universal content is one that the tag may have.
bool fits(uint8_t number, Octets content) {
  const auto sign_alone = [&] {
    return content.size() > 1 &&
           ((content[0] == 0 && content[1] < 0x80) || (content[0] == 0xFF && content[1] >= 0x80));
  };
  if (number == tag::boolean) return content.size() == 1;
  if (number == tag::null) return content.empty();
  if (content.empty()) return false;
  if (number == tag::integer || number == tag::enumerated) return !sign_alone();
  if (number == tag::bit_string) return content[0] < 8;
  if (number == tag::octet_string) return true;
  if (number == tag::object_identifier) return content[0] != 0x80 && content.back() < 0x80;
  if (number == tag::bmp_string) return content.size() % 2 == 0;
  return (number == tag::utf8_string ||
          (number >= tag::numeric_string && number <= tag::universal_string)) &&
         is_text(content);
}

}  // namespace

Header read_header(Octets rest) {
  Header header;
  if (rest.empty()) {
    header.fault = "nothing is left";
    return header;
  }
  size_t at = 0;
  read_identifier(rest, at, header);
  if (header.fault.empty()) read_length(rest, at, header);
  if (!header.fault.empty()) return header;
  header.size = at;
  const size_t left = rest.size() - at;
  header.overlong = header.length > left;
  if (header.overlong)
    header.fault = "the header " + spaced_hex(rest.first(std::min<size_t>(at, 16))) + " promises " +
                   counted(header.length, "octet") + ", but only " + std::to_string(left) +
                   (left == 1 ? " is left" : " are left");
  return header;
}

std::string tag_name(const Header &header) {
  if (header.number < tag::number_bits) {
    char buffer[48];
    std::string name = pki_identifier_name(header.identifier, buffer, sizeof buffer);
    name.resize(std::min(name.size(), name.rfind(" (")));
    return name;
  }
  static constexpr const char *classes[] = {"[UNIVERSAL ", "[APPLICATION ", "[", "[PRIVATE "};
  return classes[header.identifier >> 6] + std::to_string(header.number) + "]";
}

void Levels::open(const Level &inner) {
  size_t number = (top_.end - inner.end) << 1 | (top_.indefinite ? 1U : 0U);
  uint8_t mark = more_follows;
  // The last octet pushed is the first one read: it has the highest bits.
  do {
    outer_.push_back(static_cast<uint8_t>((number & low_bits) | mark));
    number >>= 7;
    mark = 0;
  } while (number != 0);
  top_ = inner;
  ++depth_;
}

void Levels::close() {
  size_t number = 0;
  for (bool last = false; !last;) {
    last = (outer_.back() & more_follows) != 0;
    number = number << 7 | (outer_.back() & low_bits);
    outer_.pop_back();
  }
  top_ = {top_.end + (number >> 1), (number & 1) != 0};
  --depth_;
}

std::optional<size_t> element_size(Octets rest) {
  Levels levels(rest.size());
  size_t at = 0;
  do {
    const Levels::Level &level = levels.top();
    const Octets left = rest.subspan(at, level.end - at);
    if (level.indefinite && ends_contents(left)) {
      at += 2;
      levels.close();
    } else {
      const Header header = read_header(left);
      if (!header.fault.empty() || header.identifier == 0) return std::nullopt;
      at += header.size;
      if (!header.constructed())
        at += header.length;
      else
        levels.open({header.indefinite ? level.end : at + header.length, header.indefinite});
    }
    while (levels.depth() != 0 && !levels.top().indefinite && at == levels.top().end)
      levels.close();
  } while (levels.depth() != 0);
  return at;
}

bool is_element(Octets content) {
  if (content.size() < 2) return false;
  const Header header = read_header(content);
  if (!header.fault.empty()) return false;
  const uint8_t number = header.universal_number();
  if (header.constructed() ? header.is_universal() && header.identifier != tag::sequence &&
                                 header.identifier != tag::set
                           : !fits(number, content.subspan(header.size, header.length)))
    return false;
  return element_size(content) == content.size();
}

Owned<ObjId> record_of(Octets identifier) {
  constexpr size_t longest = 64;
  if (identifier.empty() || identifier.size() > longest) return {nullptr, asn1_ObjId_free};
  Bytes element{tag::object_identifier, static_cast<uint8_t>(identifier.size())};
  element.insert(element.end(), identifier.begin(), identifier.end());
  return from_element(element);
}

}  // namespace tool::ber
