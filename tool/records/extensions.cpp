// The syntaxes of certificate and CRL extensions (RFC 5280, 4.2, 5.2), and logotypes (RFC 3709).
#include "records/extension_values.h"
#include "records/general_names.h"
#include "records/type.h"
#include "text/integers.h"

namespace tool {

namespace {

std::vector<std::string> or_empty(std::vector<std::string> lines) {
  if (lines.empty()) lines.emplace_back("(empty)");
  return lines;
}

/// Returns the record. A page shows these lines in its place inside another one.
Node with_lines(Node record, std::vector<std::string> lines) {
  return shown_as(std::move(record), text(or_empty(std::move(lines)), nullptr));
}

}  // namespace

// AnotherName ::= SEQUENCE { type-id, value [0] }
Node describe(const OtherName *name, const View &view) {
  return Description(view).field("type", name->type).field("value", name->value).node();
}

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
  return with_lines(Description(view)
                        .field("keyIdentifier", identifier->keyIdentifier)
                        .list<GeneralName>("authorityCertIssuer", identifier->authorityCertIssuer)
                        .field("authorityCertSerialNumber", identifier->authorityCertSerialNumber)
                        .node(),
                    std::move(lines));
}

// BasicConstraints ::= SEQUENCE { cA DEFAULT FALSE, pathLenConstraint OPTIONAL }
Node describe(const BasicConstraints *constraints, const View &view) {
  std::string line = constraints->cA != 0 ? "CA" : "not a CA";
  if (constraints->pathLenConstraint != nullptr)
    line += ", path length " + number_text(constraints->pathLenConstraint);
  return with_lines(Description(view)
                        .field("cA", boolean(constraints->cA))
                        .small("pathLenConstraint", constraints->pathLenConstraint)
                        .node(),
                    {line});
}

// GeneralSubtree ::= SEQUENCE { base, minimum [0], maximum [1] }
Node describe(const GeneralSubtree *subtree, const View &view) {
  std::string line = general_name_text(subtree->base, view);
  if (subtree->minimum != nullptr) line += ", minimum " + number_text(subtree->minimum);
  if (subtree->maximum != nullptr) line += ", maximum " + number_text(subtree->maximum);
  return with_lines(Description(view)
                        .field("base", subtree->base)
                        .small("minimum", subtree->minimum)
                        .small("maximum", subtree->maximum)
                        .node(),
                    {line});
}

// NameConstraints ::= SEQUENCE { permittedSubtrees [0], excludedSubtrees [1] }
Node describe(const NameConstraints *constraints, const View &view) {
  return Description(view)
      .list<GeneralSubtree>("permittedSubtrees", constraints->permittedSubtrees)
      .list<GeneralSubtree>("excludedSubtrees", constraints->excludedSubtrees)
      .node();
}

// PolicyConstraints ::= SEQUENCE { requireExplicitPolicy [0], inhibitPolicyMapping [1] }
Node describe(const PolicyConstraints *constraints, const View &view) {
  std::vector<std::string> lines;
  if (constraints->requireExplicitPolicy != nullptr)
    lines.push_back("explicit policy after " + number_text(constraints->requireExplicitPolicy));
  if (constraints->inhibitPolicyMapping != nullptr)
    lines.push_back("no policy mapping after " + number_text(constraints->inhibitPolicyMapping));
  return with_lines(Description(view)
                        .small("requireExplicitPolicy", constraints->requireExplicitPolicy)
                        .small("inhibitPolicyMapping", constraints->inhibitPolicyMapping)
                        .node(),
                    std::move(lines));
}

// One element of PolicyMappings: SEQUENCE { issuerDomainPolicy, subjectDomainPolicy }
Node describe(const PolicyMapping *mapping, const View &view) {
  return with_lines(Description(view)
                        .field("issuerDomainPolicy", mapping->issuerDomainPolicy)
                        .field("subjectDomainPolicy", mapping->subjectDomainPolicy)
                        .node(),
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

Node revocation_reason(uint32_t code) {
  static constexpr const char *names[] = {
      "unspecified",   "keyCompromise",        "cACompromise",    "affiliationChanged",
      "superseded",    "cessationOfOperation", "certificateHold", "reason 7",
      "removeFromCRL", "privilegeWithdrawn",   "aACompromise"};
  const std::string name = code < std::size(names) ? names[code] : "reason " + std::to_string(code);
  return text(name, name);
}

namespace {

/// Adds the alternative of a point's own name, which JSON has among the fields of the point.
Description &add_point_name(Description &fields, const DistributionPointName *name) {
  constexpr uint8_t full_name = 0;
  if (name == nullptr) return fields;
  const auto *const list = static_cast<const List *>(name->value);
  if (name->kind == full_name) return fields.list<GeneralName>("fullName", list);
  const Bytes relative =
      encoded([list](uint8_t **pp) { return asn1_RelativeDistinguishedName_e(pp, list); });
  return fields.field("nameRelativeToCRLIssuer",
                      text("relative to the issuer " + hex(relative), hex(relative)));
}

}  // namespace

// DistributionPointName ::= CHOICE { fullName [0], nameRelativeToCRLIssuer [1] }
Node describe(const DistributionPointName *name, const View &view) {
  Description fields(view);
  return add_point_name(fields, name).node();
}

// DistributionPoint ::= SEQUENCE { distributionPoint [0], reasons [1], cRLIssuer [2] }
Node describe(const DistributionPoint *point, const View &view) {
  Description fields(view);
  Node record = add_point_name(fields, point->distributionPoint)
                    .field("reasons", point->reasons)
                    .list<GeneralName>("cRLIssuer", point->cRLIssuer)
                    .node();
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
      Description(view)
          .field("accessMethod", access->accessMethod)
          .field("accessLocation", access->accessLocation)
          .node(),
      {label(access->accessMethod, view) + ", " + general_name_text(access->accessLocation, view)});
}

namespace {

Node describe_access_information(const AuthorityInfoAccessSyntax *list, const View &view) {
  return list_of<AccessDescription>(list, view);
}

uint32_t encode_other_name(uint8_t **pp, const OtherName *name) {
  return asn1_OtherName_e(pp, nullptr, name);
}

// The tables have what the library reads: explicit tags where the public form has implicit ones.
constexpr Field wrapped_any_fields[] = {{"", &any_syntax}};
constexpr Syntax wrapped_any_syntax{.tag = 0xA0, .fields = wrapped_any_fields};
constexpr Field other_name_fields[] = {{"type", &oid_syntax}, {"value", &wrapped_any_syntax}};
constexpr Syntax other_name_syntax{.tag = 0x30, .fields = other_name_fields};

constexpr Field integer_field[] = {{"", &integer_syntax}};
constexpr Field octet_string_field[] = {{"", &octet_string_syntax}};
constexpr Field general_names_field[] = {{"", &general_names_syntax}};
constexpr Field utc_time_field[] = {{"", &utc_time_syntax}};
constexpr Syntax octets_0_syntax{.tag = 0xA0, .fields = octet_string_field};
constexpr Syntax names_1_syntax{.tag = 0xA1, .fields = general_names_field};
constexpr Syntax integer_1_syntax{.tag = 0xA1, .fields = integer_field};
constexpr Syntax integer_2_syntax{.tag = 0xA2, .fields = integer_field};
constexpr Syntax utc_time_0_syntax{.tag = 0xA0, .fields = utc_time_field};
constexpr Syntax utc_time_1_syntax{.tag = 0xA1, .fields = utc_time_field};

constexpr Field key_identifier_fields[] = {{"keyIdentifier", &octets_0_syntax, true},
                                           {"authorityCertIssuer", &names_1_syntax, true},
                                           {"authorityCertSerialNumber", &integer_2_syntax, true}};
constexpr Field basic_constraints_fields[] = {{"cA", &boolean_syntax, true},
                                              {"pathLenConstraint", &integer_syntax, true}};
constexpr Field subtree_fields[] = {{"base", &general_name_syntax},
                                    {"minimum", &wrapped_integer_syntax, true},
                                    {"maximum", &integer_1_syntax, true}};
constexpr Syntax subtree_syntax{.tag = 0x30, .fields = subtree_fields};
constexpr Syntax subtrees_syntax{.tag = 0x30, .element = &subtree_syntax};
constexpr Field subtrees_field[] = {{"", &subtrees_syntax}};
constexpr Syntax permitted_syntax{.tag = 0xA0, .fields = subtrees_field};
constexpr Syntax excluded_syntax{.tag = 0xA1, .fields = subtrees_field};
constexpr Field name_constraints_fields[] = {{"permittedSubtrees", &permitted_syntax, true},
                                             {"excludedSubtrees", &excluded_syntax, true}};
constexpr Field policy_constraints_fields[] = {
    {"requireExplicitPolicy", &wrapped_integer_syntax, true},
    {"inhibitPolicyMapping", &integer_1_syntax, true}};
constexpr Field mapping_fields[] = {{"issuerDomainPolicy", &oid_syntax},
                                    {"subjectDomainPolicy", &oid_syntax}};
constexpr Field period_fields[] = {{"notBefore", &utc_time_0_syntax, true},
                                   {"notAfter", &utc_time_1_syntax, true}};
constexpr Syntax full_name_syntax{.tag = 0xA0, .element = &general_name_syntax};
constexpr Syntax relative_name_syntax{.tag = 0xA1, .element = &assertion_syntax};
constexpr Field point_names[] = {{"fullName", &full_name_syntax},
                                 {"nameRelativeToCRLIssuer", &relative_name_syntax}};
constexpr Syntax point_name_syntax{.choice = point_names};
constexpr Field point_name_field[] = {{"", &point_name_syntax}};
constexpr Syntax wrapped_point_name_syntax{.tag = 0xA0, .fields = point_name_field};
constexpr Field point_fields[] = {{"distributionPoint", &wrapped_point_name_syntax, true},
                                  {"reasons", &bit_string_syntax, true, 0x81},
                                  {"cRLIssuer", &general_names_syntax, true, 0x82}};
constexpr Field access_fields[] = {{"accessMethod", &oid_syntax},
                                   {"accessLocation", &general_name_syntax}};
constexpr Syntax access_syntax{.tag = 0x30, .fields = access_fields};

std::optional<Fault> written_only(Octets) {
  return Fault{std::nullopt, "the library writes logotypes and reads none"};
}

Node nothing(const void *, const View &) { return {}; }

/// A type whose decoder refuses everything.
template <auto decode_function, auto encode_function, auto free_function>
constexpr Type logotype(std::string_view name, std::string_view heading) {
  return type<decode_function, encode_function, free_function, nothing>(
      {.name = name,
       .heading = heading,
       .about = "a part of logotypes, which the library writes and does not read",
       .explain = written_only});
}

constexpr Type rows[] = {
    type<asn1_OtherName_d, encode_other_name, asn1_OtherName_free>(
        {.name = "another-name",
         .heading = "AnotherName",
         .about = "a name of a kind of its own",
         .syntax = &other_name_syntax}),
    type<asn1_GeneralName_d, asn1_GeneralName_e, asn1_GeneralName_free>(
        {.name = "general-name",
         .heading = "GeneralName",
         .about = "a name of one of several kinds",
         .syntax = &general_name_syntax}),
    type<asn1_AuthorityKeyIdentifier_d, nullptr, asn1_AuthorityKeyIdentifier_free>(
        {.name = "authority-key-identifier",
         .heading = "AuthorityKeyIdentifier",
         .about = "which key an issuer signed with",
         .syntax = &authority_key_identifier_syntax}),
    type<asn1_BasicConstraints_d, asn1_BasicConstraints_e, asn1_BasicConstraints_free>(
        {.name = "basic-constraints",
         .heading = "BasicConstraints",
         .about = "whether a certificate is that of an issuer",
         .syntax = &basic_constraints_syntax}),
    type<asn1_GeneralSubtree_d, nullptr, asn1_GeneralSubtree_free>(
        {.name = "general-subtree",
         .heading = "GeneralSubtree",
         .about = "a part of the names of one kind",
         .syntax = &subtree_syntax}),
    type<asn1_NameConstraints_d, nullptr, asn1_NameConstraints_free>(
        {.name = "name-constraints",
         .heading = "NameConstraints",
         .about = "which names an issuer may give",
         .syntax = &name_constraints_syntax}),
    type<asn1_PolicyConstraints_d, nullptr, asn1_PolicyConstraints_free>(
        {.name = "policy-constraints",
         .heading = "PolicyConstraints",
         .about = "from where on policies must be stated",
         .syntax = &policy_constraints_syntax}),
    type<asn1_PolicyMapping_d, nullptr, asn1_PolicyMapping_free>(
        {.name = "policy-mapping",
         .heading = "PolicyMapping",
         .about = "two policies that are alike",
         .syntax = &policy_mapping_syntax}),
    type<asn1_PrivateKeyUsagePeriod_d, nullptr, asn1_PrivateKeyUsagePeriod_free>(
        {.name = "private-key-usage-period",
         .heading = "PrivateKeyUsagePeriod",
         .about = "from when and until when a key signs",
         .syntax = &private_key_usage_period_syntax}),
    type<asn1_DistributionPointName_d, asn1_DistributionPointName_e,
         asn1_DistributionPointName_free>({.name = "distribution-point-name",
                                           .heading = "DistributionPointName",
                                           .about = "where a CRL is found",
                                           .syntax = &point_name_syntax}),
    type<asn1_DistributionPoint_d, asn1_DistributionPoint_e, asn1_DistributionPoint_free>(
        {.name = "distribution-point",
         .heading = "DistributionPoint",
         .about = "where a CRL is found, for which reasons and from which issuer",
         .syntax = &distribution_point_syntax}),
    type<asn1_AccessDescription_d, asn1_AccessDescription_e, asn1_AccessDescription_free>(
        {.name = "access-description",
         .heading = "AccessDescription",
         .about = "a service and where it is found",
         .syntax = &access_syntax}),
    type<asn1_AuthorityInfoAccessSyntax_d, asn1_AuthorityInfoAccessSyntax_e,
         asn1_AuthorityInfoAccessSyntax_free, describe_access_information>(
        {.name = "authority-info-access-syntax",
         .heading = "AuthorityInfoAccessSyntax",
         .about = "services and where they are found",
         .syntax = &access_information_syntax}),
    logotype<asn1_LogotypeExtn_d, asn1_LogotypeExtn_e, asn1_LogotypeExtn_free>("logotype-extn",
                                                                               "LogotypeExtn"),
    logotype<asn1_OtherLogotypeInfo_d, asn1_OtherLogotypeInfo_e, asn1_OtherLogotypeInfo_free>(
        "other-logotype-info", "OtherLogotypeInfo"),
    logotype<asn1_LogotypeInfo_d, asn1_LogotypeInfo_e, asn1_LogotypeInfo_free>("logotype-info",
                                                                               "LogotypeInfo"),
    logotype<asn1_LogotypeData_d, asn1_LogotypeData_e, asn1_LogotypeData_free>("logotype-data",
                                                                               "LogotypeData"),
    logotype<asn1_LogotypeImage_d, asn1_LogotypeImage_e, asn1_LogotypeImage_free>("logotype-image",
                                                                                  "LogotypeImage"),
    logotype<asn1_LogotypeImageInfo_d, asn1_LogotypeImageInfo_e, asn1_LogotypeImageInfo_free>(
        "logotype-image-info", "LogotypeImageInfo"),
    logotype<asn1_LogotypeImageResolution_d, asn1_LogotypeImageResolution_e,
             asn1_LogotypeImageResolution_free>("logotype-image-resolution",
                                                "LogotypeImageResolution"),
    logotype<asn1_LogotypeAudio_d, asn1_LogotypeAudio_e, asn1_LogotypeAudio_free>("logotype-audio",
                                                                                  "LogotypeAudio"),
    logotype<asn1_LogotypeAudioInfo_d, asn1_LogotypeAudioInfo_e, asn1_LogotypeAudioInfo_free>(
        "logotype-audio-info", "LogotypeAudioInfo"),
    logotype<asn1_LogotypeDetails_d, asn1_LogotypeDetails_e, asn1_LogotypeDetails_free>(
        "logotype-details", "LogotypeDetails"),
    logotype<asn1_LogotypeReference_d, asn1_LogotypeReference_e, asn1_LogotypeReference_free>(
        "logotype-reference", "LogotypeReference"),
    logotype<asn1_HashAlgAndValue_d, asn1_HashAlgAndValue_e, asn1_HashAlgAndValue_free>(
        "hash-alg-and-value", "HashAlgAndValue"),
};

}  // namespace

constexpr Syntax authority_key_identifier_syntax{.tag = 0x30, .fields = key_identifier_fields};
constexpr Syntax basic_constraints_syntax{.tag = 0x30, .fields = basic_constraints_fields};
constexpr Syntax name_constraints_syntax{.tag = 0x30, .fields = name_constraints_fields};
constexpr Syntax policy_constraints_syntax{.tag = 0x30, .fields = policy_constraints_fields};
constexpr Syntax policy_mapping_syntax{.tag = 0x30, .fields = mapping_fields};
constexpr Syntax private_key_usage_period_syntax{.tag = 0x30, .fields = period_fields};
constexpr Syntax distribution_point_syntax{.tag = 0x30, .fields = point_fields};
constexpr Syntax access_information_syntax{.tag = 0x30, .element = &access_syntax};

std::span<const Type> extension_types() { return rows; }

}  // namespace tool
