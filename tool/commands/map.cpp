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

/// Makes the lines of objects, one after the other in the same memory.
class LineWriter {
 public:
  explicit LineWriter(const MapRequest &request)
      : request_(request), has_id_(has("id")), has_error_(has("error")) {}

  /// Returns the line of an object, until the next call.
  /// @param labelled whether the lines have a column for labels. A label has one in any case.
  std::string_view operator()(const Object &object, bool labelled) {
    line_.clear();
    if (request_.form != Form::json) {
      append_columns(object, labelled || !object.id.empty());
    } else {
      append_object(object);
      line_ += '\n';
    }
    return line_;
  }

  /// Returns the line that names the columns, until the next call.
  std::string_view header(bool labelled) {
    line_.clear();
    if (labelled && !has_id_) append_column("id");
    for (const Field *const field : request_.fields) append_column(field->name);
    if (!has_error_) append_column("error");
    end_columns();
    return line_;
  }

 private:
  bool has(std::string_view field) const {
    return std::ranges::find(request_.fields, field, &Field::name) != request_.fields.end();
  }
  bool is_csv() const { return request_.form == Form::csv; }
  char separator() const { return is_csv() ? ',' : '\t'; }

  void append_object(const Object &object) {
    if (object.record == nullptr || request_.fields.empty())
      return append_json(line_, object, request_.view);
    line_ += '{';
    if (!object.id.empty() && !has_id_) put("id", valid_utf8(object.id));
    for (const Field *const field : request_.fields) put(field->name, json_of(field->of(object)));
    line_ += '}';
  }

  void put(std::string_view key, const Json &value) {
    append_key(line_, key);
    value.append_to(line_);
  }

  void append_columns(const Object &object, bool has_label) {
    // A label comes first, as it stands, where it is not asked for at another place.
    if (has_label && !has_id_) {
      if (is_csv())
        append_csv(object.id);
      else
        line_ += object.id;
      line_ += separator();
    }
    for (const Field *const field : request_.fields)
      append_column(text_of(field->of(object), room_));
    if (!has_error_) append_column(object.fault == nullptr ? "" : text_with_offset(*object.fault));
    end_columns();
  }

  /// Appends a column, whatever characters it has, and a separator.
  void append_column(std::string_view text) {
    if (!is_csv())
      append_printable(line_, text);
    else if (is_safe(text))
      append_csv(text);
    else
      append_csv(printable(text));
    line_ += separator();
  }

  /// Appends a value as CSV has it (RFC 4180).
  void append_csv(std::string_view value) {
    const auto is_special = [](char c) { return c == ',' || c == '"' || c == '\r' || c == '\n'; };
    if (std::ranges::none_of(value, is_special)) {
      line_ += value;
      return;
    }
    line_ += '"';
    for (const char c : value) {
      if (c == '"') line_ += '"';
      line_ += c;
    }
    line_ += '"';
  }

  /// Puts the line's end in the place of the last separator.
  void end_columns() { line_.back() = '\n'; }

  const MapRequest &request_;
  bool has_id_;
  bool has_error_;
  std::string line_;
  std::string room_;  ///< for the text of a value
};

/// Goes through the records of pieces, in a worker.
class RecordWorker {
 public:
  RecordWorker(const MapRequest &request, const Stream &stream)
      : request_(request), stream_(stream), write_(request) {}

  /// Answers for all records that are left.
  void work(Piece &piece) {
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
  void ended(Piece &piece, std::string_view words) {
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

  void refuse(Piece &piece, const Stream::Origin &origin, std::string why) {
    const Fault fault{std::nullopt, std::move(why)};
    Object object = start(piece, origin);
    object.fault = &fault;
    finish(piece, origin, object);
  }

  void answer(Piece &piece, const Stream::Origin &origin, std::span<uint8_t> record) {
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

  void finish(Piece &piece, const Stream::Origin &origin, const Object &object) {
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
  RecordWorker worker(request, stream);
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
