// Standard output, standard error and output files.
#ifndef ORVELASN1_TOOL_SYSTEM_OUTPUT_H
#define ORVELASN1_TOOL_SYSTEM_OUTPUT_H

#include <string>
#include <string_view>

namespace tool {

/// The status of the tool, and of its children, when its output cannot be written.
constexpr int output_failed = 3;

/// Writes octets to a file descriptor. Returns false on failure, and errno says why.
bool write_all(int descriptor, std::string_view octets);

/// Writes a text to standard output at once. On failure it says so and ends the process.
void emit(std::string_view text);

/// The output file of a command, if it has a name. It is opened before the input is read and shared
/// with the children, one after the other. They overwrite it, and the end cuts it, so that the
/// input itself may be the output.
class OutputFile {
 public:
  /// Opens the file. Says so on failure.
  explicit OutputFile(const std::string &name);
  OutputFile(const OutputFile &) = delete;
  OutputFile &operator=(const OutputFile &) = delete;
  ~OutputFile();

  bool good() const { return name_.empty() || descriptor_ >= 0; }

  /// Writes to the file. On failure it says so and ends the process.
  void write(std::string_view octets) const;

  /// Cuts the file after the octets that were written. A device or a pipe has no length to cut.
  void cut() const;

 private:
  std::string name_;  ///< printable
  int descriptor_ = -1;
};

/// Writes one line about what is wrong to standard error. The text must be printable.
void complain(const std::string &text);

/// Sends all further complaints to this file descriptor.
void complain_to(int descriptor);

}  // namespace tool

#endif
