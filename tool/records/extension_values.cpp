#include "records/extension_values.h"

#include <algorithm>

#include "records/values.h"
#include "text/object_identifiers.h"

namespace tool {

namespace {

std::string joined(const std::vector<std::string> &words) {
  std::string out;
  for (const std::string &word : words) out += (out.empty() ? "" : ", ") + word;
  return out;
}

// ---- Values of universal types -------------------------------------------------------------------

std::optional<Node> extended_key_usage(Octets value, const View &view) {
  const auto list = decoded_list<asn1_ObjId_d, asn1_ObjId_free>(value);
  if (!list) return std::nullopt;
  std::vector<std::string> words;
  std::vector<Json> objects;
  for (const auto *purpose : elements<ObjId>(list.get())) {
    words.push_back(label(purpose, view));
    put_oid(objects.emplace_back(Json::object()), "keyPurposeId", purpose);
  }
  return text(view.oids ? words : std::vector<std::string>{joined(words)}, Json::array(objects));
}

std::optional<Node> reason(Octets value, const View &) {
  if (value.empty()) return std::nullopt;
  const uint8_t *const end = value.data() + value.size();
  uint32_t code = 0;
  if (asn1_Enumerated_d(value.data(), end, 0, &code, 0) != end) return std::nullopt;
  return revocation_reason(code);
}

std::optional<Node> presence(Octets value, const View &) {
  if (!std::ranges::equal(value, octets(asn1_Any_NULL()))) return std::nullopt;
  return text("present", true);
}

/// Returns the names of the bits that are set in a BIT STRING.
std::optional<Node> named_bits(Octets value, std::span<const char *const> names) {
  const auto bits = decoded(asn1_BitString_d, asn1_BitString_free, value);
  if (!bits) return std::nullopt;
  std::vector<std::string> words;
  for (uint32_t i = 0; i < bits->length; ++i)
    if (asn1_BitString_test(bits.get(), i) != 0)
      words.push_back(i < names.size() ? names[i] : "bit " + std::to_string(i));
  return text(words.empty() ? "none" : joined(words),
              Json::array(std::vector<Json>(words.begin(), words.end())));
}

std::optional<Node> key_usage(Octets value, const View &) {
  static constexpr const char *names[] = {"digitalSignature", "nonRepudiation", "keyEncipherment",
                                          "dataEncipherment", "keyAgreement",   "keyCertSign",
                                          "cRLSign",          "encipherOnly",   "decipherOnly"};
  return named_bits(value, names);
}

std::optional<Node> netscape_cert_type(Octets value, const View &) {
  static constexpr const char *names[] = {"sslClient", "sslServer", "smime",   "objectSigning",
                                          "reserved",  "sslCA",     "smimeCA", "objectSigningCA"};
  return named_bits(value, names);
}

/// Reads a nonce: an OCTET STRING, or its bare octets, as older programs send them.
std::optional<Node> nonce(Octets value, const View &view) {
  if (auto node = record_value<asn1_OctetString_d, asn1_OctetString_free>(value, view)) return node;
  return text(hex(value) + " (bare octets)", hex(value));
}

// ---- Values in a public form that no family reads -----------------------------------------------

/// Decodes the components of a SEQUENCE one by one.
class ComponentReader {
 public:
  explicit ComponentReader(Octets value) : z_(value.data()), end_(value.data() + value.size()) {
    uint32_t length = 0;
    z_ =
        value.empty() ? nullptr : asn1_TagLength_d(z_, end_, 0, 0x30, nullptr, &length, nullptr, 0);
    if (z_ == nullptr || length != static_cast<size_t>(end_ - z_)) z_ = nullptr;
  }

  bool next_is(uint8_t tag) const { return z_ != nullptr && z_ != end_ && *z_ == tag; }

  /// Decodes the next component if it has this identifier octet, and moves past it. Returns null
  /// otherwise, and where the decoder refuses it.
  template <class T>
  Owned<T> take(uint8_t tag, Decoder<T> decode, void (*release)(T *)) {
    if (!next_is(tag)) return Owned<T>(nullptr, release);
    return tool::take(decode, release, z_, end_, tag);
  }

  /// Whether every component was decoded.
  bool done() const { return z_ != nullptr && z_ == end_; }

 private:
  const uint8_t *z_;
  const uint8_t *end_;
};

using GeneralNames = ListOf<asn1_GeneralName_d, asn1_GeneralName_free>;

/// Reads an AuthorityKeyIdentifier with implicit tags.
std::optional<Node> public_authority_key_identifier(Octets value, const View &view) {
  ComponentReader components(value);
  auto key = components.take(0x80, asn1_OctetString_d, asn1_OctetString_free);
  auto issuer = components.take(0xA1, GeneralNames::decode, GeneralNames::free);
  auto serial = components.take(0x82, asn1_Integer_d, asn1_Integer_free);
  Owned<AuthorityKeyIdentifier> made(asn1_AuthorityKeyIdentifier_new(),
                                     asn1_AuthorityKeyIdentifier_free);
  if (!components.done() || !made) return std::nullopt;
  made->keyIdentifier = key.release();
  made->authorityCertIssuer = issuer.release();
  made->authorityCertSerialNumber = serial.release();
  return described(std::move(made), view);
}

/// Reads PolicyConstraints with implicit tags.
std::optional<Node> public_policy_constraints(Octets value, const View &view) {
  ComponentReader components(value);
  auto require = components.take(0x80, asn1_Integer_d, asn1_Integer_free);
  auto inhibit = components.take(0x81, asn1_Integer_d, asn1_Integer_free);
  Owned<PolicyConstraints> made(asn1_PolicyConstraints_new(), asn1_PolicyConstraints_free);
  if (!components.done() || !made) return std::nullopt;
  made->requireExplicitPolicy = require.release();
  made->inhibitPolicyMapping = inhibit.release();
  return described(std::move(made), view);
}

/// Reads a PrivateKeyUsagePeriod with implicit tags and GeneralizedTime.
std::optional<Node> public_private_key_usage_period(Octets value, const View &view) {
  ComponentReader components(value);
  const auto from = components.take(0x80, asn1_GeneralizedTime_d, asn1_GeneralizedTime_free);
  const auto until = components.take(0x81, asn1_GeneralizedTime_d, asn1_GeneralizedTime_free);
  if (!components.done()) return std::nullopt;
  return usage_period(generalized_time, from.get(), until.get(), view);
}

std::optional<Node> policies(Octets value, const View &view) {
  const auto list = decoded_list<asn1_Any_d, asn1_Any_free>(value);
  if (!list) return std::nullopt;
  std::vector<std::string> lines;
  std::vector<Json> objects;
  for (const auto *policy : elements<Any>(list.get())) {
    ComponentReader components(octets(policy));
    const auto identifier = components.take(0x06, asn1_ObjId_d, asn1_ObjId_free);
    if (!identifier) return std::nullopt;
    const bool qualified = components.next_is(0x30);
    lines.push_back(label(identifier.get(), view) + (qualified ? ", qualified" : ""));
    put_oid(objects.emplace_back(Json::object()), "policyIdentifier", identifier.get());
  }
  return text(std::move(lines), Json::array(objects));
}

std::optional<Node> written_only(Octets, const View &) { return std::nullopt; }

const char *logotype_fault(Octets) { return "the library writes logotypes and reads none"; }

// ---- The list -----------------------------------------------------------------------------------

constexpr Syntax mappings_syntax{.tag = 0x30, .element = &policy_mapping_syntax};
constexpr Syntax points_syntax{.tag = 0x30, .element = &distribution_point_syntax};
constexpr Syntax purposes_syntax{.tag = 0x30, .element = &oid_syntax};
constexpr Syntax any_list_syntax{.tag = 0x30, .element = &any_syntax};
constexpr Syntax attributes_syntax{.tag = 0x30, .element = &attribute_syntax};
constexpr Syntax logotype_syntax{.content_fault = logotype_fault};
constexpr Syntax null_syntax{.tag = 0x05};
constexpr Syntax bmp_string_syntax{.tag = 0x1E};

constexpr ValueReader general_names =
    list_value<GeneralName, asn1_GeneralName_d, asn1_GeneralName_free>;
constexpr ValueReader distribution_points =
    list_value<DistributionPoint, asn1_DistributionPoint_d, asn1_DistributionPoint_free>;
constexpr ValueReader access_descriptions =
    list_value<AccessDescription, asn1_AccessDescription_d, asn1_AccessDescription_free>;

/// The syntaxes, each under the display name of its extension. A new one is a row here, and a
/// function above if no family reads it.
struct Row {
  std::string_view name;
  ValueReader read;
  const Syntax *syntax;               ///< what `read` reads, to say why a value is not read
  ValueReader read_public = nullptr;  ///< for the public form of what a family reads in its own
};

constexpr Row rows[] = {
    {"keyUsage", key_usage, &bit_string_syntax},
    {"subjectKeyIdentifier", record_value<asn1_OctetString_d, asn1_OctetString_free>,
     &octet_string_syntax},
    {"extKeyUsage", extended_key_usage, &purposes_syntax},
    {"basicConstraints", record_value<asn1_BasicConstraints_d, asn1_BasicConstraints_free>,
     &basic_constraints_syntax},
    {"nameConstraints", record_value<asn1_NameConstraints_d, asn1_NameConstraints_free>,
     &name_constraints_syntax},
    {"subjectAltName", general_names, &general_names_syntax},
    {"issuerAltName", general_names, &general_names_syntax},
    {"certificateIssuer", general_names, &general_names_syntax},
    {"authorityInfoAccess", access_descriptions, &access_information_syntax},
    {"subjectInfoAccess", access_descriptions, &access_information_syntax},
    {"cRLDistributionPoints", distribution_points, &points_syntax},
    {"freshestCRL", distribution_points, &points_syntax},
    {"authorityKeyIdentifier",
     record_value<asn1_AuthorityKeyIdentifier_d, asn1_AuthorityKeyIdentifier_free>,
     &authority_key_identifier_syntax, public_authority_key_identifier},
    {"certificatePolicies", policies, &any_list_syntax},
    {"policyConstraints", record_value<asn1_PolicyConstraints_d, asn1_PolicyConstraints_free>,
     &policy_constraints_syntax, public_policy_constraints},
    {"policyMappings", list_value<PolicyMapping, asn1_PolicyMapping_d, asn1_PolicyMapping_free>,
     &mappings_syntax},
    {"privateKeyUsagePeriod",
     record_value<asn1_PrivateKeyUsagePeriod_d, asn1_PrivateKeyUsagePeriod_free>,
     &private_key_usage_period_syntax, public_private_key_usage_period},
    {"subjectDirectoryAttributes", list_value<Attribute, asn1_Attribute_d, asn1_Attribute_free>,
     &attributes_syntax},
    {"logotype", written_only, &logotype_syntax},
    {"inhibitAnyPolicy", number_value, &integer_syntax},
    {"cRLNumber", number_value, &integer_syntax},
    {"deltaCRLIndicator", number_value, &integer_syntax},
    {"cRLReason", reason, &enumerated_syntax},
    {"holdInstructionCode", record_value<asn1_ObjId_d, asn1_ObjId_free>, &oid_syntax},
    {"invalidityDate", date_value, &generalized_time_syntax},
    {"ocsp-nonce", nonce, &octet_string_syntax},
    {"ocsp-nocheck", presence, &null_syntax},
    {"ocsp-archive-cutoff", date_value, &generalized_time_syntax},
    {"precertificatePoison", presence, &null_syntax},
    {"netscape-cert-type", netscape_cert_type, &bit_string_syntax},
    {"netscape-base-url", string_value, &ia5_string_syntax},
    {"netscape-revocation-url", string_value, &ia5_string_syntax},
    {"netscape-ca-revocation-url", string_value, &ia5_string_syntax},
    {"netscape-cert-renewal-url", string_value, &ia5_string_syntax},
    {"netscape-ca-policy-url", string_value, &ia5_string_syntax},
    {"netscape-ssl-server-name", string_value, &ia5_string_syntax},
    {"netscape-comment", string_value, &ia5_string_syntax},
    {"ms-certificate-template-name", string_value, &bmp_string_syntax},
    {"ms-ca-key-cert-index-pair", number_value, &integer_syntax},
};

/// Returns the value with a line below it that names its form.
Node in_public_form(Node node, const View &view) {
  auto lines = lines_of(node, view).value_or(std::vector<std::string>());
  lines.emplace_back("(in the public form, which the library's own decoder does not read)");
  return shown_as(std::move(node), text(std::move(lines), nullptr));
}

}  // namespace

ExtensionValue read_extension(const Extension *extension, const View &view) {
  const Octets value = octets(extension->extnValue);
  const std::string name = display_name(extension->extnID);
  const auto *const row = std::ranges::find(rows, std::string_view(name), &Row::name);
  auto lines = dump(value, view.full);
  if (row == std::end(rows)) return {text(std::move(lines), nullptr), false, ""};
  if (auto node = row->read(value, view)) return {std::move(*node)};
  if (row->read_public != nullptr)
    if (auto node = row->read_public(value, view)) return {in_public_form(std::move(*node), view)};
  std::string why = why_unread(value, *row->syntax);
  lines.insert(lines.begin(), "not in a form that this library reads: " + why);
  return {text(std::move(lines), nullptr), false, std::move(why)};
}

void add_extensions(Page &page, const Extensions *extensions, const View &view) {
  if (List_len(extensions) == 0) return;
  page.section("Extensions");
  for (const auto *extension : elements<Extension>(extensions)) {
    const Node node = describe(extension, view);
    add_node(page, node.name, node, view);
  }
}

}  // namespace tool
