#include "extensions.h"

#include <algorithm>

#include "general_names.h"
#include "oids.h"
#include "text.h"

namespace tool {

namespace {

/// Reads a value that has its whole syntax; nothing where the octets do not follow it.
using Reader = std::optional<ExtensionValue> (*)(Octets value, const View &view);

std::string joined(const std::vector<std::string> &words) {
  std::string out;
  for (const std::string &word : words) out += (out.empty() ? "" : ", ") + word;
  return out;
}

ExtensionValue one_line_value(std::string line, Json json) {
  return {{std::move(line)}, std::move(json)};
}

/// An INTEGER in decimal, or in hexadecimal where it has 32 bits or more.
std::string number_text(const Integer *integer) {
  const uint32_t number = asn1_Integer_get(integer);
  return integer->negative == 0 && number != 0xFFFFFFFF ? std::to_string(number)
                                                        : "0x" + integer_text(integer);
}

std::string time_text(const Time *time) {
  const auto seconds = seconds_of(time);
  return seconds ? calendar(*seconds) + " UTC" : printable(std::string_view(time->value));
}

/// The components of a SEQUENCE, taken one by one.
class Components {
 public:
  explicit Components(Octets value) : z_(value.data()), end_(value.data() + value.size()) {
    uint32_t length = 0;
    z_ =
        value.empty() ? nullptr : asn1_TagLength_d(z_, end_, 0, 0x30, nullptr, &length, nullptr, 0);
    if (z_ == nullptr || length != static_cast<size_t>(end_ - z_)) z_ = nullptr;
  }

  bool next_is(uint8_t tag) const { return z_ != nullptr && z_ != end_ && *z_ == tag; }

  /// Takes the next component, where it has this identifier octet; null otherwise.
  template <class T>
  Owned<T> take(uint8_t tag,
                const uint8_t *(*decode)(const uint8_t *, const uint8_t *, uint32_t, T **,
                                         uint32_t),
                void (*release)(T *)) {
    T *record = nullptr;
    if (next_is(tag)) z_ = decode(z_, end_, tag, &record, 0);
    return Owned<T>(z_ == nullptr ? nullptr : record, release);
  }

  bool take_boolean() {
    uint32_t value = 0;
    if (next_is(0x01)) z_ = asn1_Boolean_d(z_, end_, 0, &value, 0);
    return value != 0;
  }

  /// Whether every component was taken and none was refused.
  bool done() const { return z_ != nullptr && z_ == end_; }

 private:
  const uint8_t *z_;
  const uint8_t *end_;
};

/// The names of the bits that are set in a BIT STRING.
std::optional<ExtensionValue> named_bits(Octets value, std::span<const char *const> names) {
  const auto bits = decoded(asn1_BitString_d, asn1_BitString_free, value);
  if (!bits) return std::nullopt;
  std::vector<std::string> words;
  for (uint32_t i = 0; i < bits->length; ++i)
    if (asn1_BitString_test(bits.get(), i) != 0)
      words.push_back(i < names.size() ? names[i] : "bit " + std::to_string(i));
  const Json json = words;
  return one_line_value(words.empty() ? "none" : joined(words), json);
}

std::optional<ExtensionValue> key_usage(Octets value, const View &) {
  static constexpr const char *names[] = {"digitalSignature", "nonRepudiation", "keyEncipherment",
                                          "dataEncipherment", "keyAgreement",   "keyCertSign",
                                          "cRLSign",          "encipherOnly",   "decipherOnly"};
  return named_bits(value, names);
}

std::optional<ExtensionValue> netscape_cert_type(Octets value, const View &) {
  static constexpr const char *names[] = {"sslClient", "sslServer", "smime",   "objectSigning",
                                          "reserved",  "sslCA",     "smimeCA", "objectSigningCA"};
  return named_bits(value, names);
}

std::optional<ExtensionValue> key_identifier(Octets value, const View &) {
  const auto identifier = decoded(asn1_OctetString_d, asn1_OctetString_free, value);
  if (!identifier) return std::nullopt;
  return one_line_value(hex(octets(identifier.get())), hex(octets(identifier.get())));
}

std::optional<ExtensionValue> extended_key_usage(Octets value, const View &view) {
  if (value.empty()) return std::nullopt;
  const uint8_t *const end = value.data() + value.size();
  List *list = nullptr;
  const uint8_t *const next =
      asn1_SeqOf_d(value.data(), end, 0, asn1_ObjId_d, asn1_ObjId_free, &list, 0);
  const std::unique_ptr<List, void (*)(List *)> purposes(
      list, [](List *l) { List_free(l, asn1_ObjId_free); });
  if (next != end) return std::nullopt;
  std::vector<std::string> words;
  Json json = Json::array();
  for (const auto *purpose : elements<ObjId>(list)) {
    words.push_back(label(purpose, view));
    Json object;
    put_oid(object, "keyPurposeId", purpose);
    json.push_back(std::move(object));
  }
  return ExtensionValue{view.oids ? words : std::vector<std::string>{joined(words)},
                        std::move(json)};
}

std::optional<ExtensionValue> basic_constraints(Octets value, const View &) {
  Components components(value);
  const bool ca = components.take_boolean();
  const auto length = components.take(0x02, asn1_Integer_d, asn1_Integer_free);
  if (!components.done()) return std::nullopt;
  std::string line = ca ? "CA" : "not a CA";
  Json json{{"cA", ca}};
  if (length) {
    line += ", path length " + number_text(length.get());
    json["pathLenConstraint"] = json_of_number(length.get());
  }
  return one_line_value(line, json);
}

std::optional<ExtensionValue> policy_constraints(Octets value, const View &) {
  Components components(value);
  const auto require = components.take(0x80, asn1_Integer_d, asn1_Integer_free);
  const auto inhibit = components.take(0x81, asn1_Integer_d, asn1_Integer_free);
  if (!components.done()) return std::nullopt;
  ExtensionValue result{{}, Json::object()};
  if (require) {
    result.lines.push_back("explicit policy after " + number_text(require.get()));
    result.json["requireExplicitPolicy"] = json_of_number(require.get());
  }
  if (inhibit) {
    result.lines.push_back("no policy mapping after " + number_text(inhibit.get()));
    result.json["inhibitPolicyMapping"] = json_of_number(inhibit.get());
  }
  return result;
}

std::optional<ExtensionValue> private_key_usage_period(Octets value, const View &) {
  constexpr uint8_t generalized_time = 24;
  Components components(value);
  const auto from = components.take(0x80, asn1_GeneralizedTime_d, asn1_GeneralizedTime_free);
  const auto until = components.take(0x81, asn1_GeneralizedTime_d, asn1_GeneralizedTime_free);
  if (!components.done()) return std::nullopt;
  ExtensionValue result{{}, Json::object()};
  const auto add = [&result](const char *word, const char *key, GeneralizedTime *text) {
    if (text == nullptr) return;
    const Time time{generalized_time, text};
    result.lines.push_back(word + time_text(&time));
    result.json[key] = json_of(&time);
  };
  add("from  ", "notBefore", from.get());
  add("until ", "notAfter", until.get());
  return result;
}

std::optional<ExtensionValue> general_names(Octets value, const View &view) {
  const auto names = decoded(decode_general_names, free_general_names, value);
  if (!names) return std::nullopt;
  return ExtensionValue{general_name_lines(names.get(), view), json_of_general_names(names.get())};
}

std::optional<ExtensionValue> access_information(Octets value, const View &view) {
  const auto list =
      decoded(asn1_AuthorityInfoAccessSyntax_d, asn1_AuthorityInfoAccessSyntax_free, value);
  if (!list) return std::nullopt;
  ExtensionValue result{{}, Json::array()};
  for (const auto *access : elements<AccessDescription>(list.get())) {
    result.lines.push_back(label(access->accessMethod, view) + ", " +
                           general_name_text(access->accessLocation, view));
    Json object;
    put_oid(object, "accessMethod", access->accessMethod);
    object["accessLocation"] = json_of(access->accessLocation);
    result.json.push_back(std::move(object));
  }
  return result;
}

/// The lines and JSON of a point's own name, in full or relative to the issuer of the CRL.
void put_point_name(ExtensionValue &result, Json &object, const DistributionPointName *name,
                    const View &view) {
  constexpr uint8_t full_name = 0;
  const auto *const list = static_cast<const List *>(name->value);
  if (name->kind == full_name) {
    for (std::string &line : general_name_lines(list, view))
      result.lines.push_back(std::move(line));
    object["fullName"] = json_of_general_names(list);
    return;
  }
  const Bytes relative =
      encoded([list](uint8_t **pp) { return asn1_RelativeDistinguishedName_e(pp, list); });
  result.lines.push_back("relative to the issuer " + hex(relative));
  object["nameRelativeToCRLIssuer"] = hex(relative);
}

std::optional<ExtensionValue> distribution_points(Octets value, const View &view) {
  const auto decode = [](const uint8_t *z, const uint8_t *end, uint32_t impl_tag, List **list,
                         uint32_t depth) {
    return asn1_SeqOf_d(z, end, impl_tag, asn1_DistributionPoint_d, asn1_DistributionPoint_free,
                        list, depth);
  };
  const auto list = decoded<List>(
      decode, [](List *points) { List_free(points, asn1_DistributionPoint_free); }, value);
  if (!list) return std::nullopt;
  ExtensionValue result{{}, Json::array()};
  for (const auto *point : elements<DistributionPoint>(list.get())) {
    Json object = Json::object();
    if (point->distributionPoint != nullptr)
      put_point_name(result, object, point->distributionPoint, view);
    if (point->reasons != nullptr) {
      result.lines.push_back("  only for some reasons, bits " + hex(octets(point->reasons)));
      object["reasons"] = json_of(point->reasons);
    }
    result.json.push_back(std::move(object));
  }
  return result;
}

/// The public form, with implicit tags; the library's own type of this name has explicit ones.
std::optional<ExtensionValue> authority_key_identifier(Octets value, const View &view) {
  Components components(value);
  const auto key = components.take(0x80, asn1_OctetString_d, asn1_OctetString_free);
  const auto issuer = components.take(0xA1, decode_general_names, free_general_names);
  const auto serial = components.take(0x82, asn1_Integer_d, asn1_Integer_free);
  if (!components.done()) return std::nullopt;
  ExtensionValue result{{}, Json::object()};
  if (key) {
    result.lines.push_back(hex(octets(key.get())));
    result.json["keyIdentifier"] = hex(octets(key.get()));
  }
  if (issuer) {
    for (std::string &line : general_name_lines(issuer.get(), view))
      result.lines.push_back("issuer " + line);
    result.json["authorityCertIssuer"] = json_of_general_names(issuer.get());
  }
  if (serial) {
    result.lines.push_back("serial " + integer_text(serial.get()));
    result.json["authorityCertSerialNumber"] = integer_text(serial.get());
  }
  return result;
}

std::optional<ExtensionValue> policies(Octets value, const View &view) {
  const auto decode = [](const uint8_t *z, const uint8_t *end, uint32_t impl_tag, List **list,
                         uint32_t depth) {
    return asn1_SeqOf_d(z, end, impl_tag, asn1_Any_d, asn1_Any_free, list, depth);
  };
  const auto list = decoded<List>(
      decode, [](List *all) { List_free(all, asn1_Any_free); }, value);
  if (!list) return std::nullopt;
  ExtensionValue result{{}, Json::array()};
  for (const auto *policy : elements<Any>(list.get())) {
    Components components(octets(policy));
    const auto identifier = components.take(0x06, asn1_ObjId_d, asn1_ObjId_free);
    if (!identifier) return std::nullopt;
    const bool qualified = components.next_is(0x30);
    result.lines.push_back(label(identifier.get(), view) + (qualified ? ", qualified" : ""));
    Json object;
    put_oid(object, "policyIdentifier", identifier.get());
    result.json.push_back(std::move(object));
  }
  return result;
}

std::optional<ExtensionValue> number(Octets value, const View &) {
  const auto integer = decoded(asn1_Integer_d, asn1_Integer_free, value);
  if (!integer) return std::nullopt;
  return one_line_value(number_text(integer.get()), json_of_number(integer.get()));
}

std::optional<ExtensionValue> reason(Octets value, const View &) {
  static constexpr const char *names[] = {
      "unspecified",   "keyCompromise",        "cACompromise",    "affiliationChanged",
      "superseded",    "cessationOfOperation", "certificateHold", "reason 7",
      "removeFromCRL", "privilegeWithdrawn",   "aACompromise"};
  if (value.empty()) return std::nullopt;
  const uint8_t *const end = value.data() + value.size();
  uint32_t code = 0;
  if (asn1_Enumerated_d(value.data(), end, 0, &code, 0) != end) return std::nullopt;
  const std::string name = code < std::size(names) ? names[code] : "reason " + std::to_string(code);
  return one_line_value(name, name);
}

std::optional<ExtensionValue> date(Octets value, const View &) {
  constexpr uint8_t generalized_time = 24;
  const auto text = decoded(asn1_GeneralizedTime_d, asn1_GeneralizedTime_free, value);
  if (!text) return std::nullopt;
  const Time time{generalized_time, text.get()};
  return one_line_value(time_text(&time), json_of(&time));
}

std::optional<ExtensionValue> string(Octets value, const View &) {
  if (value.empty()) return std::nullopt;
  const uint8_t *const end = value.data() + value.size();
  ASN1String *record = nullptr;
  const uint8_t *const next = asn1_ASN1String_d(value.data(), end, 0, value[0], &record, 0);
  const Owned<ASN1String> owned(next == nullptr ? nullptr : record, asn1_ASN1String_free);
  const auto text = from_string(value[0], octets(owned.get()));
  if (next != end || !text) return std::nullopt;
  return one_line_value(printable(*text), to_utf8(*text));
}

std::optional<ExtensionValue> presence(Octets value, const View &) {
  const Octets null = octets(asn1_Any_NULL());
  if (!std::ranges::equal(value, null)) return std::nullopt;
  return one_line_value("present", true);
}

/// The syntaxes, each under the display name of its extension. A new one is a function above and a
/// row here.
struct Row {
  std::string_view name;
  Reader read;
};

constexpr Row syntaxes[] = {
    {"keyUsage", key_usage},
    {"subjectKeyIdentifier", key_identifier},
    {"extKeyUsage", extended_key_usage},
    {"basicConstraints", basic_constraints},
    {"subjectAltName", general_names},
    {"issuerAltName", general_names},
    {"certificateIssuer", general_names},
    {"authorityInfoAccess", access_information},
    {"subjectInfoAccess", access_information},
    {"cRLDistributionPoints", distribution_points},
    {"freshestCRL", distribution_points},
    {"authorityKeyIdentifier", authority_key_identifier},
    {"certificatePolicies", policies},
    {"policyConstraints", policy_constraints},
    {"privateKeyUsagePeriod", private_key_usage_period},
    {"inhibitAnyPolicy", number},
    {"cRLNumber", number},
    {"deltaCRLIndicator", number},
    {"cRLReason", reason},
    {"invalidityDate", date},
    {"ocsp-nocheck", presence},
    {"precertificatePoison", presence},
    {"netscape-cert-type", netscape_cert_type},
    {"netscape-base-url", string},
    {"netscape-revocation-url", string},
    {"netscape-ca-revocation-url", string},
    {"netscape-cert-renewal-url", string},
    {"netscape-ca-policy-url", string},
    {"netscape-ssl-server-name", string},
    {"netscape-comment", string},
    {"ms-certificate-template-name", string},
    {"ms-ca-key-cert-index-pair", number},
};

}  // namespace

ExtensionValue read_extension(const Extension *extension, const View &view) {
  const Octets value = octets(extension->extnValue);
  const std::string name = display_name(extension->extnID);
  ExtensionValue unread{dump(value, view.full), nullptr};
  const auto *const row = std::ranges::find(syntaxes, std::string_view(name), &Row::name);
  if (row == std::end(syntaxes)) return unread;
  if (auto read = row->read(value, view)) return std::move(*read);
  unread.lines.insert(unread.lines.begin(), "in a form that is not read here:");
  return unread;
}

void add_extensions(Page &page, const Extensions *extensions, const View &view) {
  if (List_len(extensions) == 0) return;
  page.section("Extensions");
  for (const auto *extension : elements<Extension>(extensions)) {
    std::string key = label(extension->extnID, view);
    if (extension->critical != 0) key += ", critical";
    page.row(std::move(key), read_extension(extension, view).lines);
  }
}

}  // namespace tool
