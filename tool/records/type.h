// The types that an input may hold. Each family of syntaxes has a table of them after their
// descriptions; type.cpp lists the families. What reads, shows, traces or writes an element asks
// here how.
#ifndef ORVELASN1_TOOL_RECORDS_TYPE_H
#define ORVELASN1_TOOL_RECORDS_TYPE_H

#include "records/describe.h"
#include "records/syntax.h"

namespace tool {

/// What the tool knows of one type. The record is the one that `decode` makes. A row has the
/// members of the first block; type() adds those of the second.
struct Type {
  std::string_view name;                       ///< "certificate"
  std::string_view heading;                    ///< of its pages: "Certificate"
  std::string_view about;                      ///< one line for the list of types
  std::span<const std::string_view> labels{};  ///< of PEM blocks; the first is the one written
  const Syntax *syntax = nullptr;  ///< why octets are refused, and what is recognised by structure
  bool stands_alone = false;       ///< whether inputs without a label are recognised as this type
  /// Whether such an input has what it must have past the start of the syntax. Needed if many
  /// elements start like that.
  bool (*resembles)(Octets octets) = nullptr;
  /// Says why octets that follow the syntax are refused; nothing where that is not known.
  std::optional<Fault> (*explain)(Octets octets) = nullptr;
  /// Releases the encodings that the record keeps, so that the encoder runs over its fields.
  void (*forget_encodings)(void *record) = nullptr;
  /// Make a page and a short form in place of the ones made from the description.
  std::string (*page)(const void *record, const std::string &where, const View &view) = nullptr;
  std::string (*short_form)(const void *record, const View &view) = nullptr;

  const uint8_t *(*decode)(const uint8_t *z, const uint8_t *end, void **record,
                           uint32_t depth) = nullptr;
  uint32_t (*encode)(uint8_t **pp,
                     const void *record) = nullptr;  ///< null for a type that is only read
  void (*release)(void *record) = nullptr;
  Node (*describe)(const void *record, const View &view) = nullptr;

  std::string show(const void *record, const std::string &where, const View &view) const;
  std::string show_short(const void *record, const View &view) const;
};

/// Describes a T. type() takes this where nothing else is given.
template <class T>
Node describe_record(const T *record, const View &view) {
  return describe(record, view);
}

template <class T>
T *record_of(const uint8_t *(*)(const uint8_t *, const uint8_t *, uint32_t, T **, uint32_t));

/// Returns a row with the functions of its family. `encode_function` is null where there is no
/// encoder.
template <auto decode_function, auto encode_function, auto free_function,
          auto describe_function =
              describe_record<std::remove_pointer_t<decltype(record_of(decode_function))>>>
constexpr Type type(Type row) {
  using T = std::remove_pointer_t<decltype(record_of(decode_function))>;
  row.decode = [](const uint8_t *z, const uint8_t *end, void **record, uint32_t depth) {
    *record = take<T>(decode_function, free_function, z, end, 0, depth).release();
    return z;
  };
  if constexpr (!std::is_null_pointer_v<decltype(encode_function)>)
    row.encode = [](uint8_t **pp, const void *record) {
      return encode_function(pp, static_cast<const T *>(record));
    };
  row.release = [](void *record) { free_function(static_cast<T *>(record)); };
  row.describe = [](const void *record, const View &view) {
    return describe_function(static_cast<const T *>(record), view);
  };
  return row;
}

/// Releases an encoding that a record keeps besides its fields.
inline void forget(OctetString *&encoding) {
  asn1_OctetString_free(encoding);
  encoding = nullptr;
}

// The families, each in a file of its own.
std::span<const Type> universal_types();
std::span<const Type> certificate_types();
std::span<const Type> crl_types();
std::span<const Type> extension_types();
std::span<const Type> request_types();
std::span<const Type> ocsp_types();
std::span<const Type> key_types();
std::span<const Type> message_types();
std::span<const Type> exchange_types();
std::span<const Type> card_types();

/// Returns all types, in the order in which they are listed.
std::vector<const Type *> types();

/// Returns the type of this name, or null.
const Type *type_named(std::string_view name);

/// A record together with its type.
class Record {
 public:
  Record(const Type &type, void *record) : type_(&type), record_(record, type.release) {}

  const Type &type() const { return *type_; }
  const void *get() const { return record_.get(); }
  Bytes encode() const;
  void forget_encodings() {
    if (type_->forget_encodings != nullptr) type_->forget_encodings(record_.get());
  }

 private:
  const Type *type_;
  std::unique_ptr<void, void (*)(void *)> record_;
};

/// Says why octets are not of a type whose decoder refused them.
std::optional<Fault> refusal(const Type &type, Octets octets);

}  // namespace tool

#endif
