#include "records/chain.h"

#include <orvelpki.h>

#include <algorithm>

#include "model/page.h"
#include "records/distinguished_names.h"
#include "text/characters.h"

namespace tool {

namespace {

constexpr uint8_t subject_key_identifier[] = {0x55, 0x1D, 0x0E};
constexpr uint8_t authority_key_identifier[] = {0x55, 0x1D, 0x23};

bool same(Octets one, Octets other) { return std::ranges::equal(one, other); }

/// Returns the value of an extension; no octets where it is not there.
Octets extension(const pki_CertificateView &view, Octets identifier) {
  pki_ExtensionView found;
  const int32_t there = pki_extension_view(view.extensions, identifier.data(),
                                           static_cast<uint32_t>(identifier.size()), &found);
  return there == 1 ? octets_of(pki_view_content(found.extnValue)) : Octets();
}

/// Returns the content of an element with these identifier octets; no octets for another one.
Octets content_of(Octets element, uint8_t identifier) {
  if (element.empty() || element[0] != identifier) return {};
  return octets_of(pki_view_content({element.data(), static_cast<uint32_t>(element.size())}));
}

std::string name_text(Octets name, const View &view) {
  const auto sequence = decoded(pki_RDNSequence_d, pki_RDNSequence_free, name);
  if (!sequence) return "(a name that cannot be read)";
  return List_len(sequence.get()) == 0 ? "(empty)" : one_line(sequence.get(), view);
}

}  // namespace

/// The members, each below its issuer.
struct Chain::Tree {
  enum class Place : uint8_t { inner, root, orphan, twin };
  struct Knot {
    Place place = Place::orphan;
    size_t above = 0;            ///< the issuer of an inner one, the first of twins
    std::vector<size_t> others;  ///< who may have issued it, too
    bool printed = false;
  };

  explicit Tree(const std::vector<Member> &all) : members(all), knots(all.size()) {
    for (size_t i = 0; i < members.size(); ++i) knots[i] = knot(i);
  }

  /// Whether the key identifiers do not speak against it.
  bool may_have_issued(const Member &issuer, const Member &one) const {
    return same(issuer.subject, one.issuer) &&
           (issuer.subject_key.empty() || one.authority_key.empty() ||
            same(issuer.subject_key, one.authority_key));
  }

  Knot knot(size_t i) const {
    const Member &one = members[i];
    const auto first = static_cast<size_t>(
        std::ranges::find_if(members, [&](const Member &m) { return same(m.whole, one.whole); }) -
        members.begin());
    if (first != i) return {Place::twin, first, {}, false};
    if (may_have_issued(one, one)) return {Place::root, i, {}, false};
    Knot made;
    for (size_t j = 0; j < members.size(); ++j) {
      if (j == i || !may_have_issued(members[j], one)) continue;
      const bool is_twin =
          std::ranges::any_of(members.begin(), members.begin() + static_cast<std::ptrdiff_t>(j),
                              [&](const Member &m) { return same(m.whole, members[j].whole); });
      if (is_twin) continue;
      if (made.place == Place::inner) {
        made.others.push_back(members[j].number);
      } else {
        made.place = Place::inner;
        made.above = j;
      }
    }
    return made;
  }

  void print(Page &page, size_t i, size_t depth, const View &view, const std::string &remark = {}) {
    knots[i].printed = true;
    std::string text = name_text(members[i].subject, view) + remark;
    for (const size_t number : knots[i].others)
      text += ", or issued by element " + std::to_string(number);
    page.row(std::string(2 * depth, ' ') + "element " + std::to_string(members[i].number),
             std::move(text));
    for (size_t j = 0; j < members.size(); ++j)
      if (knots[j].place == Place::inner && knots[j].above == i && !knots[j].printed)
        print(page, j, depth + 1, view);
  }

  /// Prints those whose issuer is not there, below what is missing.
  void print_orphans(Page &page, const View &view) {
    for (size_t i = 0; i < members.size(); ++i) {
      if (knots[i].place != Place::orphan || knots[i].printed) continue;
      std::string text = name_text(members[i].issuer, view);
      if (!members[i].authority_key.empty()) text += ", key " + hex(members[i].authority_key);
      page.row("missing", std::move(text), Tone::warning);
      for (size_t j = i; j < members.size(); ++j)
        if (knots[j].place == Place::orphan && same(members[j].issuer, members[i].issuer) &&
            same(members[j].authority_key, members[i].authority_key))
          print(page, j, 1, view);
    }
  }

  void print(Page &page, const View &view) {
    for (size_t i = 0; i < members.size(); ++i)
      if (knots[i].place == Place::root) print(page, i, 0, view, ", issued by itself");
    print_orphans(page, view);
    for (size_t i = 0; i < members.size(); ++i)
      if (knots[i].place == Place::inner && !knots[i].printed)
        print(page, i, 0, view,
              ", in a circle with element " + std::to_string(members[knots[i].above].number));
    for (size_t i = 0; i < members.size(); ++i)
      if (knots[i].place == Place::twin)
        page.row("element " + std::to_string(members[i].number),
                 "the same as element " + std::to_string(members[knots[i].above].number),
                 Tone::warning);
  }

  const std::vector<Member> &members;
  std::vector<Knot> knots;
};

void Chain::add(const Element &element) {
  pki_CertificateView view;
  const uint8_t *const start = element.octets.data();
  if (start == nullptr || element.fault) return;
  const uint8_t *const end = pki_certificate_view(start, start + element.octets.size(), &view);
  if (end == nullptr || ++count_ > most) return;
  const Bytes &own = certificates_.emplace_back(start, end);
  pki_certificate_view(own.data(), own.data() + own.size(), &view);
  const auto key = components(extension(view, authority_key_identifier), 1);
  members_.push_back({element.number, own, octets_of(view.subject), octets_of(view.issuer),
                      content_of(extension(view, subject_key_identifier), tag::octet_string),
                      key.empty() ? Octets() : content_of(key[0], tag::context)});
}

std::string Chain::page(const std::string &input, const View &view) const {
  if (count_ < 2) return {};
  Page page(view);
  const bool fits = count_ <= most;
  page.section("Chain",
               printable(std::string_view(input)) + ": " +
                   (fits ? "by names and key identifiers, not verified"
                         : std::to_string(count_) + " certificates, left out for more than " +
                               std::to_string(most)));
  if (fits) Tree(members_).print(page, view);
  return page.text() + "\n";
}

}  // namespace tool
