// Who issued whom among the certificates of one input, as far as names and key identifiers tell.
#ifndef ORVELASN1_TOOL_RECORDS_CHAIN_H
#define ORVELASN1_TOOL_RECORDS_CHAIN_H

#include <deque>

#include "input/element.h"
#include "model/view.h"

namespace tool {

class Chain {
 public:
  /// Takes an element into account, if it is a certificate. The first `most` certificates are kept.
  void add(const Element &element);

  /// Returns a page with a tree: below each certificate those that it may have issued. What is
  /// missing, what is there twice and what issues itself in a circle is said. Returns an empty text
  /// for fewer than two certificates, and a line in place of the tree for more than `most`.
  ///
  /// A name is compared octet by octet. A certificate may have issued another one if it has the
  /// name of its issuer, and not another key identifier. No signature is verified.
  std::string page(const std::string &input, const View &view) const;

 private:
  static constexpr size_t most = 64;

  struct Member {
    size_t number;
    Octets whole;
    Octets subject;
    Octets issuer;
    Octets subject_key;  ///< key identifiers; no octets where there is none
    Octets authority_key;
  };
  struct Tree;

  std::deque<Bytes> certificates_;
  std::vector<Member> members_;  ///< views of them
  size_t count_ = 0;
};

}  // namespace tool

#endif
