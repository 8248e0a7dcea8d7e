// Prints docs/fields.md: what each encoder of liborvelasn1 does without a field, each in turn, in records that
// were decoded from the samples of the attacks; and the same for the forms of the RFCs.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "family.h"
#include "guard.h"

namespace {

using attack::Family;

enum class Outcome { left_out, fails, ends };

/// Pointers in a record, which are set to NULL for a while.
class TakenOut {
 public:
  TakenOut(void *record, const std::vector<uint32_t> &offsets) {
    for (const uint32_t offset : offsets) {
      char *const place = static_cast<char *>(record) + offset;
      void *value = nullptr;
      std::memcpy(&value, place, sizeof value);
      values_.emplace_back(place, value);
      set(place, nullptr);
    }
  }
  ~TakenOut() {
    for (const auto &[place, value] : values_) set(place, value);
  }
  TakenOut(const TakenOut &) = delete;
  TakenOut &operator=(const TakenOut &) = delete;

 private:
  static void set(char *place, void *value) { std::memcpy(place, &value, sizeof value); }

  std::vector<std::pair<char *, void *>> values_;
};

bool is_number(const pki_Field &field) {
  const pki_Kind kind = pki_Type_kind(field.type);
  return kind == PKI_BOOLEAN || kind == PKI_ENUMERATED;
}

Outcome encode(const Family &family, const void *record) {
  attack::Guard guard;
  uint32_t size = 0;
  if (!guard.run([&] { size = family.encode(nullptr, record); })) return Outcome::ends;
  return size == 0 ? Outcome::fails : Outcome::left_out;
}

/// A type's fields with what happens without them, in the order of the type.
struct Row {
  std::vector<std::string> fields;
  std::map<std::string, Outcome> outcomes;

  void add(const std::string &field, Outcome outcome) {
    const auto [place, is_new] = outcomes.emplace(field, outcome);
    if (is_new) fields.push_back(field);
    // A field that one sample needs is needed.
    place->second = std::max(place->second, outcome);
  }
  std::string list(Outcome outcome) const {
    std::string out;
    for (const std::string &field : fields)
      if (outcomes.at(field) == outcome) out += (out.empty() ? "" : ", ") + field;
    return out;
  }
};

void add_fields(const Family &family, void *record, Row &row) {
  const bool is_choice = pki_Type_kind(family.type) == PKI_CHOICE;
  for (uint32_t i = 0; i < pki_Type_field_count(family.type); ++i) {
    pki_Field field;
    pki_Type_field(family.type, i, &field);
    if (is_number(field) || (is_choice && *static_cast<uint8_t *>(record) != field.kind)) continue;
    std::vector<uint32_t> offsets;
    for (const uint32_t offset : {field.offset, field.text_offset, field.encoded_offset})
      if (offset != PKI_NO_MEMBER) offsets.push_back(offset);
    const TakenOut value(record, offsets);
    const Outcome outcome = encode(family, record);
    const bool is_list = pki_Type_element(field.type) != nullptr;
    const bool is_empty = is_list && field.presence == PKI_ALWAYS && outcome == Outcome::left_out;
    row.add(field.name + std::string(is_empty ? " (empty)" : ""), outcome);
  }
}

Row row_of(const Family &family) {
  Row row;
  for (const attack::Bytes &sample : family.samples) {
    void *record = nullptr;
    if (family.decode(sample.data(), sample.data() + sample.size(), 0, &record, 0) == nullptr)
      throw std::runtime_error(std::string(family.name) + ": a sample does not decode");
    add_fields(family, record, row);
    family.free(record);
  }
  return row;
}

bool has_row(const Family &family) {
  return family.type != nullptr && family.encode != nullptr && family.decode != nullptr &&
         pki_Type_field_count(family.type) != 0;
}

constexpr const char *head = R"(# What an encoder needs

A NULL pointer in a record is a field that is not there. These tables say what the encoder of each type does
then. A program makes them out of the library, field by field, and a test compares.

A field that a record has in several members, such as `issuerSequence`, `issuer` and `issuerEncoded`, is
missing where all of them are NULL. A list with the word "empty" is then written as an empty one. Numbers
inside a record are never missing. Of a CHOICE, the columns have the alternatives whose `value` is NULL.

## The forms of the RFCs

None of these encoders ends the process, also for a NULL record. Without a required field it returns 0, and
`pki_find_missing` names the field.

)";

constexpr const char *between = R"(
## liborvelasn1

The record of a SEQUENCE or a CHOICE must not be NULL.

)";

}  // namespace

int main() {
  std::map<std::string, Row> forms;
  std::map<std::string, Row> others;
  for (const Family &family : attack::families()) {
    if (!has_row(family)) continue;
    const std::string record = pki_Type_record(family.type);
    if (family.is_form())
      forms[record] = row_of(family);
    else
      others["asn1_" + record] = row_of(family);
  }
  std::fputs(head, stdout);
  std::puts("| Type | Required | May be NULL |\n|---|---|---|");
  for (const auto &[name, row] : forms) {
    if (!row.list(Outcome::ends).empty()) return 1;
    std::printf("| `%s` | %s | %s |\n", name.c_str(), row.list(Outcome::fails).c_str(),
                row.list(Outcome::left_out).c_str());
  }
  std::fputs(between, stdout);
  std::puts(
      "| Type | The process ends without | Returns 0 without | May be NULL |\n|---|---|---|---|");
  for (const auto &[name, row] : others)
    std::printf("| `%s` | %s | %s | %s |\n", name.c_str(), row.list(Outcome::ends).c_str(),
                row.list(Outcome::fails).c_str(), row.list(Outcome::left_out).c_str());
}
