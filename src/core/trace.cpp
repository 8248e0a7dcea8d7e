// The lines of identifier octets in the trace.
#include "core/cursor.h"

namespace {

constexpr const char *tag_table[] = {"END OF CONTENTS",
                                     "BOOLEAN ",
                                     "INTEGER",
                                     "BITSTRING",
                                     "OCTETSTRING",
                                     "NULL",
                                     "OBJECT IDENTIFIER ",
                                     "",
                                     "",
                                     "REAL ",
                                     "ENUMERATED ",
                                     "",
                                     "UTF8STRING",
                                     "",
                                     "",
                                     "",
                                     "SEQUENCE",
                                     "SET",
                                     "NUMERICSTRING ",
                                     "PRINTABLESTRING ",
                                     "TELETEXSTRING ",
                                     "VIDEOTEXTSTRING ",
                                     "IA5STRING ",
                                     "UTCTIME ",
                                     "GENERALIZEDTIME ",
                                     "GRAPHICSTRING ",
                                     "VISIBLESTRING ",
                                     "GENERALSTRING ",
                                     "UNIVERSALSTRING ",
                                     "",
                                     "BMPSTRING ",
                                     ""};

constexpr const char *class_table[] = {"", "APPLICATION", "CONTEXT-SPECIFIC", "PRIVATE"};

}  // namespace

void asn1::trace_tag(uint32_t depth, uint8_t octet, uint8_t effective, uint8_t own_tag) {
  const bool constructed = (octet & asn1::tag::constructed) != 0;
  const auto shown = static_cast<uint8_t>(effective & ~asn1::tag::constructed);
  if (shown == 0) return;
  if (shown <= 30) {
    asn1_LogMessage(depth, constructed ? "%s {\n" : "%s\n", tag_table[shown]);
    return;
  }
  const int tag_class = shown >> 6;
  const bool type_is_known = tag_class != 3 && own_tag <= asn1::tag::number;
  asn1_LogMessage(depth, "%s %s [%i] %s\n", class_table[tag_class],
                  constructed ? "CONSTRUCTED" : "PRIMITIVE", shown & 0x1F,
                  type_is_known ? tag_table[own_tag] : "{");
}
