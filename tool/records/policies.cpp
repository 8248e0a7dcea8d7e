// Policies of certificates: with their qualifiers, their mappings and constraints (RFC 5280, 4.2.1.4,
// 4.2.1.5, 4.2.1.11, 4.2.1.14).
#include "records/values.h"
#include "text/characters.h"
#include "text/integers.h"
#include "text/object_identifiers.h"

namespace tool {

// DisplayText ::= CHOICE { ia5String, visibleString, bmpString, utf8String }
Node describe(const pki_DisplayText *display, const View &view) {
  return characters(display->kind, static_cast<const ASN1String *>(display->value), view);
}

namespace {

/// Returns what a page says of a part, in quotation marks.
std::string quoted(const pki_DisplayText *display, const View &view) {
  const auto lines = lines_of(describe(display, view), view);
  return "\"" + lines->front() + "\"";
}

}  // namespace

// UserNotice ::= SEQUENCE { noticeRef OPTIONAL, explicitText OPTIONAL }
Node describe(const pki_UserNotice *notice, const View &view) {
  return with_lines(view, Description(view).all("pki_UserNotice", notice).node(), [&] {
    std::vector<std::string> lines;
    if (notice->explicitText != nullptr)
      lines.push_back("notice " + quoted(notice->explicitText, view));
    if (const auto *const reference = notice->noticeRef) {
      std::vector<std::string> numbers;
      for (const auto *number : elements<Integer>(reference->noticeNumbers))
        numbers.push_back(number_text(number));
      lines.push_back("notice " + joined(numbers) + " of " + quoted(reference->organization, view));
    }
    return lines;
  });
}

// PolicyQualifierInfo ::= SEQUENCE { policyQualifierId, qualifier }
Node describe(const pki_PolicyQualifierInfo *qualifier, const View &view) {
  const pki_Type *const type = pki_Type_defined_by(qualifier->policyQualifierId);
  const Octets value = octets(qualifier->qualifier);
  const Inside inside = type == nullptr ? Inside() : read_value(value, type, view);
  Description fields(view);
  fields.field("policyQualifierId", qualifier->policyQualifierId);
  add_inside(fields, "qualifier", describe(qualifier->qualifier, view), inside);
  return with_lines(view, fields.node(), [&] {
    std::vector<std::string> lines =
        flat_lines(type == nullptr ? unknown_octets(value, view) : inside.node, view);
    const bool is_place = is(qualifier->policyQualifierId, asn1_Get_id_qt_cps);
    if (type == nullptr)
      lines.insert(lines.begin(), label(qualifier->policyQualifierId, view));
    else if (is_place && inside.malformed.empty())
      lines.front().insert(0, "CPS ");
    return lines;
  });
}

// PolicyInformation ::= SEQUENCE { policyIdentifier, policyQualifiers OPTIONAL }
//
// In a list the qualifiers follow the policy, indented.
Node describe(const pki_PolicyInformation *policy, const View &view) {
  return with_lines(view, Description(view).all("pki_PolicyInformation", policy).node(), [&] {
    std::vector<std::string> lines{label(policy->policyIdentifier, view)};
    for (const auto *qualifier : elements<pki_PolicyQualifierInfo>(policy->policyQualifiers))
      for (const std::string &line : flat_lines(describe(qualifier, view), view))
        lines.push_back("  " + line);
    return lines;
  });
}

// An element of PolicyMappings: SEQUENCE { issuerDomainPolicy, subjectDomainPolicy }
Node describe(const PolicyMapping *mapping, const View &view) {
  return with_lines(view, Description(view).all("pki_PolicyMapping", mapping).node(), [&] {
    return std::vector<std::string>{label(mapping->issuerDomainPolicy, view) + " is " +
                                    label(mapping->subjectDomainPolicy, view)};
  });
}

namespace {

/// Returns "requires explicit policy", or from which certificate on.
std::string from_there(const char *what, const Integer *skipped) {
  if (skipped->negative == 0 && bit_length(skipped) == 0) return what;
  const std::string count = number_text(skipped);
  return std::string(what) + " after " + count + (count == "1" ? " certificate" : " certificates");
}

Node inhibit_any_policy(const Integer *skipped, const View &view) {
  return shown_as(view, number(skipped),
                  [&] { return text(from_there("inhibits anyPolicy", skipped), nullptr); });
}

}  // namespace

// PolicyConstraints ::= SEQUENCE { requireExplicitPolicy [0], inhibitPolicyMapping [1] }
Node describe(const PolicyConstraints *constraints, const View &view) {
  return with_lines(view, Description(view).all("pki_PolicyConstraints", constraints).node(), [&] {
    std::vector<std::string> lines;
    if (constraints->requireExplicitPolicy != nullptr)
      lines.push_back(from_there("requires explicit policy", constraints->requireExplicitPolicy));
    if (constraints->inhibitPolicyMapping != nullptr)
      lines.push_back(from_there("inhibits policy mapping", constraints->inhibitPolicyMapping));
    return lines;
  });
}

std::vector<Type> policy_types() {
  return {
      {.syntax = "pki_CertificatePolicies", .about = "policies, with their qualifiers"},
      {.syntax = "pki_PolicyInformation",
       .about = "a policy, with its qualifiers",
       .by_hand = as<pki_PolicyInformation>},
      {.syntax = "pki_PolicyQualifierInfo",
       .about = "a place or a notice that belongs to a policy",
       .by_hand = as<pki_PolicyQualifierInfo>},
      {.syntax = "pki_UserNotice",
       .about = "a text for those who rely on a certificate",
       .by_hand = as<pki_UserNotice>},
      {.syntax = "pki_NoticeReference", .about = "which texts of which organization are meant"},
      {.syntax = "pki_DisplayText",
       .about = "a text of one of four character strings",
       .by_hand = as<pki_DisplayText>},
      {.syntax = "pki_PolicyConstraints",
       .about = "from where on policies must be stated",
       .hints = {{"requireExplicitPolicy", as<number>}, {"inhibitPolicyMapping", as<number>}},
       .by_hand = as<PolicyConstraints>},
      {.syntax = "pki_PolicyMapping",
       .about = "two policies that are alike",
       .by_hand = as<PolicyMapping>},
      {.syntax = "pki_InhibitAnyPolicy",
       .about = "from where on anyPolicy counts no more",
       .by_hand = as<inhibit_any_policy>},
  };
}

}  // namespace tool
