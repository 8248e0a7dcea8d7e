// Statements of qualified certificates (RFC 3739; ETSI EN 319 412-5).
#include <algorithm>

#include "records/values.h"
#include "text/characters.h"
#include "text/integers.h"
#include "text/object_identifiers.h"

namespace tool {

namespace {

/// The types of what statements say, each under the display name of its statement.
constexpr ValueRow rows[] = {
    {"qcSyntax-v1", "pki_SemanticsInformation"},
    {"qcSyntax-v2", "pki_SemanticsInformation"},
    {"qcLimitValue", "pki_MonetaryValue"},
    {"qcRetentionPeriod", "pki_QcEuRetentionPeriod"},
    {"qcPDS", "pki_PdsLocations"},
    {"qcType", "pki_QcType"},
    {"qcCClegislation", "pki_QcCClegislation"},
};

std::string text_in(const ASN1String *string) { return printable(text_of(octets(string))); }

}  // namespace

// QCStatement ::= SEQUENCE { statementId, statementInfo OPTIONAL }
Node describe(const pki_QCStatement *statement, const View &view) {
  const std::string name = display_name(statement->statementId);
  const auto *const row = std::ranges::find(rows, std::string_view(name), &ValueRow::name);
  const Octets value = octets(statement->statementInfo);
  Inside inside;
  if (!value.empty() && row != std::end(rows)) inside = read_value(value, *row, view);
  Description fields(view);
  fields.field("statementId", statement->statementId);
  if (statement->statementInfo != nullptr)
    add_inside(fields, "statementInfo", describe(statement->statementInfo, view), inside);
  return with_lines(view, fields.node(), [&] {
    std::vector<std::string> lines{label(statement->statementId, view)};
    const Node &shown =
        !value.empty() && inside.node.empty() ? unknown_octets(value, view) : inside.node;
    const auto more = flat_lines(shown, view);
    if (more.size() == 1 && inside.malformed.empty())
      lines.front() += ", " + more.front();
    else
      for (const std::string &line : more) lines.push_back("  " + line);
    return lines;
  });
}

// SemanticsInformation ::= SEQUENCE { semanticsIdentifier OPTIONAL, nameRegistrationAuthorities
//   OPTIONAL }
Node describe(const pki_SemanticsInformation *semantics, const View &view) {
  return with_lines(view, Description(view).all("pki_SemanticsInformation", semantics).node(), [&] {
    std::vector<std::string> lines;
    if (semantics->semanticsIdentifier != nullptr)
      lines.push_back(label(semantics->semanticsIdentifier, view));
    const Node authorities =
        list_of("pki_GeneralName", semantics->nameRegistrationAuthorities, view);
    for (const std::string &line : flat_lines(authorities, view))
      lines.push_back("registered by " + line);
    return lines;
  });
}

// MonetaryValue ::= SEQUENCE { currency, amount, exponent }
Node describe(const pki_MonetaryValue *value, const View &view) {
  constexpr uint8_t letters = 19;
  const auto *const currency = value->currency->value;
  std::string line = number_text(value->amount);
  const std::string exponent = number_text(value->exponent);
  if (exponent != "0") line += " * 10^" + exponent;
  line += " " + (value->currency->kind == letters
                     ? text_in(static_cast<const ASN1String *>(currency))
                     : "(currency " + number_text(static_cast<const Integer *>(currency)) + ")");
  return shown_as(Description(view).all("pki_MonetaryValue", value).node(),
                  text(std::move(line), nullptr));
}

// PdsLocation ::= SEQUENCE { url, language }
Node describe(const pki_PdsLocation *location, const View &view) {
  return with_lines(view, Description(view).all("pki_PdsLocation", location).node(), [&] {
    return std::vector<std::string>{text_in(location->url) + " (" + text_in(location->language) +
                                    ")"};
  });
}

namespace {

Node years(const Integer *count) {
  Node node = number(count);
  return shown_as(std::move(node), text(number_text(count) + " years", nullptr));
}

}  // namespace

std::vector<Type> qualified_types() {
  return {
      {.syntax = "pki_QCStatements", .about = "the statements of a qualified certificate"},
      {.syntax = "pki_QCStatement",
       .about = "a statement of a qualified certificate",
       .by_hand = as<pki_QCStatement>},
      {.syntax = "pki_SemanticsInformation",
       .about = "what the attributes of a qualified certificate's names mean",
       .by_hand = as<pki_SemanticsInformation>},
      {.syntax = "pki_MonetaryValue",
       .about = "up to which value a qualified certificate is good",
       .hints = {{"amount", as<number>}, {"exponent", as<number>}},
       .by_hand = as<pki_MonetaryValue>},
      {.syntax = "pki_Iso4217CurrencyCode", .about = "a currency", .bare = true},
      {.syntax = "pki_QcEuRetentionPeriod",
       .about = "for how many years records are kept",
       .by_hand = as<years>},
      {.syntax = "pki_PdsLocation",
       .about = "where a disclosure statement is found",
       .by_hand = as<pki_PdsLocation>},
  };
}

}  // namespace tool
