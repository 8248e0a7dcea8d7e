// Inputs that are read as they come, record by record: for any size of input a fixed size of memory.
#ifndef ORVELASN1_TOOL_INPUT_STREAM_H
#define ORVELASN1_TOOL_INPUT_STREAM_H

#include "input/cutter.h"
#include "input/element.h"
#include "system/workers.h"

namespace tool {

/// What the records of an input are.
struct Format {
  enum class Kind : uint8_t { unknown, base64, csv, jsonl, ct, pem, der };
  Kind kind = Kind::unknown;  ///< unknown: what the input begins with says it
  std::string part{};         ///< the column of CSV, or the member of JSON, that holds the DER
  size_t column = 0;          ///< of CSV, counted from 0; `no_column` where the first line tells
  static constexpr size_t no_column = 0xFFFFFF;

  /// Reads "base64", "csv:3", "csv:cert", "jsonl:raw", "ct", "pem" or "der". Fails on other texts.
  static std::optional<Format> parse(std::string_view text);

  Cutter cutter() const;
};

/// Reads files one after the other, and cuts them into pieces of whole records.
class Stream {
 public:
  /// @param files "-" is standard input, and so are no files.
  Stream(std::vector<std::string> files, Format format);
  ~Stream();
  Stream(const Stream &) = delete;
  Stream &operator=(const Stream &) = delete;

  /// Returns what fills pieces. It complains about files that cannot be read.
  Workers::Source &source() { return source_; }

  /// What a worker knows of a piece by its origin.
  struct Origin {
    size_t file = 0;        ///< its number
    Format format;          ///< never unknown
    bool too_long = false;  ///< whether the only record is the start of one that is too long
    bool labelled = false;  ///< is_labelled()
  };
  Origin origin(uint64_t number) const;

  /// Whether the first record of all has a label. Known once a piece was filled.
  bool is_labelled() const { return labelled_.value_or(false); }

  /// Returns the name of a file, or "standard input".
  std::string_view name(size_t file) const {
    return files_[file] == "-" ? "standard input" : std::string_view(files_[file]);
  }

  bool all_well() const { return all_well_; }
  uint64_t octets_read() const { return octets_read_; }

  /// Returns the octets of all files, where that is known.
  std::optional<uint64_t> size() const;

 private:
  size_t fill(std::span<uint8_t> room, bool may_wait);
  size_t give(std::span<uint8_t> room, size_t size, bool too_long = false);
  bool open_next();
  bool read_more();
  bool is_ready() const;
  void begin();
  void find_column();
  void drop(size_t size);
  void cut();
  void close_file();

  std::vector<std::string> files_;
  Format wanted_;
  Workers::Source source_;
  size_t next_file_ = 0;
  int descriptor_ = -1;
  Format format_;     ///< of the open file
  Cutter cutter_;     ///< of the same
  Bytes buffer_;      ///< what was read and not given out
  size_t cut_ = 0;    ///< octets of it that are seen by the cutter
  size_t whole_ = 0;  ///< octets of it that are whole records
  uint64_t whole_units_ = 0;
  uint64_t units_ = 0;  ///< given out, of the open file
  bool skips_ = false;  ///< whether the record is too long
  std::optional<bool> labelled_;
  bool all_well_ = true;
  uint64_t octets_read_ = 0;
};

}  // namespace tool

#endif
