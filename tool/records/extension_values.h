// The values of extensions, which certificates, CRLs and messages carry undecoded: the one list of
// the syntaxes that are read.
#ifndef ORVELASN1_TOOL_RECORDS_EXTENSION_VALUES_H
#define ORVELASN1_TOOL_RECORDS_EXTENSION_VALUES_H

#include "model/node.h"
#include "records/syntax.h"

namespace tool {

struct ExtensionValue {
  Node node;          ///< the value, or what a page shows in its place
  bool read = true;   ///< false where the value is not understood
  std::string why{};  ///< why not, where its syntax is known
};

ExtensionValue read_extension(const Extension *extension, const View &view);

/// Adds a section with a row for each extension. Adds nothing for an empty list.
void add_extensions(Page &page, const Extensions *extensions, const View &view);

// The syntaxes of include/asn1_x509v3.h.
extern const Syntax authority_key_identifier_syntax;
extern const Syntax basic_constraints_syntax;
extern const Syntax name_constraints_syntax;
extern const Syntax policy_constraints_syntax;
extern const Syntax policy_mapping_syntax;
extern const Syntax private_key_usage_period_syntax;
extern const Syntax distribution_point_syntax;
extern const Syntax access_information_syntax;

}  // namespace tool

#endif
