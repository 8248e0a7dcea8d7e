#include <algorithm>
#include <map>

#include "commands/batch.h"
#include "commands/commands.h"
#include "commands/json_lines.h"
#include "records/crl_scope.h"
#include "records/distinguished_names.h"
#include "records/same_name.h"
#include "records/type.h"
#include "system/output.h"
#include "text/characters.h"
#include "text/integers.h"
#include "text/serials.h"

namespace tool {

namespace {

/// A serial number that is asked for, and the issuer where a certificate is asked for.
struct Question {
  std::string certificate;  ///< its file and number; empty for a serial number alone
  std::string note;         ///< for people, where the number is not found
  Bytes serial;
  Bytes octets;        ///< of the certificate
  std::string issuer;  ///< the identity of its issuer's name
  std::string who;     ///< the same name for people
  std::string remark;  ///< why a CRL of its issuer is not for it
  bool asked = false;  ///< whether there was a CRL that may have it
  bool found = false;  ///< whether the CRL that is read has it
};

std::string name_text(Octets name) {
  const auto sequence = decoded(pki_RDNSequence_d, pki_RDNSequence_free, name);
  return sequence ? one_line(sequence.get(), View()) : "a name that cannot be read";
}

/// The command, and what it knows so far.
class Search {
 public:
  explicit Search(const CrlRequest &request) : request_(request) {}

  Answer run() {
    for (const std::string &text : request_.serials) add_serial(text);
    for (const std::string &file : request_.certificates)
      for_each(file, [this](const Input &input, const Element &element, bool) {
        return add_certificate(input, element);
      });
    if (trouble_) return Answer::unknown;
    for (Question &question : questions_) by_serial_.emplace(text_of(question.serial), &question);
    for_each(request_.file, [this](const Input &input, const Element &element, bool many) {
      return read(input, element, many);
    });
    for (const Question &question : questions_)
      if (!question.asked && !trouble_)
        trouble(question.certificate + ": " +
                (question.remark.empty() ? printable(std::string_view(request_.file)) +
                                               " has no CRL of its issuer, " + question.who
                                         : question.remark) +
                ": ask the CRL that the certificate names");
    if (trouble_) return Answer::unknown;
    return revoked_ || questions_.empty() ? Answer::yes : Answer::no;
  }

 private:
  void trouble(const std::string &text) {
    complain(text);
    trouble_ = true;
  }

  /// Calls `job` for each element of a file. It returns whether the element is what it wants. Ends
  /// where `most_strangers` in a row are not.
  void for_each(const std::string &file,
                const std::function<bool(const Input &, const Element &, bool many)> &job) {
    try {
      Input input(file);
      constexpr size_t at_once = 2;
      std::vector<Element> elements = input.take(at_once);
      const bool many = elements.size() > 1;
      size_t strangers = 0;
      for (; !elements.empty(); elements = input.take(at_once))
        for (const Element &element : elements) {
          if (element.fault) report_fault(input, element, *element.fault);
          strangers = !element.fault && job(input, element, many) ? 0 : strangers + 1;
          report_remark(input, element);
          if (strangers == most_strangers)
            return trouble(input.where(element) + ": the rest is skipped: " +
                           std::to_string(most_strangers) + " elements in a row cannot be read");
        }
    } catch (const std::system_error &error) {
      report_file(file, error);
      trouble_ = true;
    }
  }

  void report_fault(const Input &input, const Element &element, const Fault &fault) {
    report(input, element, fault);
    trouble_ = true;
  }

  /// Reports the first faults of a list. Each of its entries may have one.
  void report_entry(const Input &input, const Element &element, const Fault &fault) {
    constexpr size_t most = 8;
    ++faults_;
    if (faults_ <= most) report_fault(input, element, fault);
    if (faults_ == most + 1)
      trouble(input.where(element) + ": further faults of its entries are not reported");
  }

  void add_serial(const std::string &text) {
    Question question;
    question.serial = serial_of(text).value_or(Bytes());
    question.asked = true;
    if (text.find_first_not_of("0123456789") == std::string::npos)
      question.note = " (dec:" + text + " would be the decimal number)";
    questions_.push_back(std::move(question));
  }

  bool add_certificate(const Input &input, const Element &element) {
    const uint8_t *const end = element.octets.data() + element.octets.size();
    pki_CertificateView view;
    if (pki_certificate_view(element.octets.data(), end, &view) == nullptr) {
      const auto fault = Syntax("pki_Certificate").fault(element.octets);
      report_fault(input, element, fault.value_or(Fault{0, "it is no certificate"}));
      return false;
    }
    const pki_Octets serial = pki_view_content(view.serialNumber);
    const Octets number = shortest(Octets(serial.data, serial.length));
    Question question;
    question.certificate = input.where(element);
    question.serial.assign(number.begin(), number.end());
    question.octets.assign(element.octets.begin(), element.octets.end());
    const Octets issuer(view.issuer.data, view.issuer.length);
    question.issuer = name_identity(issuer);
    question.who = name_text(issuer);
    questions_.push_back(std::move(question));
    return true;
  }

  bool read(const Input &input, const Element &element, bool many) {
    std::optional<Fault> fault;
    const auto list = RevocationList::open(element.octets, fault);
    if (fault) report_fault(input, element, *fault);
    if (!list) return false;
    faults_ = 0;
    if (questions_.empty())
      sum_up(input, element, *list);
    else
      search(input, element, *list, many);
    return true;
  }

  // ---- Questions --------------------------------------------------------------------------------

  void search(const Input &input, const Element &element, const RevocationList &list, bool many) {
    const std::string where = many ? input.where(element) + ": " : "";
    const CrlScope scope(list);
    for (Question &question : questions_) question.found = false;
    list.for_each(
        [&](const Revocation &entry) {
          const auto [first, last] = by_serial_.equal_range(text_of(entry.serial));
          for (auto at = first; at != last; ++at) {
            const std::string &issuer = at->second->issuer;
            if (!issuer.empty() && issuer != name_identity(entry.issuer)) continue;
            at->second->asked = at->second->found = true;
            revoked_ |= !entry.is_removal();
            if (const auto fault = list.fault(entry)) report_entry(input, element, *fault);
            emit(found_line(input, element, where, *at->second, entry,
                            !std::ranges::equal(entry.issuer, list.issuer())));
          }
        },
        [&](const Fault &fault) { report_entry(input, element, fault); });
    for (Question &question : questions_) {
      const bool is_certificate = !question.octets.empty();
      if (question.found || (is_certificate && !scope.is_of_issuer(question.octets))) continue;
      if (const auto why = is_certificate ? scope.why_not(question.octets) : ""; !why.empty()) {
        question.remark = input.where(element) + " is no CRL for it, since " + why;
        continue;
      }
      question.asked = true;
      emit(missing_line(input, element, where, question, scope));
      if (!scope.is_readable())
        trouble(input.where(element) +
                ": its issuing distribution point cannot be read: which certificates it is for is "
                "not known");
      if (scope.some_reasons())
        trouble(input.where(element) +
                ": it lists only what is revoked for some reasons: ask the CRL of the others, too");
      const auto base = list.base_number();
      if (!base)
        trouble(
            input.where(element) +
            ": its extensions cannot be read: whether it lists all that is revoked is not known");
      else if (!base->empty())
        trouble(
            input.where(element) +
            ": a delta CRL lists only what has changed: ask the CRL that it is based on, number " +
            hex(*base));
    }
  }

  static std::string subject(const Question &question) {
    return (question.certificate.empty() ? "" : question.certificate + ": ") + hex(question.serial);
  }

  Json answer(const Input &input, const Element &element, const Question &question,
              const Json &revoked) const {
    Json object = Json::object();
    object.put("file", valid_utf8(input.name()))
        .put("element", element.number)
        .put("serialNumber", hex(question.serial));
    if (!question.certificate.empty()) object.put("certificate", question.certificate);
    object.put("revoked", revoked);
    return object;
  }

  std::string found_line(const Input &input, const Element &element, const std::string &where,
                         const Question &question, const Revocation &entry, bool indirect) const {
    const auto invalid = entry.invalid_since();
    if (request_.json) {
      Json object = answer(input, element, question, !entry.is_removal());
      object.put("revocationDate", entry.date ? Json(iso(*entry.date)) : nullptr)
          .put("reason", entry.reason < 0 ? nullptr : Json(reason_text(entry.reason)));
      if (invalid) object.put("invalidityDate", iso(*invalid));
      if (indirect) object.put("certificateIssuer", name_text(entry.issuer));
      return object.text() + "\n";
    }
    std::string line = where + subject(question) +
                       (entry.is_removal() ? ": revoked no longer, since " : ": revoked on ") +
                       entry.date_for_people() + ", " + reason_text(entry.reason);
    if (invalid) line += ", not to be trusted from " + calendar(*invalid) + " UTC on";
    if (indirect) line += ", issued by " + name_text(entry.issuer);
    return line + "\n";
  }

  std::string missing_line(const Input &input, const Element &element, const std::string &where,
                           const Question &question, const CrlScope &scope) const {
    const bool sure = faults_ == 0;
    const auto &limits = scope.limits();
    if (request_.json) {
      Json object = answer(input, element, question, sure ? Json(false) : nullptr);
      put_limits(object, scope);
      return object.text() + "\n";
    }
    return where + subject(question) +
           (sure ? ": not revoked" : ": not among the entries that can be read") + question.note +
           (limits.empty() ? "" : ", in a CRL of limited scope: " + joined(limits)) + "\n";
  }

  static void put_limits(Json &object, const CrlScope &scope) {
    const auto &limits = scope.limits();
    if (!limits.empty()) object.put("scope", limits);
  }

  // ---- The summary ------------------------------------------------------------------------------

  void sum_up(const Input &input, const Element &element, const RevocationList &list);

  const CrlRequest &request_;
  std::vector<Question> questions_;
  std::multimap<std::string_view, Question *> by_serial_;
  size_t faults_ = 0;  ///< of the entries of the list that is read
  bool revoked_ = false;
  bool trouble_ = false;
};

void Search::sum_up(const Input &input, const Element &element, const RevocationList &list) {
  size_t entries = 0;
  std::map<int32_t, size_t> reasons;
  std::optional<Seconds> first;
  std::optional<Seconds> last;
  const auto refuse = [&](const Fault &fault) { report_entry(input, element, fault); };
  list.for_each(
      [&](const Revocation &entry) {
        ++entries;
        ++reasons[entry.reason];
        if (entry.date) {
          first = std::min(first.value_or(*entry.date), *entry.date);
          last = std::max(last.value_or(*entry.date), *entry.date);
        }
        if (const auto fault = list.fault(entry)) refuse(*fault);
      },
      refuse);
  const auto from = decoded(asn1_Time_d, asn1_Time_free, list.this_update());
  const auto until = decoded(asn1_Time_d, asn1_Time_free, list.next_update());
  const auto number = list.number();
  const auto base = list.base_number();
  const CrlScope scope(list);
  for (const Fault &fault : list.faults()) report_fault(input, element, fault);
  const auto present = [](const std::optional<Octets> &one) { return one && !one->empty(); };
  if (request_.json) {
    const auto date = [](const std::optional<Seconds> &one) {
      return one ? Json(iso(*one)) : Json(nullptr);
    };
    Json counts = Json::object();
    for (const auto &[reason, count] : reasons)
      counts.put(reason == Revocation::no_reason           ? "none"
                 : reason == Revocation::unreadable_reason ? "unreadable"
                                                           : reason_text(reason),
                 count);
    Json object = Json::object();
    object.put("file", valid_utf8(input.name()))
        .put("element", element.number)
        .put("issuer", name_text(list.issuer()))
        .put("thisUpdate", date(seconds_of(from.get())))
        .put("nextUpdate", date(seconds_of(until.get())));
    if (present(number)) object.put("crlNumber", hex(*number));
    if (present(base)) object.put("baseCrlNumber", hex(*base));
    put_limits(object, scope);
    object.put("entries", entries)
        .put("reasons", counts)
        .put("firstRevocation", date(first))
        .put("lastRevocation", date(last));
    return emit(object.text() + "\n");
  }
  Page page(request_.view);
  page.section("CertificateRevocationList", input.where(element));
  page.row("issuer", name_text(list.issuer()));
  page.row("thisUpdate", time_text(from.get(), " UTC"));
  Validity period{from.get(), until.get()};
  const Standing state = standing(&period, request_.view.moment);
  page.row("nextUpdate", time_text(until.get(), " UTC") + (until ? ", " + state.text() : ""),
           until ? tone_of(state) : Tone::plain);
  if (present(number)) page.row("crlNumber", hex(*number));
  if (present(base)) page.row("baseCrlNumber", hex(*base) + ", a delta CRL");
  if (!scope.limits().empty()) page.row("scope", scope.limits());
  page.row("entries", std::to_string(entries));
  if (first) page.row("firstRevocation", calendar(*first) + " UTC");
  if (last) page.row("lastRevocation", calendar(*last) + " UTC");
  std::vector<std::string> lines;
  for (const auto &[reason, count] : reasons)
    lines.push_back(std::to_string(count) + " " + reason_text(reason));
  if (!lines.empty()) page.row("reasons", std::move(lines));
  emit(page.text() + "\n");
}

}  // namespace

Answer crl(const CrlRequest &request) { return Search(request).run(); }

}  // namespace tool
