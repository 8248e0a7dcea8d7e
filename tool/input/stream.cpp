#include "input/stream.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>

#include "input/record.h"
#include "input/text.h"
#include "system/output.h"
#include "text/characters.h"
#include "text/nearest.h"

namespace tool {

namespace {

using Kind = Format::Kind;

/// How many octets make a piece, and the most that are read at once.
constexpr size_t chunk = size_t{256} << 10;
constexpr size_t least_at_once = size_t{64} << 10;

/// The most octets of a record. A piece has whole records of less than a chunk, what was read of
/// the next one, and a chunk after that.
constexpr size_t longest = size_t{64} << 20;
static_assert(longest + 2 * chunk <= Workers::most);

/// What an origin holds, from the lowest bits on.
constexpr unsigned kind_bits = 7;
constexpr unsigned column_bits = 24;
constexpr unsigned flag_bits = 2;
constexpr uint64_t too_long_bit = 1;
constexpr uint64_t labelled_bit = 2;

/// How much is given of a record that is too long: its label, where it has one.
constexpr size_t start_of_long = size_t{64} << 10;

constexpr std::pair<std::string_view, Kind> names[] = {
    {"base64", Kind::base64}, {"csv", Kind::csv}, {"jsonl", Kind::jsonl},
    {"ct", Kind::ct},         {"pem", Kind::pem}, {"der", Kind::der}};

}  // namespace

std::optional<Format> Format::parse(std::string_view text) {
  const size_t colon = text.find(':');
  const std::string_view name = text.substr(0, colon);
  const auto *const row = std::ranges::find(names, name, [](const auto &one) { return one.first; });
  if (row == std::end(names)) return std::nullopt;
  Format format{row->second};
  if (colon != text.npos) format.part = text.substr(colon + 1);
  const bool has_part = format.kind == Kind::csv || format.kind == Kind::jsonl;
  if (has_part == format.part.empty()) return std::nullopt;
  if (format.kind != Kind::csv) return format;
  const char *const end = format.part.data() + format.part.size();
  const auto [stop, error] = std::from_chars(format.part.data(), end, format.column);
  if (error != std::errc() || stop != end)
    format.column = no_column;
  else if (format.column == 0 || format.column >= no_column)
    return std::nullopt;
  else
    --format.column;
  return format;
}

Cutter Format::cutter() const {
  switch (kind) {
    case Kind::pem:
      return cut_at_pem_blocks();
    case Kind::der:
      return cut_at_elements();
    case Kind::ct:
      return cut_at_objects();
    case Kind::csv:
      return cut_at_csv_lines();
    case Kind::unknown:
    case Kind::base64:
    case Kind::jsonl:
      break;
  }
  return cut_at_lines();
}

Stream::Stream(std::vector<std::string> files, Format format)
    : files_(std::move(files)), wanted_(std::move(format)) {
  if (files_.empty()) files_.emplace_back("-");
  source_.fill = [this](std::span<uint8_t> room, bool may_wait) { return fill(room, may_wait); };
}

Stream::~Stream() { close_file(); }

Stream::Origin Stream::origin(uint64_t number) const {
  Origin origin{number >> (flag_bits + kind_bits + column_bits), wanted_,
                (number & too_long_bit) != 0, (number & labelled_bit) != 0};
  origin.format.kind = static_cast<Kind>(number >> flag_bits & ((1U << kind_bits) - 1));
  origin.format.column = number >> (flag_bits + kind_bits) & ((1U << column_bits) - 1);
  return origin;
}

std::optional<uint64_t> Stream::size() const {
  uint64_t sum = 0;
  for (const std::string &file : files_) {
    struct stat about {};
    const int status = file == "-" ? fstat(STDIN_FILENO, &about) : stat(file.c_str(), &about);
    if (status != 0 || !S_ISREG(about.st_mode)) return std::nullopt;
    sum += static_cast<uint64_t>(about.st_size);
  }
  return sum;
}

size_t Stream::fill(std::span<uint8_t> room, bool may_wait) {
  for (;;) {
    if (descriptor_ < 0 && !open_next()) return 0;
    if (whole_ >= chunk) return give(room, whole_);
    if (!is_ready()) {
      if (whole_ != 0) return give(room, whole_);
      if (!may_wait) return Workers::later;
    }
    const bool is_more = read_more();
    cut();
    if (is_more && buffer_.size() - whole_ <= longest) continue;
    if (whole_ != 0) return give(room, whole_);
    if (is_more) {
      skips_ = true;
      return give(room, std::min(buffer_.size(), start_of_long), true);
    }
    const size_t rest = skips_ ? 0 : buffer_.size();
    close_file();
    if (rest != 0) {
      ++whole_units_;
      return give(room, rest);
    }
    buffer_.clear();
  }
}

/// Puts the start of the buffer into the room.
size_t Stream::give(std::span<uint8_t> room, size_t size, bool too_long) {
  std::memcpy(room.data(), buffer_.data(), size);
  if (!labelled_) {
    const size_t first = std::min(format_.cutter()(text_of(buffer_)), size);
    labelled_ = label_size(Octets(buffer_).first(first), format_) != 0;
  }
  source_.first_unit = units_;
  source_.origin =
      ((static_cast<uint64_t>(next_file_ - 1) << column_bits | format_.column) << kind_bits |
       static_cast<uint64_t>(format_.kind))
          << flag_bits |
      (too_long ? too_long_bit : 0) | (is_labelled() ? labelled_bit : 0);
  if (too_long) {
    ++units_;
    buffer_ = {};
    cut_ = 0;
    return size;
  }
  units_ += whole_units_;
  whole_units_ = 0;
  drop(size);
  whole_ = 0;
  if (buffer_.empty() && buffer_.capacity() > 4 * chunk) buffer_ = {};
  return size;
}

/// Opens the next file that can be read.
bool Stream::open_next() {
  while (next_file_ < files_.size()) {
    const std::string &file = files_[next_file_++];
    descriptor_ = file == "-" ? dup(STDIN_FILENO) : open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor_ >= 0) {
      begin();
      if (descriptor_ >= 0) return true;
      continue;
    }
    complain(printable(std::string_view(file)) + ": " + std::strerror(errno));
    all_well_ = false;
  }
  return false;
}

void Stream::begin() {
  source_.descriptor = descriptor_;
  units_ = 0;
  skips_ = false;
  format_ = wanted_;
  if (format_.kind == Kind::unknown) read_more();
  constexpr uint8_t sequence = 0x30;
  constexpr std::string_view dashes = "-----BEGIN ";
  if (format_.kind == Kind::unknown) {
    const std::string_view start = text_of(buffer_);
    if (start.substr(0, chunk).find(dashes) != start.npos)
      format_.kind = Kind::pem;
    else if (!start.empty() && buffer_[0] == sequence && !is_text(buffer_))
      format_.kind = Kind::der;
    else
      format_.kind = Kind::base64;
  }
  cutter_ = format_.cutter();
  if (format_.kind == Kind::csv && format_.column == Format::no_column) find_column();
}

/// Finds the column by the line that names all of them, and takes that line away.
void Stream::find_column() {
  Cutter lines = cut_at_csv_lines();
  size_t seen = 0;
  size_t size = goes_on;
  while (size == goes_on && buffer_.size() <= longest && read_more()) {
    size = lines(text_of(buffer_).substr(seen));
    if (size == goes_on) seen = buffer_.size();
  }
  const size_t end = size == goes_on ? buffer_.size() : seen + size;
  const auto columns = csv_fields(text_of(buffer_).substr(0, end));
  const auto column = std::ranges::find(columns, format_.part);
  drop(end);
  if (column != columns.end()) {
    format_.column = static_cast<size_t>(column - columns.begin());
    return;
  }
  complain(printable(std::string_view(files_[next_file_ - 1])) + ": no column has the name " +
           in_quotes(format_.part) + did_you_mean(format_.part, columns));
  all_well_ = false;
  buffer_.clear();
  close_file();
}

/// Takes octets away from the start of the buffer.
void Stream::drop(size_t size) {
  buffer_.erase(buffer_.begin(), buffer_.begin() + static_cast<std::ptrdiff_t>(size));
  cut_ -= std::min(cut_, size);
}

/// Reads what is there, but not much more than a chunk. Returns false at the end of the file.
bool Stream::read_more() {
  const size_t size = buffer_.size();
  const size_t most = std::max(chunk - std::min(whole_, chunk), least_at_once);
  buffer_.resize(size + most);
  ssize_t count = 0;
  do count = ::read(descriptor_, buffer_.data() + size, most);
  while (count < 0 && errno == EINTR);
  buffer_.resize(size + static_cast<size_t>(std::max<ssize_t>(count, 0)));
  if (count < 0) {
    complain(printable(std::string_view(files_[next_file_ - 1])) + ": " + std::strerror(errno));
    all_well_ = false;
  }
  octets_read_ += buffer_.size() - size;
  return count > 0;
}

/// Whether reading does not wait.
bool Stream::is_ready() const {
  pollfd end{descriptor_, POLLIN, 0};
  return poll(&end, 1, 0) != 0;
}

/// Finds the ends of records in what was read.
void Stream::cut() {
  while (cut_ < buffer_.size()) {
    const size_t size = cutter_(text_of(buffer_).substr(cut_));
    if (size == goes_on) {
      cut_ = buffer_.size();
      if (skips_) drop(cut_);
      break;
    }
    cut_ += size;
    if (skips_) {
      drop(cut_);
      skips_ = false;
      continue;
    }
    whole_ = cut_;
    ++whole_units_;
  }
}

void Stream::close_file() {
  if (descriptor_ >= 0) close(descriptor_);
  descriptor_ = -1;
}

}  // namespace tool
