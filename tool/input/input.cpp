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

using ElementReader = std::function<std::optional<Element>()>;

/// Returns a reader of one element, whose fault says why the input holds no element.
ElementReader no_element(std::string why) {
  return [why = std::move(why), taken = false]() mutable {
    std::optional<Element> element;
    if (std::exchange(taken, true)) return element;
    element.emplace().number = 1;
    element->fault = Fault{std::nullopt, why};
    return element;
  };
}

/// Returns a reader that says why there is no element where the other finds none.
ElementReader or_else(ElementReader reader, std::string why) {
  return [reader = std::move(reader), otherwise = no_element(std::move(why)),
          found = false]() mutable {
    auto element = reader();
    if (element) found = true;
    return found ? element : otherwise();
  };
}

/// Whether data are one element from the first octet to the last.
bool is_one_element(Octets data) {
  const Header header = read_header(data);
  return header.fault.empty() && !header.indefinite && header.size + header.length == data.size();
}

/// Returns the reader of an input, by what it begins with.
ElementReader reader_of(std::span<uint8_t> data) {
  if (data.empty()) return no_element("the input is empty");
  data = without_mark(data);
  if (is_pem(data)) return PemReader(data);
  if (is_one_element(data)) return DerReader(data);
  if (const std::string foreign = foreign_format(data); !foreign.empty())
    return no_element(foreign);
  if (!is_text(data)) return DerReader(data);
  if (const auto decoded = decode_base64(data))
    return is_pem(*decoded) ? ElementReader(PemReader(*decoded)) : DerReader(*decoded);
  return or_else(Base64Reader(data),
                 "it is " + kind_of_text(data) +
                     " without a BEGIN line (PEM) and without DER in base64, which is what this "
                     "tool looks for in a text");
}

SharedMemory shared(Octets data) {
  SharedMemory copy(data.size());
  std::ranges::copy(data, copy.octets().begin());
  return copy;
}

SharedMemory load(const std::string &file) {
  const Descriptor descriptor(file == "-" ? STDIN_FILENO
                                          : open(file.c_str(), O_RDONLY | O_CLOEXEC));
  if (descriptor.get() < 0) throw std::system_error(errno, std::generic_category(), file);
  return shared(read_all(descriptor.get(), file));
}

}  // namespace

Input::Input(const std::string &file)
    : name_(file == "-" ? "standard input" : file),
      data_(load(file)),
      next_(reader_of(data_.octets())) {}

Input::Input(std::string name, Octets data)
    : name_(std::move(name)), data_(shared(data)), next_(reader_of(data_.octets())) {}

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
