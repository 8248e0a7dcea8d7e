// Distinguished names for people. They are made from the structure of a name, never from its text,
// which cuts a value at its first zero octet and leaves its characters unconverted.
#ifndef ORVELASN1_TOOL_RECORDS_DISTINGUISHED_NAMES_H
#define ORVELASN1_TOOL_RECORDS_DISTINGUISHED_NAMES_H

#include "model/page.h"
#include "model/view.h"
#include "text/json.h"

namespace tool {

/// Adds the name to the open section, one attribute a row. The attributes that share a relative
/// name with the one above have a plus in front.
void add_name(Page &page, const RDNSequence *name, const View &view);

/// Returns the name in one line: "countryName=DE, organizationName=Example". A comma or plus inside
/// a value has a backslash in front; a plus with blanks joins the attributes of one relative name.
std::string one_line(const RDNSequence *name, const View &view);

/// Returns the same of a name that the library holds as text, or the text itself where the library
/// cannot read it back.
std::string directory_text(const Name *text, const View &view);

/// Returns the name in the library's textual form, "/c(19)=DE/cn(30)=Example", for JSON: each value
/// in UTF-8, whatever its type, with U+FFFD for what is not text and for NUL; one that is no string
/// as
/// "#" and its digits.
std::string utf8_text(const RDNSequence *name);

/// Returns an attribute: "countryName=DE".
std::string attribute_text(const AttributeValueAssertion *attribute, const View &view);

/// Append JSON: an object for an attribute, an array of these for a relative name, and an array of
/// such arrays for a name.
void append_attribute(std::string &out, const AttributeValueAssertion *attribute);
void append_attributes(std::string &out, const RelativeDistinguishedName *attributes);
void append_name(std::string &out, const RDNSequence *name);

}  // namespace tool

#endif
