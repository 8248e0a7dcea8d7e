#include "records/computed_keys.h"

#include <gmp.h>
#include <nettle/curve25519.h>
#include <nettle/curve448.h>
#include <nettle/ecc-curve.h>
#include <nettle/ecc.h>
#include <nettle/eddsa.h>

#include <algorithm>

namespace tool {

namespace {

/// A number of any size, not negative.
class Number {
 public:
  Number() { mpz_init(value_); }
  explicit Number(Octets octets) : Number() {
    mpz_import(value_, octets.size(), 1, 1, 0, 0, octets.data());
  }
  Number(const Number &) = delete;
  Number &operator=(const Number &) = delete;
  ~Number() { mpz_clear(value_); }

  mpz_ptr get() { return value_; }
  mpz_srcptr get() const { return value_; }

  /// Returns the number in `size` octets, which must hold it.
  Bytes octets(size_t size) const {
    Bytes out(size);
    if (mpz_sgn(value_) != 0) {
      const size_t used = (mpz_sizeinbase(value_, 2) + 7) / 8;
      mpz_export(out.data() + (size - used), nullptr, 1, 1, 0, 0, value_);
    }
    return out;
  }

 private:
  mpz_t value_;
};

struct Curve {
  Bytes identifier;
  const ecc_curve *(*get)();
};

const ecc_curve *curve_of(Octets identifier) {
  static const auto &curves = *new const std::vector<Curve>{
      {{0x2A, 0x86, 0x48, 0xCE, 0x3D, 0x03, 0x01, 0x01}, nettle_get_secp_192r1},
      {{0x2B, 0x81, 0x04, 0x00, 0x21}, nettle_get_secp_224r1},
      {{0x2A, 0x86, 0x48, 0xCE, 0x3D, 0x03, 0x01, 0x07}, nettle_get_secp_256r1},
      {{0x2B, 0x81, 0x04, 0x00, 0x22}, nettle_get_secp_384r1},
      {{0x2B, 0x81, 0x04, 0x00, 0x23}, nettle_get_secp_521r1}};
  for (const Curve &curve : curves)
    if (std::ranges::equal(curve.identifier, identifier)) return curve.get();
  return nullptr;
}

}  // namespace

std::optional<Bytes> public_point(Octets curve, Octets private_key) {
  const ecc_curve *const ecc = curve_of(curve);
  if (ecc == nullptr) return std::nullopt;
  const Number number(private_key);
  std::optional<Bytes> made;
  ecc_scalar scalar;
  ecc_scalar_init(&scalar, ecc);
  if (ecc_scalar_set(&scalar, number.get()) != 0) {
    ecc_point point;
    ecc_point_init(&point, ecc);
    ecc_point_mul_g(&point, &scalar);
    Number x, y;
    ecc_point_get(&point, x.get(), y.get());
    ecc_point_clear(&point);
    const size_t size = (ecc_bit_size(ecc) + 7) / 8;
    constexpr uint8_t uncompressed = 4;
    made.emplace(1, uncompressed);
    for (const Number *const coordinate : {&x, &y}) {
      const Bytes octets = coordinate->octets(size);
      made->insert(made->end(), octets.begin(), octets.end());
    }
  }
  ecc_scalar_clear(&scalar);
  return made;
}

std::optional<Bytes> public_octets(Octets algorithm, Octets private_key) {
  struct Function {
    uint8_t last_arc;  // under 1.3.101
    size_t size;
    void (*compute)(uint8_t *public_key, const uint8_t *private_key);
  };
  static constexpr Function functions[] = {{110, CURVE25519_SIZE, curve25519_mul_g},
                                           {111, CURVE448_SIZE, curve448_mul_g},
                                           {112, ED25519_KEY_SIZE, ed25519_sha512_public_key},
                                           {113, ED448_KEY_SIZE, ed448_shake256_public_key}};
  if (algorithm.size() != 3 || algorithm[0] != 0x2B || algorithm[1] != 0x65) return std::nullopt;
  for (const Function &function : functions) {
    if (function.last_arc != algorithm[2] || function.size != private_key.size()) continue;
    Bytes made(function.size);
    function.compute(made.data(), private_key.data());
    return made;
  }
  return std::nullopt;
}

std::optional<Bytes> public_power(Octets base, Octets exponent, Octets prime) {
  constexpr size_t most_bits = 8192;
  const Number g(base), x(exponent), p(prime);
  const bool usual = mpz_odd_p(p.get()) && mpz_cmp_ui(p.get(), 1) > 0 &&
                     mpz_sizeinbase(p.get(), 2) <= most_bits && mpz_sgn(x.get()) > 0 &&
                     mpz_cmp(x.get(), p.get()) < 0 && mpz_sgn(g.get()) > 0 &&
                     mpz_cmp(g.get(), p.get()) < 0;
  if (!usual) return std::nullopt;
  Number y;
  mpz_powm_sec(y.get(), g.get(), x.get(), p.get());
  // One octet more where the first bit would be a sign.
  return y.octets(mpz_sizeinbase(y.get(), 2) / 8 + 1);
}

}  // namespace tool
