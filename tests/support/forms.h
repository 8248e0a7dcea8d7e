// Shared by the tests of the RFCs' forms.
#ifndef ORVELASN1_TESTS_FORMS_H
#define ORVELASN1_TESTS_FORMS_H

#include <orvelpki.h>

#include "records.h"

/// The functions of a form over a record.
#define FORM(T, Record)                                                      \
  support::RecordFamily<Record> {                                            \
    pki_##T##_new, pki_##T##_free, pki_##T##_e, pki_##T##_d, pki_##T##_clone \
  }

namespace support {

/// Checks that octets are refused, and that nothing is left in the place for the record.
template <class T>
void expect_form_refused(const RecordFamily<T> &family, const Bytes &octets) {
  SCOPED_TRACE(testing::PrintToString(octets));
  char before = 0;
  EXPECT_EQ(nullptr, left_by_refusal(family.decode, octets, reinterpret_cast<T *>(&before)));
}

/// Decodes the octets, and checks that the record and its copy are written as `written`.
template <class T>
Held<T> expect_written(const RecordFamily<T> &family, const Bytes &octets, const Bytes &written) {
  Held<T> record = decoded(family, octets);
  EXPECT_EQ(written, encoded(family, record));
  EXPECT_EQ(written, encoded(family, cloned(family, record)));
  return record;
}

/// The same for octets that come back.
template <class T>
Held<T> expect_kept(const RecordFamily<T> &family, const Bytes &octets) {
  return expect_written(family, octets, octets);
}

/// Returns element `index` of a list.
template <class T>
T &element_of(const List *list, int32_t index) {
  return *static_cast<T *>(List_get(list, index));
}

}  // namespace support

#endif
