#include "commands/batch.h"

#include <unistd.h>

#include <system_error>

#include "system/isolate.h"
#include "system/output.h"
#include "system/shared_memory.h"
#include "text/characters.h"

namespace tool {

namespace {

/// How many one child decodes, unless one of them ends it.
constexpr size_t elements_a_child = 1024;

/// Reports the element that ended its process, in one line with the first of its last words.
/// Further lines, which only a sanitizer or a runtime leaves, follow.
void report_end(const Input &input, const Element &element, const std::string &last_words) {
  const size_t line_end = last_words.find('\n');
  complain(input.where(element) + ": the library ended its process: " +
           printable(std::string_view(last_words).substr(0, line_end)));
  if (line_end == std::string::npos) return;
  std::string_view rest = std::string_view(last_words).substr(line_end + 1);
  while (!rest.empty()) {
    const size_t stop = rest.find('\n');
    complain("  " + printable(rest.substr(0, stop)));
    rest = stop == std::string_view::npos ? "" : rest.substr(stop + 1);
  }
}

/// Says why a file cannot be read.
void report_file(const std::string &file, const std::system_error &error) {
  const bool folder = error.code() == std::errc::is_a_directory;
  complain(printable(file) + ": " + error.code().message() +
           (folder ? "; name the files in it" : ""));
}

/// Counts the elements in a row of a DER input that fail and are of no type. Octets that are no
/// structure may still be elements: a file of 05 and 00 by turns has half a million in a megabyte.
class Patience {
 public:
  bool is_over() const { return shared_.octets()[0] != 0; }

  /// Counts an element. Says so where the patience ends.
  void count(const Input &input, const Element &element, bool good) {
    const bool rubbish = !good && element.line == 0 && candidates(element, nullptr).empty();
    failures_ = rubbish ? failures_ + 1 : 0;
    if (failures_ < most) return;
    complain(input.where(element) + ": the rest is skipped, since " + std::to_string(most) +
             " elements in a row have the structure of no type");
    shared_.octets()[0] = 1;
  }

 private:
  static constexpr size_t most = 16;
  SharedMemory shared_{1};  ///< what the children tell their parent
  size_t failures_ = 0;
};

/// Runs the job for each element of an input.
bool for_each_element(Input &input, const ElementJob &job) {
  Patience patience;
  bool all_well = true;
  for (auto elements = input.take(elements_a_child); !elements.empty() && !patience.is_over();
       elements = input.take(elements_a_child))
    all_well &= run_isolated(
        elements.size(),
        [&](size_t i) {
          if (patience.is_over()) return false;
          const bool good = job(input, elements[i]);
          if (!elements[i].remark.empty())
            complain(input.where(elements[i]) + ": " + elements[i].remark);
          patience.count(input, elements[i], good);
          return good;
        },
        [&](size_t i, const std::string &words) { report_end(input, elements[i], words); });
  return all_well;
}

}  // namespace

void report(const Input &input, const Element &element, const Fault &fault) {
  complain(input.where(element, fault) + ": " + fault.text);
}

bool for_each_element(const std::vector<std::string> &files, const ElementJob &job) {
  const std::vector<std::string> standard_input{"-"};
  bool all_well = true;
  for (const std::string &file : files.empty() ? standard_input : files) {
    if (file == "-" && isatty(STDIN_FILENO) != 0)
      complain("reading standard input, end it with control-D");
    try {
      Input input(file);
      all_well &= for_each_element(input, job);
    } catch (const std::system_error &error) {
      report_file(file, error);
      all_well = false;
    }
  }
  return all_well;
}

bool for_each_record(const std::vector<std::string> &files, const Type *wanted,
                     const RecordJob &job, const RefusalJob &refused) {
  return for_each_element(files, [&](const Input &input, const Element &element) {
    Decoding decoding = decode(element, wanted);
    const bool decoded = decoding.record.has_value();
    const bool done = decoded && job(input, element, *decoding.type, *decoding.record);
    if (decoding.fault && refused)
      refused(input, element, *decoding.fault, decoded);
    else if (decoding.fault)
      report(input, element, *decoding.fault);
    return done && !decoding.fault;
  });
}

}  // namespace tool
