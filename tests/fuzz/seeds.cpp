// Makes seeds for the fuzz targets.
//
//   fuzz_seeds FOLDER                  the samples of all families
//   fuzz_seeds FOLDER FAMILY FILE...   each file for this family, and the elements in the files for
//                                      every family that reads them to their end
//
// They go to FOLDER/GROUP/, after the octet that chooses the family.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>

#include "guard.h"
#include "laws.h"
#include "tree.h"

namespace {

using namespace attack;

// The fuzzer takes no more from a file.
constexpr size_t most_octets = 4095;
// Of the seeds that a family gets from the elements of files.
constexpr size_t most_elements = 100;

/// A name for a file, by its content (FNV-1a).
std::string title(const Bytes &octets) {
  uint64_t hash = 0xCBF29CE484222325;
  for (const uint8_t octet : octets) hash = (hash ^ octet) * 0x100000001B3;
  char text[17];
  std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(hash));
  return text;
}

/// The octet that chooses the family in its group.
uint8_t choice_of(const Family &wanted) {
  uint8_t choice = 0;
  for (const Family *family : families_of(wanted.group)) {
    if (family == &wanted) break;
    ++choice;
  }
  return choice;
}

bool reads_to_the_end(const Family &family, Octets octets) {
  Guard guard;
  const uint8_t *const end = octets.data() + octets.size();
  const uint8_t *next = nullptr;
  void *record = nullptr;
  guard.run([&] { next = family.decode(octets.data(), end, 0, &record, 0); });
  if (next == nullptr) return false;
  guard.run([&] { family.free(record); });
  return next == end;
}

/// The tags of a piece and of what is in it: two alike teach the fuzzer little more than one.
void draw(const fuzz::Piece &piece, std::string *shape) {
  *shape += static_cast<char>(piece.tag);
  *shape += '(';
  for (const fuzz::Piece &part : piece.parts) draw(part, shape);
  *shape += ')';
}

class Seeds {
 public:
  explicit Seeds(const char *folder) : folder_(folder) {}

  void add(const Family &family, Octets octets) {
    if (octets.size() > most_octets) return;
    Bytes seed{choice_of(family)};
    seed.insert(seed.end(), octets.begin(), octets.end());
    const std::filesystem::path group = folder_ / family.group;
    std::filesystem::create_directories(group);
    std::ofstream file(group / title(seed), std::ios::binary);
    std::ranges::copy(seed, std::ostreambuf_iterator<char>(file));
    if (!file.flush()) throw std::filesystem::filesystem_error("not written", group, {});
  }

  void add_elements(const fuzz::Tree &tree) {
    for (const fuzz::Piece &piece : tree) {
      add_element(piece);
      add_elements(piece.parts);
    }
  }

 private:
  void add_element(const fuzz::Piece &piece) {
    std::string shape;
    draw(piece, &shape);
    const Bytes octets = fuzz::put_together({piece});
    for (const Family &family : families()) {
      std::set<std::string> &shapes = shapes_[&family];
      if (family.group == "text" || shapes.size() == most_elements || shapes.contains(shape) ||
          !reads_to_the_end(family, octets))
        continue;
      shapes.insert(shape);
      add(family, octets);
    }
  }

  std::filesystem::path folder_;
  std::map<const Family *, std::set<std::string>> shapes_;
};

const Family *family_named(std::string_view name) {
  for (const Family &family : families())
    if (family.name == name) return &family;
  return nullptr;
}

int make_seeds(int argc, char **argv) {
  Seeds seeds(argv[1]);
  if (argc == 2) {
    for (const Family &family : families())
      for (const Bytes &sample : family.samples) seeds.add(family, sample);
    return 0;
  }
  const Family *const family = family_named(argv[2]);
  if (family == nullptr) {
    std::fprintf(stderr, "There is no family \"%s\"\n", argv[2]);
    return 1;
  }
  for (int i = 3; i < argc; ++i) {
    std::ifstream file(argv[i], std::ios::binary);
    const Bytes octets(std::istreambuf_iterator<char>(file), {});
    seeds.add(*family, octets);
    seeds.add_elements(fuzz::take_apart(octets));
  }
  return 0;
}

}  // namespace

int main(int argc, char **argv) {
  if (argc < 2) {
    std::fprintf(stderr, "fuzz_seeds FOLDER [FAMILY FILE...]\n");
    return 1;
  }
  try {
    return make_seeds(argc, argv);
  } catch (const std::exception &error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
