#include <algorithm>
#include <map>
#include <set>

#include "commands/batch.h"
#include "commands/commands.h"
#include "commands/json_lines.h"
#include "records/key_holders.h"
#include "system/output.h"
#include "text/characters.h"
#include "text/digest.h"

namespace tool {

namespace {

/// Something that has a key, and where it stands.
struct Place {
  std::string file;
  size_t element = 0;
  std::string where;
  KeyHolder holder;
};

/// Those that share a key.
struct Group {
  std::vector<Place> places;
  std::vector<Bytes> digests;  ///< of each form of SubjectPublicKeyInfo that it stands in
};

class Sorter {
 public:
  explicit Sorter(const KeyRequest &request) : request_(request) {}

  Answer run() {
    const std::vector<std::string> standard_input{"-"};
    for (const std::string &file : request_.files.empty() ? standard_input : request_.files)
      read(file);
    for (Group &group : groups_) add_digests(group);
    std::stable_partition(groups_.begin(), groups_.end(),
                          [](const Group &group) { return group.places.size() > 1; });
    for (const Group &group : groups_) emit(request_.json ? json_of(group) : page_of(group));
    if (!unknown_.empty()) emit(request_.json ? json_of_unknown() : page_of_unknown());
    if (trouble_) return Answer::unknown;
    if (groups_.size() > 1) return Answer::no;
    return groups_.size() == 1 && unknown_.empty() ? Answer::yes : Answer::unknown;
  }

 private:
  void read(const std::string &file) {
    try {
      Input input(file);
      constexpr size_t at_once = 64;
      size_t strangers = 0;
      for (auto elements = input.take(at_once); !elements.empty(); elements = input.take(at_once))
        for (const Element &element : elements) {
          strangers = add(input, element) ? 0 : strangers + 1;
          report_remark(input, element);
          if (strangers == most_strangers) return skip_rest(input, element);
        }
    } catch (const std::system_error &error) {
      report_file(file, error);
      trouble_ = true;
    }
  }

  void skip_rest(const Input &input, const Element &element) {
    complain(input.where(element) + ": the rest is skipped: " + std::to_string(most_strangers) +
             " elements in a row have no key");
    trouble_ = true;
  }

  /// Adds what has a key in an element. Returns whether there is something.
  bool add(const Input &input, const Element &element) {
    std::vector<KeyHolder> holders;
    if (!element.fault) holders = key_holders(element.octets);
    if (holders.empty() && element.label.ends_with("PRIVATE KEY"))
      holders.push_back({"private key",
                         "",
                         {},
                         false,
                         element.fault ? element.fault->text
                                       : "it is no key: if it is encrypted, decrypt it first"});
    // What stands beside a key in many files, and has none.
    if (element.label.ends_with("PARAMETERS") || element.label.ends_with("CRL")) return true;
    if (holders.empty()) {
      report(input, element,
             element.fault.value_or(
                 Fault{std::nullopt, "it has no key: \"orvelasn1 show\" tells what it is"}));
      trouble_ = true;
    }
    for (KeyHolder &holder : holders) {
      const std::string identity = holder.spki.empty() ? "" : key_identity(holder.spki);
      Place place{valid_utf8(input.name()), element.number, input.where(element),
                  std::move(holder)};
      if (place.holder.spki.empty()) {
        unknown_.push_back(std::move(place));
        continue;
      }
      const auto [at, is_new] = by_identity_.emplace(identity, groups_.size());
      if (is_new) groups_.emplace_back();
      groups_[at->second].places.push_back(std::move(place));
    }
    return !holders.empty();
  }

  /// Adds the pins of the forms that stand there, or else that of the one that was made.
  static void add_digests(Group &group) {
    const bool any =
        std::ranges::any_of(group.places, [](const Place &place) { return place.holder.stated; });
    std::set<Bytes> known;
    for (const Place &place : group.places) {
      if (any && !place.holder.stated) continue;
      const auto digest = sha256(place.holder.spki);
      Bytes octets(digest.begin(), digest.end());
      if (known.insert(octets).second) group.digests.push_back(std::move(octets));
    }
  }

  static std::string about(const KeyHolder &holder) {
    std::string text = holder.what;
    if (!holder.subject.empty()) text += ", " + holder.subject;
    if (!holder.why.empty()) text += ": " + holder.why;
    return text;
  }

  std::string page_of(const Group &group) const {
    Page page(request_.view);
    page.section(kind_of_key(group.places.front().holder.spki),
                 group.places.size() > 1 ? "" : "alone");
    for (const Bytes &digest : group.digests)
      page.row("pin (SHA-256)", {hex(digest), base64_line(digest)});
    for (const Place &place : group.places) page.row(place.where, about(place.holder));
    return page.text() + "\n";
  }

  std::string page_of_unknown() const {
    Page page(request_.view);
    page.section("Keys that are not known");
    for (const Place &place : unknown_) page.row(place.where, about(place.holder));
    return page.text() + "\n";
  }

  static Json json_of(const std::vector<Place> &places) {
    std::vector<Json> elements;
    for (const Place &place : places) {
      Json object = Json::object();
      object.put("file", place.file).put("element", place.element).put("what", place.holder.what);
      if (!place.holder.subject.empty()) object.put("subject", place.holder.subject);
      if (!place.holder.why.empty()) object.put("why", place.holder.why);
      elements.push_back(std::move(object));
    }
    return elements;
  }

  static std::string json_of(const Group &group) {
    std::vector<Json> digests;
    std::vector<Json> pins;
    for (const Bytes &digest : group.digests) {
      digests.emplace_back(hex(digest));
      pins.emplace_back("sha256//" + base64_line(digest));
    }
    Json object = Json::object();
    object.put("key", kind_of_key(group.places.front().holder.spki))
        .put("sha256", digests)
        .put("pins", pins)
        .put("elements", json_of(group.places));
    return object.text() + "\n";
  }

  std::string json_of_unknown() const {
    Json object = Json::object();
    object.put("key", nullptr).put("elements", json_of(unknown_));
    return object.text() + "\n";
  }

  const KeyRequest &request_;
  std::vector<Group> groups_;
  std::map<std::string, size_t> by_identity_;
  std::vector<Place> unknown_;
  bool trouble_ = false;
};

}  // namespace

Answer key(const KeyRequest &request) { return Sorter(request).run(); }

}  // namespace tool
