#include "inputs.h"

#include <pem.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

namespace bench {

std::vector<Octets> read_certificates() {
  std::ifstream in(support::trust_store, std::ios::binary);
  std::vector<Octets> all =
      support::certificates_of_pem(std::string(std::istreambuf_iterator<char>(in), {}));
  const char *const corpus = std::getenv("ORVELASN1_CORPUS");
  if (corpus == nullptr) return all;
  std::vector<std::filesystem::path> files;
  for (const auto &file :
       std::filesystem::directory_iterator(std::filesystem::path(corpus) / "certificates"))
    files.push_back(file.path());
  std::ranges::sort(files);
  for (const auto &path : files) {
    std::ifstream file(path, std::ios::binary);
    all.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }
  return all;
}

namespace {

Octets joined(std::initializer_list<Octets> parts) {
  Octets all;
  for (const Octets &part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

Octets octets_of(std::string_view text) { return {text.begin(), text.end()}; }

/// An element, with its length in the shortest form.
Octets element(uint8_t identifier, const Octets &content) {
  Octets header{identifier};
  size_t octets = 0;
  for (size_t rest = content.size(); rest != 0; rest >>= 8) ++octets;
  if (content.size() >= 0x80) header.push_back(static_cast<uint8_t>(0x80 | octets));
  for (size_t i = content.size() < 0x80 ? 1 : octets; i != 0; --i)
    header.push_back(static_cast<uint8_t>(content.size() >> (8 * (i - 1))));
  return joined({header, content});
}

constexpr uint8_t integer = 0x02, bit_string = 0x03, octet_string = 0x04, enumerated = 0x0A,
                  oid = 0x06, utf8_string = 0x0C, utc_time = 0x17, sequence = 0x30, set = 0x31;

}  // namespace

const Octets missing_serial_number(16, 0x7F);

Octets make_crl(size_t entries) {
  const Octets algorithm =  // sha256WithRSAEncryption, NULL
      element(sequence,
              joined({element(oid, {0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 1, 1, 11}), {0x05, 0x00}}));
  const Octets issuer = element(
      sequence, element(set, element(sequence, joined({element(oid, {0x55, 0x04, 0x03}),
                                                       element(utf8_string, octets_of("CA"))}))));
  const Octets date = element(utc_time, octets_of("260102030405Z"));
  const Octets reason = element(
      sequence, element(sequence, joined({element(oid, {0x55, 0x1D, 0x15}),
                                          element(octet_string, element(enumerated, {0x04}))})));
  Octets list;
  std::mt19937 random;  // the same numbers in each run
  for (size_t i = 0; i < entries; ++i) {
    Octets serial(missing_serial_number.size());
    for (uint8_t &octet : serial) octet = static_cast<uint8_t>(random());
    serial[0] = static_cast<uint8_t>(1 + serial[0] % 0x7E);  // positive, in the shortest form
    const Octets entry =
        element(sequence, joined({element(integer, serial), date, i % 2 == 0 ? Octets() : reason}));
    list.insert(list.end(), entry.begin(), entry.end());
  }
  const Octets tbs = element(
      sequence, joined({element(integer, {1}), algorithm, issuer, date, element(sequence, list)}));
  Octets signature(257, 0x5A);
  signature[0] = 0;
  return element(sequence, joined({tbs, algorithm, element(bit_string, signature)}));
}

}  // namespace bench
