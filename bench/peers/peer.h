// What the benchmark of peers asks of a library, each of which has a file of this folder.
#ifndef ORVELASN1_BENCH_PEER_H
#define ORVELASN1_BENCH_PEER_H

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace bench {

/// Decodes a value and releases it. Returns whether it took the octets.
using Read = bool (*)(std::span<const uint8_t> der);

/// A way to read: whose it is, and how.
struct Way {
  std::string name;
  Read read;
};

/// The ways to read certificates and revocation lists, by the libraries that were found.
inline std::vector<Way> certificate_ways;
inline std::vector<Way> crl_ways;

/// Adds ways before the program starts.
struct Peer {
  explicit Peer(const std::vector<Way> &certificates, const std::vector<Way> &crls = {}) {
    certificate_ways.insert(certificate_ways.end(), certificates.begin(), certificates.end());
    crl_ways.insert(crl_ways.end(), crls.begin(), crls.end());
  }
};

}  // namespace bench

#endif
