#include "input/cutter.h"

#include <algorithm>

namespace tool {

namespace {

size_t after(size_t place) { return place == std::string_view::npos ? goes_on : place + 1; }

/// Goes through quotation marks and line ends.
class CsvLines {
 public:
  size_t operator()(std::string_view octets) {
    for (size_t at = 0; (at = octets.find_first_of("\"\n", at)) != octets.npos; ++at) {
      if (octets[at] == '"')
        is_quoted_ = !is_quoted_;
      else if (!is_quoted_)
        return at + 1;
    }
    return goes_on;
  }

 private:
  bool is_quoted_ = false;
};

class Objects {
 public:
  size_t operator()(std::string_view octets) {
    size_t from = 0;
    if (!is_open_) {
      from = octets.find('{');
      if (from == octets.npos) return goes_on;
      is_open_ = true;
    }
    const size_t end = octets.find('}', from);
    if (end != octets.npos) is_open_ = false;
    return after(end);
  }

 private:
  bool is_open_ = false;
};

/// Looks for the words of an END line, then for its end.
class PemBlocks {
 public:
  size_t operator()(std::string_view octets) {
    for (size_t at = 0; at < octets.size(); ++at) {
      if (seen_ == words.size()) {
        const size_t end = octets.find('\n', at);
        if (end != octets.npos) seen_ = 0;
        return after(end);
      }
      if (seen_ == 0) {
        at = octets.find('-', at);
        if (at == octets.npos) break;
      }
      if (octets[at] == words[seen_])
        ++seen_;
      else if (octets[at] != '-')
        seen_ = 0;
      else if (seen_ > dashes)
        seen_ = 1;
    }
    return goes_on;
  }

 private:
  static constexpr std::string_view words = "-----END ";
  static constexpr size_t dashes = 5;
  size_t seen_ = 0;  ///< how many of their characters
};

/// Reads the header of an element, and counts its octets.
class Elements {
 public:
  size_t operator()(std::string_view octets) {
    size_t at = 0;
    while (left_ == 0 && at < octets.size()) {
      read(static_cast<uint8_t>(octets[at++]));
      if (read_ >= 2 && missing_ == 0 && left_ == 0) return next(at);
    }
    if (left_ > octets.size() - at) {
      left_ -= octets.size() - at;
      return goes_on;
    }
    return left_ == 0 ? goes_on : next(at + left_);
  }

 private:
  /// Takes an octet of the header.
  void read(uint8_t octet) {
    constexpr uint64_t never = UINT64_MAX;
    if (++read_ == 1) return;
    if (read_ == 2 && octet < 0x80) {
      left_ = octet;
    } else if (read_ == 2) {
      missing_ = octet & 0x7F;
      length_ = 0;
      if (missing_ == 0 || missing_ > 4) left_ = never;
    } else {
      length_ = length_ << 8 | octet;
      if (--missing_ == 0) left_ = length_;
    }
  }

  size_t next(size_t end) {
    *this = Elements();
    return end;
  }

  size_t read_ = 0;      ///< octets of the header
  size_t missing_ = 0;   ///< octets of the length
  uint64_t length_ = 0;  ///< as far as it is read
  uint64_t left_ = 0;    ///< octets of the content
};

}  // namespace

Cutter cut_at_lines() {
  return [](std::string_view octets) { return after(octets.find('\n')); };
}
Cutter cut_at_csv_lines() { return CsvLines(); }
Cutter cut_at_objects() { return Objects(); }
Cutter cut_at_pem_blocks() { return PemBlocks(); }
Cutter cut_at_elements() { return Elements(); }

}  // namespace tool
