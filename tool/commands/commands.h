// The subcommands. Each gives whether all went well.
#ifndef ORVELASN1_TOOL_COMMANDS_COMMANDS_H
#define ORVELASN1_TOOL_COMMANDS_COMMANDS_H

#include "model/view.h"
#include "records/type.h"

namespace tool {

struct ShowRequest {
  enum class Form : uint8_t { page, brief, json };
  std::vector<std::string> files;
  const Type *type = nullptr;
  Form form = Form::page;
  View view;
};

/// Shows each element.
bool show(const ShowRequest &request);

struct TraceRequest {
  std::vector<std::string> files;
  const Type *type = nullptr;
};

/// Prints what the library traces while it decodes each element.
bool trace(const TraceRequest &request);

struct RecodeRequest {
  std::string file = "-";
  const Type *type = nullptr;
  std::string output;  ///< where the encodings go; empty for nowhere
  bool fresh = false;
};

/// Decodes and encodes each element and says whether the octets came back.
bool recode(const RecodeRequest &request);

/// Prints the octets of a textual name, or writes them to the file `output` where that is given.
bool encode_name(const std::string &text, const std::string &output);

/// Prints the text of each name in a file.
bool decode_names(const std::string &file);

/// Prints the dotted form, the encoded form and the names of each identifier, given as any of the
/// three.
bool translate_oids(const std::vector<std::string> &oids);

/// Prints the registry, a line for each name.
bool list_oids();

/// Prints a line for each type: its name, what it is, and the labels of its PEM blocks.
bool list_types();

}  // namespace tool

#endif
