#include "input/input.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "input/pem.h"
#include "text/characters.h"

namespace tool {

namespace {

/// A file descriptor that closes itself, unless it is standard input.
class Descriptor {
 public:
  explicit Descriptor(int fd) : fd_(fd) {}
  Descriptor(const Descriptor &) = delete;
  Descriptor &operator=(const Descriptor &) = delete;
  ~Descriptor() {
    if (fd_ > STDIN_FILENO) close(fd_);
  }
  int get() const { return fd_; }

 private:
  int fd_;
};

Bytes read_all(int fd, const std::string &name) {
  Bytes data;
  size_t used = 0;
  for (;;) {
    if (data.size() - used < 65536) data.resize(data.size() * 2 + 65536);
    const ssize_t count = ::read(fd, data.data() + used, data.size() - used);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throw std::system_error(errno, std::generic_category(), name);
    if (count == 0) break;
    used += static_cast<size_t>(count);
  }
  data.resize(used);
  return data;
}

/// Takes one DER element after the other. After a broken header the next element cannot be found,
/// and an identifier octet that no element of the file would have is rubbish. All that is left then
/// becomes one element with a fault.
class DerReader {
 public:
  explicit DerReader(Octets data) : data_(data) {}

  std::optional<Element> operator()() {
    if (at_ == data_.size()) return std::nullopt;
    const Octets rest = data_.subspan(at_);
    const Header header = read_header(rest);
    Element element;
    element.number = ++count_;
    element.offset = at_;
    element.octets = rest;
    if (!header.fault.empty()) {
      element.fault = Fault{0, header.fault};
    } else if (!may_follow(header.tag)) {
      element.fault =
          Fault{0, "expected the end or " + tag_name(data_[0]) + ", found " + tag_name(header.tag) +
                       ", with " + counted(rest.size(), "octet") + " left"};
    } else if (const auto size = element_size(rest, header)) {
      element.octets = rest.first(*size);
    } else {
      element.fault = Fault{0, "an indefinite length without its end-of-contents"};
    }
    at_ += element.octets.size();
    return element;
  }

 private:
  /// Whether an element after the first may have this identifier octet: that of the first, any
  /// constructed one, or, after a tagged one, another of the same class. Padding, line ends and
  /// the like are primitive and universal.
  bool may_follow(uint8_t tag) const {
    constexpr uint8_t class_bits = 0xC0;
    const uint8_t first = data_[0];
    const bool tagged = (first & class_bits) != 0;
    return tag == first || (tag & tag::constructed) != 0 ||
           (tagged && (tag & class_bits) == (first & class_bits));
  }

  Octets data_;
  size_t at_ = 0;
  size_t count_ = 0;
};

bool is_text(Octets data) {
  for (const uint8_t c : data.first(data.size() < 512 ? data.size() : 512))
    if ((c < 0x20 && !(c >= '\t' && c <= '\r')) || c == 0x7F) return false;
  return true;
}

/// Returns a reader of one element, whose fault says why the input holds no element.
std::function<std::optional<Element>()> no_element(std::string why) {
  return [why = std::move(why), taken = false]() mutable {
    std::optional<Element> element;
    if (std::exchange(taken, true)) return element;
    element.emplace().number = 1;
    element->fault = Fault{std::nullopt, why};
    return element;
  };
}

SharedMemory load(const std::string &file) {
  const Descriptor descriptor(file == "-" ? STDIN_FILENO
                                          : open(file.c_str(), O_RDONLY | O_CLOEXEC));
  if (descriptor.get() < 0) throw std::system_error(errno, std::generic_category(), file);
  const Bytes data = read_all(descriptor.get(), file);
  SharedMemory shared(data.size());
  std::ranges::copy(data, shared.octets().begin());
  return shared;
}

}  // namespace

Input::Input(const std::string &file)
    : name_(file == "-" ? "standard input" : file), data_(load(file)) {
  const std::span<uint8_t> data = data_.octets();
  if (data.empty())
    next_ = no_element("the input is empty");
  else if (is_pem(data))
    next_ = PemReader(data);
  else if (!read_header(data).fault.empty() && is_text(data))
    next_ = no_element("the input is neither PEM, which has a BEGIN line, nor DER");
  else
    next_ = DerReader(data);
}

std::vector<Element> Input::take(size_t most) {
  std::vector<Element> elements;
  while (elements.size() < most) {
    auto element = next_();
    if (!element) break;
    elements.push_back(std::move(*element));
  }
  return elements;
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
