// The syntaxes of certificate and CRL extensions (RFC 5280, 4.2, 5.2), and logotypes (RFC 3709).
#include "records/extension_values.h"
#include "records/general_names.h"
#include "records/type.h"
#include "text/characters.h"
#include "text/integers.h"

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
  return with_lines(Description(view).all("AuthorityKeyIdentifier", identifier).node(),
                    std::move(lines));
}

// BasicConstraints ::= SEQUENCE { cA DEFAULT FALSE, pathLenConstraint OPTIONAL }
Node describe(const BasicConstraints *constraints, const View &view) {
  std::string line = constraints->cA != 0 ? "CA" : "not a CA";
  if (constraints->pathLenConstraint != nullptr)
    line += ", path length " + number_text(constraints->pathLenConstraint);
  return with_lines(Description(view).all("BasicConstraints", constraints).node(), {line});
}

// GeneralSubtree ::= SEQUENCE { base, minimum [0], maximum [1] }
Node describe(const GeneralSubtree *subtree, const View &view) {
  std::string line = general_name_text(subtree->base, view);
  if (subtree->minimum != nullptr) line += ", minimum " + number_text(subtree->minimum);
  if (subtree->maximum != nullptr) line += ", maximum " + number_text(subtree->maximum);
  return with_lines(Description(view).all("GeneralSubtree", subtree).node(), {line});
}

// PolicyConstraints ::= SEQUENCE { requireExplicitPolicy [0], inhibitPolicyMapping [1] }
Node describe(const PolicyConstraints *constraints, const View &view) {
  std::vector<std::string> lines;
  if (constraints->requireExplicitPolicy != nullptr)
    lines.push_back("explicit policy after " + number_text(constraints->requireExplicitPolicy));
  if (constraints->inhibitPolicyMapping != nullptr)
    lines.push_back("no policy mapping after " + number_text(constraints->inhibitPolicyMapping));
  return with_lines(Description(view).all("PolicyConstraints", constraints).node(),
                    std::move(lines));
}

// One element of PolicyMappings: SEQUENCE { issuerDomainPolicy, subjectDomainPolicy }
Node describe(const PolicyMapping *mapping, const View &view) {
  return with_lines(Description(view).all("PolicyMapping", mapping).node(),
                    {label(mapping->issuerDomainPolicy, view) + " is " +
                     label(mapping->subjectDomainPolicy, view)});
}

// PrivateKeyUsagePeriod ::= SEQUENCE { notBefore [0], notAfter [1] }
Node describe(const PrivateKeyUsagePeriod *period, const View &view) {
  return usage_period(utc_time, period->notBefore, period->notAfter, view);
}

Node usage_period(uint8_t kind, const char *from, const char *until, const View &view) {
  const Node start = time_of(kind, from);
  const Node end = time_of(kind, until);
  std::vector<std::string> lines;
  const auto add = [&](const char *word, const Node &time) {
    if (const auto line = lines_of(time, view)) lines.push_back(word + line->front());
  };
  add("from  ", start);
  add("until ", end);
  return with_lines(Description(view).field("notBefore", start).field("notAfter", end).node(),
                    std::move(lines));
}

Node revocation_reason(const uint32_t *number) {
  static constexpr const char *names[] = {
      "unspecified",   "keyCompromise",        "cACompromise",    "affiliationChanged",
      "superseded",    "cessationOfOperation", "certificateHold", "reason 7",
      "removeFromCRL", "privilegeWithdrawn",   "aACompromise"};
  const std::string name = word_of(names, *number, "reason");
  return text(name, name);
}

namespace {

/// Adds the alternative of a point's own name, which JSON has among the fields of the point.
Description &add_point_name(Description &fields, const DistributionPointName *name,
                            const View &view) {
  constexpr uint8_t full_name = 0;
  if (name == nullptr) return fields;
  const auto *const list = static_cast<const List *>(name->value);
  if (name->kind == full_name) return fields.field("fullName", list_of("GeneralName", list, view));
  const Bytes relative =
      encoded([list](uint8_t **pp) { return asn1_RelativeDistinguishedName_e(pp, list); });
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
  Node record = fields.field("cRLIssuer", list_of("GeneralName", point->cRLIssuer, view)).node();
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
      Description(view).all("AccessDescription", access).node(),
      {label(access->accessMethod, view) + ", " + general_name_text(access->accessLocation, view)});
}

namespace {

uint32_t encode_other_name(uint8_t **pp, const void *name) {
  return asn1_OtherName_e(pp, nullptr, static_cast<const OtherName *>(name));
}

Type logotype(const char *name) {
  return {.syntax = name,
          .about = "a part of logotypes, which the library writes and does not read"};
}

}  // namespace

std::vector<Type> extension_types() {
  return {
      {.syntax = "OtherName",
       .about = "a name of a kind of its own",
       .own_encode = encode_other_name},
      {.syntax = "GeneralName",
       .about = "a name of one of several kinds",
       .by_hand = as<GeneralName>},
      {.syntax = "AuthorityKeyIdentifier",
       .about = "which key an issuer signed with",
       .by_hand = as<AuthorityKeyIdentifier>},
      {.syntax = "BasicConstraints",
       .about = "whether a certificate is that of an issuer",
       .hints = {{"pathLenConstraint", as<number>}},
       .by_hand = as<BasicConstraints>},
      {.syntax = "GeneralSubtree",
       .about = "a part of the names of one kind",
       .hints = {{"minimum", as<number>}, {"maximum", as<number>}},
       .by_hand = as<GeneralSubtree>},
      {.syntax = "NameConstraints", .about = "which names an issuer may give"},
      {.syntax = "PolicyConstraints",
       .about = "from where on policies must be stated",
       .hints = {{"requireExplicitPolicy", as<number>}, {"inhibitPolicyMapping", as<number>}},
       .by_hand = as<PolicyConstraints>},
      {.syntax = "PolicyMapping",
       .about = "two policies that are alike",
       .by_hand = as<PolicyMapping>},
      {.syntax = "PrivateKeyUsagePeriod",
       .about = "from when and until when a key signs",
       .by_hand = as<PrivateKeyUsagePeriod>},
      {.syntax = "DistributionPointName",
       .about = "where a CRL is found",
       .by_hand = as<DistributionPointName>},
      {.syntax = "DistributionPoint",
       .about = "where a CRL is found, for which reasons and from which issuer",
       .by_hand = as<DistributionPoint>},
      {.syntax = "AccessDescription",
       .about = "a service and where it is found",
       .by_hand = as<AccessDescription>},
      {.syntax = "AuthorityInfoAccessSyntax", .about = "services and where they are found"},
      logotype("LogotypeExtn"),
      logotype("OtherLogotypeInfo"),
      logotype("LogotypeInfo"),
      logotype("LogotypeData"),
      logotype("LogotypeImage"),
      logotype("LogotypeImageInfo"),
      logotype("LogotypeImageResolution"),
      logotype("LogotypeAudio"),
      logotype("LogotypeAudioInfo"),
      logotype("LogotypeDetails"),
      logotype("LogotypeReference"),
      logotype("HashAlgAndValue"),
  };
}

}  // namespace tool
