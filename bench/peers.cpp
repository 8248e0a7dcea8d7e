// Measures how long libraries take for the same certificates and revocation lists, side by side. Each
// decodes a value and releases it. Only certificates that all of them take are measured. Prints a table
// of ratios after the times.
//
//   peers [OPTION...]     the options of the benchmark library
//   peers --write FOLDER  writes the certificates that all take, a file each
#include <benchmark/benchmark.h>
#include <orvelpki.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <string_view>

#include "blocks.h"
#include "inputs.h"
#include "peers/peer.h"

namespace {

using bench::Blocks;
using bench::Octets;
using bench::Read;
using bench::Way;

/* ------------------------------------------------------------------------------------------- */
/* The ways of this project                                                                      */
/* ------------------------------------------------------------------------------------------- */

template <class T, auto Decode, auto Free>
bool read(std::span<const uint8_t> der) {
  const uint8_t *const end = der.data() + der.size();
  T *record = nullptr;
  const bool taken = Decode(der.data(), end, 0, &record, 0) == end;
  Free(record);
  return taken;
}

bool view_certificate(std::span<const uint8_t> der) {
  const uint8_t *const end = der.data() + der.size();
  pki_CertificateView view;
  return pki_certificate_view(der.data(), end, &view) == end;
}

bool open(pki_CrlReader &reader, std::span<const uint8_t> der) {
  return pki_crl_open(&reader, der.data(), der.data() + der.size()) != 0;
}

bool walk_crl(std::span<const uint8_t> der) {
  pki_CrlReader reader;
  pki_CrlEntry entry;
  int32_t found = open(reader, der) ? 1 : -1;
  while (found == 1) found = pki_crl_next(&reader, &entry);
  return found == 0;
}

bool look_up(std::span<const uint8_t> der) {
  pki_CrlReader reader;
  pki_CrlEntry entry;
  return open(reader, der) &&
         pki_crl_find(&reader, bench::missing_serial_number.data(),
                      static_cast<uint32_t>(bench::missing_serial_number.size()), &entry) == 0;
}

constexpr const char *decoder = "liborvelasn1";

/// Returns the ways of the peers and of this project. The last one comes from a decoder that some
/// inputs end the process of: it sees only what all others took.
std::vector<Way> ways_to_read_certificates() {
  std::vector<Way> ways = bench::certificate_ways;
  ways.push_back({"liborvelpki", read<Certificate, pki_Certificate_d, pki_Certificate_free>});
  ways.push_back({"liborvelpki, a view", view_certificate});
  ways.push_back({decoder, read<Certificate, asn1_Certificate_d, asn1_Certificate_free>});
  return ways;
}

std::vector<Way> ways_to_read_crls() {
  using Crl = CertificateRevocationList;
  std::vector<Way> ways = bench::crl_ways;
  ways.push_back({"liborvelpki",
                  read<Crl, pki_CertificateRevocationList_d, pki_CertificateRevocationList_free>});
  ways.push_back({"liborvelpki, entry by entry", walk_crl});
  ways.push_back({"liborvelpki, look-up of a serial number", look_up});
  ways.push_back(
      {decoder, read<Crl, asn1_CertificateRevocationList_d, asn1_CertificateRevocationList_free>});
  return ways;
}

/* ------------------------------------------------------------------------------------------- */
/* The benchmarks                                                                                */
/* ------------------------------------------------------------------------------------------- */

constexpr const char *floor_of_blocks = "the blocks of liborvelasn1 alone";
constexpr const char *written_floor = "the same blocks, each written to";

/// The time of one certificate, or of one entry of a revocation list.
constexpr const char *each = "each";

/// Values that are read in all ways.
class Task {
 public:
  /// `entries` is how many a value has that are counted instead of it.
  Task(std::vector<Way> ways, std::function<std::vector<Octets>()> make, size_t entries = 1)
      : ways_(std::move(ways)), make_(std::move(make)), entries_(entries) {}

  /// Returns the values that all ways take.
  const std::vector<Octets> &values() {
    if (!values_) {
      values_ = make_();
      std::erase_if(*values_, [&](const Octets &value) {
        return !std::ranges::all_of(ways_, [&](const Way &way) { return way.read(value); });
      });
    }
    return *values_;
  }

  void add_benchmarks(const std::string &title) {
    for (const Way &way : ways_) {
      add(title, way.name, [this, read = way.read] {
        for (const Octets &value : values()) benchmark::DoNotOptimize(read(value));
      });
    }
    add(title, floor_of_blocks, [this] {
      for (const Blocks &one : blocks()) one.replay();
    });
    add(title, written_floor, [this] {
      for (const Blocks &one : blocks()) one.replay_written();
    });
  }

 private:
  /// Returns the calls to the allocator for each value.
  const std::vector<Blocks> &blocks() {
    if (blocks_.empty())
      for (const Octets &value : values()) blocks_.emplace_back([&] { ways_.back().read(value); });
    return blocks_;
  }

  template <class Once>
  void add(const std::string &title, const std::string &name, Once once) {
    const auto run = [this, once](benchmark::State &state) {
      once();  // makes what it needs
      for ([[maybe_unused]] const auto iteration : state) once();
      state.counters[each] = benchmark::Counter(
          static_cast<double>(values().size() * entries_),
          benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    };
    benchmark::RegisterBenchmark((title + "/" + name).c_str(), run);
  }

  std::vector<Way> ways_;
  std::function<std::vector<Octets>()> make_;
  size_t entries_;
  std::optional<std::vector<Octets>> values_;
  std::vector<Blocks> blocks_;
};

/// Notes the median of each benchmark, and prints tables of them.
class Reporter : public benchmark::ConsoleReporter {
 public:
  Reporter() : ConsoleReporter(OO_Tabular) {}

  void ReportRuns(const std::vector<Run> &runs) override {
    for (const Run &run : runs) {
      if (run.run_type != Run::RT_Iteration && run.aggregate_name != "median") continue;
      const std::string &name = run.run_name.function_name;
      const size_t slash = name.find('/');
      times_[name.substr(slash + 1)][name.substr(0, slash)] = 1e9 * run.counters.at(each).value;
    }
    ConsoleReporter::ReportRuns(runs);
  }

  /// Prints a row for each way, the slowest first, and a column for each title: nanoseconds, and
  /// how many times those of the decoder they are.
  void print_table(const char *heading, const std::vector<std::string> &titles) const {
    std::vector<std::pair<double, std::string>> order;
    for (const auto &[name, times] : times_) {
      const auto found = times.find(titles.back());
      if (found != times.end()) order.emplace_back(found->second, name);
    }
    if (order.empty()) return;
    std::ranges::sort(order, std::greater());
    std::string line = std::string("\n| ") + heading, rule = "|---";
    for (const std::string &title : titles) {
      line += " | " + title;
      rule += "|---:";
    }
    std::printf("%s |\n%s|\n", line.c_str(), rule.c_str());
    for (const auto &[last, name] : order) {
      std::printf("| %s", name.c_str());
      for (const std::string &title : titles) {
        const double time = time_of(name, title);
        std::printf(" | %.*f (%.2f)", time < 100 ? 1 : 0, time, time / time_of(decoder, title));
      }
      std::printf(" |\n");
    }
  }

 private:
  double time_of(const std::string &name, const std::string &title) const {
    const auto row = times_.find(name);
    if (row == times_.end()) return NAN;
    const auto found = row->second.find(title);
    return found == row->second.end() ? NAN : found->second;
  }

  std::map<std::string, std::map<std::string, double>> times_;
};

/// Returns the status of the program.
int write_certificates(const std::filesystem::path &folder) {
  Task task(ways_to_read_certificates(), bench::read_certificates);
  size_t number = 0;
  for (const Octets &der : task.values()) {
    std::ofstream out(folder / (std::to_string(number++) + ".der"), std::ios::binary);
    out.write(reinterpret_cast<const char *>(der.data()), static_cast<std::streamsize>(der.size()));
    if (!out.flush()) return 1;
  }
  return 0;
}

}  // namespace

int main(int argc, char **argv) {
  if (argc == 3 && std::string_view(argv[1]) == "--write") return write_certificates(argv[2]);
  const std::string certificate = "certificate";
  std::map<std::string, Task> tasks;
  tasks.try_emplace(certificate, ways_to_read_certificates(), bench::read_certificates);
  std::vector<std::string> lists;
  for (const size_t entries : {1'000U, 10'000U, 100'000U, 1'000'000U}) {
    lists.push_back(std::to_string(entries) + " entries");
    tasks.try_emplace(
        lists.back(), ways_to_read_crls(),
        [entries] { return std::vector<Octets>{bench::make_crl(entries)}; }, entries);
  }
  for (auto &[title, task] : tasks) task.add_benchmarks(title);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  for (auto &[title, task] : tasks) {
    if (!task.values().empty()) continue;
    std::fprintf(stderr, "%s: there is no value that all libraries take\n", title.c_str());
    return 1;
  }
  Reporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  const size_t count = tasks.at(certificate).values().size();
  reporter.print_table("ns", {certificate});
  std::printf("%zu certificates\n", count);
  reporter.print_table("ns an entry", lists);
  return 0;
}
