#include "input/input.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "input/base64_reader.h"
#include "input/der_reader.h"
#include "input/formats.h"
#include "input/pem.h"
#include "input/text.h"
#include "text/characters.h"

namespace tool {

namespace {

using ElementReader = std::function<std::optional<Element>(Window &)>;

/// Returns a reader of one element, whose fault says why the input holds no element.
ElementReader no_element(std::string why) {
  return [why = std::move(why), taken = false](Window &) mutable {
    std::optional<Element> element;
    if (std::exchange(taken, true)) return element;
    element.emplace().number = 1;
    element->fault = Fault{std::nullopt, why};
    return element;
  };
}

/// Returns a reader of other octets than the window's.
template <class Reader>
ElementReader reader_of(std::span<uint8_t> data, Reader reader) {
  return [reader = std::move(reader), own = Window{data}](Window &) mutable { return reader(own); };
}

/// Returns a reader of base64 inside a text, which says why there is no element where there is
/// none.
ElementReader base64_or_else(std::span<uint8_t> text, std::string why) {
  return [reader = Base64Reader(text), otherwise = no_element(std::move(why)),
          found = false](Window &window) mutable {
    auto element = reader();
    if (element) found = true;
    return found ? element : otherwise(window);
  };
}

/// Whether data are one element from the first octet to the last.
bool is_one_element(Octets data) {
  const Header header = read_header(data);
  return header.fault.empty() && !header.indefinite && header.size + header.length == data.size();
}

/// Returns the reader of an input, by what it begins with. Fails where more of it must be read to
/// tell, or all of it.
ElementReader reader_of(Window &window) {
  // Other formats are told by fewer octets than these.
  constexpr size_t telling = 512;
  if (!window.is_last && (window.data.size() < telling || is_utf16(window.data))) return nullptr;
  if (window.data.empty()) return no_element("the input is empty");
  const std::span<uint8_t> data = without_mark(window.data);
  const bool has_pem = is_pem(data);
  const std::string foreign = has_pem ? "" : foreign_format(data);
  if (!window.is_last && !has_pem && (may_precede_pem(data) || is_text(data) || !foreign.empty()))
    return nullptr;
  window.data = data;
  if (has_pem) return PemReader();
  if (window.is_last && is_one_element(data)) return DerReader();
  if (!foreign.empty()) return no_element(foreign);
  if (!is_text(data)) return DerReader();
  if (const auto decoded = decode_base64(data))
    return is_pem(*decoded) ? reader_of(*decoded, PemReader()) : reader_of(*decoded, DerReader());
  return base64_or_else(data, "it is " + kind_of_text(data) +
                                  " without a BEGIN line (PEM) and without DER in base64, which is "
                                  "what this tool looks for in a text");
}

}  // namespace

Input::Input(const std::string &file, size_t step)
    : name_(file == "-" ? "standard input" : file),
      descriptor_(file == "-" ? STDIN_FILENO : open(file.c_str(), O_RDONLY | O_CLOEXEC)),
      step_(step) {
  if (descriptor_.get() < 0) throw std::system_error(errno, std::generic_category(), file);
  do read_more();
  while (!(next_ = reader_of(window_)));
}

Input::Input(std::string name, Octets data)
    : name_(std::move(name)), data_(data.begin(), data.end()), window_{data_} {
  next_ = reader_of(window_);
}

std::vector<Element> Input::take(size_t most, size_t octets) {
  std::vector<Element> taken;
  drop_taken();
  while (taken.size() < most && (taken.empty() || window_.at < octets)) {
    if (auto element = next_(window_)) {
      taken.push_back(std::move(*element));
      continue;
    }
    if (window_.is_last) break;
    // The views move with the data.
    const uint8_t *const before = window_.data.data();
    std::vector<std::ptrdiff_t> places;
    for (const Element &one : taken) places.push_back(one.octets.data() - before);
    read_more();
    for (size_t i = 0; i < taken.size(); ++i)
      if (!taken[i].octets.empty())
        taken[i].octets = {window_.data.data() + places[i], taken[i].octets.size()};
  }
  return taken;
}

void Input::read_all() {
  while (!window_.is_last) read_more();
}

/// Makes room for what follows the elements that were taken.
void Input::drop_taken() {
  if (window_.is_last) return;
  data_.erase(data_.begin(), data_.end() - std::ssize(window_.rest()));
  window_.start += window_.at;
  window_.at = 0;
  window_.data = data_;
}

/// Reads as much as there is already, but no less than a step.
void Input::read_more() {
  const size_t skipped = data_.size() - window_.data.size();
  size_t used = data_.size();
  data_.resize(used + std::max(used, step_));
  while (used < data_.size()) {
    const ssize_t count = ::read(descriptor_.get(), data_.data() + used, data_.size() - used);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throw std::system_error(errno, std::generic_category(), name_);
    if (count == 0) break;
    used += static_cast<size_t>(count);
  }
  window_.is_last = used < data_.size();
  if (window_.is_last) descriptor_.reset();
  data_.resize(used);
  window_.data = std::span(data_).subspan(skipped);
}

std::string Input::where(const Element &element) const {
  std::string text = printable(name_) + ": element " + std::to_string(element.number);
  if (element.line != 0) text += " (line " + std::to_string(element.line) + ")";
  return text;
}

std::string Input::where(const Element &element, const Fault &fault) const {
  if (!fault.offset) return where(element);
  return where(element) + ", offset " + std::to_string(element.offset + *fault.offset);
}

}  // namespace tool
