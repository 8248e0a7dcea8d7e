// The types that an input may hold. This list is the only place that knows them all: whatever reads,
// shows, traces or writes an element asks here how.
#ifndef ORVELASN1_TOOL_TYPES_H
#define ORVELASN1_TOOL_TYPES_H

#include "input.h"
#include "json.h"
#include "view.h"

namespace tool {

/// What the tool needs to know of one type. The record is the one that `decode` makes.
struct Type {
  std::string_view name;                     ///< "certificate"
  std::span<const std::string_view> labels;  ///< of PEM blocks; the first is the one written

  const uint8_t *(*decode)(const uint8_t *z, const uint8_t *end, void **record, uint32_t depth);
  uint32_t (*encode)(uint8_t **pp, const void *record);
  void (*release)(void *record);

  /// Releases the encodings that the record keeps, so that the encoder runs over its fields.
  void (*forget_encodings)(void *record);

  std::string (*show)(const void *record, const std::string &where, const View &view);
  std::string (*show_short)(const void *record, const View &view);
  /// The members of the JSON object that stand for the record.
  void (*put_json)(Json &object, const void *record, const View &view);

  /// Why the octets, which `decode` refused, are not of the type; nothing where that is not known.
  std::optional<Fault> (*explain)(Octets octets);
};

std::span<const Type> types();

/// The type of this name, or null.
const Type *type_named(std::string_view name);

/// The names of all types, for messages and the help.
std::vector<std::string> type_names();

/// A record together with its type.
class Record {
 public:
  Record(const Type &type, void *record) : type_(&type), record_(record, type.release) {}

  const Type &type() const { return *type_; }
  const void *get() const { return record_.get(); }
  Bytes encode() const;
  void forget_encodings() { type_->forget_encodings(record_.get()); }

 private:
  const Type *type_;
  std::unique_ptr<void, void (*)(void *)> record_;
};

/// What came of decoding an element.
struct Decoding {
  std::optional<Record> record;
  std::optional<Fault> fault;  ///< why there is no record, or what stands behind the element
};

/// The types that an element may be: that of its PEM label, or where it has none, `wanted`, or all
/// where that is null.
std::vector<const Type *> candidates(const Element &element, const Type *wanted);

/// Decodes an element as the first of its candidates that takes it.
Decoding decode(const Element &element, const Type *wanted);

}  // namespace tool

#endif
