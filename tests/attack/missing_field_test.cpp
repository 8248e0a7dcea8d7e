// What an encoder of an RFC's form does with a record that lacks a field.
#include <cstring>

#include "parameters.h"

namespace missing_field_test {

namespace {

using namespace attack;

/// A pointer in a record, which is set to NULL for a while.
class TakenOut {
 public:
  TakenOut(void *record, uint32_t offset) : place_(static_cast<char *>(record) + offset) {
    void *const nothing = nullptr;
    std::memcpy(&value_, place_, sizeof value_);
    std::memcpy(place_, &nothing, sizeof nothing);
  }
  ~TakenOut() { std::memcpy(place_, &value_, sizeof value_); }
  TakenOut(const TakenOut &) = delete;
  TakenOut &operator=(const TakenOut &) = delete;

  bool was_there() const { return value_ != nullptr; }

 private:
  char *place_;
  void *value_;
};

bool is_number(const pki_Field &field) {
  const pki_Kind kind = pki_Type_kind(field.type);
  const uint32_t size = pki_Type_size(field.type);
  return (kind == PKI_BOOLEAN || kind == PKI_ENUMERATED) && size != 0;
}

/// Checks the encodings of a record without the field and, where its octets are kept, without
/// these.
void expect_field_to_be_missed(const Family &family, void *record, const pki_Field &field) {
  SCOPED_TRACE(field.name);
  const uint32_t whole = family.encode(nullptr, record);
  const bool is_kept = field.encoded_offset != PKI_NO_MEMBER;
  const TakenOut kept(record, is_kept ? field.encoded_offset : field.offset);
  const TakenOut value(record, field.offset);
  const uint32_t rest = family.encode(nullptr, record);
  if (field.presence == PKI_ALWAYS) {
    EXPECT_EQ(0U, rest);
  } else if (kept.was_there()) {
    EXPECT_LT(0U, rest);
    EXPECT_GT(whole, rest);
  } else {
    EXPECT_EQ(whole, rest);
  }
}

/// Checks a CHOICE without a value, and one of a kind that there is not.
void expect_alternative_to_be_missed(const Family &family, void *record) {
  uint8_t *const kind = static_cast<uint8_t *>(record);
  bool is_null = false;
  for (uint32_t i = 0; i < pki_Type_field_count(family.type); ++i) {
    pki_Field field;
    pki_Type_field(family.type, i, &field);
    if (field.kind == *kind) is_null = pki_Type_kind(field.type) == PKI_NULL;
  }
  const TakenOut value(record, sizeof(void *));
  if (!is_null) {
    EXPECT_EQ(0U, family.encode(nullptr, record));
  }
  const uint8_t chosen = *kind;
  *kind = 0xFF;
  EXPECT_EQ(0U, family.encode(nullptr, record));
  *kind = chosen;
}

class MissingField : public OfAGroup {};

TEST_P(MissingField, IsNoEncodingOrAnotherOne) {
  for_each_sample([](const Family &family, const Bytes &sample) {
    if (!family.is_form() || family.type == nullptr) return;
    void *record = nullptr;
    ASSERT_NE(nullptr, family.decode(sample.data(), sample.data() + sample.size(), 0, &record, 0));
    if (pki_Type_kind(family.type) == PKI_CHOICE) {
      expect_alternative_to_be_missed(family, record);
    } else {
      for (uint32_t i = 0; i < pki_Type_field_count(family.type); ++i) {
        pki_Field field;
        pki_Type_field(family.type, i, &field);
        if (!is_number(field)) expect_field_to_be_missed(family, record, field);
      }
    }
    family.free(record);
  });
}

TEST_P(MissingField, LeavesANewRecordOfRequiredFieldsWithoutAnEncoding) {
  for (const Family *family : families_of(GetParam())) {
    if (!family->is_form() || family->create == nullptr) continue;
    SCOPED_TRACE(family->name);
    // Numbers are always there, and so is a CHOICE whose first alternative is NULL.
    const bool is_choice = pki_Type_kind(family->type) == PKI_CHOICE;
    bool is_filled = !is_choice;
    for (uint32_t i = 0; i < pki_Type_field_count(family->type); ++i) {
      pki_Field field;
      pki_Type_field(family->type, i, &field);
      if (is_choice) {
        is_filled = is_filled || (field.kind == 0 && pki_Type_kind(field.type) == PKI_NULL);
      } else {
        is_filled = is_filled && (field.presence != PKI_ALWAYS || is_number(field));
      }
    }
    void *const record = family->create();
    EXPECT_EQ(is_filled, family->encode(nullptr, record) != 0);
    EXPECT_EQ(0U, family->encode(nullptr, nullptr));
    family->free(record);
  }
}

INSTANTIATE_TEST_SUITE_P(Of, MissingField, testing::ValuesIn(groups()), title);

}  // namespace

}  // namespace missing_field_test
