// Every record: decoded without a place for it, copied half-filled, and counted where its encoding does
// not fit 31 bits, or 32.
#include <octets.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <map>

#include "guard.h"
#include "laws.h"
#include "parameters.h"

namespace records_test {

namespace {

using namespace attack;
using support::hex;

bool is_record(const Family &family) {
  return family.type != nullptr && pki_Type_kind(family.type) == PKI_SEQUENCE;
}

// ---------------------------------------------------------------------------------------------
// No place
// ---------------------------------------------------------------------------------------------

using PlacelessDecoder = const uint8_t *(*)(const uint8_t *z, const uint8_t *end);

/// The decoders of records, called without a place: those of the descriptors need one.
const std::map<std::string_view, PlacelessDecoder> &placeless_decoders() {
#define PLACELESS(T)                                                                             \
  {                                                                                              \
#T, [](const uint8_t *z, const uint8_t *end) { return asn1_##T##_d(z, end, 0, nullptr, 0); } \
  }
  static const std::map<std::string_view, PlacelessDecoder> all{
      PLACELESS(AccessDescription),
      PLACELESS(AlgId),
      PLACELESS(Attribute),
      PLACELESS(AttributeValueAssertion),
      PLACELESS(AuthorityKeyIdentifier),
      PLACELESS(BasicConstraints),
      PLACELESS(BasicOCSPResponse),
      PLACELESS(CRLBag),
      PLACELESS(CRLEntry),
      PLACELESS(CardInfo),
      PLACELESS(CertBag),
      PLACELESS(CertID),
      PLACELESS(CertRequestInfo),
      PLACELESS(Certificate),
      PLACELESS(CertificateList_TBS),
      PLACELESS(CertificateRevocationList),
      PLACELESS(Certificate_TBS),
      PLACELESS(CertificationRequest),
      PLACELESS(ContentInfo),
      PLACELESS(DigestInfo),
      PLACELESS(DistributionPoint),
      PLACELESS(DomainParameters),
      PLACELESS(DssParms),
      PLACELESS(DssSigValue),
      PLACELESS(EncryptedContentInfo),
      PLACELESS(EncryptedData),
      PLACELESS(EncryptedPrivateKeyInfo),
      PLACELESS(Extension),
      PLACELESS(GDO),
      PLACELESS(GeneralSubtree),
      PLACELESS(IssuerAndSerialNumber),
      PLACELESS(MacData),
      PLACELESS(NameConstraints),
      PLACELESS(OCSPRequest),
      PLACELESS(OCSPResponse),
      PLACELESS(OCSPSignature),
      PLACELESS(OtherName),
      PLACELESS(PFX),
      PLACELESS(PbeParams),
      PLACELESS(PolicyConstraints),
      PLACELESS(PolicyMapping),
      PLACELESS(PrivateKeyInfo),
      PLACELESS(PrivateKeyUsagePeriod),
      PLACELESS(PublicKeyAndChallenge),
      PLACELESS(PublicKeyMAC),
      PLACELESS(RSAPrivateKey),
      PLACELESS(RSAPublicKey),
      PLACELESS(Request),
      PLACELESS(ResponseBytes),
      PLACELESS(ResponseData),
      PLACELESS(RevokedInfo),
      PLACELESS(SafeBag),
      PLACELESS(SecretBag),
      PLACELESS(SignedData),
      PLACELESS(SignedPublicKeyAndChallenge),
      PLACELESS(SignerInfo),
      PLACELESS(SingleResponse),
      PLACELESS(SubjectPKI),
      PLACELESS(TBSRequest),
      PLACELESS(ValidationParms),
      PLACELESS(Validity),
  };
  return all;
#undef PLACELESS
}

const uint8_t *decode_without_a_place(const Family &family, Octets input) {
  const uint8_t *const end = input.data() + input.size();
  if (family.is_form()) return family.decode(input.data(), end, 0, nullptr, 0);
  return placeless_decoders().at(pki_Type_record(family.type))(input.data(), end);
}

class Records : public OfAGroup {};

TEST_P(Records, AreNotDecodedWithoutAPlace) {
  for_each_sample([](const Family &family, const Bytes &sample) {
    if (!is_record(family) || family.has(is_never_read)) return;
    Guard guard;
    const uint8_t *next = sample.data();
    EXPECT_TRUE(guard.run([&] { next = decode_without_a_place(family, sample); }));
    EXPECT_EQ(nullptr, next);
    EXPECT_EQ(0U, guard.blocks());
  });
}

// ---------------------------------------------------------------------------------------------
// Copies of half-filled records
// ---------------------------------------------------------------------------------------------

/// A member of a record: where it is and how many octets it has.
struct Member {
  std::string name;
  size_t offset, size;
  bool is_copied = true;
};

/// The members that are set in a record.
std::vector<Member> members_of(const Family &family, const uint8_t *record) {
  std::vector<Member> members;
  const auto add = [&](const char *name, uint32_t offset, size_t size, bool is_copied = true) {
    if (offset != PKI_NO_MEMBER && std::any_of(record + offset, record + offset + size,
                                               [](uint8_t octet) { return octet != 0; }))
      members.push_back({name, offset, size, is_copied});
  };
  for (uint32_t i = 0; i < pki_Type_field_count(family.type); ++i) {
    pki_Field field;
    pki_Type_field(family.type, i, &field);
    const pki_Kind kind = pki_Type_kind(field.type);
    const bool is_number = (kind == PKI_BOOLEAN || kind == PKI_ENUMERATED) &&
                           pki_Type_size(field.type) == sizeof(uint32_t);
    add(field.name, field.offset, is_number ? sizeof(uint32_t) : sizeof(void *));
    add(field.name, field.text_offset, sizeof(void *));
    // The octets that a response is signed over stay with the original.
    add(field.name, field.encoded_offset, sizeof(void *), family.name != "BasicOCSPResponse");
  }
  return members;
}

/// Copies a record that has these members of another alone, and checks that the copy has them, too.
void expect_copy(const Family &family, const uint8_t *record, const std::vector<Member> &all,
                 const std::function<bool(const Member &)> &is_there) {
  Bytes half(pki_Type_size(family.type));
  for (const Member &member : all)
    if (is_there(member))
      std::memcpy(half.data() + member.offset, record + member.offset, member.size);
  void *const copy = family.clone(half.data());
  if (copy == nullptr) {
    EXPECT_TRUE(family.has(may_lack_copies));
    return;
  }
  const auto *const octets = static_cast<const uint8_t *>(copy);
  Bytes rest(octets, octets + half.size());
  for (const Member &member : all) {
    const Bytes copied(octets + member.offset, octets + member.offset + member.size);
    const Bytes nothing(member.size);
    EXPECT_EQ(is_there(member) && member.is_copied, copied != nothing) << member.name;
    std::fill_n(rest.begin() + static_cast<std::ptrdiff_t>(member.offset), member.size, uint8_t{0});
  }
  EXPECT_EQ(Bytes(half.size()), rest);
  family.free(copy);
}

TEST_P(Records, AreCopiedHalfFilled) {
  for_each_sample([](const Family &family, const Bytes &sample) {
    // A message without a type cannot be copied, nor an other name with one.
    if (!is_record(family) || family.clone == nullptr || family.has(is_never_read) ||
        family.name == "ContentInfo" || family.name == "OtherName")
      return;
    void *decoded = nullptr;
    ASSERT_NE(nullptr, family.decode(sample.data(), sample.data() + sample.size(), 0, &decoded, 0));
    const auto *const record = static_cast<const uint8_t *>(decoded);
    const std::vector<Member> members = members_of(family, record);
    for (const Member &one : members) {
      SCOPED_TRACE(one.name);
      const auto is_it = [&](const Member &member) { return member.offset == one.offset; };
      expect_copy(family, record, members, is_it);
      expect_copy(family, record, members, std::not_fn(is_it));
    }
    family.free(decoded);
  });
}

// ---------------------------------------------------------------------------------------------
// Encodings of many octets
// ---------------------------------------------------------------------------------------------

// Octets that no sample has, and that are an element.
const Bytes marker = hex("57 06 D1 D2 D3 D4 D5 D6");

/// The octets of the content of a string or an INTEGER in a record, in whose place stands the
/// marker while it lives.
class Marked {
 public:
  Marked(uint32_t *length, uint8_t **data)
      : length_(length), data_(data), was_length_(*length), was_data_(*data), octets_(marker) {
    *length_ = static_cast<uint32_t>(octets_.size());
    *data_ = octets_.data();
  }
  ~Marked() {
    *length_ = was_length_;
    *data_ = was_data_;
  }
  Marked(const Marked &) = delete;
  Marked &operator=(const Marked &) = delete;

  void has_length(uint32_t length) { *length_ = length; }

 private:
  uint32_t *length_;
  uint8_t **data_;
  uint32_t was_length_;
  uint8_t *was_data_;
  Bytes octets_;
};

void *pointer_at(const void *record, uint32_t offset) {
  void *value = nullptr;
  std::memcpy(&value, static_cast<const uint8_t *>(record) + offset, sizeof value);
  return value;
}

using Visit = std::function<void(Marked &marked, bool is_integer)>;

void visit_string(void *string, const Visit &visit) {
  auto *const found = static_cast<ASN1String *>(string);
  Marked marked(&found->length, &found->data);
  visit(marked, false);
}

void for_each_content(const pki_Type *type, void *value, const Visit &visit);

void for_each_content_of_object(const pki_Type *type, const GDOObject *object, const Visit &visit) {
  constexpr unsigned long holder = 0x20;  // of attributes, which are no sets at any place
  const pki_Type *const plain = pki_Type_find("GDOObjectSetOf");
  if (object->value != nullptr) visit_string(object->value, visit);
  for (int32_t i = 0; i < List_len(object->children); ++i) {
    void *const child = List_get(object->children, i);
    if (type == plain || object->id == holder) {
      for_each_content(plain, child, visit);
      continue;
    }
    const auto *const set = static_cast<const List *>(child);
    for (int32_t k = 0; k < List_len(set); ++k) for_each_content(plain, List_get(set, k), visit);
  }
}

/// Calls `visit` for each string, each INTEGER and each kept encoding that is written of a value.
void for_each_content(const pki_Type *type, void *value, const Visit &visit) {
  if (value == nullptr) return;
  const pki_Kind own_kind = pki_Type_kind(type);
  if (own_kind == PKI_ANY || own_kind == PKI_OCTET_STRING || own_kind == PKI_CHARACTER_STRING ||
      own_kind == PKI_ATTRIBUTE_VALUE)
    return visit_string(value, visit);
  if (own_kind == PKI_INTEGER) {
    auto *const found = static_cast<Integer *>(value);
    Marked marked(&found->length, &found->data);
    return visit(marked, true);
  }
  if (own_kind == PKI_SEQUENCE_OF || own_kind == PKI_SET_OF) {
    auto *const list = static_cast<List *>(value);
    for (int32_t i = 0; i < List_len(list); ++i)
      for_each_content(pki_Type_element(type), List_get(list, i), visit);
    return;
  }
  if (own_kind == PKI_CARD_OBJECT)
    return for_each_content_of_object(type, static_cast<const GDOObject *>(value), visit);
  if (own_kind != PKI_SEQUENCE && own_kind != PKI_CHOICE) return;
  // With both lists, the images are written as sounds.
  if (std::string_view(pki_Type_record(type)) == "LogotypeData" &&
      static_cast<const LogotypeData *>(value)->audio != nullptr)
    return;
  for (uint32_t i = 0; i < pki_Type_field_count(type); ++i) {
    pki_Field field;
    pki_Type_field(type, i, &field);
    const bool is_choice = own_kind == PKI_CHOICE;
    if (is_choice && field.kind != *static_cast<const uint8_t *>(value)) continue;
    if (!is_choice && field.encoded_offset != PKI_NO_MEMBER &&
        pointer_at(value, field.encoded_offset) != nullptr) {
      visit_string(pointer_at(value, field.encoded_offset), visit);
      continue;
    }
    const pki_Kind kind = pki_Type_kind(field.type);
    if (kind == PKI_TYPED_CONTENT) {
      // Of a message: an OCTET STRING, where the type says so.
      const auto *const message = static_cast<const ContentInfo *>(value);
      if (asn1_ObjId_cmp(message->contentType, asn1_Get_data()) == 0)
        visit_string(message->content->value, visit);
      continue;
    }
    const bool is_number = kind == PKI_BOOLEAN || kind == PKI_ENUMERATED || kind == PKI_NULL;
    if (!is_number)
      for_each_content(field.type, pointer_at(value, is_choice ? sizeof(void *) : field.offset),
                       visit);
  }
}

/// The octets of the header of each element around the octet at `place`, from outside. It begins an
/// element or the content of one. A string around it is a wrapper of elements.
std::vector<uint32_t> headers_around(const Bytes &octets, size_t place) {
  std::vector<uint32_t> headers;
  size_t at = 0;
  while (at < place) {
    uint32_t header = 2, length = octets.at(at + 1);
    for (uint32_t more = length > 0x80 ? length - 0x80 : 0, i = 0; i < more; ++i, ++header)
      length = (i == 0 ? 0 : length << 8) | octets.at(at + 2 + i);
    if (place >= at + header + length) {
      at += header + length;
      continue;
    }
    headers.push_back(header);
    at += header;
  }
  return headers;
}

void expect_sum(const Family &family, const void *record, uint64_t sum) {
  const auto expected = static_cast<uint32_t>(sum > UINT32_MAX ? 0 : sum);
  EXPECT_EQ(expected, family.encode(nullptr, record));
  if (expected != 0) return;
  uint8_t octet = 0xA5;
  uint8_t *cursor = &octet;
  EXPECT_EQ(0U, family.encode(&cursor, record));
  EXPECT_EQ(&octet, cursor);
  EXPECT_EQ(0xA5, octet);
}

/// Checks what is counted of a record where a content, which is marked, has many octets.
void expect_large_sums(const Family &family, const void *record, Marked &marked, bool is_integer) {
  Bytes out(family.encode(nullptr, record));
  uint8_t *cursor = out.data();
  family.encode(&cursor, record);
  const auto found = std::search(out.begin(), out.end(), marker.begin(), marker.end());
  ASSERT_NE(out.end(), found);
  const auto place = static_cast<size_t>(found - out.begin());
  // What is there beside the content, where each length around it has its five octets.
  uint64_t beside = out.size() - marker.size();
  for (const uint32_t header : headers_around(out, place)) beside += 6 - header;

  if (is_integer) {
    // The longest that has a content. Only its first octet is looked at.
    marked.has_length(0x7FFFFFFF);
    return expect_sum(family, record, beside + 0x7FFFFFFF);
  }
  marked.has_length(0x7FFFFFFF);
  expect_sum(family, record, beside + 0x7FFFFFFF);
  marked.has_length(0x80000000);
  expect_sum(family, record, beside + 0x80000000);
  const auto longest = static_cast<uint32_t>(UINT32_MAX - beside);
  marked.has_length(longest);
  expect_sum(family, record, UINT32_MAX);
  for (const uint32_t length : {longest + 1, longest + 7, UINT32_MAX}) {
    if (length <= longest) continue;  // of an ANY alone
    marked.has_length(length);
    expect_sum(family, record, uint64_t{UINT32_MAX} + 1);
  }
}

TEST_P(Records, AreCountedUpTo32Bits) {
  for_each_sample([](const Family &family, const Bytes &sample) {
    if (family.is_form() || family.type == nullptr || family.encode == nullptr ||
        family.has(is_not_written))
      return;
    void *record = nullptr;
    ASSERT_NE(nullptr, family.decode(sample.data(), sample.data() + sample.size(), 0, &record, 0));
    for_each_content(family.type, record, [&](Marked &marked, bool is_integer) {
      expect_large_sums(family, record, marked, is_integer);
    });
    family.free(record);
  });
}

INSTANTIATE_TEST_SUITE_P(Of, Records, testing::ValuesIn(groups()), title);

}  // namespace

}  // namespace records_test
