// The subcommands. Each returns whether all went well, or the answer to a question.
#ifndef ORVELASN1_TOOL_COMMANDS_COMMANDS_H
#define ORVELASN1_TOOL_COMMANDS_COMMANDS_H

#include "input/stream.h"
#include "model/outline_text.h"
#include "model/view.h"
#include "records/condition.h"
#include "records/type.h"

namespace tool {

struct ShowRequest {
  enum class Form : uint8_t { page, brief, json };
  std::vector<std::string> files;
  const Type *type = nullptr;
  Form form = Form::page;
  View view;
  std::optional<Seconds> within;  ///< shows only what ceases to be valid within this time
  bool by_end = false;            ///< shows first what ceases to be valid first
};

/// Shows each element. Does not return true where it shows one because of the time `within`.
bool show(const ShowRequest &request);

/// Prints what the library traces while it decodes each element.
bool trace(const std::vector<std::string> &files, const Type *type);

struct TreeRequest {
  std::vector<std::string> files;
  const Type *type = nullptr;
  std::string path;      ///< of the one place to show; empty for all
  bool extract = false;  ///< its octets in place of its outline
  bool content = false;  ///< its content octets
  OutlineStyle style;
};

/// Prints the outline of each element, or of one place in it, or writes the octets of that place.
bool tree(const TreeRequest &request);

struct RecodeRequest {
  std::string file = "-";
  const Type *type = nullptr;
  std::string output;  ///< the file for the encodings; may be empty
  bool fresh = false;
};

/// Decodes and encodes each element and says whether the octets came back.
bool recode(const RecodeRequest &request);

/// Prints the octets of a textual name, or writes them to the file `output` if that is not empty.
bool encode_name(const std::string &text, const std::string &output);

/// Prints the text of each name in a file.
bool decode_names(const std::string &file);

/// Prints the dotted form, the encoded form and the names of each identifier. Each is given in any
/// of the three forms.
bool translate_oids(const std::vector<std::string> &oids);

/// Prints the registry, a line for each name.
bool list_oids();

/// Prints a line for each type: its name, what it is, and the labels of its PEM blocks.
bool list_types();

/// What a command answers; the status of the tool, as that of grep and diff.
enum class Answer : uint8_t { yes, no, unknown };

struct CrlRequest {
  std::string file = "-";
  std::vector<std::string> serials;  ///< as serial_of() reads them
  std::vector<std::string>
      certificates;  ///< files with certificates whose serial numbers are meant
  bool json = false;
  View view;
};

/// Says of each serial number whether a CRL has it: "yes" where there is one that is revoked, "no"
/// where there is none. Without serial numbers, sums up each CRL.
Answer crl(const CrlRequest &request);

struct KeyRequest {
  std::vector<std::string> files;
  bool json = false;
  View view;
};

/// Sorts what has a key by its public key: "yes" where all have one.
Answer key(const KeyRequest &request);

struct DiffRequest {
  std::string a;
  std::string b;
  const Type *type = nullptr;
  bool json = false;
  View view;
};

/// Says where the elements of two files differ, the first with the first and so on: "yes" where
/// they are alike.
Answer diff(const DiffRequest &request);

struct MapRequest {
  enum class Form : uint8_t { json, tsv, csv };
  std::vector<std::string> files;
  Format format;  ///< of the records
  const Type *type = nullptr;
  Form form = Form::json;
  std::vector<const Field *> fields;   ///< none for the whole object
  std::optional<Condition> condition;  ///< only elements that meet it have lines
  size_t jobs = 0;      ///< processes that work at a time; 0 stands for one a processor
  bool header = false;  ///< whether the first line names the fields
  bool strict = false;  ///< whether an element that cannot be read is bad input
  View view;
};

/// Prints a line for each element, in the order of the input, which is read as it comes.
bool map(const MapRequest &request);

/// Prints a line for each field of map().
bool list_fields();

}  // namespace tool

#endif
