#include "records/public_key.h"

#include "text/integers.h"
#include "text/object_identifiers.h"

namespace tool {

namespace {

/// Decodes the INTEGERs at the start of a SEQUENCE, at most `count`. Returns an empty list where
/// the octets are not a SEQUENCE.
std::vector<Owned<Integer>> integers(Octets encoding, size_t count) {
  std::vector<Owned<Integer>> found;
  if (encoding.empty()) return found;
  const uint8_t *const end = encoding.data() + encoding.size();
  uint32_t length = 0;
  const uint8_t *z =
      asn1_TagLength_d(encoding.data(), end, 0, tag::sequence, nullptr, &length, nullptr, 0);
  while (z != nullptr && z < end && found.size() < count) {
    auto integer = take(asn1_Integer_d, asn1_Integer_free, z, end);
    if (integer) found.push_back(std::move(integer));
  }
  return found;
}

void read_rsa(Key &key, const SubjectPKI *info) {
  key.kind = "RSA";
  const auto numbers = integers(octets(info->subjectPublicKey), 2);
  if (numbers.size() != 2) return;
  key.bits = bit_length(numbers[0].get());
  key.modulus = integer_text(numbers[0].get());
  if (key.modulus.starts_with("00")) key.modulus.erase(0, 2);
  const Integer *const exponent = numbers[1].get();
  key.exponent = exponent->negative == 0 && bit_length(exponent) < 32
                     ? std::to_string(asn1_Integer_get(exponent))
                     : "0x" + integer_text(exponent);
}

void read_curve(Key &key, Octets parameters) {
  key.kind = "EC";
  const auto curve = decoded(asn1_ObjId_d, asn1_ObjId_free, parameters);
  if (!curve) return;
  const std::string name = display_name(curve.get());
  key.curve = name.empty() ? dotted(curve.get()) : name;
  key.bits = curve_bits(curve.get());
}

void read_prime(Key &key, const char *kind, Octets parameters) {
  key.kind = kind;
  const auto numbers = integers(parameters, 1);
  if (!numbers.empty()) key.bits = bit_length(numbers[0].get());
}

}  // namespace

Key read_key(const SubjectPKI *info) {
  Key key;
  if (info == nullptr || info->algorithm == nullptr || info->algorithm->algorithm == nullptr)
    return key;
  const ObjId *const oid = info->algorithm->algorithm;
  const Octets parameters = octets(info->algorithm->parameters);
  const std::string name = display_name(oid);
  if (is(oid, asn1_Get_rsaEncryption) || name.starts_with("rsassa-pss") ||
      name.starts_with("rsaes-oaep")) {
    read_rsa(key, info);
    if (!is(oid, asn1_Get_rsaEncryption)) key.kind += " (" + name + ")";
  } else if (is(oid, asn1_Get_id_ecPublicKey)) {
    read_curve(key, parameters);
  } else if (is(oid, asn1_Get_id_dsa) || is(oid, asn1_Get_dsa)) {
    read_prime(key, "DSA", parameters);
  } else if (is(oid, asn1_Get_dhpublicnumber) || name == "dhKeyAgreement") {
    read_prime(key, "DH", parameters);
  } else {
    key.kind = name.empty() ? dotted(oid) : name;
  }
  if (!key.kind.starts_with("RSA")) key.point = hex(octets(info->subjectPublicKey));
  return key;
}

std::string short_key_text(const SubjectPKI *info) {
  const Key key = read_key(info);
  if (!key.curve.empty()) return key.kind + " " + key.curve;
  return key.bits ? key.kind + " " + std::to_string(*key.bits) + " bits" : key.kind;
}

std::string key_text(const SubjectPKI *info, const View &view) {
  const Key key = read_key(info);
  std::string text = key.kind;
  if (!key.curve.empty()) text += ", " + key.curve;
  if (key.bits) text += ", " + std::to_string(*key.bits) + " bits";
  if (!key.exponent.empty()) text += ", exponent " + key.exponent;
  if (view.oids && info != nullptr && info->algorithm != nullptr) {
    text += " (" + dotted(info->algorithm->algorithm);
    if (!key.curve.empty()) {
      const auto curve =
          decoded(asn1_ObjId_d, asn1_ObjId_free, octets(info->algorithm->parameters));
      text += ", " + dotted(curve.get());
    }
    text += ")";
  }
  return text;
}

}  // namespace tool
