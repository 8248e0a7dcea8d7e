#include <algorithm>

#include "commands/batch.h"
#include "commands/commands.h"
#include "system/output.h"
#include "text/characters.h"

namespace tool {

namespace {

/// Finds why a text is not a name, assertion by assertion.
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
  const OutputFile file(output);
  file.write(text_of(octets));
  file.cut();
  if (output.empty()) emit(hex(octets) + "\n");
  return file.good();
}

bool decode_names(const std::string &file) {
  return for_each_element({file}, [](const Input &input, const Element &element) {
    const auto refuse = [&](const Fault &fault) {
      report(input, element, fault);
      return false;
    };
    if (element.fault) return refuse(*element.fault);
    const auto sequence = decoded(asn1_RDNSequence_d, asn1_RDNSequence_free, element.octets);
    const Owned<Name> name(sequence ? asn1_RDNSequence_to_Name(sequence.get()) : nullptr,
                           asn1_Name_free);
    if (!name)
      return refuse(Syntax("Name")
                        .read(element.octets)
                        .fault.value_or(Fault{std::nullopt, "the decoder refuses the name"}));
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
