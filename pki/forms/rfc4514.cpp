// Names as texts: the string of RFC 4514, and this library's own.
#include <algorithm>
#include <array>
#include <iterator>
#include <memory>

#include "core/decimal.h"
#include "core/scan.h"
#include "core/tags.h"
#include "pki/forms/text.h"
#include "x509/name_writer.h"

#pragma GCC visibility push(default)
#include "rfc4514.h"
#pragma GCC visibility pop

using namespace asn1;
using pki::Text;

namespace {

template <auto Release>
struct Releases {
  template <class T>
  void operator()(T *record) const {
    Release(record);
  }
};
template <class T, auto Release>
using Owned = std::unique_ptr<T, Releases<Release>>;

bool is_filled(const ObjId &oid) { return oid.count >= 2 && oid.arcs != nullptr; }
bool is_filled(const ASN1String &string) { return string.length == 0 || string.data != nullptr; }
bool is_filled(const AttributeValueAssertion *assertion) {
  return assertion != nullptr && assertion->type != nullptr && is_filled(*assertion->type) &&
         assertion->value != nullptr && is_filled(*assertion->value);
}

// ---------------------------------------------------------------------------------------------
// This library's own text
// ---------------------------------------------------------------------------------------------

/// Records that are not filled have no text. Numbers are written whole.
struct WholeForm {
  static bool can_write(const RelativeDistinguishedName *rdn) { return rdn != nullptr; }
  static bool can_write(const AttributeValueAssertion *assertion) { return is_filled(assertion); }

  template <class Output>
  static bool write_identifier(Output &text, const ObjId &oid) {
    const Owned<char, std::free> digits(pki_ObjId_text(&oid));
    if (digits == nullptr) return false;
    for (const char *c = digits.get(); *c != '\0'; ++c) text.character(*c);
    return true;
  }

  template <class Output>
  static void write_number(Output &text, int32_t tag) {
    for (const char c : Decimal(tag)) text.character(c);
  }
};

}  // namespace

Name *pki_RDNSequence_text(const RDNSequence *sequence) {
  return sequence == nullptr ? nullptr : text_of_name<WholeForm>(sequence);
}

// ---------------------------------------------------------------------------------------------
// The table of RFC 4514, 3
// ---------------------------------------------------------------------------------------------

namespace {

OBJECT_IDENTIFIER_RECORD(streetAddress, 2, 5, 4, 9)
OBJECT_IDENTIFIER_RECORD(domainComponent, 0, 9, 2342, 19200300, 100, 1, 25)
OBJECT_IDENTIFIER_RECORD(userId, 0, 9, 2342, 19200300, 100, 1, 1)

struct AttributeType {
  const char *name;
  const ObjId *identifier;
};

constexpr AttributeType attribute_types[] = {
    {"CN", &id_at_commonName},
    {"L", &id_at_localityName},
    {"ST", &id_at_stateOrProvinceName},
    {"O", &id_at_organizationName},
    {"OU", &id_at_organizationalUnitName},
    {"C", &id_at_countryName},
    {"STREET", &streetAddress},
    {"DC", &domainComponent},
    {"UID", &userId},
};

// The last arc tells nearly all of them apart.
const AttributeType *find_type(const ObjId &oid) {
  const uint32_t last = oid.arcs[oid.count - 1];
  const auto *const row = std::find_if(
      std::begin(attribute_types), std::end(attribute_types), [&](const AttributeType &type) {
        const ObjId &known = *type.identifier;
        return known.arcs[known.count - 1] == last && asn1_ObjId_cmp(&known, &oid) == 0;
      });
  return row == std::end(attribute_types) ? nullptr : row;
}

constexpr char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 0x20) : c; }
constexpr bool is_letter(char c) { return lower(c) >= 'a' && lower(c) <= 'z'; }

/// Finds a short name, in any case.
const AttributeType *find_type(const char *name, size_t length) {
  const auto *const row = std::find_if(
      std::begin(attribute_types), std::end(attribute_types),
      [name, length](const AttributeType &type) {
        return std::equal(name, name + length, type.name, type.name + std::strlen(type.name),
                          [](char a, char b) { return lower(a) == lower(b); });
      });
  return row == std::end(attribute_types) ? nullptr : row;
}

// ---------------------------------------------------------------------------------------------
// Characters
// ---------------------------------------------------------------------------------------------

constexpr char32_t first_surrogate = 0xD800;
constexpr char32_t first_low_surrogate = 0xDC00;
constexpr char32_t after_surrogates = 0xE000;
constexpr char32_t last_character = 0x10FFFF;

constexpr bool is_surrogate(char32_t c) { return c >= first_surrogate && c < after_surrogates; }

/// Reads one character of UTF-8 (RFC 3629, 4) from one octet or more. Returns its octets, or 0
/// where there is none.
size_t read_utf8(const uint8_t *octets, size_t left, char32_t *character) {
  const uint8_t first = octets[0];
  if (first < 0x80) {
    *character = first;
    return 1;
  }
  // Two octets hold 0x80 and above, three 0x800, four 0x10000.
  const size_t count = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC0 || first >= 0xF8 || left < count) return 0;
  char32_t c = first & (0x7FU >> count);
  for (size_t i = 1; i < count; ++i) {
    if ((octets[i] & 0xC0) != 0x80) return 0;
    c = c << 6 | (octets[i] & 0x3FU);
  }
  constexpr char32_t least[] = {0x80, 0x800, 0x10000};
  if (c < least[count - 2] || c > last_character || is_surrogate(c)) return 0;
  *character = c;
  return count;
}

void append_utf8(Text &text, char32_t c) {
  if (c < 0x80) {
    text.append(static_cast<char>(c));
    return;
  }
  const uint32_t count = c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
  text.append(static_cast<char>(0xF00U >> count | c >> (6 * (count - 1))));
  for (uint32_t i = count - 1; i-- > 0;) {
    text.append(static_cast<char>(0x80 | (c >> (6 * i) & 0x3F)));
  }
}

enum class Encoding { none, ascii, latin1, utf8, utf16, utf32 };

/// How the characters of a value are encoded, by its identifier octet. No constructed form is here.
constexpr Encoding encoding_of(int32_t identifier) {
  switch (identifier) {
    case tag::utf8_string:
      return Encoding::utf8;
    case tag::numeric_string:
    case tag::printable_string:
    case tag::ia5_string:
    case tag::visible_string:
      return Encoding::ascii;
    case tag::teletex_string:
      return Encoding::latin1;
    case tag::bmp_string:
      return Encoding::utf16;
    case tag::universal_string:
      return Encoding::utf32;
    default:
      return Encoding::none;
  }
}

/// Reads the characters of a value.
class Characters {
 public:
  Characters(Encoding encoding, const ASN1String &value)
      : encoding_(encoding), octets_(value.data), left_(value.length) {}

  bool at_end() const { return left_ == 0; }

  /// Fails where the octets do not begin with a character.
  bool next(char32_t *c) {
    const size_t count = read(c);
    octets_ += count;
    left_ -= count;
    return count != 0;
  }

 private:
  size_t read(char32_t *c) const {
    switch (encoding_) {
      case Encoding::none:
        return 0;
      case Encoding::utf8:
        return read_utf8(octets_, left_, c);
      case Encoding::utf16:
        return read_utf16(c);
      case Encoding::utf32:
        if (left_ < 4) return 0;
        *c = unit(0) << 16 | unit(2);
        return *c > last_character || is_surrogate(*c) ? 0 : 4;
      case Encoding::ascii:
      case Encoding::latin1:
        *c = octets_[0];
        return encoding_ == Encoding::ascii && *c >= 0x80 ? 0 : 1;
    }
    return 0;
  }

  size_t read_utf16(char32_t *c) const {
    if (left_ < 2) return 0;
    *c = unit(0);
    if (!is_surrogate(*c)) return 2;
    if (*c >= first_low_surrogate || left_ < 4) return 0;
    const char32_t low = unit(2);
    if (low < first_low_surrogate || !is_surrogate(low)) return 0;
    *c = 0x10000 + ((*c - first_surrogate) << 10) + (low - first_low_surrogate);
    return 4;
  }

  /// The two octets at a place, the higher first.
  char32_t unit(size_t at) const { return char32_t{octets_[at]} << 8 | octets_[at + 1]; }

  Encoding encoding_;
  const uint8_t *octets_;
  size_t left_;
};

bool is_well_formed(Encoding encoding, const ASN1String &value) {
  char32_t c;
  Characters characters(encoding, value);
  while (!characters.at_end()) {
    if (!characters.next(&c)) return false;
  }
  return encoding != Encoding::none;
}

/// What stands for itself in no place of a value.
constexpr bool is_separator(char32_t c) {
  return c == '"' || c == '+' || c == ',' || c == ';' || c == '<' || c == '>';
}

// ---------------------------------------------------------------------------------------------
// To a string
// ---------------------------------------------------------------------------------------------

/// The ASCII characters that stand for themselves inside of a value.
constexpr auto plain = [] {
  std::array<bool, 256> made{};
  for (uint8_t c = 1; c < 0x80; ++c) made[c] = !is_separator(c) && c != '\\';
  return made;
}();

/// Whether a value goes into the text as it stands, as nearly all do.
bool is_plain(Encoding encoding, const ASN1String &value) {
  if (encoding == Encoding::none || encoding == Encoding::utf16 || encoding == Encoding::utf32) {
    return false;
  }
  if (value.length == 0) return true;
  const uint8_t *const first = value.data;
  const uint8_t *const last = first + value.length - 1;
  return *first != ' ' && *first != '#' && *last != ' ' &&
         std::all_of(first, last + 1, [](uint8_t octet) { return plain[octet]; });
}

/// Writes a well-formed value (RFC 4514, 2.4).
void write_characters(Text &text, Encoding encoding, const ASN1String &value) {
  Characters characters(encoding, value);
  for (bool is_first = true; !characters.at_end(); is_first = false) {
    char32_t c = 0;
    characters.next(&c);
    if (c == '\0') {
      text.append("\\00");
      continue;
    }
    const bool escapes = is_separator(c) || c == '\\' ||
                         (c == ' ' && (is_first || characters.at_end())) || (c == '#' && is_first);
    if (escapes) text.append('\\');
    append_utf8(text, c);
  }
}

void write_hex(Text &text, const uint8_t *octets, size_t count) {
  constexpr char digits[] = "0123456789ABCDEF";
  for (size_t i = 0; i < count; ++i) {
    text.append(digits[octets[i] >> 4]);
    text.append(digits[octets[i] & 0xF]);
  }
}

bool write_assertion(Text &text, const AttributeValueAssertion *assertion) {
  if (!is_filled(assertion)) return false;
  const int32_t identifier = assertion->valueTag;
  if (identifier < 0 || identifier > UINT8_MAX) return false;
  const ASN1String &value = *assertion->value;
  const AttributeType *const type = find_type(*assertion->type);
  if (type != nullptr) {
    text.append(type->name);
  } else {
    const Owned<char, std::free> digits(pki_ObjId_text(assertion->type));
    if (digits == nullptr) return false;
    text.append(digits.get());
  }
  text.append('=');
  const Encoding encoding = encoding_of(identifier);
  if (type != nullptr && is_plain(encoding, value)) {
    text.append(reinterpret_cast<const char *>(value.data), value.length);
    return true;
  }
  if (type != nullptr && is_well_formed(encoding, value)) {
    write_characters(text, encoding, value);
    return true;
  }
  uint8_t header[6] = {};
  uint8_t *end = header;
  const uint32_t size = asn1_TagLength_e(&end, static_cast<uint32_t>(identifier), value.length);
  text.append('#');
  write_hex(text, header, size);
  write_hex(text, value.data, value.length);
  return true;
}

}  // namespace

char *pki_name_rfc4514(const RDNSequence *sequence) {
  if (sequence == nullptr) return nullptr;
  Text text;
  const int32_t count = List_len(sequence);
  for (int32_t i = count; i-- > 0;) {
    const auto *const rdn = static_cast<const RelativeDistinguishedName *>(List_get(sequence, i));
    if (List_len(rdn) == 0) return nullptr;
    if (i != count - 1) text.append(',');
    for (int32_t j = 0; j < List_len(rdn); ++j) {
      if (j != 0) text.append('+');
      if (!write_assertion(text, static_cast<const AttributeValueAssertion *>(List_get(rdn, j)))) {
        return nullptr;
      }
    }
  }
  return text.release();
}

// ---------------------------------------------------------------------------------------------
// From a string
// ---------------------------------------------------------------------------------------------

namespace {

using Assertion = Owned<AttributeValueAssertion, asn1_AttributeValueAssertion_free>;
using Rdn = Owned<RelativeDistinguishedName, asn1_RelativeDistinguishedName_free>;
using Sequence = Owned<RDNSequence, asn1_RDNSequence_free>;

/// The value of a hexadecimal digit, or -1.
constexpr int digit_of(char c) {
  if (is_digit(c)) return c - '0';
  return lower(c) >= 'a' && lower(c) <= 'f' ? lower(c) - 'a' + 10 : -1;
}

/// Whether a PrintableString can hold a character (X.680, 41.4).
bool is_printable(uint8_t octet) {
  const auto c = static_cast<char>(octet);
  return is_letter(c) || is_digit(c) || (c != '\0' && std::strchr(" '()+,-./:=?", c) != nullptr);
}

/// The identifier octet of a value that was given by its characters.
uint8_t string_tag(const ObjId &type, const ASN1String &value) {
  const auto is = [&type](const ObjId &oid) { return asn1_ObjId_cmp(&type, &oid) == 0; };
  if (is(id_at_countryName) && std::all_of(value.data, value.data + value.length, is_printable)) {
    return tag::printable_string;
  }
  if ((is(domainComponent) || is(emailAddress)) && is_well_formed(Encoding::ascii, value)) {
    return tag::ia5_string;
  }
  return tag::utf8_string;
}

ASN1String *new_string(const uint8_t *octets, size_t count) {
  if (count > UINT32_MAX) return nullptr;
  return asn1_ASN1String_new(static_cast<uint32_t>(count), count == 0 ? nullptr : octets);
}

/// Reads the grammar of RFC 4514, 3. A function returns NULL, or false, where the text is none of
/// its kind, or memory is exhausted.
class Parser {
 public:
  explicit Parser(const char *text) : cursor_(text) {}

  RDNSequence *read_sequence() {
    Sequence backwards(List_new(0));
    if (backwards == nullptr) return nullptr;
    if (*cursor_ != '\0') {
      do {
        Rdn rdn(read_rdn());
        if (!append(backwards.get(), rdn)) return nullptr;
      } while (accept(','));
    }
    // A value ends at a comma, a plus or the end of the text, so that the text is used up here.
    // The elements belong to one of the two lists.
    Owned<List, release_list> sequence(List_new(0));
    for (int32_t i = List_len(backwards.get()); i-- > 0;) {
      if (List_append(sequence.get(), List_get(backwards.get(), i), 0) == 0) return nullptr;
    }
    if (sequence != nullptr) release_list(backwards.release());
    return sequence.release();
  }

 private:
  static void release_list(List *list) { List_free(list, nullptr); }

  template <class Element>
  static bool append(List *list, Element &element) {
    if (element == nullptr || List_append(list, element.get(), 0) == 0) return false;
    static_cast<void>(element.release());  // which the list owns now
    return true;
  }

  bool accept(char c) {
    if (*cursor_ != c) return false;
    ++cursor_;
    return true;
  }

  RelativeDistinguishedName *read_rdn() {
    Rdn rdn(List_new(0));
    if (rdn == nullptr) return nullptr;
    do {
      Assertion assertion(read_assertion());
      if (!append(rdn.get(), assertion)) return nullptr;
    } while (accept('+'));
    return rdn.release();
  }

  AttributeValueAssertion *read_assertion() {
    Assertion assertion(asn1_AttributeValueAssertion_new());
    if (assertion == nullptr) return nullptr;
    assertion->type = read_type();
    if (assertion->type == nullptr || !accept('=')) return nullptr;
    const bool read = accept('#') ? read_hex(*assertion) : read_characters(*assertion);
    return read ? assertion.release() : nullptr;
  }

  /// Reads a short name or a dotted identifier.
  ObjId *read_type() {
    const char *end = cursor_;
    if (is_letter(*end)) {
      while (is_letter(*end)) ++end;
      const auto *const type = find_type(cursor_, static_cast<size_t>(end - cursor_));
      cursor_ = end;
      return type == nullptr ? nullptr : asn1_ObjId_clone(type->identifier);
    }
    while (is_digit(*end) || *end == '.') ++end;
    text_.clear();
    text_.append(cursor_, static_cast<size_t>(end - cursor_));
    text_.append('\0');
    cursor_ = end;
    return text_.failed() ? nullptr : pki_ObjId_parse(text_.data());
  }

  const uint8_t *octets() const { return reinterpret_cast<const uint8_t *>(text_.data()); }

  /// Reads two hexadecimal digits, if they are there.
  bool accept_hex_pair() {
    const int high = digit_of(cursor_[0]);
    const int low = high < 0 ? -1 : digit_of(cursor_[1]);
    if (low < 0) return false;
    cursor_ += 2;
    text_.append(static_cast<char>(high << 4 | low));
    return true;
  }

  /// Reads the digits of an element.
  bool read_hex(AttributeValueAssertion &assertion) {
    text_.clear();
    while (accept_hex_pair()) {
    }
    if (!at_end_of_value() || text_.failed() || text_.size() == 0) return false;
    const uint8_t *const end = octets() + text_.size();
    uint32_t length = 0;
    const uint8_t *const content = asn1_Length_d(octets() + 1, end, &length, nullptr, 0);
    if (content == nullptr || static_cast<size_t>(end - content) != length) return false;
    assertion.valueTag = octets()[0];
    assertion.value = new_string(content, length);
    return assertion.value != nullptr;
  }

  bool at_end_of_value() const { return *cursor_ == '\0' || *cursor_ == ',' || *cursor_ == '+'; }

  bool read_characters(AttributeValueAssertion &assertion) {
    text_.clear();
    if (*cursor_ == ' ') return false;
    bool ends_in_blank = false;
    while (!at_end_of_value()) {
      ends_in_blank = *cursor_ == ' ';
      if (!read_character()) return false;
    }
    if (ends_in_blank || text_.failed()) return false;
    assertion.value = new_string(octets(), text_.size());
    if (assertion.value == nullptr || !is_well_formed(Encoding::utf8, *assertion.value)) {
      return false;
    }
    assertion.valueTag = string_tag(*assertion.type, *assertion.value);
    return true;
  }

  /// Reads a character, escaped or not, or an escaped octet.
  bool read_character() {
    if (accept('\\')) {
      if (accept_hex_pair()) return true;
      const char c = *cursor_;
      if (!is_separator(static_cast<uint8_t>(c)) &&
          (c == '\0' || std::strchr("\\ #=", c) == nullptr)) {
        return false;
      }
      text_.append(c);
      ++cursor_;
      return true;
    }
    // A NUL ends a character, so that none is read past the end of the text.
    char32_t c;
    constexpr size_t longest = 4;
    const size_t count = read_utf8(reinterpret_cast<const uint8_t *>(cursor_), longest, &c);
    if (count == 0 || is_separator(c)) return false;
    text_.append(cursor_, count);
    cursor_ += count;
    return true;
  }

  const char *cursor_;
  Text text_;  ///< the type or the value that is being read
};

}  // namespace

RDNSequence *pki_name_parse_rfc4514(const char *text) {
  return text == nullptr ? nullptr : Parser(text).read_sequence();
}
