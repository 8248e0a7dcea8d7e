#include "commands/commands.h"
#include "system/output.h"
#include "text/characters.h"
#include "text/object_identifiers.h"

namespace tool {

namespace {

std::string names_text(const ObjId *oid) {
  const auto names = registry_names(oid);
  if (!names.empty()) return joined(names);
  const std::string name = display_name(oid);
  return name.empty() ? "unknown" : name + " (not in the registry)";
}

std::string description(const ObjId *oid) {
  const Owned<Name> arcs(pki_ObjId_text(oid), asn1_Name_free);
  return "dotted   " + std::string(arcs ? arcs.get() : "") + "\nencoded  " +
         spaced_hex(element_of(oid)) + "\nname     " + names_text(oid) + "\n";
}

/// Returns the type of an OBJECT IDENTIFIER with arcs of any size.
const pki_Type *identifier_type() {
  pki_Field field;
  pki_Type_field(pki_Type_find("pki_AlgId"), 0, &field);
  return field.type;
}

/// The identifiers that a text stands for. `fault` says why there is none.
struct Reading {
  std::vector<Owned<ObjId>> oids;
  std::string fault;
};

/// Reads a text. A dotted form has a dot, an encoded form begins with a digit, and all else is a
/// name.
Reading read(const std::string &text) {
  constexpr size_t longest = 2048;
  Reading reading;
  const auto add = [&reading](Owned<ObjId> oid) {
    if (oid) reading.oids.push_back(std::move(oid));
  };
  if (text.find('.') != std::string::npos) {
    add(from_dotted(text));
    reading.fault = "not a dotted identifier, such as 2.5.4.3";
  } else if (!text.empty() && text[0] >= '0' && text[0] <= '9') {
    const auto octets = from_hex(text);
    if (octets && octets->size() <= longest) add(from_element(*octets));
    const auto fault = octets ? Syntax(identifier_type()).read(*octets).fault : std::nullopt;
    reading.fault = !octets                    ? "not hexadecimal octets"
                    : octets->size() > longest ? "more octets than any identifier has"
                    : fault                    ? text_with_offset(*fault)
                                               : "octets left over after the identifier";
  } else {
    reading.oids = named(text);
    reading.fault = "no identifier has this name";
  }
  return reading;
}

}  // namespace

bool translate_oids(const std::vector<std::string> &oids) {
  bool all_well = true;
  bool first = true;
  for (const std::string &text : oids) {
    const Reading reading = read(text);
    for (const auto &oid : reading.oids) {
      if (!first) emit("\n");
      emit(description(oid.get()));
      first = false;
    }
    if (!reading.oids.empty()) continue;
    complain(in_quotes(text) + ": " + reading.fault);
    all_well = false;
  }
  return all_well;
}

bool list_oids() {
  std::string out;
  for (const RegistryEntry &entry : registry())
    out += std::string(entry.name) + " " + dotted(entry.get()) + "\n";
  emit(out);
  return true;
}

}  // namespace tool
