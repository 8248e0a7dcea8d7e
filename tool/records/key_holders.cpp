#include "records/key_holders.h"

#include <orvelpki.h>

#include <algorithm>

#include "records/distinguished_names.h"
#include "records/private_keys.h"
#include "records/public_key.h"
#include "text/characters.h"
#include "text/serials.h"

namespace tool {

namespace {

constexpr uint8_t context_0 = tag::context | tag::constructed;

constexpr uint8_t signed_data[] = {0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 0x01, 0x07, 0x02};
constexpr uint8_t plain_data[] = {0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 0x01, 0x07, 0x01};
/// Of the bags of PKCS #12; one arc more says which.
constexpr uint8_t bags[] = {0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 0x01, 0x0C, 0x0A, 0x01};
constexpr uint8_t rsa[] = {0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 0x01, 0x01};
constexpr uint8_t ec_public_key[] = {0x2A, 0x86, 0x48, 0xCE, 0x3D, 0x02, 0x01};
constexpr uint8_t dsa_and_dh[] = {0x2A, 0x86, 0x48, 0xCE};
constexpr uint8_t dh_pkcs3[] = {0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 0x01, 0x03};

bool starts_with(Octets octets, Octets start) {
  return octets.size() >= start.size() && std::ranges::equal(octets.first(start.size()), start);
}

bool is(Octets octets, Octets other) { return std::ranges::equal(octets, other); }

/// Whether the first elements of a list have these identifier octets.
bool have_tags(const std::vector<Octets> &elements, std::initializer_list<uint8_t> identifiers) {
  return elements.size() >= identifiers.size() &&
         std::ranges::equal(identifiers, std::span(elements).first(identifiers.size()), {}, {},
                            [](Octets element) { return element.empty() ? 0 : element[0]; });
}

std::string name_text(Octets name) {
  const auto sequence = decoded(pki_RDNSequence_d, pki_RDNSequence_free, name);
  return sequence ? one_line(sequence.get(), View()) : "";
}

KeyHolder stated(std::string what, std::string subject, Octets spki) {
  return {std::move(what), std::move(subject), Bytes(spki.begin(), spki.end()), true, ""};
}

KeyHolder made(std::string what, PublicPart part) {
  return {std::move(what), "", std::move(part.spki), false, std::move(part.why)};
}

KeyHolder unknown(std::string what, std::string why) {
  return {std::move(what), "", {}, false, std::move(why)};
}

bool is_algorithm(Octets element) {
  return have_tags(components(element, 1), {tag::object_identifier});
}

bool is_spki(Octets element) {
  const auto fields = components(element, 3);
  return fields.size() == 2 && have_tags(fields, {tag::sequence, tag::bit_string}) &&
         is_algorithm(fields[0]);
}

std::optional<KeyHolder> certificate(Octets element) {
  pki_CertificateView view;
  if (pki_certificate_view(element.data(), element.data() + element.size(), &view) == nullptr)
    return std::nullopt;
  return stated("Certificate", name_text(octets_of(view.subject)),
                octets_of(view.subjectPublicKeyInfo));
}

/// The holders that are one SEQUENCE, by its fields.
std::optional<KeyHolder> holder(Octets element) {
  if (auto found = certificate(element)) return found;
  constexpr size_t most = 10;
  const auto fields = components(element, most);
  if (is_spki(element)) return stated("public key", "", element);
  if (have_tags(fields, {tag::sequence, tag::sequence, tag::bit_string})) {
    const auto info = components(fields[0], 3);
    if (have_tags(info, {tag::integer, tag::sequence, tag::sequence}) && is_spki(info[2]))
      return stated("CertificationRequest", name_text(info[1]), info[2]);
    if (!info.empty() && is_spki(info[0])) return stated("signed key challenge", "", info[0]);
    return std::nullopt;
  }
  if (fields.size() == 2 && have_tags(fields, {tag::sequence, tag::octet_string}) &&
      is_algorithm(fields[0]))
    return unknown("encrypted private key", "decrypt it first");
  if (have_tags(fields, {tag::integer, tag::sequence, tag::octet_string}) &&
      is_algorithm(fields[1]))
    return made("private key (PKCS #8)", public_part_of_pkcs8(element));
  if (have_tags(fields, {tag::integer, tag::octet_string}))
    return made("private key (EC)", public_part_of_ec(element));
  const auto integers = static_cast<size_t>(std::ranges::count_if(
      fields, [](Octets field) { return !field.empty() && field[0] == tag::integer; }));
  if (fields.size() >= 9 && integers >= 9)
    return made("private key (RSA)", public_part_of_rsa(element));
  if (fields.size() == 6 && integers == 6)
    return made("private key (DSA)", public_part_of_dsa(element));
  if (fields.size() == 2 && integers == 2)
    return made("public key (RSA)", public_part_of_rsa_public(element));
  return std::nullopt;
}

/// Adds the certificates of a SignedData.
void add_signed(std::vector<KeyHolder> &found, Octets signed_data_element) {
  for (const Octets field : components(signed_data_element)) {
    if (field.empty() || field[0] != context_0) continue;
    for (const Octets one : components(field))
      if (auto holder = certificate(one)) found.push_back(std::move(*holder));
  }
}

/// Adds what is in the bags of a SafeContents, whose bags may be SafeContents again.
void add_bags(std::vector<KeyHolder> &found, Octets safe_contents, uint32_t depth = 0) {
  enum : uint8_t { key = 1, encrypted_key = 2, certificate_bag = 3, safe_contents_bag = 6 };
  if (depth > deepest)
    return found.push_back(unknown("bag", "it is nested too deeply to be looked at"));
  for (const Octets bag : components(safe_contents)) {
    const auto fields = components(bag, 2);
    if (!have_tags(fields, {tag::object_identifier, context_0})) continue;
    const Octets identifier = content_of(fields[0]);
    if (!starts_with(identifier, bags) || identifier.size() != sizeof bags + 1) continue;
    const Octets value = component(fields[1], 0);
    if (identifier.back() == key)
      found.push_back(made("private key (PKCS #8)", public_part_of_pkcs8(value)));
    if (identifier.back() == encrypted_key)
      found.push_back(unknown("encrypted private key", "decrypt it first"));
    if (identifier.back() == certificate_bag)
      if (auto one = certificate(content_of(component(component(value, 1), 0))))
        found.push_back(std::move(*one));
    if (identifier.back() == safe_contents_bag) add_bags(found, value, depth + 1);
  }
}

/// Adds what is in a PFX, as far as it is not encrypted.
void add_safes(std::vector<KeyHolder> &found, Octets authenticated_safe) {
  const auto safe = components(authenticated_safe, 2);
  if (safe.size() != 2) return;
  if (!is(content_of(safe[0]), plain_data))
    return found.push_back(unknown("PKCS #12 file", "it is signed or encrypted as a whole"));
  for (const Octets message : components(content_of(component(safe[1], 0)))) {
    const auto fields = components(message, 2);
    if (fields.size() == 2 && is(content_of(fields[0]), plain_data))
      add_bags(found, content_of(component(fields[1], 0)));
    else
      found.push_back(unknown("encrypted bags", "decrypt them first"));
  }
}

// ---- Identity -----------------------------------------------------------------------------------

/// Returns the digits of a point's first coordinate after 02 or 03, which stands for the second.
std::string point_text(Octets point) {
  const bool both = point.size() > 1 && point.size() % 2 != 0 &&
                    (point[0] == 4 || point[0] == 6 || point[0] == 7);
  if (!both) return hex(point);
  return ((point.back() & 1) == 0 ? "02" : "03") + hex(point.subspan(1, point.size() / 2));
}

}  // namespace

std::vector<KeyHolder> key_holders(Octets element) {
  std::vector<KeyHolder> found;
  if (auto one = holder(element)) {
    found.push_back(std::move(*one));
    return found;
  }
  const auto fields = components(element, 3);
  if (have_tags(fields, {tag::object_identifier, context_0}) &&
      is(content_of(fields[0]), signed_data))
    add_signed(found, component(fields[1], 0));
  if (have_tags(fields, {tag::integer, tag::sequence}) && is_algorithm(fields[1]))
    add_safes(found, fields[1]);
  return found;
}

std::string key_identity(Octets spki) {
  const auto fields = components(spki, 2);
  if (fields.size() != 2) return hex(spki);
  const auto algorithm = components(fields[0], 2);
  const Octets bits = content_of(fields[1]);
  if (algorithm.empty() || bits.empty() || bits[0] != 0) return hex(spki);
  const Octets identifier = content_of(algorithm[0]);
  const Octets key = bits.subspan(1);
  const std::string parameters = algorithm.size() == 2 ? hex(algorithm[1]) : "";
  if (starts_with(identifier, rsa)) {
    const auto numbers = components(key, 2);
    if (numbers.size() == 2)
      return "RSA " + hex(shortest(content_of(numbers[0]))) + " " +
             hex(shortest(content_of(numbers[1])));
  }
  if (is(identifier, ec_public_key)) return "EC " + parameters + " " + point_text(key);
  const bool has_parameters =
      starts_with(identifier, dsa_and_dh) || starts_with(identifier, dh_pkcs3);
  return hex(identifier) + " " + (has_parameters ? parameters + " " : "") + hex(key);
}

std::string kind_of_key(Octets spki) {
  const auto info = decoded(pki_SubjectPKI_d, pki_SubjectPKI_free, spki);
  return info ? key_text(info.get(), View()) : "a key that cannot be read";
}

}  // namespace tool
