// General names, as alternative names, issuers and locations in extensions have them.
#ifndef ORVELASN1_TOOL_RECORDS_GENERAL_NAMES_H
#define ORVELASN1_TOOL_RECORDS_GENERAL_NAMES_H

#include "model/view.h"
#include "text/json.h"

namespace tool {

/// "DNS www.example.org", "IP 192.0.2.1"; safe to print.
std::string general_name_text(const GeneralName *name, const View &view);

/// One line for each name of a list.
std::vector<std::string> general_name_lines(const List *names, const View &view);

Json json_of(const GeneralName *name);
Json json_of_general_names(const List *names);

/// Releases a list of general names.
void free_general_names(List *names);

/// Decodes a list of general names; as the list decoders of the library.
const uint8_t *decode_general_names(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    List **names, uint32_t depth);

}  // namespace tool

#endif
