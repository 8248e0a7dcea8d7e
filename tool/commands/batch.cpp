#include "commands/batch.h"

#include <unistd.h>

#include <algorithm>
#include <memory>

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

/// Counts the elements in a row of a DER input that fail and are of no type.
class Patience {
 public:
  bool is_over() const { return shared_.octets()[0] != 0; }

  /// Counts an element. Says so where the patience ends.
  void count(const Input &input, const Element &element, bool good) {
    const bool rubbish = !good && element.line == 0 && candidates(element, nullptr).empty();
    failures_ = rubbish ? failures_ + 1 : 0;
    if (failures_ < most_strangers) return;
    complain(input.where(element) + ": the rest is skipped, since " +
             std::to_string(most_strangers) + " elements in a row have the structure of no type");
    shared_.octets()[0] = 1;
  }

 private:
  SharedMemory shared_{1};  ///< what the children tell their parent
  size_t failures_ = 0;
};

/// An input, and the patience with it.
struct Source {
  explicit Source(const std::string &file) : input(file) {}
  Input input;
  Patience patience;
};

struct SourceElement {
  Source *source;
  Element element;
  Bytes own{};  ///< its octets, where they are kept for longer than the source has them
};

/// Opens each file and runs the function for it. Reports those that cannot be read.
bool for_each_source(const std::vector<std::string> &files,
                     const std::function<void(std::unique_ptr<Source>)> &take) {
  const std::vector<std::string> standard_input{"-"};
  bool all_well = true;
  for (const std::string &file : files.empty() ? standard_input : files) {
    if (file == "-" && isatty(STDIN_FILENO) != 0)
      complain("reading standard input, end it with control-D");
    try {
      take(std::make_unique<Source>(file));
    } catch (const std::system_error &error) {
      report_file(file, error);
      all_well = false;
    }
  }
  return all_well;
}

/// Takes the next elements of a source; none once the patience with it is over.
std::vector<SourceElement> take(Source &source) {
  std::vector<SourceElement> taken;
  if (source.patience.is_over()) return taken;
  for (Element &element : source.input.take(elements_a_child, Input::usual_step))
    taken.push_back({&source, std::move(element)});
  return taken;
}

/// Runs the job for each of the elements.
bool run(std::span<const SourceElement> elements, const ElementJob &job) {
  return run_isolated(
      elements.size(),
      [&](size_t i) {
        Source *const source = elements[i].source;
        const Element &element = elements[i].element;
        if (source->patience.is_over()) return false;
        const bool good = job(source->input, element);
        report_remark(source->input, element);
        source->patience.count(source->input, element, good);
        return good;
      },
      [&](size_t i, const std::string &words) {
        report_end(elements[i].source->input, elements[i].element, words);
      });
}

/// Runs the job for all elements in their order. All of them stay in memory.
bool for_each_in_order(const std::vector<std::string> &files, const ElementJob &job,
                       const std::function<int64_t(const Element &)> &order) {
  std::vector<std::unique_ptr<Source>> sources;
  std::vector<SourceElement> elements;
  bool all_well = for_each_source(files, [&](std::unique_ptr<Source> source) {
    for (auto taken = take(*source); !taken.empty(); taken = take(*source))
      for (SourceElement &one : taken) {
        one.own.assign(one.element.octets.begin(), one.element.octets.end());
        one.element.octets = one.own;
        elements.push_back(std::move(one));
      }
    sources.push_back(std::move(source));
  });
  std::ranges::stable_sort(elements, {},
                           [&](const SourceElement &one) { return order(one.element); });
  for (std::span<const SourceElement> rest = elements; !rest.empty();) {
    const auto some = rest.first(std::min(elements_a_child, rest.size()));
    all_well &= run(some, job);
    rest = rest.subspan(some.size());
  }
  return all_well;
}

}  // namespace

void report(const Input &input, const Element &element, const Fault &fault) {
  complain(input.where(element, fault) + ": " + fault.text);
}

void report_file(const std::string &file, const std::system_error &error) {
  const bool folder = error.code() == std::errc::is_a_directory;
  complain(printable(std::string_view(file)) + ": " + error.code().message() +
           (folder ? "; name the files in it" : ""));
}

void report_remark(const Input &input, const Element &element) {
  if (!element.remark.empty()) complain(input.where(element) + ": " + element.remark);
}

bool for_each_element(const std::vector<std::string> &files, const ElementJob &job,
                      const Course &course) {
  if (course.order) return for_each_in_order(files, job, course.order);
  bool all_well = true;
  all_well &= for_each_source(files, [&](const std::unique_ptr<Source> &source) {
    if (course.overwrites) source->input.read_all();
    for (auto taken = take(*source); !taken.empty(); taken = take(*source)) {
      if (course.seen)
        for (const SourceElement &one : taken) course.seen(one.element);
      all_well &= run(taken, job);
    }
    if (course.ended) course.ended(source->input);
  });
  return all_well;
}

bool for_each_record(const std::vector<std::string> &files, const Type *wanted,
                     const RecordJob &job, const RefusalJob &refused, const Course &course) {
  const auto decode_and_run = [&](const Input &input, const Element &element) {
    Decoding decoding = decode(element, wanted);
    const bool decoded = decoding.record.has_value();
    const bool done = decoded && job(input, element, *decoding.type, *decoding.record);
    if (decoding.fault && refused)
      refused(input, element, *decoding.fault, decoded);
    else if (decoding.fault)
      report(input, element, *decoding.fault);
    return done && !decoding.fault;
  };
  return for_each_element(files, decode_and_run, course);
}

}  // namespace tool
