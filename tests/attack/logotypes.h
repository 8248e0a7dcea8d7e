// A reader of logotypes, which the library writes and does not read: it stands in for their decoders,
// so that what is written and released is held against the laws, too.
//
// A record is a SEQUENCE of all its fields in their order, with 05 00 for one that may be missing and
// is. A choice is its value in a context-specific tag that has the number of its kind; what stands in
// another kind is skipped.
#ifndef ORVELASN1_TESTS_ATTACK_LOGOTYPES_H
#define ORVELASN1_TESTS_ATTACK_LOGOTYPES_H

#include <orvelasn1.h>

#include <cstddef>

namespace attack::logotypes {

/// Takes the content of an element apart, one field after the other.
class Reader {
 public:
  Reader(const uint8_t *z, const uint8_t *end, uint32_t tag, uint32_t depth) : depth_(depth) {
    uint32_t length = 0;
    const uint8_t *const start = asn1_TagLength_d(z, end, 0, tag, nullptr, &length, nullptr, depth);
    if (start == nullptr || length > static_cast<size_t>(end - start)) return;
    z_ = start;
    end_ = start + length;
  }

  template <auto Decode, class T>
  void required(T *&field) {
    if (z_ != nullptr) z_ = Decode(z_, end_, 0, &field, depth_);
  }
  template <auto Decode, class T>
  void optional(T *&field) {
    if (z_ != nullptr && end_ - z_ >= 2 && z_[0] == 5 && z_[1] == 0)
      z_ += 2;
    else
      required<Decode>(field);
  }

  void skip() { z_ = end_; }

  /// The cursor past the element; null where something failed or is left over.
  const uint8_t *behind() const { return z_ == end_ ? z_ : nullptr; }

 private:
  const uint8_t *z_ = nullptr;
  const uint8_t *end_ = nullptr;
  uint32_t depth_;
};

/// Keeps a record that was read whole, and releases another.
template <auto Free, class T>
const uint8_t *keep(const Reader &reader, T *record, T **place) {
  if (reader.behind() != nullptr)
    *place = record;
  else
    Free(record);
  return reader.behind();
}

template <auto Create, auto Free, class T>
const uint8_t *decode(const uint8_t *z, const uint8_t *end, uint32_t, T **place, uint32_t depth) {
  T *const record = Create();
  if (record == nullptr) return nullptr;
  Reader reader(z, end, 0x30, depth);
  fields(reader, record);
  return keep<Free>(reader, record, place);
}
template <auto Create, auto Free, class T>
const uint8_t *decode_choice(const uint8_t *z, const uint8_t *end, uint32_t, T **place,
                             uint32_t depth) {
  if (z == end || (*z & 0xE0) != 0xA0) return nullptr;
  T *const record = Create();
  if (record == nullptr) return nullptr;
  record->kind = *z & 0x1F;
  Reader reader(z, end, *z, depth);
  fields(reader, record);
  return keep<Free>(reader, record, place);
}
template <auto Decode, auto Free>
const uint8_t *decode_list(const uint8_t *z, const uint8_t *end, uint32_t, List **place,
                           uint32_t depth) {
  return asn1_SeqOf_d(z, end, 0, Decode, Free, place, depth);
}

#define LOGOTYPE(decode, T) decode<asn1_##T##_new, asn1_##T##_free, T>
#define LOGOTYPE_LIST(decode, T) decode_list<LOGOTYPE(decode, T), asn1_##T##_free>

constexpr auto strings = decode_list<asn1_IA5String_d, asn1_IA5String_free>;

inline void fields(Reader &in, HashAlgAndValue *out) {
  in.required<asn1_AlgId_d>(out->hashAlg);
  in.required<asn1_OctetString_d>(out->hashValue);
}
inline void fields(Reader &in, LogotypeDetails *out) {
  in.required<asn1_IA5String_d>(out->mediaType);
  in.required<LOGOTYPE_LIST(decode, HashAlgAndValue)>(out->logotypeHash);
  in.required<strings>(out->logotypeURI);
}
inline void fields(Reader &in, LogotypeReference *out) {
  in.required<LOGOTYPE_LIST(decode, HashAlgAndValue)>(out->refStructHash);
  in.required<strings>(out->refStructURI);
}
template <auto Decode, class T, class Choice>
void value(Reader &in, Choice *out) {
  T *made = nullptr;
  in.required<Decode>(made);
  out->value = made;
}
inline void fields(Reader &in, LogotypeImageResolution *out) {
  if (out->kind == 1 || out->kind == 2)
    value<asn1_Integer_d, Integer>(in, out);
  else
    in.skip();
}
inline void fields(Reader &in, LogotypeImageInfo *out) {
  in.optional<asn1_Integer_d>(out->type);
  in.required<asn1_Integer_d>(out->fileSize);
  in.required<asn1_Integer_d>(out->xSize);
  in.required<asn1_Integer_d>(out->ySize);
  in.optional<LOGOTYPE(decode_choice, LogotypeImageResolution)>(out->resolution);
  in.optional<asn1_IA5String_d>(out->language);
}
inline void fields(Reader &in, LogotypeImage *out) {
  in.required<LOGOTYPE(decode, LogotypeDetails)>(out->imageDetails);
  in.optional<LOGOTYPE(decode, LogotypeImageInfo)>(out->imageInfo);
}
inline void fields(Reader &in, LogotypeAudioInfo *out) {
  in.required<asn1_Integer_d>(out->fileSize);
  in.required<asn1_Integer_d>(out->playTime);
  in.required<asn1_Integer_d>(out->channels);
  in.optional<asn1_Integer_d>(out->sampleRate);
  in.optional<asn1_IA5String_d>(out->language);
}
inline void fields(Reader &in, LogotypeAudio *out) {
  in.required<LOGOTYPE(decode, LogotypeDetails)>(out->audioDetails);
  in.optional<LOGOTYPE(decode, LogotypeAudioInfo)>(out->audioInfo);
}
inline void fields(Reader &in, LogotypeData *out) {
  in.optional<LOGOTYPE_LIST(decode, LogotypeImage)>(out->image);
  in.optional<LOGOTYPE_LIST(decode, LogotypeAudio)>(out->audio);
}
inline void fields(Reader &in, LogotypeInfo *out) {
  if (out->kind == 0)
    value<LOGOTYPE(decode, LogotypeData), LogotypeData>(in, out);
  else if (out->kind == 1)
    value<LOGOTYPE(decode, LogotypeReference), LogotypeReference>(in, out);
  else
    in.skip();
}
inline void fields(Reader &in, OtherLogotypeInfo *out) {
  in.required<asn1_ObjId_d>(out->logotypeType);
  in.required<LOGOTYPE(decode_choice, LogotypeInfo)>(out->info);
}
inline void fields(Reader &in, LogotypeExtn *out) {
  in.optional<LOGOTYPE_LIST(decode_choice, LogotypeInfo)>(out->communityLogos);
  in.optional<LOGOTYPE(decode_choice, LogotypeInfo)>(out->issuerLogo);
  in.optional<LOGOTYPE(decode_choice, LogotypeInfo)>(out->subjectLogo);
  in.optional<LOGOTYPE_LIST(decode_choice, LogotypeInfo)>(out->otherLogos);
}

}  // namespace attack::logotypes

#endif
