#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <utility>

#include "commands/commands.h"
#include "input/record.h"
#include "records/object_json.h"
#include "system/output.h"
#include "system/terminal.h"
#include "text/characters.h"

namespace tool {

namespace {

using Form = MapRequest::Form;

/// Returns how many processors this process may use, at most as many as there may be jobs.
size_t processors() {
  return std::clamp<size_t>(static_cast<size_t>(sysconf(_SC_NPROCESSORS_ONLN)), 1, 127);
}

/// Writes the lines of objects.
class LineWriter {
 public:
  explicit LineWriter(const MapRequest &request) : request_(request) {}

  /// @param labelled whether the lines have a column for labels. A label has one in any case.
  std::string operator()(const Object &object, bool labelled) const {
    if (request_.form != Form::json) return columns(object, labelled || !object.id.empty());
    std::string line;
    if (object.record == nullptr || request_.fields.empty()) {
      append_json(line, object, request_.view);
    } else {
      line += '{';
      if (!object.id.empty() && !has("id")) put(line, "id", valid_utf8(object.id));
      for (const Field *const field : request_.fields)
        put(line, field->name, json_of(field->of(object)));
      line += '}';
    }
    return std::move(line += '\n');
  }

  /// Returns the line that names the columns.
  std::string header(bool labelled) const {
    std::vector<std::string> names;
    if (labelled && !has("id")) names.emplace_back("id");
    for (const Field *const field : request_.fields) names.emplace_back(field->name);
    if (!has("error")) names.emplace_back("error");
    return line(names);
  }

 private:
  bool has(std::string_view field) const {
    return std::ranges::find(request_.fields, field, &Field::name) != request_.fields.end();
  }

  std::string columns(const Object &object, bool has_label) const {
    std::vector<std::string> values;
    for (const Field *const field : request_.fields) values.push_back(text_of(field->of(object)));
    if (!has("error"))
      values.push_back(object.fault == nullptr ? "" : text_with_offset(*object.fault));
    // A label comes first, as it stands, where it is not asked for at another place.
    std::string start;
    if (has_label && !has("id"))
      start = is_csv() ? csv(object.id) + "," : std::string(object.id) + "\t";
    return start + line(values);
  }

  static void put(std::string &line, std::string_view key, const Json &value) {
    append_key(line, key);
    value.append_to(line);
  }

  bool is_csv() const { return request_.form == Form::csv; }

  /// Returns the values in one line, whatever characters they have.
  std::string line(std::vector<std::string> &values) const {
    for (std::string &value : values)
      if (!is_csv())
        value = printable(std::string_view(value));
      else
        value =
            csv(is_safe(from_utf8(octets_of(value))) ? value : printable(std::string_view(value)));
    return joined(values, is_csv() ? "," : "\t") + "\n";
  }

  /// Returns a value as CSV has it (RFC 4180).
  static std::string csv(std::string_view value) {
    if (value.find_first_of(",\"\r\n") == value.npos) return std::string(value);
    std::string out = "\"";
    for (const char c : value) out += c == '"' ? "\"\"" : std::string(1, c);
    return out + "\"";
  }

  const MapRequest &request_;
};

/// Goes through the records of pieces, in a worker.
class RecordWorker {
 public:
  RecordWorker(const MapRequest &request, const Stream &stream)
      : request_(request), stream_(stream), write_(request) {}

  /// Answers for all records that are left.
  void work(Piece &piece) const {
    const Stream::Origin origin = stream_.origin(piece.origin());
    const Cutter cut = origin.format.cutter();
    while (!piece.rest().empty()) {
      const size_t size = origin.too_long ? goes_on : cut(text_of(piece.rest()));
      const Octets octets = piece.rest().first(std::min(size, piece.rest().size()));
      const size_t label = label_size(octets, origin.format);
      const auto record = piece.begin(octets.size(), label);
      if (origin.too_long)
        refuse(piece, origin, "the record is longer than 64 MiB");
      else
        answer(piece, origin, record.subspan(label));
    }
  }

  /// Answers for a record that ended a worker.
  void ended(Piece &piece, std::string_view words) const {
    refuse(piece, stream_.origin(piece.origin()),
           "the library ended its process: " + std::string(words.substr(0, words.find('\n'))));
  }

 private:
  Object start(const Piece &piece, const Stream::Origin &origin) const {
    Object object;
    object.file = stream_.name(origin.file);
    object.number = piece.unit() + 1;
    object.id = text_of(piece.kept());
    // Without its tab.
    if (!object.id.empty()) object.id.remove_suffix(1);
    return object;
  }

  void refuse(Piece &piece, const Stream::Origin &origin, std::string why) const {
    const Fault fault{std::nullopt, std::move(why)};
    Object object = start(piece, origin);
    object.fault = &fault;
    finish(piece, origin, object);
  }

  void answer(Piece &piece, const Stream::Origin &origin, std::span<uint8_t> record) const {
    const auto element = read_record(record, origin.format);
    if (!element) return piece.done({});
    Object object = start(piece, origin);
    object.octets = element->octets;
    // Nearly all are certificates: for these alone no other type is tried.
    if (may_be_certificate(*element)) {
      const auto certificate = decoded(pki_Certificate_d, pki_Certificate_free, object.octets);
      if (certificate) {
        object.type = certificate_type_;
        object.record = object.certificate = certificate.get();
        return finish(piece, origin, object);
      }
    }
    const Decoding decoding = decode(*element, request_.type);
    if (decoding.fault) object.fault = &*decoding.fault;
    if (!decoding.fault && decoding.record) {
      object.type = decoding.type;
      object.record = decoding.record->get();
      if (object.type == certificate_type_)
        object.certificate = static_cast<const Certificate *>(object.record);
    }
    finish(piece, origin, object);
  }

  bool may_be_certificate(const Element &element) const {
    const auto &labels = certificate_type_->labels;
    return !element.fault && (request_.type == nullptr || request_.type == certificate_type_) &&
           (element.label.empty() || std::ranges::find(labels, element.label) != labels.end());
  }

  void finish(Piece &piece, const Stream::Origin &origin, const Object &object) const {
    Piece::Counts counts{1, object.record == nullptr ? uint64_t{1} : 0};
    const bool wanted = !request_.condition || (*request_.condition)(object);
    if (wanted && !piece.write(write_(object, origin.labelled))) {
      const Fault fault{std::nullopt, "its line is longer than the room for it"};
      Object instead = object;
      instead.fault = &fault;
      instead.record = nullptr;
      instead.certificate = nullptr;
      counts.faults = 1;
      piece.write(write_(instead, origin.labelled));
    }
    piece.done(counts);
  }

  const MapRequest &request_;
  const Stream &stream_;
  LineWriter write_;
  const Type *certificate_type_ = type_named("certificate");
};

/// Says how far the run is, on a terminal, and what it came to.
class Progress {
 public:
  explicit Progress(const Stream &stream) : stream_(stream), size_(stream.size()) {}

  void add(Piece::Counts counts) {
    elements_ += counts.elements;
    faults_ += counts.faults;
    if (columns_ == 0 || (shown_ && Clock::now() - *shown_ < std::chrono::milliseconds(200)))
      return;
    shown_ = Clock::now();
    is_up_ = true;
    // A line that is wrapped would not be overwritten.
    write("\r" + (state() + bar()).substr(0, columns_ - 1) + erase_rest);
  }

  /// Makes room for a text on standard output, which may be the same terminal.
  void make_room(std::string_view text) {
    if (shares_terminal_ && !text.empty()) hide();
  }

  void hide() {
    if (std::exchange(is_up_, false)) write(std::string("\r") + erase_rest);
  }

  void end() {
    hide();
    complain(state());
  }

  uint64_t faults() const { return faults_; }

 private:
  using Clock = std::chrono::steady_clock;
  static constexpr const char *erase_rest = "\x1B[K";

  static void write(const std::string &text) { std::fputs(text.c_str(), stderr); }

  double seconds() const { return std::chrono::duration<double>(Clock::now() - start_).count(); }

  /// Returns "12 elements, 1 error, 0.1 s, 120 a second".
  std::string state() const {
    std::array<char, 64> rate{};
    std::snprintf(rate.data(), rate.size(), ", %.1f s, %.0f a second", seconds(),
                  static_cast<double>(elements_) / std::max(seconds(), 1e-9));
    return counted(elements_, "element") + ", " + counted(faults_, "error") + rate.data();
  }

  /// Returns "  [=====     ] 50 %, 12 s left" where the size of the input is known.
  std::string bar() const {
    if (size_.value_or(0) == 0 || stream_.octets_read() == 0) return "";
    constexpr size_t width = 20;
    const double share =
        std::min(1.0, static_cast<double>(stream_.octets_read()) / static_cast<double>(*size_));
    std::string done(static_cast<size_t>(share * width), '=');
    done.resize(width, ' ');
    std::array<char, 64> rest{};
    std::snprintf(rest.data(), rest.size(), "] %.0f %%, %.0f s left", 100 * share,
                  seconds() * (1 - share) / share);
    return "  [" + done + rest.data();
  }

  const Stream &stream_;
  std::optional<uint64_t> size_;
  size_t columns_ = message_columns();
  bool shares_terminal_ = columns_ != 0 && isatty(STDOUT_FILENO) != 0;
  Clock::time_point start_ = Clock::now();
  std::optional<Clock::time_point> shown_;
  bool is_up_ = false;
  uint64_t elements_ = 0;
  uint64_t faults_ = 0;
};

}  // namespace

bool map(const MapRequest &request) {
  Stream stream(request.files, request.format);
  const RecordWorker worker(request, stream);
  Progress progress(stream);
  bool is_named = !request.header;
  const auto name_columns = [&] {
    if (!std::exchange(is_named, true)) emit(LineWriter(request).header(stream.is_labelled()));
  };
  Workers::run(request.jobs == 0 ? processors() : request.jobs, stream.source(),
               {[&](Piece &piece) { worker.work(piece); },
                [&](Piece &piece, std::string_view words) { worker.ended(piece, words); },
                [&](std::string_view answer, Piece::Counts counts) {
                  progress.make_room(answer);
                  name_columns();
                  emit(answer);
                  progress.add(counts);
                }});
  name_columns();
  progress.end();
  return stream.all_well() && (!request.strict || progress.faults() == 0);
}

bool list_fields() {
  std::string out;
  for (const Field &field : fields()) {
    const std::string name(field.name);
    const std::string kind(name_of(field.kind));
    out += name + std::string(16 - name.size(), ' ') + kind + std::string(8 - kind.size(), ' ') +
           std::string(field.about) + "\n";
  }
  emit(out);
  return true;
}

}  // namespace tool
