#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "commands/batch.h"
#include "commands/commands.h"
#include "records/syntax.h"
#include "system/output.h"
#include "text/characters.h"

namespace tool {

namespace {

/// Why a text is no name, found by reading it assertion by assertion.
std::string name_fault(const char *text) {
  if (*text != '/') return "a name begins with \"/\"";
  const char *at = text;
  while (*at == '/' || *at == ',') {
    const char *next = at + 1;
    const Owned<AttributeValueAssertion> assertion(asn1_AttributeValueAssertion_parse(&next),
                                                   asn1_AttributeValueAssertion_free);
    const std::string where = "character " + std::to_string(at + 1 - text + 1) + ": ";
    if (!assertion) return where + "expected an attribute and its value, such as cn(12)=Example";
    if (assertion->valueTag < 0 || assertion->valueTag > 0xFF)
      return where + "the identifier octet " + std::to_string(assertion->valueTag) +
             " is not between 0 and 255";
    at = next;
  }
  return "";
}

bool write_file(const std::string &name, const Bytes &octets) {
  const int file = open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (file < 0) {
    complain(printable(name) + ": " + std::strerror(errno));
    return false;
  }
  emit_to(file, printable(name), text_of(octets));
  close(file);
  return true;
}

}  // namespace

bool encode_name(const std::string &text, const std::string &output) {
  const std::string fault = name_fault(text.c_str());
  const Owned<RDNSequence> name(fault.empty() ? asn1_Name_to_RDNSequence(text.c_str()) : nullptr,
                                asn1_RDNSequence_free);
  const Bytes octets =
      encoded([&](uint8_t **pp) { return name ? asn1_RDNSequence_e(pp, name.get()) : 0; });
  if (octets.empty()) {
    complain(in_quotes(text) + ": " + (fault.empty() ? "the encoder refuses it" : fault));
    return false;
  }
  if (!output.empty()) return write_file(output, octets);
  emit(hex(octets) + "\n");
  return true;
}

bool decode_names(const std::string &file) {
  return for_each_element({file}, [](const Input &input, const Element &element) {
    const auto refuse = [&](const Fault &fault) {
      complain(input.where(element, fault) + ": " + fault.text);
      return false;
    };
    if (element.fault) return refuse(*element.fault);
    const auto sequence = decoded(asn1_RDNSequence_d, asn1_RDNSequence_free, element.octets);
    const Owned<Name> name(sequence ? asn1_RDNSequence_to_Name(sequence.get()) : nullptr,
                           asn1_Name_free);
    if (!name)
      return refuse(syntax_fault(element.octets, name_syntax)
                        .value_or(Fault{std::nullopt, "the decoder refuses the name"}));
    const CodePoints text = from_utf8(octets_of(name.get()));
    const bool safe = is_safe(text);
    emit((safe ? std::string(name.get()) : printable(text)) + "\n");
    if (!safe) return refuse({std::nullopt, "the text has characters that are shown escaped"});
    const Bytes back = encoded([&](uint8_t **pp) { return asn1_Name_e(pp, name.get()); });
    if (!std::ranges::equal(back, element.octets))
      return refuse({std::nullopt, "the text does not stand for the same octets as the name"});
    return true;
  });
}

}  // namespace tool
