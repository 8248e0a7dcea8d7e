#include "model/outline.h"

#include <utility>

#include "model/outline_faults.h"

namespace tool {

namespace {

using Kind = OutlineLine::Kind;

/// The walk over the elements of an input.
class Walk {
 public:
  Walk(Octets input, const pki_Type *type, const std::function<bool(const OutlineLine &)> &tell)
      : input_(input), grammar_(type), levels_(input.size()), tell_(tell) {}

  std::optional<OutlineFault> run() {
    while (goes_on_ && at_ < input_.size()) {
      step();
      close_levels();
    }
    close_levels();
    tell_faults([](const TypeFault &) { return true; });
    return first_;
  }

 private:
  Octets left() const { return input_.subspan(at_, levels_.top().end - at_); }

  void tell(const OutlineLine &line) {
    if (goes_on_) goes_on_ = tell_(line);
  }

  void tell_fault(const TypeFault &fault, size_t depth) {
    if (!first_) first_ = OutlineFault{fault.offset, fault.text(), fault.path};
    OutlineLine line;
    line.kind = Kind::fault;
    line.offset = fault.offset;
    line.depth = depth;
    line.text = fault.text();
    tell(line);
  }

  /// Tells what no type was there to find wrong, or not in time.
  void tell_own_fault(std::string why) {
    tell_fault({at_, grammar_.path(), std::move(why)}, levels_.depth());
  }

  /// Tells the faults that the test is true of. Returns whether there was one.
  template <class Test>
  bool tell_faults(Test test, size_t depth) {
    bool told = false;
    while (!faults_.empty()) {
      const auto fault = faults_.take(test);
      if (!fault) break;
      tell_fault(*fault, depth);
      told = true;
    }
    return told;
  }
  template <class Test>
  bool tell_faults(Test test) {
    return tell_faults(test, levels_.depth());
  }

  /// Reads the next element, or what is in its place.
  void step() {
    OutlineLine line;
    line.offset = at_;
    line.depth = levels_.depth();
    line.octets = left();
    line.header = ber::read_header(line.octets);
    line.same_path = std::exchange(same_path_, false);
    line.place = grammar_.next(levels_.depth(), line.octets[0]);
    if (line.place.begins != nullptr)
      faults_.expect(line.place.begins, input_, at_, levels_.top().end, grammar_.path(line.place),
                     line.place.fills);
    if (line.header.size == 0) return give_up(line.header.fault);
    if (line.header.identifier == 0) return give_up("a tag of 0, which no element has");
    if (!line.header.indefinite && !line.header.overlong)
      line.octets = line.octets.first(line.header.size + line.header.length);
    descend(line);
  }

  /// Tells an element, and goes into it or past it.
  void descend(OutlineLine &line) {
    const size_t start = at_ + line.header.size;
    const size_t end = line.header.indefinite ? levels_.top().end : at_ + line.octets.size();
    const Octets content = line.content();
    const auto inside = may_hold(line) ? string_content(line) : std::nullopt;
    line.holds = inside && (line.place.content != nullptr || ber::is_element(*inside));
    if (!faults_.empty()) tell_faults([&](const TypeFault &fault) { return fault.offset < at_; });
    tell(line);
    const bool told = !faults_.empty() && tell_faults([&](const TypeFault &fault) {
      return is_of(fault, line, start, end);
    });
    if (line.header.overlong && end != cut_) {
      if (!told) tell_own_fault(line.header.fault);
      cut_ = end;
    }
    if (line.header.identifier == tag::object_identifier)
      grammar_.note_identifier(levels_.depth(), content);
    if (line.header.constructed()) {
      at_ = start;
      same_path_ = line.place.wraps;
      levels_.open({end, line.header.indefinite});
      grammar_.open(levels_.depth(), line.place);
    } else if (line.holds) {
      at_ = end - inside->size();
      if (inside->empty())
        faults_.expect(line.place.content, input_, at_, end, grammar_.path(line.place), true);
      same_path_ = true;
      levels_.open({end, false});
      grammar_.open_string(levels_.depth(), line.place);
    } else if (line.header.overlong) {
      at_ = start;
      tell_rest();
    } else {
      at_ = end;
    }
  }

  /// Whether a fault belongs to an element from `at_` to `end`, whose content begins at `start`.
  bool is_of(const TypeFault &fault, const OutlineLine &line, size_t start, size_t end) const {
    const size_t place = fault.offset;
    if (place < at_) return false;
    if (place == at_) return on_one_way(fault.path, grammar_.path(line.place));
    if (place < start) return true;
    if (line.header.constructed() || line.holds) return false;
    return place < end || (place == end && start == end && fault.path == grammar_.path(line.place));
  }

  /// Whether the element is a string that may hold another.
  static bool may_hold(const OutlineLine &line) {
    const pki_Type *const type = line.place.type;
    return !line.header.constructed() && !line.header.overlong &&
           (line.meant() == tag::octet_string || line.meant() == tag::bit_string) &&
           (type == nullptr || pki_Type_kind(type) != PKI_TLS_LIST);
  }

  /// Returns the octets of a string, without the count of unused bits; nothing where some are.
  static std::optional<Octets> string_content(const OutlineLine &line) {
    const Octets content = line.content();
    if (line.meant() != tag::bit_string) return content;
    if (content.empty() || content[0] != 0) return std::nullopt;
    return content.subspan(1);
  }

  /// Closes the levels that end here.
  void close_levels() {
    while (goes_on_ && levels_.depth() != 0) {
      const ber::Levels::Level &level = levels_.top();
      const bool at_end = at_ == level.end;
      if (level.indefinite && !at_end && ber::ends_contents(left()))
        tell_end_of_contents();
      else if (!at_end)
        return;
      else if (level.indefinite && at_ != cut_)
        missing_end();
      close_level();
    }
  }

  void tell_end_of_contents() {
    OutlineLine line;
    line.kind = Kind::end_of_contents;
    line.offset = at_;
    line.depth = levels_.depth();
    line.header.size = 2;
    line.octets = left().first(2);
    tell(line);
    at_ += 2;
  }

  void missing_end() {
    cut_ = at_;
    const bool told = tell_faults([&](const TypeFault &fault) {
      return fault.offset == at_ && on_one_way(fault.path, grammar_.path());
    });
    if (!told) tell_own_fault("expected the end-of-contents");
  }

  /// Closes a level, and tells what it should still have had. What the level around it should not
  /// have is told with the element that comes next.
  void close_level() {
    const size_t depth = levels_.depth();
    levels_.close();
    if (!faults_.empty() && grammar_.knows(depth)) {
      const std::string &path = grammar_.path();
      const size_t fewest = path.size() + (at_ == levels_.top().end ? 0 : 1);
      tell_faults(
          [&](const TypeFault &fault) {
            return fault.offset == at_ && fault.path.size() >= fewest &&
                   on_one_way(fault.path, path);
          },
          depth);
    }
    grammar_.close(depth);
  }

  /// Tells why there is no element here, and what is left of the innermost element.
  void give_up(const std::string &why) {
    const bool told = tell_faults([&](const TypeFault &fault) { return fault.offset <= at_; });
    if (!told && levels_.top().end != cut_) tell_own_fault(why);
    tell_rest();
  }

  void tell_rest() {
    cut_ = levels_.top().end;
    OutlineLine line;
    line.kind = Kind::rest;
    line.offset = at_;
    line.depth = levels_.depth();
    line.octets = left();
    if (!line.octets.empty()) tell(line);
    at_ = cut_;
    // What is wrong in there was told.
    faults_.forget([&](const TypeFault &fault) { return fault.offset < at_; });
  }

  const Octets input_;
  Grammar grammar_;
  ber::Levels levels_;
  const std::function<bool(const OutlineLine &)> &tell_;
  TypeFaults faults_;
  std::optional<OutlineFault> first_;
  size_t at_ = 0;
  size_t cut_ = SIZE_MAX;  ///< the end of the octets that something in front of it left too few
  bool same_path_ = true;  ///< of the next element
  bool goes_on_ = true;
};

}  // namespace

uint8_t OutlineLine::meant() const {
  if (header.is_universal() || place.type == nullptr || place.wraps)
    return header.universal_number();
  return pki_Type_identifier(place.type) & tag::number_bits;
}

std::optional<OutlineFault> outline(Octets octets, const pki_Type *type,
                                    const std::function<bool(const OutlineLine &)> &tell) {
  return Walk(octets, type, tell).run();
}

}  // namespace tool
