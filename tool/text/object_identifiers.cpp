#include "text/object_identifiers.h"

#include <orvelpki.h>

#include <algorithm>
#include <unordered_map>

#include "text/identifier_names.h"

namespace tool {

namespace {

/// Made from the headers of the library.
constexpr RegistryEntry registry_table[] = {
#include "registry.inc"
};

const IdentifierName *known_name(const ObjId *oid) {
  static const auto &names = *[] {
    auto *const made = new std::unordered_map<std::string_view, const IdentifierName *>();
    for (const IdentifierName &name : identifier_names) made->emplace(name.dotted, &name);
    return made;
  }();
  const auto found = names.find(dotted(oid));
  return found == names.end() ? nullptr : found->second;
}

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

bool same_word(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  return std::ranges::equal(a, b, {}, lower, lower);
}

}  // namespace

// The text of a large arc takes time that is quadratic in its octets.
std::string dotted(const ObjId *oid) {
  constexpr uint32_t most = 128;
  if (oid == nullptr || oid->count == 0 || oid->arcs == nullptr) return "";
  if (oid->arcs[0] == PKI_LARGE_ARCS && oid->count > 1 && oid->arcs[1] > most)
    return "an identifier of " + std::to_string(oid->arcs[1]) + " octets";
  const Owned<Name> text(pki_ObjId_text(oid), asn1_Name_free);
  return text ? text.get() : "";
}

// A command line has no NUL.
Owned<ObjId> from_dotted(std::string_view text) {
  Owned<ObjId> oid(pki_ObjId_parse(std::string(text).c_str()), asn1_ObjId_free);
  if (oid && oid->arcs[0] == PKI_LARGE_ARCS) oid.reset();
  return oid;
}

std::vector<std::string_view> registry_names(const ObjId *oid) {
  std::vector<std::string_view> names;
  for (const RegistryEntry &entry : registry_table)
    if (oid != nullptr && asn1_ObjId_cmp(entry.get(), oid) == 0) names.push_back(entry.name);
  return names;
}

std::string display_name(const ObjId *oid) {
  if (oid == nullptr) return "";
  if (const IdentifierName *const known = known_name(oid)) return std::string(known->name);
  for (const RegistryEntry &entry : registry_table)
    if (asn1_ObjId_cmp(entry.get(), oid) == 0) return readable(entry.name);
  return "";
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
  for (const IdentifierName &known : identifier_names)
    if (same_word(known.name, name)) add(from_dotted(known.dotted).release());
  return found;
}

void put_oid(Json &object, const std::string &key, const ObjId *oid) {
  object.put(key, dotted(oid));
  const std::string name = display_name(oid);
  if (!name.empty()) object.put(key + "Name", name);
}

std::span<const RegistryEntry> registry() { return registry_table; }

std::optional<uint32_t> curve_bits(const ObjId *oid) {
  const IdentifierName *const known = known_name(oid);
  if (known == nullptr || known->curve_bits == 0) return std::nullopt;
  return known->curve_bits;
}

}  // namespace tool
