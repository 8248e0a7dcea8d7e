// Where CRLs are found, and which certificates a CRL is for (RFC 5280, 4.2.1.13, 5.2.5).
#include "records/distinguished_names.h"
#include "records/values.h"
#include "text/characters.h"

namespace tool {

namespace {

/// ReasonFlags ::= BIT STRING of named bits
Node reasons(const BitString *bits) {
  static constexpr const char *names[] = {
      "unused",      "keyCompromise",        "cACompromise",    "affiliationChanged",
      "superseded",  "cessationOfOperation", "certificateHold", "privilegeWithdrawn",
      "aACompromise"};
  return named_bits(bits, names);
}

/// Adds the alternative of a point's own name, which JSON has among the fields of the point.
Description &add_point_name(Description &fields, const DistributionPointName *name,
                            const View &view) {
  constexpr uint8_t full_name = 0;
  if (name == nullptr) return fields;
  const auto *const list = static_cast<const List *>(name->value);
  if (name->kind == full_name)
    return fields.field("fullName", list_of("pki_GeneralName", list, view));
  const auto line = [&] {
    std::vector<std::string> attributes;
    for (const auto *attribute : elements<AttributeValueAssertion>(list))
      attributes.push_back(attribute_text(attribute, view));
    return "relative to the issuer " + joined(attributes, " + ");
  };
  return fields.field("nameRelativeToCRLIssuer",
                      text(view, line, Json::of_part<append_attributes>(list)));
}

/// Adds the lines of a field, with words in front of each.
void add_lines(std::vector<std::string> &lines, const Node &field, const std::string &words,
               const View &view) {
  for (const std::string &line : flat_lines(field, view)) lines.push_back(words + line);
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
  add_point_name(fields, point->distributionPoint, view);
  if (point->reasons != nullptr) fields.field("reasons", reasons(point->reasons));
  Node record =
      fields.field("cRLIssuer", list_of("pki_GeneralName", point->cRLIssuer, view)).node();
  if (!view.lines) return record;
  std::vector<std::string> lines;
  for (const Node &field : std::get<Node::Fields>(record.value))
    add_lines(lines, field,
              field.name == "reasons"     ? "  only for "
              : field.name == "cRLIssuer" ? "  issued by "
                                          : "",
              view);
  return shown_as(std::move(record), record_lines(std::move(lines)));
}

// IssuingDistributionPoint ::= SEQUENCE { distributionPoint [0], onlyContainsUserCerts [1],
//   onlyContainsCACerts [2], onlySomeReasons [3], indirectCRL [4], onlyContainsAttributeCerts [5] }
Node describe(const pki_IssuingDistributionPoint *point, const View &view) {
  return with_lines(view, Description(view).all("pki_IssuingDistributionPoint", point).node(), [&] {
    std::vector<std::string> lines;
    Description name(view);
    const Node point_name = add_point_name(name, point->distributionPoint, view).node();
    for (const Node &field : std::get<Node::Fields>(point_name.value))
      add_lines(lines, field, "", view);
    const auto add_if = [&lines](uint32_t flag, const char *line) {
      if (flag != 0) lines.emplace_back(line);
    };
    add_if(point->onlyContainsUserCerts, "only user certificates");
    add_if(point->onlyContainsCACerts, "only CA certificates");
    add_if(point->onlyContainsAttributeCerts, "only attribute certificates");
    if (point->onlySomeReasons != nullptr)
      add_lines(lines, reasons(point->onlySomeReasons), "only for ", view);
    add_if(point->indirectCRL, "an indirect CRL");
    return lines;
  });
}

std::vector<Type> distribution_types() {
  return {
      {.syntax = "pki_CRLDistributionPoints", .about = "where CRLs are found"},
      {.syntax = "pki_DistributionPointName",
       .about = "where a CRL is found",
       .by_hand = as<DistributionPointName>},
      {.syntax = "pki_DistributionPoint",
       .about = "where a CRL is found, for which reasons and from which issuer",
       .by_hand = as<DistributionPoint>},
      {.syntax = "pki_IssuingDistributionPoint",
       .about = "which certificates a CRL is for",
       .hints = {{"onlySomeReasons", as<reasons>}},
       .by_hand = as<pki_IssuingDistributionPoint>},
  };
}

}  // namespace tool
