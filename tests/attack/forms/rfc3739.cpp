#include "forms.h"

namespace attack {

namespace {

using support::element;
using support::hex;
using support::text;
using support::operator+;

Bytes sequence(const Bytes &content) { return element(0x30, content); }

const Bytes semantics = sequence(hex("06 07 04 00 8B EC 49 01 01") +
                                 sequence(element(0x86, text("http://example.org/"))));
const Bytes compliance = sequence(hex("06 06 04 00 8E 46 01 01"));
const Bytes with_semantics = sequence(hex("06 08 2B 06 01 05 05 07 0B 02") + semantics);
const Bytes euros = sequence(hex("13 03 45 55 52 02 01 05 02 01 03"));
const Bytes by_number = sequence(hex("02 02 03 D2 02 01 05 02 01 FF"));
const Bytes place = sequence(element(22, text("https://example.org/en.pdf")) + hex("13 02 65 6E"));

}  // namespace

std::vector<Form> rfc3739_forms() {
  return {
      {"pki_QCStatement", {compliance, with_semantics}},
      {"pki_QCStatements", {sequence(compliance + with_semantics)}},
      {"pki_SemanticsInformation",
       {semantics, sequence(hex("06 03 2A 03 04")), sequence(sequence(hex("82 01 61"))),
        sequence({})}},
      {"pki_Iso4217CurrencyCode", {hex("13 03 45 55 52"), hex("02 02 03 D2")}},
      {"pki_MonetaryValue", {euros, by_number}},
      {"pki_QcEuRetentionPeriod", {hex("02 01 0F")}},
      {"pki_PdsLocation", {place}},
      {"pki_PdsLocations", {sequence(place + place)}},
      {"pki_QcType", {sequence(hex("06 07 04 00 8E 46 01 06 01 06 07 04 00 8E 46 01 06 02"))}},
      {"pki_QcCClegislation", {sequence(hex("13 02 43 48 13 02 55 53"))}},
  };
}

}  // namespace attack
