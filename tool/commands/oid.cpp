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
  const Bytes octets = encoded([oid](uint8_t **pp) { return asn1_ObjId_e(pp, oid); });
  return "dotted   " + dotted(oid) + "\nencoded  " + spaced_hex(octets) + "\nname     " +
         names_text(oid) + "\n";
}

/// The identifiers that a text stands for. `fault` says why there is none.
struct Reading {
  std::vector<Owned<ObjId>> oids;
  std::string fault;
};

/// Reads a text. A dotted form has a dot, an encoded form begins with a digit, and all else is a
/// name.
Reading read(const std::string &text) {
  Reading reading;
  const auto add = [&reading](Owned<ObjId> oid) {
    if (oid) reading.oids.push_back(std::move(oid));
  };
  if (text.find('.') != std::string::npos) {
    add(from_dotted(text));
    reading.fault = "not a dotted identifier, such as 2.5.4.3, whose arcs have at most 32 bits";
  } else if (!text.empty() && text[0] >= '0' && text[0] <= '9') {
    const auto octets = from_hex(text);
    if (octets) add(decoded(asn1_ObjId_d, asn1_ObjId_free, *octets));
    const auto fault = octets ? Syntax("ObjId").read(*octets).fault : std::nullopt;
    reading.fault = !octets ? "not hexadecimal octets"
                    : fault ? text_with_offset(*fault)
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
