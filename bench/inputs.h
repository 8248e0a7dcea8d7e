// What the benchmarks read: certificates of this system and of a corpus, and revocation lists of any
// size, which are made here.
#ifndef ORVELASN1_BENCH_INPUTS_H
#define ORVELASN1_BENCH_INPUTS_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace bench {

using Octets = std::vector<uint8_t>;

/// Reads the certificates that this system trusts, and those of the folder that the environment
/// variable ORVELASN1_CORPUS names.
std::vector<Octets> read_certificates();

/// Makes a revocation list. The serial numbers are random and have 16 octets. Every second entry
/// has a reason.
Octets make_crl(size_t entries);

/// A serial number that no list of make_crl() has.
extern const Octets missing_serial_number;

}  // namespace bench

#endif
