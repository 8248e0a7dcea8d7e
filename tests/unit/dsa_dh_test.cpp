// Tests DSA and Diffie-Hellman parameters, and DSA signatures.
#include "records.h"

namespace dsa_dh_test {

namespace {

using namespace support;

constexpr RecordFamily<DssParms> dss_parms = {
    asn1_DssParms_new, asn1_DssParms_free, asn1_DssParms_e, asn1_DssParms_d, asn1_DssParms_clone};
constexpr RecordFamily<DssSigValue> dss_signatures = {asn1_DssSigValue_new, asn1_DssSigValue_free,
                                                      asn1_DssSigValue_e, asn1_DssSigValue_d,
                                                      asn1_DssSigValue_clone};
constexpr RecordFamily<ValidationParms> validations = {
    asn1_ValidationParms_new, asn1_ValidationParms_free, asn1_ValidationParms_e,
    asn1_ValidationParms_d, asn1_ValidationParms_clone};
constexpr RecordFamily<DomainParameters> domains = {
    asn1_DomainParameters_new, asn1_DomainParameters_free, asn1_DomainParameters_e,
    asn1_DomainParameters_d, asn1_DomainParameters_clone};

const Bytes one = hex("02 01 01");
const Bytes two = hex("02 01 02");
const Bytes three = hex("02 01 03");
const Bytes four = hex("02 01 04");
const Bytes validation_content = hex("03 03 00 AB CD 02 01 08");
const Bytes validation = sequence(validation_content);

// ------------------------------------------------------------------------------------------ DssParms

TEST(DsaParameters, AreThreeNumbersInOrder) {
  const Bytes content = one + two + three;
  const auto record = decoded(dss_parms, sequence(content));
  EXPECT_EQ(1U, asn1_Integer_get(record->p));
  EXPECT_EQ(2U, asn1_Integer_get(record->q));
  EXPECT_EQ(3U, asn1_Integer_get(record->g));
  EXPECT_EQ(sequence(content), encoded(dss_parms, record));

  expect_new_record_is_zero(dss_parms);
  expect_sequence_of_definite_length(dss_parms, content);
  expect_every_cut_refused(dss_parms, content);
  expect_huge_lengths_refused(dss_parms, content);
}

TEST(DsaParameters, LeaveAFourthNumberUnread) {
  decoded(dss_parms, sequence(one + two + three + four), 3);
}

TEST(DsaParameters, AreNotEncodedWithoutAnyOfTheNumbers) {
  for (Integer *DssParms::*number : {&DssParms::p, &DssParms::q, &DssParms::g}) {
    const auto record = decoded(dss_parms, sequence(one + two + three));
    clear((*record).*number, asn1_Integer_free);
    expect_nothing_written(dss_parms, record.get());
  }
}

TEST(DsaParameters, AreClonedDeeplyAndHalfFilled) {
  expect_deep_clone(dss_parms, sequence(one + two + three));
  const auto half = created(dss_parms);
  half->q = asn1_Integer_set(2);
  const auto copy = cloned(dss_parms, half);
  EXPECT_EQ(nullptr, copy->p);
  EXPECT_EQ(2U, asn1_Integer_get(copy->q));
  EXPECT_EQ(nullptr, copy->g);
}

// --------------------------------------------------------------------------------------- DssSigValue

TEST(DsaSignature, IsTwoNumbersInOrder) {
  const Bytes content = one + two;
  const auto record = decoded(dss_signatures, sequence(content));
  EXPECT_EQ(1U, asn1_Integer_get(record->r));
  EXPECT_EQ(2U, asn1_Integer_get(record->s));
  EXPECT_EQ(sequence(content), encoded(dss_signatures, record));

  expect_new_record_is_zero(dss_signatures);
  expect_sequence_of_definite_length(dss_signatures, content);
  expect_every_cut_refused(dss_signatures, content);
  expect_huge_lengths_refused(dss_signatures, content);
  expect_deep_clone(dss_signatures, sequence(content));
}

TEST(DsaSignature, NeedsTwoNumbersAndLeavesAThirdUnread) {
  expect_refused(dss_signatures, sequence(one));
  expect_refused(dss_signatures, sequence(one) + two);
  const auto record = decoded(dss_signatures, sequence(one + two + three), 3);
  EXPECT_EQ(sequence(one + two), encoded(dss_signatures, record));
}

TEST(DsaSignature, IsWrittenInTheShortestForm) {
  const struct {
    const char *read;
    const char *written;
  } rows[] = {
      {"02 02 00 C1", "02 02 00 C1"},        // the zero is needed for the sign
      {"02 02 00 41", "02 01 41"},           //
      {"02 04 00 00 00 C1", "02 02 00 C1"},  //
      {"02 01 C1", "02 01 C1"},              // negative, and kept so
      {"02 02 FF C1", "02 02 FF C1"},        //
      {"02 81 01 05", "02 01 05"},           //
      {"02 01 00", "02 01 00"},              //
      {"02 03 00 00 00", "02 01 00"},        //
  };
  for (const auto &row : rows) {
    const auto r = decoded(dss_signatures, sequence(hex(row.read) + two));
    EXPECT_EQ(sequence(hex(row.written) + two), encoded(dss_signatures, r)) << row.read;
    const auto s = decoded(dss_signatures, sequence(one + hex(row.read)));
    EXPECT_EQ(sequence(one + hex(row.written)), encoded(dss_signatures, s)) << row.read;
  }
}

TEST(DsaSignature, IsNotEncodedWithoutBothNumbers) {
  for (Integer *DssSigValue::*number : {&DssSigValue::r, &DssSigValue::s}) {
    const auto record = decoded(dss_signatures, sequence(one + two));
    clear((*record).*number, asn1_Integer_free);
    expect_nothing_written(dss_signatures, record.get());
  }
}

// ----------------------------------------------------------------------------------- ValidationParms

TEST(DhValidation, IsASeedAndACounter) {
  const auto record = decoded(validations, validation);
  EXPECT_EQ(16U, record->seed->length);
  EXPECT_EQ(hex("AB CD"), value(record->seed));
  EXPECT_EQ(8U, asn1_Integer_get(record->pgenCounter));
  EXPECT_EQ(validation, encoded(validations, record));

  expect_new_record_is_zero(validations);
  expect_sequence_of_definite_length(validations, validation_content);
  expect_every_cut_refused(validations, validation_content);
  expect_huge_lengths_refused(validations, validation_content);
  for (const char *content : {"02 01 08 03 02 00 AB", "03 00 02 01 08", "03 02 08 AB 02 01 08",
                              "04 02 AB CD 02 01 08", "03 02 00 AB 0A 01 08"}) {
    expect_refused(validations, sequence(hex(content)));
  }
}

TEST(DhValidation, LosesZeroBitsAtTheEndOfTheSeed) {
  const struct {
    const char *read;
    const char *written;
  } rows[] = {{"03 03 00 AB 00", "03 02 00 AB"},
              {"03 03 00 AB C0", "03 03 06 AB C0"},
              {"03 02 00 00", "03 01 00"}};
  for (const auto &row : rows) {
    const auto record = decoded(validations, sequence(hex(row.read) + one));
    EXPECT_EQ(sequence(hex(row.written) + one), encoded(validations, record)) << row.read;
  }
}

TEST(DhValidation, IsNotEncodedWithoutBothFields) {
  const auto without_seed = decoded(validations, validation);
  clear(without_seed->seed, asn1_BitString_free);
  expect_nothing_written(validations, without_seed.get());

  const auto without_counter = decoded(validations, validation);
  clear(without_counter->pgenCounter, asn1_Integer_free);
  expect_nothing_written(validations, without_counter.get());
}

TEST(DhValidation, IsClonedDeeplyAndHalfFilled) {
  expect_deep_clone(validations, validation);
  const auto half = created(validations);
  half->seed = asn1_BitString_new(4);
  const auto copy = cloned(validations, half);
  EXPECT_EQ(4U, copy->seed->length);
  EXPECT_EQ(nullptr, copy->pgenCounter);
}

// ---------------------------------------------------------------------------------- DomainParameters

/// Returns a record by hand. A field without octets is not set.
Held<DomainParameters> domain(const Bytes &q, const Bytes &j, const Bytes &with_validation) {
  auto record = created(domains);
  record->p = asn1_Integer_set(1);
  record->g = asn1_Integer_set(2);
  if (!q.empty()) record->q = decode(asn1_Integer_d, q).record;
  if (!j.empty()) record->j = decode(asn1_Integer_d, j).record;
  if (!with_validation.empty()) {
    record->validationParms = decode(asn1_ValidationParms_d, with_validation).record;
  }
  return record;
}

TEST(DhParameters, MayEndBehindEachField) {
  const Bytes content = one + two + three + four + validation;
  for (const size_t size : {size_t{6}, size_t{9}, size_t{12}, content.size()}) {
    const Bytes octets =
        sequence(Bytes(content.begin(), content.begin() + static_cast<std::ptrdiff_t>(size)));
    const auto record = decoded(domains, octets);
    EXPECT_EQ(1U, asn1_Integer_get(record->p));
    EXPECT_EQ(2U, asn1_Integer_get(record->g));
    EXPECT_EQ(size >= 9, record->q != nullptr);
    EXPECT_EQ(size >= 12, record->j != nullptr);
    EXPECT_EQ(size > 12, record->validationParms != nullptr);
    EXPECT_EQ(octets, encoded(domains, record));
  }
}

TEST(DhParameters, HoldEachFieldInOrder) {
  const auto record = decoded(domains, sequence(one + two + three + four + validation));
  EXPECT_EQ(3U, asn1_Integer_get(record->q));
  EXPECT_EQ(4U, asn1_Integer_get(record->j));
  EXPECT_EQ(validation, encode(asn1_ValidationParms_e, record->validationParms));
}

TEST(DhParameters, AreASequenceOfDefiniteLength) {
  const Bytes content = one + two + three + four + validation;
  expect_new_record_is_zero(domains);
  expect_sequence_of_definite_length(domains, content);
  expect_every_cut_refused(domains, content, {6, 9, 12});
  expect_huge_lengths_refused(domains, content);
}

TEST(DhParameters, AreWrittenInFormsThatAreNotReadBack) {
  const struct {
    Bytes q, j, validation;
    bool read;
  } rows[] = {
      {{}, {}, {}, true},
      {three, {}, {}, true},
      {three, four, {}, true},
      {three, four, validation, true},
      {{}, {}, validation, false},
      {three, {}, validation, false},
      {{}, four, {}, true},  // read, though not as it was written
      {{}, four, validation, false},
  };
  for (const auto &row : rows) {
    const Bytes octets = sequence(one + two + row.q + row.j + row.validation);
    EXPECT_EQ(octets, encoded(domains, domain(row.q, row.j, row.validation)));
    if (row.read) {
      decoded(domains, octets);
    } else {
      expect_refused(domains, octets);
    }
  }
}

TEST(DhParameters, ReadAJThatFollowsNoQAsTheQ) {
  const auto record = decoded(domains, encoded(domains, domain({}, four, {})));
  EXPECT_EQ(4U, asn1_Integer_get(record->q));
  EXPECT_EQ(nullptr, record->j);
}

TEST(DhParameters, TryTheNextFieldOnWhateverIsLeft) {
  for (const Bytes &rest :
       {hex("05 00"), hex("00"), hex("30 00"), hex("A0 00"), hex("02 00"), hex("02"), validation}) {
    expect_refused(domains, sequence(one + two + rest));
    expect_refused(domains, sequence(one + two + three + rest));
    if (rest != validation) {
      expect_refused(domains, sequence(one + two + three + four + rest));
    }
  }
  // Octets after the last field are not read.
  decoded(domains, sequence(one + two + three + four + validation + hex("00")), 1);
  // Octets past the SEQUENCE are not read, either.
  decoded(domains, sequence(one + two) + three, 3);
}

TEST(DhParameters, AreNotEncodedWhenAFieldFails) {
  for (Integer *DomainParameters::*number : {&DomainParameters::p, &DomainParameters::g}) {
    const auto record = domain(three, four, validation);
    clear((*record).*number, asn1_Integer_free);
    expect_nothing_written(domains, record.get());
  }
  const auto record = domain(three, four, validation);
  clear(record->validationParms->seed, asn1_BitString_free);
  expect_nothing_written(domains, record.get());
}

TEST(DhParameters, AreClonedDeeplyAndHalfFilled) {
  expect_deep_clone(domains, sequence(one + two + three + four + validation));
  const auto half = created(domains);
  half->validationParms = asn1_ValidationParms_new();
  const auto copy = cloned(domains, half);
  EXPECT_EQ(nullptr, copy->p);
  EXPECT_EQ(nullptr, copy->j);
  EXPECT_NE(nullptr, copy->validationParms);
  EXPECT_NE(half->validationParms, copy->validationParms);
}

// ------------------------------------------------------------------------------ parameters of a peer

TEST(PeerDsaParameters, OfOpensslAreWrittenBackAsTheyCame) {
  const Bytes octets =
      hex("3081a40241008daf4abbe832f0630a0b619a70dfe94925f9afe8c46c6e99162f5a5aa1cb942e8f0edd092ea0"
          "455c2c3200209c81bfb2e2ff36f73b0b807542026e255a4f6269021d00dc328264efc455de43b973b5f51673"
          "5506c247e068638fd0d428244f024026e4f30c7fbf4fa1a270580ac0a4fefa1ae7b397b1025660c270494e20"
          "8170e3c1eb56febb58865c8c6a427b91b23b753a0b03009df178f35c68b1b51716861d");
  const auto record = decoded(dss_parms, octets);
  EXPECT_EQ(64U, record->p->length);
  EXPECT_EQ(28U, record->q->length);
  EXPECT_EQ(octets, encoded(dss_parms, record));
}

TEST(PeerDhParameters, OfOpensslHaveNoJAndAreRefused) {
  const Bytes numbers = hex(
      "024100fda7743f200c7415e2473927d9be7b52662cf60add0b5c131ab467b7ce3d0749b16ae239fef2da4b61d1"
      "3f74972482c8585255f61e05b5367701d5d084ab9403024100cfbe2cee92b61d8c484ad7de1ad5c47e7a8f3f39"
      "ea21fc7ff4e639f3119b73220f06410c6712bd5233038b1c994115b70afbf78d3056a77e1b014f073e06b0f802"
      "15009c7499cf37a85f58616bb21b483b93db08475c7f");
  const Bytes seed_and_counter = hex("301a031500afdc1f26f3bf18d6267e78b256c73def7d5b622a020108");
  expect_refused(domains, sequence(numbers + seed_and_counter));

  // They are read as far as they go, and with a number in between.
  const auto record = decoded(domains, sequence(numbers + four + seed_and_counter));
  EXPECT_EQ(64U, record->p->length);
  EXPECT_EQ(20U, record->q->length);
  EXPECT_EQ(160U, record->validationParms->seed->length);
  EXPECT_EQ(8U, asn1_Integer_get(record->validationParms->pgenCounter));

  // Without it, they are written as by the peer, except for the zero bit at the end of the seed.
  clear(record->j, asn1_Integer_free);
  EXPECT_EQ(sequence(numbers + hex("301a031501afdc1f26f3bf18d6267e78b256c73def7d5b622a020108")),
            encoded(domains, record));
}

// --------------------------------------------------------------------------------------------- trace

TEST(DhTrace, ShowsEveryField) {
  const Lines expected = {
      "SEQUENCE {",
      ". INTEGER",
      ".  1",
      ". INTEGER",
      ".  2",
      ". INTEGER",
      ".  3",
      ". INTEGER",
      ".  4",
      ". SEQUENCE {",
      ". . BITSTRING",
      ". .   (0 unused bits)",
      ". . " + dump("AB CD ", ".."),
      ". . INTEGER",
      ". .  8",
      ". }",
      "}",
  };
  EXPECT_EQ(expected, traced(domains, sequence(one + two + three + four + validation)));
  EXPECT_EQ(Lines{}, traced(domains, sequence(one + two + three + four + validation), 0));
}

TEST(DhTrace, SaysNothingOfTheTagThatIsNoNumber) {
  const Lines expected = {"SEQUENCE {", ". INTEGER", ".  1", ". INTEGER",
                          ".  2",       ". INTEGER", ".  3"};
  EXPECT_EQ(expected, traced(domains, sequence(one + two + three + validation)));
}

TEST(DsaTrace, ShowsEachNumber) {
  const Lines expected = {"SEQUENCE {", ". INTEGER", ".  1", ". INTEGER", ".  193", "}"};
  EXPECT_EQ(expected, traced(dss_signatures, sequence(one + hex("02 01 C1"))));
}

// ------------------------------------------------------------------------------- ends of the process

TEST(DsaDhDeathTest, EncodersEndTheProcessWithoutARecord) {
  expect_encoder_ends_the_process(dss_parms, nullptr);
  expect_encoder_ends_the_process(dss_signatures, nullptr);
  expect_encoder_ends_the_process(validations, nullptr);
  expect_encoder_ends_the_process(domains, nullptr);
}

TEST(DsaDhDeathTest, DecodersAssertTheirCursors) {
  expect_decoder_asserts_its_cursors(dss_parms);
  expect_decoder_asserts_its_cursors(dss_signatures);
  expect_decoder_asserts_its_cursors(validations);
  expect_decoder_asserts_its_cursors(domains);
}

// --------------------------------------------------------------------------------- exhausted memory

TEST(DsaDhMemory, EachFailingAllocationIsAFailure) {
  expect_exhausted_memory_to_fail(dss_parms, sequence(one + two + three));
  expect_exhausted_memory_to_fail(dss_signatures, sequence(one + two));
  expect_exhausted_memory_to_fail(validations, validation);
  expect_exhausted_memory_to_fail(domains, sequence(one + two + three + four + validation));
}

}  // namespace

}  // namespace dsa_dh_test
