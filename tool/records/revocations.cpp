#include "records/revocations.h"

#include <algorithm>

#include "records/describe.h"
#include "records/type.h"
#include "text/characters.h"
#include "text/serials.h"

namespace tool {

namespace {

/// The last arcs of extensions under id-ce, 2.5.29.
enum : uint8_t {
  crl_number = 20,
  reason_code = 21,
  invalidity_date = 24,
  delta_crl_indicator = 27,
  issuing_point = 28,
  certificate_issuer = 29
};

/// Returns the value of an extension under id-ce; no octets where it is not there. Fails where the
/// extensions cannot be read.
std::optional<Octets> extension_value(const pki_Octets &extensions, uint8_t last_arc) {
  if (extensions.data == nullptr) return Octets();
  const uint8_t identifier[] = {0x55, 0x1D, last_arc};
  pki_ExtensionView extension;
  const int32_t found = pki_extension_view(extensions, identifier, sizeof identifier, &extension);
  if (found < 0) return std::nullopt;
  return found == 0 ? Octets() : octets_of(pki_view_content(extension.extnValue));
}

/// Returns the first directory name of a GeneralNames, a Name; no octets where there is none.
Octets directory_name(Octets general_names) {
  constexpr uint8_t directory = 0xA4;
  pki_Octets content =
      pki_view_content({general_names.data(), static_cast<uint32_t>(general_names.size())});
  pki_Octets name;
  while (pki_view_next(&content, &name) == 1)
    if (name.data[0] == directory) return octets_of(pki_view_content(name));
  return {};
}

/// Returns the content of an INTEGER; no octets where there are none. Fails for other octets.
std::optional<Octets> integer(const std::optional<Octets> &value) {
  if (!value || value->empty()) return value;
  if (!decoded(asn1_Integer_d, asn1_Integer_free, *value)) return std::nullopt;
  return octets_of(pki_view_content({value->data(), static_cast<uint32_t>(value->size())}));
}

bool is_epoch(Octets characters) { return text_of(characters).ends_with("700101000000Z"); }

}  // namespace

std::string Revocation::date_for_people() const {
  return date ? calendar(*date) + " UTC" : in_quotes(text_of(date_text));
}

bool Revocation::is_removal() const {
  constexpr int32_t remove_from_crl = 8;
  return reason == remove_from_crl;
}

std::optional<Seconds> Revocation::invalid_since() const {
  const auto value = extension_value(extensions, invalidity_date);
  if (!value || value->empty()) return std::nullopt;
  const auto time = decoded(asn1_Time_d, asn1_Time_free, *value);
  return seconds_of(time.get());
}

std::string reason_text(int32_t reason) {
  if (reason == Revocation::no_reason) return "no reason given";
  if (reason == Revocation::unreadable_reason) return "a reason that cannot be read";
  return reason_name(static_cast<uint32_t>(reason));
}

std::optional<RevocationList> RevocationList::open(Octets octets, std::optional<Fault> &fault) {
  RevocationList list;
  const uint8_t *const end = octets.data() + octets.size();
  if (pki_crl_open(&list.reader_, octets.data(), end) == 0) {
    fault = Syntax("pki_CertificateRevocationList").fault(octets);
    fault = fault ? Fault{fault->offset, "no CRL: " + fault->text}
                  : Fault{std::nullopt, "no CRL, or one with a part of more than 2 GiB"};
    return std::nullopt;
  }
  const Header header = read_header(octets);
  const size_t size = header.size + header.length;
  if (!header.indefinite && size < octets.size())
    fault = Fault{size, counted(octets.size() - size, "octet") + " left over after the CRL"};
  list.octets_ = octets;
  list.issuer_ = octets_of(list.reader_.issuer);
  list.this_update_ = octets_of(list.reader_.thisUpdate);
  list.next_update_ = octets_of(list.reader_.nextUpdate);
  return list;
}

std::vector<Fault> RevocationList::faults() const {
  std::vector<Fault> found;
  const auto is_well = [&](const char *part, Octets value, const char *type) {
    auto fault = Syntax(type).fault(value);
    if (!fault) return true;
    fault->offset = offset_of(value.data()) + fault->offset.value_or(0);
    fault->text.insert(0, std::string(part) + ": ");
    found.push_back(std::move(*fault));
    return false;
  };
  const auto check_time = [&](const char *part, Octets value) {
    if (!is_well(part, value, "Time")) return;
    const auto time = decoded(asn1_Time_d, asn1_Time_free, value);
    if (!seconds_of(time.get()))
      found.push_back(
          {offset_of(value.data()), part + (": " + time_text(time.get())) + " is no date"});
  };
  is_well("issuer", issuer_, "pki_RDNSequence");
  check_time("thisUpdate", this_update_);
  if (!next_update_.empty()) check_time("nextUpdate", next_update_);
  if (reader_.extensions.length == 0) return found;
  const Octets extensions = octets_of(pki_view_content(reader_.extensions));
  if (!is_well("crlExtensions", extensions, "pki_Extensions")) return found;
  for (const auto &[name, number] :
       {std::pair("cRLNumber", number()), std::pair("deltaCRLIndicator", base_number())})
    if (!number)
      found.push_back({offset_of(extensions.data()),
                       std::string("crlExtensions: the value of ") + name + " is no INTEGER"});
  if (const auto point = issuing_distribution_point(); point && !point->empty())
    is_well("issuingDistributionPoint", *point, "pki_IssuingDistributionPoint");
  return found;
}

std::optional<Octets> RevocationList::number() const {
  return integer(extension_value(reader_.extensions, crl_number));
}

std::optional<Octets> RevocationList::base_number() const {
  return integer(extension_value(reader_.extensions, delta_crl_indicator));
}

std::optional<Octets> RevocationList::issuing_distribution_point() const {
  return extension_value(reader_.extensions, issuing_point);
}

void RevocationList::for_each(const Job &job, const Refuse &refuse) const {
  pki_CrlReader reader = reader_;
  Octets issuer = issuer_;
  for (;;) {
    const pki_Octets before = reader.rest;
    pki_CrlEntry entry;
    const int32_t found = pki_crl_next(&reader, &entry);
    if (found == 0) return;
    if (found < 0) {
      const size_t offset = offset_of(before.data);
      const Syntax::Reading reading = Syntax("pki_CRLEntry").read(octets_of(before));
      refuse(reading.fault ? Fault{offset + reading.fault->offset.value_or(0), reading.fault->text}
                           : Fault{offset, "the octets are no entry"});
      pki_Octets skipped;
      if (pki_view_next(&reader.rest, &skipped) != 1) return;
      continue;
    }
    Revocation made;
    made.element = octets_of(before).first(before.length - reader.rest.length);
    made.serial = shortest(octets_of(entry.serialNumber));
    made.date_text = octets_of(entry.revocationDate);
    if (entry.revoked != 0 || is_epoch(made.date_text)) made.date = entry.revoked;
    made.reason = entry.reason;
    made.extensions = entry.extensions;
    if (entry.extensions.length != 0) {
      // An issuer holds for the entries after it, too (5.3.3).
      const auto other = extension_value(entry.extensions, certificate_issuer);
      if (other && !other->empty()) issuer = directory_name(*other);
      const auto reason = extension_value(entry.extensions, reason_code);
      if (entry.reason == PKI_NO_REASON && (!reason || !reason->empty()))
        made.reason = Revocation::unreadable_reason;
    }
    made.issuer = issuer;
    job(made);
  }
}

std::optional<Fault> RevocationList::fault(const Revocation &entry) const {
  static const Syntax syntax("pki_CRLEntry");
  const size_t offset = offset_of(entry.element.data());
  if (auto fault = syntax.fault(entry.element)) {
    fault->offset = offset + fault->offset.value_or(0);
    return fault;
  }
  if (!entry.date)
    return Fault{offset_of(entry.date_text.data()),
                 "the revocation date " + in_quotes(text_of(entry.date_text)) + " is no date"};
  if (entry.reason == Revocation::unreadable_reason)
    return Fault{offset, "the reason of the revocation is no CRLReason"};
  return std::nullopt;
}

}  // namespace tool
