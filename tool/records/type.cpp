#include "records/type.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <unordered_map>
#include <utility>

#include "text/object_identifiers.h"

namespace tool {

namespace {

// A new family is one line here and in type.h, and a file of its own.
constexpr std::vector<Type> (*families[])() = {
    certificate_types,  crl_types,       request_types,  ocsp_types,      key_types,
    message_types,      exchange_types,  card_types,     extension_types, policy_types,
    distribution_types, timestamp_types, resource_types, qualified_types, name_types,
    algorithm_types,    universal_types};

constexpr std::string_view form_prefix = "pki_";

/// Returns "rsa-public-key" for "RSAPublicKey".
std::string hyphenated(std::string_view name) {
  const auto is = [&](int (*kind)(int), size_t i) { return i < name.size() && kind(name[i]) != 0; };
  std::string out;
  for (size_t i = 0; i < name.size(); ++i) {
    const bool starts_word = i != 0 && is(std::isupper, i) &&
                             (!is(std::isupper, i - 1) || is(std::islower, i + 1)) &&
                             name[i - 1] != ' ' && name[i - 1] != '-';
    if (starts_word) out += '-';
    out += name[i] == ' ' ? '-' : static_cast<char>(std::tolower(name[i]));
  }
  return out;
}

/// Returns the name that a type of liborvelasn1 and its form share.
std::string_view shared_name(const pki_Type *type) {
  std::string_view name = pki_Type_record(type);
  if (name.starts_with(form_prefix)) name.remove_prefix(form_prefix.size());
  return name;
}

/// Whether a type of liborvelasn1 has the form of an RFC, which takes its place.
bool has_form(const pki_Type *type) {
  const pki_Type *const form =
      pki_Type_find((std::string(form_prefix) + pki_Type_record(type)).c_str());
  return form != nullptr && form != type;
}

void fill_names(Type &type) {
  if (type.heading.empty()) type.heading = pki_Type_name(type.syntax.type);
  if (type.name.empty()) type.name = hyphenated(type.heading);
}

std::vector<Type> all_types() {
  std::vector<Type> all;
  for (const auto family : families) std::ranges::move(family(), std::back_inserter(all));
  std::ranges::for_each(all, fill_names);
  const auto has_row = [&all](const Type &type) {
    return std::ranges::any_of(all, [&type](const Type &row) {
      return row.syntax.type == type.syntax.type || row.name == type.name;
    });
  };
  for (uint32_t i = 0; i < pki_Type_count(); ++i) {
    Type type{.syntax = Syntax(pki_Type_get(i)), .about = pki_Type_name(pki_Type_get(i))};
    fill_names(type);
    if (type.syntax.functions().free != nullptr && !has_form(type.syntax.type) && !has_row(type))
      all.push_back(std::move(type));
  }
  return all;
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
  const bool is_choice = pki_Type_kind(value.type) == PKI_CHOICE;
  pki_Field field;
  for (uint32_t i = 0; pki_Type_field(value.type, i, &field) != 0; ++i) {
    if (field.encoded_offset != PKI_NO_MEMBER) {
      asn1_OctetString_free(
          static_cast<OctetString *>(pointer_at(value.record, field.encoded_offset)));
      std::memset(static_cast<char *>(value.record) + field.encoded_offset, 0, sizeof(void *));
    }
    const pki_Kind kind = pki_Type_kind(field.type);
    const bool is_chosen = !is_choice || field.kind == *static_cast<uint8_t *>(value.record);
    if (is_chosen && field.offset != PKI_NO_MEMBER &&
        (kind == PKI_SEQUENCE || kind == PKI_CHOICE || is_list(field.type)))
      add(field.type, pointer_at(value.record, field.offset));
  }
  return inside;
}

}  // namespace

bool is_list(const pki_Type *type) {
  return pki_Type_kind(type) == PKI_SEQUENCE_OF || pki_Type_kind(type) == PKI_SET_OF;
}

std::optional<Syntax::Refusal> Syntax::refusal(Octets octets) const {
  pki_Fault fault;
  const int32_t wrong = pki_explain(type, octets.data(), octets.data() + octets.size(), &fault);
  if (wrong != 0) return Refusal{fault.offset, fault.path, fault.sentence};
  // No octets are a BOOLEAN or an ENUMERATED for the decoders.
  if (octets.empty())
    return Refusal{0, "", "expected " + tag_name(pki_Type_identifier(type)) + ", found nothing"};
  if (fault.offset == octets.size()) return std::nullopt;
  return Refusal{fault.offset, "", "expected the end, found " + tag_name(octets[fault.offset])};
}

Syntax::Reading Syntax::read(Octets octets) const {
  pki_Fault fault;
  const int32_t wrong = pki_explain(type, octets.data(), octets.data() + octets.size(), &fault);
  if (wrong == 0 && !octets.empty()) return {fault.offset, std::nullopt};
  return {fault.offset, refusal(octets)->fault()};
}

std::optional<Fault> Syntax::fault(Octets octets) const {
  const auto wrong = refusal(octets);
  return wrong ? std::optional(wrong->fault()) : std::nullopt;
}

const uint8_t *Syntax::decode(const uint8_t *z, const uint8_t *end, void **record,
                              uint32_t depth) const {
  if (functions().decode == nullptr) return nullptr;
  void *made = nullptr;
  z = functions().decode(z, end, 0, &made, depth);
  // A list decoder that refuses the header may leave an empty list, which its caller must release.
  if (z == nullptr && is_list(type)) release(made);
  *record = z == nullptr ? nullptr : made;
  return z;
}

uint32_t Syntax::encode(uint8_t **pp, const void *record) const {
  return functions().encode(pp, record);
}

// Some of the octets that a record keeps are its caller's to release.
void Syntax::release(void *record) const {
  forget_own({type, record});
  functions().free(record);
}

Node Syntax::describe(const void *record, const View &view) const {
  return tool::describe(type, record, view);
}

void Record::forget_encodings() {
  std::vector<Value> open{{record_.get_deleter().syntax.type, record_.get()}};
  while (!open.empty()) {
    const Value value = open.back();
    open.pop_back();
    const auto inside = forget_own(value);
    open.insert(open.end(), inside.begin(), inside.end());
  }
}

Hint hint_for(const Type *row, const pki_Field &field) {
  if (row != nullptr)
    for (const Hint &hint : row->hints)
      if (hint.field == field.name) return hint;
  return {};
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

// The tables are never released, as the rows themselves.

const pki_Type *type_called(std::string_view name) {
  static const auto &by_name = *[] {
    auto *const made = new std::unordered_map<std::string_view, const pki_Type *>();
    for (uint32_t i = 0; i < pki_Type_count(); ++i) {
      const pki_Type *const type = pki_Type_get(i);
      for (const std::string_view one : {pki_Type_name(type), pki_Type_record(type)})
        if (!one.empty()) made->try_emplace(one, type);
    }
    return made;
  }();
  const auto found = by_name.find(name);
  return found == by_name.end() ? nullptr : found->second;
}

// A type of liborvelasn1 inside another one has the row of its form: their records are the same. A name
// is looked up once: the hash of a text takes longer than all else here.
const Type *row_of(const pki_Type *type) {
  static const auto &by_name = *[] {
    auto *const made = new std::unordered_map<std::string_view, const Type *>();
    for (const Type &row : types()) made->emplace(shared_name(row.syntax.type), &row);
    return made;
  }();
  static auto &by_type = *new std::unordered_map<const pki_Type *, const Type *>();
  const auto [known, is_new] = by_type.try_emplace(type);
  if (is_new) {
    const auto found = by_name.find(shared_name(type));
    if (found != by_name.end()) known->second = found->second;
  }
  return known->second;
}

}  // namespace tool
