#include "commands/batch.h"

#include <unistd.h>

#include <system_error>

#include "system/isolate.h"
#include "system/output.h"
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

}  // namespace

void report(const Input &input, const Element &element, const Fault &fault) {
  complain(input.where(element, fault) + ": " + fault.text);
}

bool for_each_element(const std::vector<std::string> &files,
                      const std::function<bool(const Input &, const Element &)> &job) {
  const std::vector<std::string> standard_input{"-"};
  bool all_well = true;
  for (const std::string &file : files.empty() ? standard_input : files) {
    if (file == "-" && isatty(STDIN_FILENO) != 0)
      complain("reading standard input, end it with control-D");
    try {
      Input input(file);
      std::vector<Element> elements;
      while (!(elements = input.take(elements_a_child)).empty())
        all_well &= run_isolated(
            elements.size(), [&](size_t i) { return job(input, elements[i]); },
            [&](size_t i, const std::string &words) { report_end(input, elements[i], words); });
    } catch (const std::system_error &error) {
      complain(printable(file) + ": " + error.code().message());
      all_well = false;
    }
  }
  return all_well;
}

bool for_each_record(const std::vector<std::string> &files, const Type *wanted,
                     const RecordJob &job,
                     const std::function<void(const Input &, const Element &)> &refused) {
  return for_each_element(files, [&](const Input &input, const Element &element) {
    Decoding decoding = decode(element, wanted);
    const bool done = decoding.record && job(input, element, *decoding.type, *decoding.record);
    if (!decoding.record && refused) refused(input, element);
    if (decoding.fault) report(input, element, *decoding.fault);
    return done && !decoding.fault;
  });
}

}  // namespace tool
