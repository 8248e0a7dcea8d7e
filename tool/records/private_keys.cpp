#include "records/private_keys.h"

#include <algorithm>

#include "records/computed_keys.h"

namespace tool {

namespace {

constexpr const char *malformed = "it is malformed";
constexpr const char *not_computed =
    "it does not hold its public key, which is not computed for its algorithm: give the public key";

/// Algorithms, as the content of their identifiers.
constexpr uint8_t rsa[] = {0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 0x01, 0x01};  // and one arc more
constexpr uint8_t rsa_encryption[] = {0x06, 0x09, 0x2A, 0x86, 0x48, 0x86, 0xF7,
                                      0x0D, 0x01, 0x01, 0x01, 0x05, 0x00};
constexpr uint8_t ec_public_key[] = {0x06, 0x07, 0x2A, 0x86, 0x48, 0xCE, 0x3D, 0x02, 0x01};
constexpr uint8_t dsa[] = {0x06, 0x07, 0x2A, 0x86, 0x48, 0xCE, 0x38, 0x04, 0x01};
constexpr uint8_t dh_pkcs3[] = {0x06, 0x09, 0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 0x01, 0x03, 0x01};
constexpr uint8_t dh_x942[] = {0x06, 0x07, 0x2A, 0x86, 0x48, 0xCE, 0x3E, 0x02, 0x01};

bool starts_with(Octets octets, Octets start) {
  return octets.size() >= start.size() && std::ranges::equal(octets.first(start.size()), start);
}

bool is_tag(Octets element, uint8_t identifier) {
  return !element.empty() && element[0] == identifier;
}

/// Returns a SubjectPublicKeyInfo with the octets of a key.
Bytes spki_of(Octets algorithm, Octets key) {
  constexpr uint8_t no_bits_unused[] = {0};
  return element_of(tag::sequence, {algorithm, element_of(tag::bit_string, {no_bits_unused, key})});
}

/// Returns the octets of a BIT STRING without unused bits; none of any other.
Octets octets_of_bits(Octets content) {
  return !content.empty() && content[0] == 0 ? content.subspan(1) : Octets();
}

/// Returns the SubjectPublicKeyInfo of a key that is computed, or stated, or both, and then the two
/// must be one key.
PublicPart part_of(Octets algorithm, const std::optional<Bytes> &computed, Octets stated) {
  if (!computed && stated.empty()) return {{}, not_computed};
  if (computed && !stated.empty() && !std::ranges::equal(*computed, stated)) {
    // A compressed point has the same first coordinate.
    const bool compressed = stated.size() > 1 && (stated[0] == 2 || stated[0] == 3) &&
                            starts_with(Octets(*computed).subspan(1), stated.subspan(1));
    if (!compressed) return {{}, "the public key in it is not that of its private key"};
  }
  return {spki_of(algorithm, stated.empty() ? Octets(*computed) : stated), ""};
}

/// @param parameters of the curve; those in the key where there are none.
PublicPart ec_part(Octets element, Octets parameters) {
  const auto fields = components(element, 5);
  if (fields.size() < 2 || !is_tag(fields[1], tag::octet_string)) return {{}, malformed};
  Octets stated;
  for (const Octets field : std::span(fields).subspan(2)) {
    if (is_tag(field, 0xA0) && parameters.empty()) parameters = content_of(field);
    if (is_tag(field, 0xA1)) stated = octets_of_bits(content_of(content_of(field)));
  }
  if (parameters.empty()) return {{}, "it does not name its curve"};
  return part_of(element_of(tag::sequence, {ec_public_key, parameters}),
                 public_point(content_of(parameters), content_of(fields[1])), stated);
}

/// DSA and Diffie-Hellman: the parameters are p, q, g or p, g.
PublicPart power_part(Octets algorithm, Octets key, size_t place_of_g, Octets stated) {
  const Octets parameters = component(algorithm, 1);
  const auto power = public_power(content_of(component(parameters, place_of_g)), content_of(key),
                                  content_of(component(parameters, 0)));
  return part_of(algorithm,
                 power ? std::optional(element_of(tag::integer, {*power})) : std::nullopt, stated);
}

}  // namespace

Octets content_of(Octets element) {
  const Header header = read_header(element);
  if (element.empty() || !header.fault.empty() || header.indefinite) return {};
  return element.subspan(header.size, header.length);
}

Bytes element_of(uint8_t identifier, std::initializer_list<Octets> parts) {
  size_t length = 0;
  for (const Octets part : parts) length += part.size();
  Bytes out{identifier};
  if (length < 0x80) {
    out.push_back(static_cast<uint8_t>(length));
  } else {
    uint8_t octets = 0;
    for (size_t rest = length; rest != 0; rest >>= 8) ++octets;
    out.push_back(static_cast<uint8_t>(0x80 | octets));
    for (size_t i = octets; i-- > 0;) out.push_back(static_cast<uint8_t>(length >> (8 * i)));
  }
  for (const Octets part : parts) out.insert(out.end(), part.begin(), part.end());
  return out;
}

PublicPart public_part_of_rsa_public(Octets key) {
  return {spki_of(element_of(tag::sequence, {rsa_encryption}), key), ""};
}

PublicPart public_part_of_rsa(Octets element) {
  const auto fields = components(element, 3);
  if (fields.size() < 3) return {{}, malformed};
  return public_part_of_rsa_public(element_of(tag::sequence, {fields[1], fields[2]}));
}

PublicPart public_part_of_dsa(Octets element) {
  const auto fields = components(element, 6);
  if (fields.size() < 6) return {{}, malformed};
  const Bytes parameters = element_of(tag::sequence, {fields[1], fields[2], fields[3]});
  const Bytes algorithm = element_of(tag::sequence, {dsa, parameters});
  return power_part(algorithm, fields[5], 2, fields[4]);
}

PublicPart public_part_of_ec(Octets element) { return ec_part(element, {}); }

PublicPart public_part_of_pkcs8(Octets element) {
  const auto fields = components(element, 5);
  if (fields.size() < 3) return {{}, malformed};
  const Octets algorithm = fields[1];
  const Octets identifier = component(algorithm, 0);
  const Octets key = content_of(fields[2]);
  Octets stated;
  for (const Octets field : std::span(fields).subspan(3))
    if (is_tag(field, 0x81)) stated = octets_of_bits(content_of(field));
  if (starts_with(content_of(identifier), rsa)) {
    const auto numbers = components(key, 3);
    if (numbers.size() < 3) return {{}, malformed};
    return {spki_of(algorithm, element_of(tag::sequence, {numbers[1], numbers[2]})), ""};
  }
  if (std::ranges::equal(identifier, ec_public_key)) return ec_part(key, component(algorithm, 1));
  if (std::ranges::equal(identifier, dsa) || std::ranges::equal(identifier, dh_x942))
    return power_part(algorithm, key, std::ranges::equal(identifier, dsa) ? 2 : 1, stated);
  if (std::ranges::equal(identifier, dh_pkcs3)) return power_part(algorithm, key, 1, stated);
  return part_of(algorithm, public_octets(content_of(identifier), content_of(key)), stated);
}

}  // namespace tool
