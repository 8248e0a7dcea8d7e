// The decoders of the encoding frame against a second reading of their rules, with the end at an
// unreadable page.
#ifndef ORVELASN1_TESTS_ATTACK_FRAME_H
#define ORVELASN1_TESTS_ATTACK_FRAME_H

#include <cstdint>
#include <string>

#include "laws.h"

namespace attack {

/// Room for a few octets, and after it addresses that can be named but not read.
class Edge {
 public:
  Edge();
  Edge(const Edge &) = delete;
  Edge &operator=(const Edge &) = delete;
  ~Edge();

  /// The first address that cannot be read.
  uint8_t *edge() const { return start_ + readable; }
  /// The number of addresses from there on.
  size_t beyond() const { return beyond_; }

 private:
  static constexpr size_t readable = 4096;
  uint8_t *start_;
  size_t beyond_;
};

/// Counts the calls of the functions, and keeps the first whose result is another than the rules
/// have.
class Frame {
 public:
  /// asn1_Tag_d: every octet under every tag and every implicit tag, and no octet.
  void every_tag();
  /// asn1_eoc_d: every two octets, one octet, and none.
  void every_end_of_contents();
  /// asn1_Length_d: every length with this first octet, and what is left of it where the input ends
  /// before it does; with the end of the input right after the length, with as much content as the
  /// length says, and with one octet less. Of the lengths with three octets or four after the first
  /// one, only those whose second octet is `low` or more and less than `high`.
  void every_length(uint8_t first, unsigned low = 0, unsigned high = 256);
  /// asn1_TagLength_d: the same lengths after an identifier octet, with the end of the input right
  /// after them.
  void every_header(uint8_t identifier, uint8_t first, unsigned low = 0, unsigned high = 256);
  /// asn1_TagLength_d: the lengths of five octets where two of the last four have every value, and
  /// the others are 00 or FF.
  void every_two_octets_of_a_header(uint8_t identifier);

  uint64_t calls() const { return calls_; }
  const std::string &mistake() const { return mistake_; }

 private:
  void expect(bool right, const char *function, Octets input);
  void length(Octets input);
  void length_with_content(Octets input);
  void header(Octets input);

  Edge edge_;
  uint64_t calls_ = 0;
  std::string mistake_;
};

}  // namespace attack

#endif
