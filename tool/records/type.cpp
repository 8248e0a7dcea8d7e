#include "records/type.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <unordered_map>
#include <utility>

#include "text/object_identifiers.h"

namespace tool {

namespace {

bool is_list(const pki_Type *type) {
  return pki_Type_kind(type) == PKI_SEQUENCE_OF || pki_Type_kind(type) == PKI_SET_OF;
}

// A new family is one line here and in type.h, and a file of its own.
constexpr std::vector<Type> (*families[])() = {
    certificate_types, crl_types,       request_types,       ocsp_types,
    key_types,         message_types,   exchange_types,      card_types,
    extension_types,   universal_types, elliptic_curve_types};

/// Returns "rsa-public-key" for "RSAPublicKey".
std::string hyphenated(std::string_view name) {
  const auto is = [&](int (*kind)(int), size_t i) { return i < name.size() && kind(name[i]) != 0; };
  std::string out;
  for (size_t i = 0; i < name.size(); ++i) {
    const bool starts_word = i != 0 && is(std::isupper, i) &&
                             (!is(std::isupper, i - 1) || is(std::islower, i + 1)) &&
                             name[i - 1] != ' ';
    if (starts_word) out += '-';
    out += name[i] == ' ' ? '-' : static_cast<char>(std::tolower(name[i]));
  }
  return out;
}

std::vector<Type> all_types() {
  std::vector<Type> all;
  const auto has_row = [&all](const pki_Type *type) {
    return std::ranges::any_of(
        all, [type](const Type &row) { return row.syntax.type == type && !row.syntax.list; });
  };
  for (const auto family : families) std::ranges::move(family(), std::back_inserter(all));
  for (uint32_t i = 0; i < pki_Type_count(); ++i) {
    const Syntax syntax(pki_Type_get(i));
    if (!has_row(syntax.type) && syntax.functions().free != nullptr)
      all.push_back({.syntax = syntax, .about = pki_Type_name(syntax.type)});
  }
  for (Type &type : all) {
    if (type.heading.empty()) type.heading = pki_Type_name(type.syntax.type);
    if (type.name.empty()) type.name = hyphenated(type.heading);
  }
  return all;
}

std::string expected_end(Octets rest) { return "expected the end, found " + tag_name(rest[0]); }

/// Reads a value that is no list. Its path begins with `prefix`.
Syntax::Reading read_one(const pki_Type *type, Octets octets, const std::string &prefix = {}) {
  pki_Fault fault;
  const int32_t wrong = pki_explain(type, octets.data(), octets.data() + octets.size(), &fault);
  // No octets are a BOOLEAN or an ENUMERATED for the decoders.
  if (wrong == 0 && octets.empty())
    return {0, Fault{0, "expected " + tag_name(pki_Type_identifier(type)) + ", found nothing"}};
  if (wrong == 0) return {fault.offset, std::nullopt};
  std::string path = fault.path;
  if (!prefix.empty() && !path.empty() && path[0] != '[') path.insert(0, 1, '.');
  path.insert(0, prefix);
  return {fault.offset, Fault{fault.offset, (path.empty() ? "" : path + ": ") + fault.sentence}};
}

/// Reads a SEQUENCE OF. The library has the types of its elements only.
Syntax::Reading read_list(const pki_Type *element, Octets octets) {
  const Header header = read_header(octets);
  const auto refused = [](size_t at, const std::string &text) {
    return Syntax::Reading{at, Fault{at, text}};
  };
  if (!octets.empty() && (octets[0] | tag::constructed) != tag::sequence)
    return refused(0, "expected " + tag_name(tag::sequence) + ", found " + tag_name(octets[0]));
  if (!header.fault.empty()) return refused(0, header.fault);
  const size_t size = header.indefinite ? octets.size() : header.size + header.length;
  size_t at = header.size;
  size_t end_of_last = at;
  std::string path;
  for (size_t number = 0; at < size; ++number) {
    const Octets rest = octets.first(size).subspan(at);
    if (header.indefinite && rest.size() > 1 && rest[0] == 0 && rest[1] == 0)
      return {at + 2, std::nullopt};
    const std::string last_path = std::exchange(path, "[" + std::to_string(number) + "]");
    Syntax::Reading one = read_one(element, rest, path);
    // The library looks for an element where it left the last one.
    if (one.fault && one.reached == 0 && at < end_of_last)
      return refused(at, last_path + ": " + expected_end(rest));
    if (one.fault) return refused(at + one.reached, one.fault->text);
    const Header inner = read_header(rest);
    end_of_last = inner.indefinite ? 0 : at + inner.size + inner.length;
    at += one.reached;
  }
  if (header.indefinite) return refused(at, "expected the end-of-contents");
  return {at, std::nullopt};
}

/// A value, and its type.
struct Value {
  const pki_Type *type;
  void *record;
};

/// Releases the octets that a record keeps of its fields, and returns what is in these. Takes a
/// null pointer.
std::vector<Value> forget_own(const Value &value) {
  std::vector<Value> inside;
  const auto add = [&inside](const pki_Type *type, void *record) {
    if (record != nullptr) inside.push_back({type, record});
  };
  if (value.record == nullptr) return inside;
  if (is_list(value.type)) {
    const auto *const list = static_cast<const List *>(value.record);
    for (int32_t i = 0; i < List_len(list); ++i)
      add(pki_Type_element(value.type), List_get(list, i));
    return inside;
  }
  pki_Field field;
  for (uint32_t i = 0; pki_Type_field(value.type, i, &field) != 0; ++i) {
    if (field.encoded_offset != PKI_NO_MEMBER) {
      asn1_OctetString_free(
          static_cast<OctetString *>(pointer_at(value.record, field.encoded_offset)));
      std::memset(static_cast<char *>(value.record) + field.encoded_offset, 0, sizeof(void *));
    }
    const pki_Kind kind = pki_Type_kind(field.type);
    if (kind == PKI_TYPED_CONTENT) {
      const auto *const message = static_cast<const ContentInfo *>(value.record);
      if (is(message->contentType, asn1_Get_signedData))
        add(Syntax("SignedData").type, message->content->value);
    } else if (kind == PKI_SEQUENCE || is_list(field.type)) {
      if (field.offset != PKI_NO_MEMBER) add(field.type, pointer_at(value.record, field.offset));
    }
  }
  return inside;
}

}  // namespace

Syntax::Reading Syntax::read(Octets octets) const {
  return list ? read_list(type, octets) : read_one(type, octets);
}

std::optional<Fault> Syntax::fault(Octets octets) const {
  Reading reading = read(octets);
  if (!reading.fault && reading.reached < octets.size())
    return Fault{reading.reached, expected_end(octets.subspan(reading.reached))};
  return reading.fault;
}

const uint8_t *Syntax::decode(const uint8_t *z, const uint8_t *end, void **record,
                              uint32_t depth) const {
  if (functions().decode == nullptr) return nullptr;
  void *made = nullptr;
  if (list) {
    List *elements = nullptr;
    z = asn1_SeqOf_d(z, end, 0, functions().decode, functions().free, &elements, depth);
    made = elements;
  } else {
    z = functions().decode(z, end, 0, &made, depth);
  }
  // A list decoder that refuses the header leaves an empty list, which its caller must release.
  if (z == nullptr && (list || is_list(type))) release(made);
  *record = z == nullptr ? nullptr : made;
  return z;
}

uint32_t Syntax::encode(uint8_t **pp, const void *record) const {
  return list ? asn1_SeqOf_e(pp, static_cast<const List *>(record), functions().encode)
              : functions().encode(pp, record);
}

// Some of the octets that a record keeps are its caller's to release.
void Syntax::release(void *record) const {
  if (list) return List_free(static_cast<List *>(record), functions().free);
  forget_own({type, record});
  functions().free(record);
}

Node Syntax::describe(const void *record, const View &view) const {
  return list ? tool::list_of(type, static_cast<const List *>(record), view)
              : tool::describe(type, record, view);
}

// Not recursive: messages may be nested to any depth.
void Record::forget_encodings() {
  const Syntax &syntax = record_.get_deleter().syntax;
  std::vector<Value> open;
  if (syntax.list)
    for (const void *element : elements<void>(static_cast<const List *>(record_.get())))
      open.push_back({syntax.type, const_cast<void *>(element)});
  else
    open.push_back({syntax.type, record_.get()});
  while (!open.empty()) {
    const Value value = open.back();
    open.pop_back();
    const auto inside = forget_own(value);
    open.insert(open.end(), inside.begin(), inside.end());
  }
}

Bytes Type::encode(const void *record) const {
  return encoded([&](uint8_t **pp) {
    return own_encode != nullptr ? own_encode(pp, record) : syntax.encode(pp, record);
  });
}

Node Type::describe(const void *record, const View &view) const {
  return by_hand != nullptr ? by_hand(record, view) : syntax.describe(record, view);
}

std::string Type::show(const void *record, const std::string &where, const View &view) const {
  if (own_page != nullptr) return own_page(record, where, view);
  return page_of(describe(record, view), heading, where, view);
}

Brief Type::show_short(const void *record, const View &view) const {
  if (own_short_form != nullptr) return own_short_form(record, view);
  return short_form_of(describe(record, view), heading, view);
}

const std::vector<Type> &types() {
  static const auto &all = *new const std::vector<Type>(all_types());  // for the whole run
  return all;
}

const Type *type_named(std::string_view name) {
  const auto found = std::ranges::find(types(), name, &Type::name);
  return found == types().end() ? nullptr : &*found;
}

namespace {

using Rows = std::unordered_map<const pki_Type *, const Type *>;

/// The rows by their types; never released, as the rows themselves.
const Rows &rows_by_type() {
  static const Rows &rows = *[] {
    auto *const made = new Rows();
    for (const Type &row : types())
      if (!row.syntax.list) made->emplace(row.syntax.type, &row);
    return made;
  }();
  return rows;
}

}  // namespace

const Type *row_of(const pki_Type *type) {
  const auto found = rows_by_type().find(type);
  return found == rows_by_type().end() ? nullptr : found->second;
}

}  // namespace tool
