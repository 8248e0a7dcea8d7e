// The types that an input may hold, and how their values are read, shown, traced and written. Each
// family of syntaxes has a table of what the library's description of a type does not say; type.cpp
// lists the families.
#ifndef ORVELASN1_TOOL_RECORDS_TYPE_H
#define ORVELASN1_TOOL_RECORDS_TYPE_H

#include <orvelpki.h>

#include <cstring>

#include "input/der.h"
#include "records/describe.h"

namespace tool {

/// Returns the pointer in a member of a record.
inline void *pointer_at(const void *record, size_t offset) {
  void *value = nullptr;
  std::memcpy(&value, static_cast<const char *>(record) + offset, sizeof value);
  return value;
}

/// A type of the libraries: what reads, writes and releases its values.
struct Syntax {
  const pki_Type *type = nullptr;

  /// @param name as pki_Type_find() takes it.
  Syntax(const char *name) : type(type_called(name)) {}
  explicit Syntax(const pki_Type *of) : type(of) {}

  const pki_Functions &functions() const { return *pki_Type_functions(type); }

  /// What is wrong with octets, and where: the field, as in "extensions[3].extnValue".
  struct Refusal {
    size_t offset = 0;
    std::string path;
    std::string sentence;

    Fault fault() const { return {offset, (path.empty() ? "" : path + ": ") + sentence, path}; }
  };

  /// How far the decoder reads, and why no further; no fault where it takes a value. An input that
  /// would end the process has a fault.
  struct Reading {
    size_t reached = 0;
    std::optional<Fault> fault;
  };
  Reading read(Octets octets) const;

  /// Says why octets are not exactly one value; nothing where they are.
  std::optional<Refusal> refusal(Octets octets) const;
  std::optional<Fault> fault(Octets octets) const;

  /// Decodes a value, as the functions of the library do. Leaves no record where it fails.
  const uint8_t *decode(const uint8_t *z, const uint8_t *end, void **record, uint32_t depth) const;
  uint32_t encode(uint8_t **pp, const void *record) const;
  void release(void *record) const;

  Node describe(const void *record, const View &view) const;
};

/// How a field of a record is shown where its type alone does not say.
struct Hint {
  std::string_view field;
  Node (*describe)(const void *value, const View &view) = nullptr;  ///< null: as its type is
  bool in_brief = false;       ///< whether the short form shows it
  bool starts_period = false;  ///< whether it is the first of two times, of a period of validity
  const char *kept = "tbsEncoded";  ///< what JSON calls the octets that are kept of it
};

/// Hints, by what they say.
constexpr Hint brief(std::string_view field,
                     Node (*describe)(const void *value, const View &view) = nullptr) {
  return {field, describe, true};
}
constexpr Hint period(std::string_view field, bool in_brief = false) {
  return {field, nullptr, in_brief, true};
}

/// What the tool knows of one type.
struct Type {
  Syntax syntax;
  std::string_view about;                  ///< one line for the list of types
  std::string name{};                      ///< "certificate"; made of the ASN.1 name if not given
  std::string heading{};                   ///< of its pages: the ASN.1 name if not given
  std::vector<std::string_view> labels{};  ///< of PEM blocks; the first is the one written
  bool stands_alone = false;  ///< whether inputs without a label are recognised as this type
  /// Whether such an input has what it must have past the start of the syntax. Needed if many
  /// elements start like that.
  bool (*resembles)(Octets octets) = nullptr;
  /// Whether a page shows the alternative of a CHOICE without its name.
  bool bare = false;
  /// Whether its octets may hold a private key, so that they are shown on demand only.
  bool secret = false;
  std::vector<Hint> hints{};
  /// Describes a record, where hints do not suffice.
  Node (*by_hand)(const void *record, const View &view) = nullptr;
  /// An encoder in place of the one that the library's description names.
  uint32_t (*own_encode)(uint8_t **pp, const void *record) = nullptr;
  /// Make a page and a short form in place of the ones made from the description.
  std::string (*own_page)(const void *record, const std::string &where, const View &view) = nullptr;
  Brief (*own_short_form)(const void *record, const View &view) = nullptr;

  bool is_written() const { return own_encode != nullptr || syntax.functions().encode != nullptr; }
  Bytes encode(const void *record) const;
  Node describe(const void *record, const View &view) const;
  std::string show(const void *record, const std::string &where, const View &view) const;
  Brief show_short(const void *record, const View &view) const;
};

/// Returns the hint for a field; an empty one where the row, which may be null, has none.
Hint hint_for(const Type *row, const pki_Field &field);

template <class T>
Node call(Node (*function)(const T *, const View &), const void *value, const View &view) {
  return function(static_cast<const T *>(value), view);
}
template <class T>
Node call(Node (*function)(const T *), const void *value, const View &) {
  return function(static_cast<const T *>(value));
}

/// A function that describes a T, as rows and hints have it.
template <auto function>
Node as(const void *value, const View &view) {
  return call(function, value, view);
}
template <class T>
Node as(const void *record, const View &view) {
  return describe(static_cast<const T *>(record), view);
}

// The families, each in a file of its own.
std::vector<Type> universal_types();
std::vector<Type> certificate_types();
std::vector<Type> crl_types();
std::vector<Type> extension_types();
std::vector<Type> policy_types();
std::vector<Type> distribution_types();
std::vector<Type> timestamp_types();
std::vector<Type> resource_types();
std::vector<Type> qualified_types();
std::vector<Type> name_types();
std::vector<Type> request_types();
std::vector<Type> ocsp_types();
std::vector<Type> key_types();
std::vector<Type> algorithm_types();
std::vector<Type> message_types();
std::vector<Type> exchange_types();
std::vector<Type> card_types();

/// Returns all types, in the order in which they are listed. Types of the library that no family
/// has a row for come last.
const std::vector<Type> &types();

/// Returns the type of this name, or null.
const Type *type_named(std::string_view name);

/// Whether a type of the libraries is a SEQUENCE OF or SET OF.
bool is_list(const pki_Type *type);

/// Returns the row of a type of the libraries, or null for one that has none.
const Type *row_of(const pki_Type *type);

/// A record together with its syntax.
class Record {
 public:
  Record(const Syntax &syntax, void *record) : record_(record, Release{syntax}) {}

  const void *get() const { return record_.get(); }

  /// Releases the encodings that the record keeps, so that the encoder runs over its fields.
  void forget_encodings();

 private:
  struct Release {
    Syntax syntax;
    void operator()(void *record) const { syntax.release(record); }
  };
  std::unique_ptr<void, Release> record_;
};

}  // namespace tool

#endif
