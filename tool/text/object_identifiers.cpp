#include "text/object_identifiers.h"

#include <orvelpki.h>

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "text/identifier_names.h"

namespace tool {

namespace {

/// Made from the headers of the library.
constexpr RegistryEntry registry_table[] = {
#include "registry.inc"
};

/// Returns the name of a getter without the arc of its family, and with the hyphens of the ASN.1
/// module in place of the underscores of C.
std::string readable(std::string_view name) {
  for (const std::string_view arc :
       {"id_at_", "id_ce_", "id_kp_", "id_pe_", "id_ad_", "id_qt_", "id_pkix_"})
    if (name.starts_with(arc)) {
      name.remove_prefix(arc.size());
      break;
    }
  std::string out(name);
  std::ranges::replace(out, '_', '-');
  return out;
}

bool has_arcs(const ObjId *oid) {
  return oid != nullptr && oid->count != 0 && oid->arcs != nullptr;
}

/// Returns the dotted form. The text of a large arc takes time that is quadratic in its octets.
std::string arcs_text(const ObjId *oid) {
  constexpr uint32_t most = 128;
  if (!has_arcs(oid)) return "";
  if (oid->arcs[0] == PKI_LARGE_ARCS && oid->count > 1 && oid->arcs[1] > most)
    return "an identifier of " + std::to_string(oid->arcs[1]) + " octets";
  const Owned<Name> text(pki_ObjId_text(oid), asn1_Name_free);
  return text ? text.get() : "";
}

/// What is known of an identifier.
struct Known {
  std::string dotted;
  std::string name{};
  uint32_t curve_bits = 0;
};

struct Hash {
  size_t operator()(const ObjId *oid) const {
    uint64_t hash = 0;
    for (uint32_t i = 0; i < oid->count; ++i) hash = (hash + oid->arcs[i]) * 0x9E3779B97F4A7C15U;
    return hash ^ hash >> 32;
  }
};
struct Same {
  bool operator()(const ObjId *a, const ObjId *b) const {
    return std::ranges::equal(arcs_of(a), arcs_of(b));
  }
  static std::span<const uint32_t> arcs_of(const ObjId *oid) { return {oid->arcs, oid->count}; }
};

/// Returns what is known of an identifier; null for others.
const Known *known(const ObjId *oid) {
  static const auto &all = *[] {
    auto *const made = new std::unordered_map<const ObjId *, Known, Hash, Same>();
    for (const IdentifierName &one : identifier_names)
      made->try_emplace(from_dotted(one.dotted).release(),
                        Known{std::string(one.dotted), std::string(one.name), one.curve_bits});
    for (const RegistryEntry &entry : registry_table)
      made->try_emplace(entry.get(), Known{arcs_text(entry.get()), readable(entry.name)});
    return made;
  }();
  if (!has_arcs(oid)) return nullptr;
  const auto found = all.find(oid);
  return found == all.end() ? nullptr : &found->second;
}

bool same_word(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  return std::ranges::equal(a, b, {}, lower, lower);
}

}  // namespace

std::string dotted(const ObjId *oid) {
  const Known *const one = known(oid);
  return one == nullptr ? arcs_text(oid) : one->dotted;
}

// A command line has no NUL.
Owned<ObjId> from_dotted(std::string_view text) {
  constexpr size_t longest = 4096;
  return Owned<ObjId>(text.size() > longest ? nullptr : pki_ObjId_parse(std::string(text).c_str()),
                      asn1_ObjId_free);
}

// liborvelpki reads and writes identifiers with arcs of any size inside other types.
Owned<ObjId> from_element(Octets element) {
  Owned<ObjId> oid(nullptr, asn1_ObjId_free);
  const auto size = static_cast<uint32_t>(element.size());
  Bytes around{tag::sequence, 0x84};
  for (int shift = 24; shift >= 0; shift -= 8)
    around.push_back(static_cast<uint8_t>(size >> shift));
  around.insert(around.end(), element.begin(), element.end());
  const auto algorithm = decoded(pki_AlgId_d, pki_AlgId_free, around);
  if (algorithm && algorithm->parameters == nullptr)
    oid.reset(std::exchange(algorithm->algorithm, nullptr));
  return oid;
}

Bytes element_of(const ObjId *oid) {
  AlgId around{};
  around.algorithm = const_cast<ObjId *>(oid);
  const Bytes octets = encoded([&](uint8_t **pp) { return pki_AlgId_e(pp, &around); });
  const pki_Octets element =
      pki_view_content({octets.data(), static_cast<uint32_t>(octets.size())});
  return {element.data, element.data + element.length};
}

std::vector<std::string_view> registry_names(const ObjId *oid) {
  std::vector<std::string_view> names;
  for (const RegistryEntry &entry : registry_table)
    if (oid != nullptr && asn1_ObjId_cmp(entry.get(), oid) == 0) names.push_back(entry.name);
  return names;
}

std::string display_name(const ObjId *oid) {
  const Known *const one = known(oid);
  return one == nullptr ? "" : one->name;
}

std::vector<Owned<ObjId>> named(std::string_view name) {
  std::vector<Owned<ObjId>> found;
  const auto add = [&found](ObjId *oid) {
    Owned<ObjId> owned(oid, asn1_ObjId_free);
    for (const auto &other : found)
      if (!owned || asn1_ObjId_cmp(other.get(), oid) == 0) return;
    found.push_back(std::move(owned));
  };
  for (const RegistryEntry &entry : registry_table)
    if (same_word(entry.name, name) || same_word(readable(entry.name), name))
      add(asn1_ObjId_clone(entry.get()));
  for (const IdentifierName &one : identifier_names)
    if (same_word(one.name, name)) add(from_dotted(one.dotted).release());
  return found;
}

void append_oid(std::string &out, std::string_view key, const ObjId *oid) {
  const Known *const one = known(oid);
  append_key(out, key);
  append_quoted(out, one == nullptr ? arcs_text(oid) : one->dotted);
  if (one == nullptr) return;
  append_key(out, key, "Name");
  append_quoted(out, one->name);
}

std::span<const RegistryEntry> registry() { return registry_table; }

std::optional<uint32_t> curve_bits(const ObjId *oid) {
  const Known *const one = known(oid);
  if (one == nullptr || one->curve_bits == 0) return std::nullopt;
  return one->curve_bits;
}

}  // namespace tool
