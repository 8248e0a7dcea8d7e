// The syntaxes of certificate and CRL extensions (RFC 5280, 4.2, 5.2), and logotypes (RFC 3709).
#include "records/extension_values.h"
#include "records/general_names.h"
#include "records/type.h"
#include "text/characters.h"
#include "text/integers.h"
#include "text/object_identifiers.h"

namespace tool {

namespace {

/// Returns the record. A page shows these lines in its place inside another one.
Node with_lines(Node record, std::vector<std::string> lines) {
  if (lines.empty()) lines.emplace_back("(empty)");
  return shown_as(std::move(record), text(std::move(lines), nullptr));
}

}  // namespace

// GeneralName ::= CHOICE
Node describe(const GeneralName *name, const View &view) {
  return text(general_name_text(name, view), json_of(name));
}

// AuthorityKeyIdentifier ::= SEQUENCE { keyIdentifier [0], authorityCertIssuer [1],
//   authorityCertSerialNumber [2] }
Node describe(const AuthorityKeyIdentifier *identifier, const View &view) {
  std::vector<std::string> lines;
  if (identifier->keyIdentifier != nullptr) lines.push_back(hex(octets(identifier->keyIdentifier)));
  for (const std::string &line : general_name_lines(identifier->authorityCertIssuer, view))
    lines.push_back("issuer " + line);
  if (identifier->authorityCertSerialNumber != nullptr)
    lines.push_back("serial " + integer_text(identifier->authorityCertSerialNumber));
  return with_lines(Description(view).all("pki_AuthorityKeyIdentifier", identifier).node(),
                    std::move(lines));
}

// BasicConstraints ::= SEQUENCE { cA DEFAULT FALSE, pathLenConstraint OPTIONAL }
Node describe(const BasicConstraints *constraints, const View &view) {
  std::string line = constraints->cA != 0 ? "CA" : "not a CA";
  if (constraints->pathLenConstraint != nullptr)
    line += ", path length " + number_text(constraints->pathLenConstraint);
  return with_lines(Description(view).all("pki_BasicConstraints", constraints).node(), {line});
}

// GeneralSubtree ::= SEQUENCE { base, minimum [0], maximum [1] }
Node describe(const GeneralSubtree *subtree, const View &view) {
  std::string line = general_name_text(subtree->base, view);
  if (subtree->minimum != nullptr) line += ", minimum " + number_text(subtree->minimum);
  if (subtree->maximum != nullptr) line += ", maximum " + number_text(subtree->maximum);
  return with_lines(Description(view).all("pki_GeneralSubtree", subtree).node(), {line});
}

// PolicyConstraints ::= SEQUENCE { requireExplicitPolicy [0], inhibitPolicyMapping [1] }
Node describe(const PolicyConstraints *constraints, const View &view) {
  std::vector<std::string> lines;
  if (constraints->requireExplicitPolicy != nullptr)
    lines.push_back("explicit policy after " + number_text(constraints->requireExplicitPolicy));
  if (constraints->inhibitPolicyMapping != nullptr)
    lines.push_back("no policy mapping after " + number_text(constraints->inhibitPolicyMapping));
  return with_lines(Description(view).all("pki_PolicyConstraints", constraints).node(),
                    std::move(lines));
}

// One element of PolicyMappings: SEQUENCE { issuerDomainPolicy, subjectDomainPolicy }
Node describe(const PolicyMapping *mapping, const View &view) {
  return with_lines(Description(view).all("pki_PolicyMapping", mapping).node(),
                    {label(mapping->issuerDomainPolicy, view) + " is " +
                     label(mapping->subjectDomainPolicy, view)});
}

// PrivateKeyUsagePeriod ::= SEQUENCE { notBefore [0], notAfter [1] }
Node describe(const pki_PrivateKeyUsagePeriod *period, const View &view) {
  std::vector<std::string> lines;
  const auto add = [&](const char *word, const GeneralizedTime *time) {
    const Node node = time_of(generalized_time, time);
    if (const auto line = lines_of(node, view)) lines.push_back(word + line->front());
  };
  add("from  ", period->notBefore);
  add("until ", period->notAfter);
  return with_lines(Description(view).all("pki_PrivateKeyUsagePeriod", period).node(),
                    std::move(lines));
}

Node named_bits(const BitString *bits, std::span<const char *const> names) {
  std::vector<std::string> words;
  for (uint32_t i = 0; i < bits->length; ++i)
    if (asn1_BitString_test(bits, i) != 0) words.push_back(word_of(names, i, "bit"));
  return text(words.empty() ? "none" : joined(words),
              Json::array(std::vector<Json>(words.begin(), words.end())));
}

std::string reason_name(uint32_t code) {
  static constexpr const char *names[] = {
      "unspecified",   "keyCompromise",        "cACompromise",    "affiliationChanged",
      "superseded",    "cessationOfOperation", "certificateHold", "reason 7",
      "removeFromCRL", "privilegeWithdrawn",   "aACompromise"};
  return word_of(names, code, "reason");
}

Node revocation_reason(const Integer *code) {
  const std::string name = reason_name(asn1_Integer_get(code));
  return text(name, name);
}

namespace {

Node key_usage(const BitString *bits) {
  static constexpr const char *names[] = {"digitalSignature", "nonRepudiation", "keyEncipherment",
                                          "dataEncipherment", "keyAgreement",   "keyCertSign",
                                          "cRLSign",          "encipherOnly",   "decipherOnly"};
  return named_bits(bits, names);
}

Node extended_key_usage(const List *purposes, const View &view) {
  std::vector<std::string> words;
  std::vector<Json> objects;
  for (const auto *purpose : elements<ObjId>(purposes)) {
    words.push_back(label(purpose, view));
    put_oid(objects.emplace_back(Json::object()), "keyPurposeId", purpose);
  }
  return text(view.oids ? words : std::vector<std::string>{joined(words)}, Json::array(objects));
}

/// Adds the alternative of a point's own name, which JSON has among the fields of the point.
Description &add_point_name(Description &fields, const DistributionPointName *name,
                            const View &view) {
  constexpr uint8_t full_name = 0;
  if (name == nullptr) return fields;
  const auto *const list = static_cast<const List *>(name->value);
  if (name->kind == full_name)
    return fields.field("fullName", list_of("pki_GeneralName", list, view));
  const Bytes relative =
      encoded([list](uint8_t **pp) { return pki_RelativeDistinguishedName_e(pp, list); });
  return fields.field("nameRelativeToCRLIssuer",
                      text("relative to the issuer " + hex(relative), hex(relative)));
}

}  // namespace

// DistributionPointName ::= CHOICE { fullName [0], nameRelativeToCRLIssuer [1] }
Node describe(const DistributionPointName *name, const View &view) {
  Description fields(view);
  return add_point_name(fields, name, view).node();
}

// DistributionPoint ::= SEQUENCE { distributionPoint [0], reasons [1], cRLIssuer [2] }
Node describe(const DistributionPoint *point, const View &view) {
  Description fields(view);
  add_point_name(fields, point->distributionPoint, view).field("reasons", point->reasons);
  Node record =
      fields.field("cRLIssuer", list_of("pki_GeneralName", point->cRLIssuer, view)).node();
  std::vector<std::string> lines;
  for (const Node &field : std::get<Node::Fields>(record.value)) {
    if (field.name == "reasons") {
      lines.push_back("  only for some reasons, bits " + hex(octets(point->reasons)));
      continue;
    }
    const char *const word = field.name == "cRLIssuer" ? "  issued by " : "";
    for (const std::string &line : lines_of(field, view).value_or(std::vector<std::string>()))
      lines.push_back(word + line);
  }
  return with_lines(std::move(record), std::move(lines));
}

// AccessDescription ::= SEQUENCE { accessMethod, accessLocation }
Node describe(const AccessDescription *access, const View &view) {
  return with_lines(
      Description(view).all("pki_AccessDescription", access).node(),
      {label(access->accessMethod, view) + ", " + general_name_text(access->accessLocation, view)});
}

namespace {

Type logotype(const char *name) { return {.syntax = name, .about = "a part of logotypes"}; }

}  // namespace

std::vector<Type> extension_types() {
  return {
      {.syntax = "pki_OtherName", .about = "a name of a kind of its own"},
      {.syntax = "pki_GeneralName",
       .about = "a name of one of several kinds",
       .by_hand = as<GeneralName>},
      {.syntax = "pki_AuthorityKeyIdentifier",
       .about = "which key an issuer signed with",
       .by_hand = as<AuthorityKeyIdentifier>},
      {.syntax = "pki_BasicConstraints",
       .about = "whether a certificate is that of an issuer",
       .hints = {{"pathLenConstraint", as<number>}},
       .by_hand = as<BasicConstraints>},
      {.syntax = "pki_GeneralSubtree",
       .about = "a part of the names of one kind",
       .hints = {{"minimum", as<number>}, {"maximum", as<number>}},
       .by_hand = as<GeneralSubtree>},
      {.syntax = "pki_NameConstraints", .about = "which names an issuer may give"},
      {.syntax = "pki_PolicyConstraints",
       .about = "from where on policies must be stated",
       .hints = {{"requireExplicitPolicy", as<number>}, {"inhibitPolicyMapping", as<number>}},
       .by_hand = as<PolicyConstraints>},
      {.syntax = "pki_PolicyMapping",
       .about = "two policies that are alike",
       .by_hand = as<PolicyMapping>},
      {.syntax = "pki_PrivateKeyUsagePeriod",
       .about = "from when and until when a key signs",
       .by_hand = as<pki_PrivateKeyUsagePeriod>},
      {.syntax = "pki_DistributionPointName",
       .about = "where a CRL is found",
       .by_hand = as<DistributionPointName>},
      {.syntax = "pki_DistributionPoint",
       .about = "where a CRL is found, for which reasons and from which issuer",
       .by_hand = as<DistributionPoint>},
      {.syntax = "pki_AccessDescription",
       .about = "a service and where it is found",
       .by_hand = as<AccessDescription>},
      {.syntax = "pki_AuthorityInfoAccessSyntax", .about = "services and where they are found"},
      {.syntax = "pki_KeyUsage", .about = "what a key is for", .by_hand = as<key_usage>},
      {.syntax = "pki_ExtKeyUsageSyntax",
       .about = "for which purposes a key is",
       .by_hand = as<extended_key_usage>},
      {.syntax = "pki_InhibitAnyPolicy",
       .about = "from where on anyPolicy counts no more",
       .by_hand = as<number>},
      {.syntax = "pki_CRLNumber", .about = "the number of a CRL", .by_hand = as<number>},
      {.syntax = "pki_BaseCRLNumber",
       .about = "the number of the CRL that a delta CRL goes with",
       .by_hand = as<number>},
      {.syntax = "pki_CRLReason",
       .about = "why a certificate was revoked",
       .by_hand = as<revocation_reason>},
      logotype("pki_LogotypeExtn"),
      logotype("pki_OtherLogotypeInfo"),
      logotype("pki_LogotypeInfo"),
      logotype("pki_LogotypeData"),
      logotype("pki_LogotypeImage"),
      logotype("pki_LogotypeImageInfo"),
      logotype("pki_LogotypeImageResolution"),
      logotype("pki_LogotypeAudio"),
      logotype("pki_LogotypeAudioInfo"),
      logotype("pki_LogotypeDetails"),
      logotype("pki_LogotypeReference"),
      logotype("pki_HashAlgAndValue"),
  };
}

}  // namespace tool
