#include "inputs.h"

#include <pem.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

namespace differ {

namespace {

constexpr size_t room = 8192;
constexpr size_t largest_sample = 4096;

Bytes octets_of(const std::filesystem::path &path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::vector<Bytes> read_samples() {
  const Bytes trusted = octets_of(support::trust_store);
  std::vector<Bytes> all = support::certificates_of_pem(
      {reinterpret_cast<const char *>(trusted.data()), trusted.size()});
  const char *const corpus = std::getenv("ORVELASN1_CORPUS");
  if (corpus == nullptr) return all;
  for (const char *const folder : {"certificates", "hostile-certificates"}) {
    std::vector<std::filesystem::path> files;
    for (const auto &file :
         std::filesystem::directory_iterator(std::filesystem::path(corpus) / folder))
      files.push_back(file.path());
    std::ranges::sort(files);
    for (const auto &path : files) all.push_back(octets_of(path));
  }
  return all;
}

/// Some samples, from all parts: what foreign pieces are taken from.
std::vector<Bytes> some_of(const std::vector<Bytes> &samples) {
  std::vector<Bytes> some;
  const size_t step = samples.size() / 32 + 1;
  for (size_t i = 0; i < samples.size(); i += step) some.push_back(samples[i]);
  return some;
}

std::mt19937 random_of_content;  // which plain() takes its numbers from: it has no place for others

size_t below(size_t limit) { return random_of_content() % limit; }

size_t put(const char *text, uint8_t *octets, size_t room_left) {
  const size_t size = std::strlen(text);
  if (size > room_left) return 0;
  std::memcpy(octets, text, size);
  return size;
}

/// Changes the content of an element: a time into another text, a single octet into another value,
/// anything else in one place.
size_t plain(uint8_t *octets, size_t size, size_t room_left) {
  static constexpr const char *times[] = {
      "490101000000Z",       "500101000000Z",     "700101000000Z",     "000229120000Z",
      "010229120000Z",       "991231235959Z",     "2601020304Z",       "260102030405",
      "260102030405+0100",   "260102030405-2359", "260102030460Z",     "260102240000Z",
      "261302030405Z",       "260100030405Z",     "20500101000000Z",   "99991231235959Z",
      "19491231235959Z",     "00000101000000Z",   "20260102030405.5Z", "2026010203Z",
      "20260102030405+0000", "19000229000000Z",   "20000229000000Z",   "26010203040 Z"};
  static constexpr uint8_t values[] = {0x00, 0x01, 0x02, 0x03, 0x07, 0x08, 0x7F, 0x80, 0xFE, 0xFF};
  const bool is_time = size >= 11 && size <= 19 && std::all_of(octets, octets + 10, [](uint8_t c) {
                         return c >= '0' && c <= '9';
                       });
  if (is_time && below(2) == 0) return put(times[below(std::size(times))], octets, room_left);
  if (size == 0) {
    if (room_left == 0) return 0;
    octets[0] = values[below(std::size(values))];
    return 1;
  }
  uint8_t *const at = octets + below(size);
  const auto after = static_cast<size_t>(octets + size - at);
  switch (below(6)) {
    case 0:
      *at = values[below(std::size(values))];
      return size;
    case 1:
      *at = static_cast<uint8_t>(below(256));
      return size;
    case 2:
      std::memmove(at, at + 1, after - 1);
      return size - 1;
    case 3:
      if (room_left == size) return size;
      std::memmove(at + 1, at, after);
      *at = values[below(std::size(values))];
      return size + 1;
    case 4:
      return below(size + 1);
    default:
      *at = static_cast<uint8_t>(*at ^ 1U << below(8));
      return size;
  }
}

/// All elements without parts.
void find_leaves(fuzz::Tree *tree, std::vector<fuzz::Piece *> *leaves) {
  for (fuzz::Piece &piece : *tree) {
    if (piece.parts.empty())
      leaves->push_back(&piece);
    else
      find_leaves(&piece.parts, leaves);
  }
}

/// The sample with another content in one element, and right lengths.
Bytes rewritten(const Bytes &sample) {
  fuzz::Tree tree = fuzz::take_apart(sample);
  std::vector<fuzz::Piece *> leaves;
  find_leaves(&tree, &leaves);
  if (leaves.empty()) return sample;
  Bytes &content = leaves[below(leaves.size())]->octets;
  const size_t size = content.size();
  content.resize(size + 20);
  content.resize(plain(content.data(), size, content.size()));
  return fuzz::put_together(tree);
}

/// A number that looks like none of its neighbours.
uint64_t scattered(uint64_t number) {
  number += 0x9E3779B97F4A7C15;
  number = (number ^ number >> 30) * 0xBF58476D1CE4E5B9;
  number = (number ^ number >> 27) * 0x94D049BB133111EB;
  return number ^ number >> 31;
}

}  // namespace

Inputs::Inputs() : samples_(read_samples()), mutator_(some_of(samples_), plain) {
  // A change of a large sample is one of a small part of it, and takes as long as those of many.
  std::erase_if(samples_, [](const Bytes &sample) { return sample.size() > largest_sample; });
}

Bytes Inputs::get(uint64_t number, uint64_t seed) const {
  if (number < samples_.size()) return samples_[number];
  std::mt19937 random(static_cast<uint32_t>(scattered(seed ^ scattered(number))));
  random_of_content.seed(static_cast<uint32_t>(random()));
  const auto any_sample = [&]() -> const Bytes & { return samples_[random() % samples_.size()]; };
  const Bytes &sample = any_sample();
  switch (random() % 8) {
    case 0:
      return fuzz::Mutator::crossed(sample, any_sample(), room, static_cast<uint32_t>(random()));
    case 1: {
      Bytes changed = sample;
      changed.resize(room);
      changed.resize(plain(changed.data(), sample.size(), changed.size()));
      return changed;
    }
    case 2:
    case 3:
    case 4:
      return rewritten(sample);
    default:
      return mutator_.changed(sample, room, static_cast<uint32_t>(random()));
  }
}

uint64_t Inputs::sum() const {
  uint64_t sum = samples_.size();
  for (const Bytes &sample : samples_)
    for (const uint8_t octet : sample) sum = scattered(sum ^ octet);
  return sum;
}

}  // namespace differ
