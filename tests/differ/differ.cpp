// Hands the same inputs to this library and to others, and counts where they differ.
//
//   differ run FILE COUNT [SEED]   goes on where FILE says, for so many inputs, and writes FILE
//   differ table FILE              prints what FILE counts
//   differ show NUMBER [SEED]      prints an input and what each library says of it
//   differ read FILE               the same of a file
//   differ write COUNT [SEED]      has the libraries read so many certificates of random records
//
// The libraries run in a child process of this one. Where one of them ends it, that costs the input
// that ended it, and the others of the child are done again.
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>

#include "inputs.h"
#include "made.h"

namespace {

using namespace differ;

constexpr uint64_t inputs_of_a_child = 5000;
constexpr time_t seconds_for_an_input = 20;

[[noreturn]] void fail(const std::string &what) {
  std::fprintf(stderr, "differ: %s\n", what.c_str());
  std::exit(2);
}

// ---------------------------------------------------------------------------------------------
// Classes
// ---------------------------------------------------------------------------------------------

/// How often a class was seen, and in which input first.
struct Count {
  uint64_t times = 0;
  uint64_t first = UINT64_MAX;
};

class Table {
 public:
  void add(const std::string &name, uint64_t times, uint64_t first) {
    Count &count = classes_[name];
    count.times += times;
    count.first = std::min(count.first, first);
  }

  void add(const Table &other) {
    for (const auto &[name, count] : other.classes_) add(name, count.times, count.first);
  }

  /// Writes a line for each class: how often, the first input, the name.
  void write(std::FILE *out) const {
    for (const auto &[name, count] : classes_)
      std::fprintf(out, "%" PRIu64 "\t%" PRIu64 "\t%s\n", count.times, count.first, name.c_str());
  }

  /// Reads what write() wrote, up to the end.
  void read(std::istream &in) {
    uint64_t times = 0, first = 0;
    std::string name;
    while (in >> times >> first && in.ignore() && std::getline(in, name)) add(name, times, first);
  }

  /// Prints the classes, those seen most often first in each group.
  void print() const {
    std::vector<std::pair<std::string, Count>> rows(classes_.begin(), classes_.end());
    std::ranges::stable_sort(rows, [](const auto &a, const auto &b) {
      const auto group = [](const std::string &name) { return name.substr(0, name.find(':')); };
      const int order = group(a.first).compare(group(b.first));
      return order != 0 ? order < 0 : a.second.times > b.second.times;
    });
    std::printf("%12s  %12s  %s\n", "times", "first input", "class");
    for (const auto &[name, count] : rows)
      std::printf("%12" PRIu64 "  %12" PRIu64 "  %s\n", count.times, count.first, name.c_str());
  }

 private:
  std::map<std::string, Count> classes_;
};

/// In the order of the libraries.
using Answers = std::array<Answer, libraries.size()>;

/// The names of the libraries that take an input.
std::string takers(const Answers &answers) {
  std::string names;
  for (size_t i = 0; i < answers.size(); ++i)
    if (answers[i].taken) names += (names.empty() ? "" : ", ") + std::string(libraries[i].name);
  return names.empty() ? "nobody" : names;
}

/// In a few words, how two facts differ.
std::string how(const std::string &a, const std::string &b) {
  const auto kind = [](const std::string &fact) {
    return fact == unreadable || fact == none || fact == "no" ? fact
           : fact.empty()                                     ? "nothing"
                                                              : "a value";
  };
  return kind(a) + " and " + kind(b);
}

/// Adds the classes of an input's answers.
void classify(const Answers &answers, uint64_t number, Table *table) {
  table->add("taken by: " + takers(answers), 1, number);
  const size_t taking = static_cast<size_t>(
      std::ranges::count_if(answers, [](const Answer &answer) { return answer.taken; }));
  const Answer &ours = answers[0];
  if (ours.why.starts_with("LAW")) table->add(ours.why, 1, number);
  for (size_t i = 1; ours.taken && taking == 1 && i < answers.size(); ++i)
    table->add(std::string("we alone take: ") + libraries[i].name + ": " + answers[i].why, 1,
               number);
  if (!ours.taken && taking != 0)
    table->add((taking == answers.size() - 1 ? "we alone refuse: " : "we refuse: ") + ours.why +
                   ", taken by " + takers(answers),
               1, number);
  for (size_t a = 0; a < answers.size(); ++a)
    for (size_t b = a + 1; b < answers.size(); ++b) {
      if (!answers[a].taken || !answers[b].taken) continue;
      for (size_t fact = 0; fact < fact_count; ++fact) {
        const auto &one = answers[a].facts[fact], &other = answers[b].facts[fact];
        if (!one || !other || *one == *other) continue;
        table->add(std::string(a == 0 ? "we differ: " : "others differ: ") + fact_names[fact] +
                       ", " + libraries[a].name + " and " + libraries[b].name + ": " +
                       how(*one, *other),
                   1, number);
      }
    }
}

// ---------------------------------------------------------------------------------------------
// Children
// ---------------------------------------------------------------------------------------------

/// What a child is at, in memory that it shares with its parent.
struct Progress {
  uint64_t input;
  size_t library;
};

void set_clock(time_t seconds) {
  itimerval timer{};
  timer.it_value.tv_sec = seconds;
  setitimer(ITIMER_VIRTUAL, &timer, nullptr);
}

/// Hands the inputs to the libraries, and writes the table to `out`.
void work(const Inputs &inputs, uint64_t seed, uint64_t from, uint64_t to,
          const std::set<uint64_t> &deadly, Progress *progress, std::FILE *out) {
  Table table;
  for (uint64_t number = from; number != to; ++number) {
    if (deadly.contains(number)) continue;
    progress->input = number;
    const Bytes input = inputs.get(number, seed);
    set_clock(seconds_for_an_input);
    Answers answers;
    for (size_t i = 0; i < libraries.size(); ++i) {
      progress->library = i;
      answers[i] = libraries[i].read(input);
    }
    classify(answers, number, &table);
  }
  table.write(out);
}

/// The same in a child process, once more for each input that ended it.
Table work_in_children(const Inputs &inputs, uint64_t seed, uint64_t from, uint64_t to,
                       Progress *progress) {
  Table table;
  std::set<uint64_t> deadly;
  for (;;) {
    std::FILE *const results = std::tmpfile();
    if (results == nullptr) fail("no temporary file");
    const pid_t child = fork();
    if (child < 0) fail("no child process");
    if (child == 0) {
      work(inputs, seed, from, to, deadly, progress, results);
      std::fflush(results);
      _exit(0);
    }
    int status = 0;
    if (waitpid(child, &status, 0) != child) fail("the child process is lost");
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0) {
      std::rewind(results);
      std::string text;
      char block[65536];
      for (size_t size; (size = std::fread(block, 1, sizeof block, results)) != 0;)
        text.append(block, size);
      std::fclose(results);
      std::istringstream in(text);
      table.read(in);
      return table;
    }
    std::fclose(results);
    if (!deadly.insert(progress->input).second) fail("an input that was left out ended the child");
    const std::string end = WIFSIGNALED(status) ? strsignal(WTERMSIG(status)) : "exit";
    table.add(
        std::string("the end of the process: ") + libraries[progress->library].name + ", " + end, 1,
        progress->input);
  }
}

// ---------------------------------------------------------------------------------------------
// Commands
// ---------------------------------------------------------------------------------------------

/// What a run goes on from.
struct State {
  uint64_t seed = 1, samples = 0, next = 0;
  Table table;
};

bool read_state(const std::string &path, State *state) {
  std::ifstream in(path);
  if (!in) return false;
  if (!(in >> state->seed >> state->samples >> state->next)) fail(path + " is no file of a run");
  state->table.read(in);
  return true;
}

void write_state(const std::string &path, const State &state) {
  const std::string part = path + ".part";
  std::FILE *const out = std::fopen(part.c_str(), "w");
  if (out == nullptr) fail(part + " cannot be written");
  std::fprintf(out, "%" PRIu64 " %" PRIu64 " %" PRIu64 "\n", state.seed, state.samples, state.next);
  state.table.write(out);
  if (std::fclose(out) != 0 || std::rename(part.c_str(), path.c_str()) != 0)
    fail(path + " cannot be written");
}

void run(const std::string &path, uint64_t count, uint64_t seed) {
  const Inputs inputs;
  if (inputs.samples() == 0) fail("there are no certificates to start from");
  State state{seed, inputs.sum(), 0, {}};
  if (read_state(path, &state) && state.samples != inputs.sum())
    fail(path + " is of a run with other samples");
  void *const shared =
      mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (shared == MAP_FAILED) fail("no memory");
  const rlimit no_core{0, 0};
  setrlimit(RLIMIT_CORE, &no_core);
  for (const uint64_t end = state.next + count; state.next < end;) {
    const uint64_t to = std::min(state.next + inputs_of_a_child, end);
    state.table.add(
        work_in_children(inputs, state.seed, state.next, to, static_cast<Progress *>(shared)));
    state.next = to;
    write_state(path, state);
  }
}

/// Tells in which facts a library reads something else than was written.
std::string misread(const Answer &written, const Answer &read) {
  if (!read.taken) return " refuses it: " + read.why;
  std::string facts;
  for (size_t fact = 0; fact < fact_count; ++fact)
    if (read.facts[fact] && read.facts[fact] != written.facts[fact])
      facts += std::string(" ") + fact_names[fact];
  return facts.empty() ? facts : " reads another" + facts;
}

/// Returns whether all certificates are written as DER and read as they were made.
bool write_and_read(uint64_t count, uint64_t seed) {
  uint64_t wrong = 0, compared = 0;
  for (uint64_t number = 0; number < count; ++number) {
    const Made made = make(number, seed);
    if (made.octets != made.der) {
      ++wrong;
      std::printf("%" PRIu64 ": what was written is not DER\n", number);
    }
    for (const Library &library : libraries) {
      const Answer answer = library.read(made.octets);
      const std::string how = misread(made.content, answer);
      compared += static_cast<uint64_t>(
          std::ranges::count_if(answer.facts, [](const auto &fact) { return fact.has_value(); }));
      if (how.empty()) continue;
      ++wrong;
      std::printf("%" PRIu64 ": %s%s\n", number, library.name, how.c_str());
    }
  }
  std::printf("%" PRIu64 " certificates, %" PRIu64 " values compared, %" PRIu64 " wrong\n", count,
              compared, wrong);
  return wrong == 0;
}

void print_table(const std::string &path) {
  State state;
  if (!read_state(path, &state)) fail(path + " cannot be read");
  std::printf("%" PRIu64 " inputs, seed %" PRIu64 "\n", state.next, state.seed);
  state.table.print();
}

void show(const Bytes &input) {
  for (const uint8_t octet : input) std::printf("%02X", octet);
  std::printf("\n");
  Answers answers;
  for (size_t i = 0; i < libraries.size(); ++i) {
    answers[i] = libraries[i].read(input);
    std::printf("%s: %s\n", libraries[i].name, answers[i].taken ? "taken" : answers[i].why.c_str());
  }
  for (size_t fact = 0; fact < fact_count; ++fact) {
    std::map<std::string, std::string> names;  // by what they say
    for (size_t i = 0; i < libraries.size(); ++i)
      if (answers[i].facts[fact])
        names[*answers[i].facts[fact]] += std::string(" ") + libraries[i].name;
    if (names.size() < 2) continue;
    std::printf("%s\n", fact_names[fact]);
    for (const auto &[said, who] : names) {
      std::printf(" %s:", who.c_str());
      for (const char c : said) {
        if (c >= ' ' && c < 0x7F)
          std::printf("%c", c);
        else
          std::printf("\\%02X", static_cast<uint8_t>(c));
      }
      std::printf("\n");
    }
  }
}

uint64_t number_of(const char *text) {
  char *end = nullptr;
  const uint64_t number = std::strtoull(text, &end, 10);
  if (end == text || *end != '\0') fail(std::string(text) + " is no number");
  return number;
}

}  // namespace

int main(int argc, char **argv) {
  const std::string command = argc > 2 ? argv[1] : "";
  const auto seed = [&](int at) { return argc > at ? number_of(argv[at]) : 1; };
  if (command == "run" && argc > 3) {
    run(argv[2], number_of(argv[3]), seed(4));
  } else if (command == "table") {
    print_table(argv[2]);
  } else if (command == "show") {
    show(Inputs().get(number_of(argv[2]), seed(3)));
  } else if (command == "read") {
    std::ifstream in(argv[2], std::ios::binary);
    show({std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()});
  } else if (command == "write") {
    return write_and_read(number_of(argv[2]), seed(3)) ? 0 : 1;
  } else {
    fail("run FILE COUNT [SEED], table FILE, show NUMBER [SEED], read FILE or write COUNT [SEED]");
  }
}
