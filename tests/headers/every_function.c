/*
 * Uses every function of the public headers, as a program in C does; every_function.cpp compiles
 * the same text as C++. compile.sh makes sure that none is missing.
 */
#include <orvelasn1.h>
#include <orvelpki.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static int failures = 0;

#define EXPECT(condition)                                                     \
  do {                                                                        \
    if (!(condition)) {                                                       \
      fprintf(stderr, "%s:%i: not so: %s\n", __FILE__, __LINE__, #condition); \
      failures++;                                                             \
    }                                                                         \
  } while (0)

/* Encodes a record of the type T, decodes the octets, and copies and releases the result. */
#define THERE_AND_BACK(T, record)                                                 \
  do {                                                                            \
    uint8_t octets[1024], *p = octets;                                            \
    const uint32_t size = asn1_##T##_e(NULL, record);                             \
    T *decoded = NULL, *copy;                                                     \
    EXPECT(size > 0 && size <= sizeof octets);                                    \
    EXPECT(asn1_##T##_e(&p, record) == size && p == octets + size);               \
    EXPECT(asn1_##T##_d(octets, octets + size, 0, &decoded, 0) == octets + size); \
    copy = asn1_##T##_clone(decoded);                                             \
    EXPECT(copy != NULL && copy != decoded);                                      \
    asn1_##T##_free(copy);                                                        \
    asn1_##T##_free(decoded);                                                     \
  } while (0)

static void use_the_trace(const ObjId *identifier) {
  FILE *stream = tmpfile();
  asn1_LogStart(stream);
  asn1_LogMessage(1, "%s %i\n", "message", 1);
  asn1_LogObjId(1, identifier);
  asn1_LogByteArray(1, (const uint8_t *)"octets", 6);
  asn1_LogStart(NULL);
  EXPECT(ftell(stream) > 0);
  fclose(stream);
}

static void use_the_frame(void) {
  static const uint8_t header[] = {0x30, 0x02, 0x00, 0x00};
  const uint8_t *end = header + sizeof header;
  uint8_t octets[16], *p = octets;
  uint32_t constructed = 0, length = 0, indefinite = 0;
  EXPECT(asn1_Tag_e(&p, 0x30) == 1);
  EXPECT(asn1_Length_e(&p, 2) == 1);
  EXPECT(asn1_eoc_e(&p) == 2);
  EXPECT(asn1_TagLength_e(NULL, 0x30, 2) == 2);
  EXPECT(p == octets + 4 && memcmp(octets, header, 4) == 0);
  EXPECT(asn1_Tag_d(header, end, 0, 0x30, &constructed, 0) == header + 1);
  EXPECT(asn1_Length_d(header + 1, end, &length, &indefinite, 0) == header + 2);
  EXPECT(asn1_TagLength_d(header, end, 0, 0x30, NULL, &length, NULL, 0) == header + 2);
  EXPECT(asn1_eoc_d(header + 2, end) == end);
  EXPECT(constructed == 1 && length == 2 && indefinite == 0);
}

static void use_numbers(void) {
  uint8_t octets[16], *p = octets;
  uint32_t number = 0;
  Integer *three = asn1_Integer_set(3), *zeros = asn1_Integer_new(4);
  EXPECT(asn1_Integer_get(three) == 3 && asn1_Integer_get(zeros) == 0);
  EXPECT(asn1_Integer_cmp(three, asn1_Integer_3()) == 0);
  EXPECT(asn1_Integer_cmp(asn1_Integer_0(), asn1_Integer_1()) != 0);
  THERE_AND_BACK(Integer, asn1_Integer_2());
  asn1_Integer_free(three);
  asn1_Integer_free(zeros);

  EXPECT(asn1_Boolean_e(&p, 0xFF) == 3);
  EXPECT(asn1_Enumerated_e(&p, 5) == 3);
  EXPECT(asn1_Null_e(&p) == 2);
  EXPECT(asn1_Boolean_d(octets, p, 0, &number, 0) == octets + 3 && number == 0xFF);
  EXPECT(asn1_Enumerated_d(octets + 3, p, 0, &number, 0) == octets + 6 && number == 5);
  EXPECT(asn1_Null_d(octets + 6, p, 0, NULL, 0) == p);
}

static void use_any(void) {
  Any *any = asn1_Any_new(2);
  EXPECT(asn1_Any_cmp(any, asn1_Any_NULL()) != 0);
  THERE_AND_BACK(Any, asn1_Any_NULL());
  asn1_Any_free(any);
}

static void use_identifiers(void) {
  const char *text = "1.2.840";
  char printed[16];
  uint32_t size = sizeof printed;
  FILE *stream = tmpfile();
  ObjId *parsed = asn1_ObjId_parse(&text), *zeros = asn1_ObjId_new(3);
  EXPECT(*text == '\0' && asn1_ObjId_cmp(parsed, zeros) == 1);
  EXPECT(asn1_ObjId_sprint(parsed, printed, &size) == 0 && strcmp(printed, "1.2.840") == 0);
  EXPECT(asn1_ObjId_fprint(parsed, stream) > 0 && ftell(stream) == 7);
  THERE_AND_BACK(ObjId, parsed);
  use_the_trace(parsed);
  asn1_ObjId_free(parsed);
  asn1_ObjId_free(zeros);
  fclose(stream);
}

static void use_bits(void) {
  BitString *bits = asn1_BitString_new(8), *empty = asn1_BitString_new(0);
  EXPECT(asn1_BitString_set(bits, 0, 1) == bits && asn1_BitString_test(bits, 0) == 1);
  EXPECT(asn1_BitString_append(bits, 1, "x") == bits && bits->length == 16);
  EXPECT(asn1_BitString_cmp(bits, empty) != 0);
  EXPECT(asn1_BitString_BER_e(NULL, bits) == 5);
  THERE_AND_BACK(BitString, bits);
  asn1_BitString_free(bits);
  asn1_BitString_free(empty);
}

#define USE_STRING_TYPE(T)                       \
  do {                                           \
    T *string = asn1_##T##_new(3);               \
    EXPECT(asn1_##T##_cmp(string, string) == 0); \
    THERE_AND_BACK(T, string);                   \
    asn1_##T##_free(string);                     \
  } while (0)

static void use_strings(void) {
  uint8_t octets[16], *p = octets;
  ASN1String *abc = asn1_ASN1String_new(0, "abc"), *copy = asn1_ASN1String_clone(abc), *back = NULL;
  EXPECT(asn1_ASN1String_append(abc, 3, "def") == abc && abc->length == 6);
  EXPECT(asn1_ASN1String_cmp(abc, copy) != 0);
  EXPECT(asn1_ASN1String_e(&p, 30, copy) == 5);
  EXPECT(asn1_ASN1String_d(octets, p, 0, 30, &back, 0) == p);
  asn1_ASN1String_free(abc);
  asn1_ASN1String_free(copy);
  asn1_ASN1String_free(back);

  USE_STRING_TYPE(OctetString);
  USE_STRING_TYPE(UTF8String);
  USE_STRING_TYPE(NumericString);
  USE_STRING_TYPE(PrintableString);
  USE_STRING_TYPE(TeletexString);
  USE_STRING_TYPE(VideotextString);
  USE_STRING_TYPE(IA5String);
  USE_STRING_TYPE(GraphicString);
  USE_STRING_TYPE(VisibleString);
  USE_STRING_TYPE(GeneralString);
  USE_STRING_TYPE(UniversalString);
}

static void use_times(void) {
  time_t seconds = 0;
  UTCTime *utc = asn1_UTCTime_get(NULL), *utc_buffer = asn1_UTCTime_new();
  GeneralizedTime *general = asn1_GeneralizedTime_get(NULL);
  GeneralizedTime *general_buffer = asn1_GeneralizedTime_new();
  Time *time = asn1_Time_get(NULL), *empty = asn1_Time_new();
  EXPECT(asn1_Seconds2UTCTime(utc_buffer, 0) == utc_buffer);
  EXPECT(asn1_Seconds2GeneralizedTime(general_buffer, 0) == general_buffer);
  EXPECT(asn1_Seconds2Time(time, 0) == time);
  EXPECT(asn1_UTCTime2Seconds(&seconds, utc) == 0 && asn1_UTCTime_cmp(utc, utc) == 0);
  EXPECT(asn1_GeneralizedTime2Seconds(&seconds, general) == 0);
  EXPECT(asn1_GeneralizedTime_cmp(general, general_buffer) == 1);
  EXPECT(asn1_Time2Seconds(&seconds, time) == 0 && asn1_Time_cmp(time, empty) == -1);
  THERE_AND_BACK(UTCTime, utc);
  THERE_AND_BACK(GeneralizedTime, general);
  THERE_AND_BACK(Time, time);
  asn1_UTCTime_free(utc);
  asn1_UTCTime_free(utc_buffer);
  asn1_GeneralizedTime_free(general);
  asn1_GeneralizedTime_free(general_buffer);
  asn1_Time_free(time);
  asn1_Time_free(empty);
}

static void use_names(void) {
  const char *text = "cn(12)=x";
  uint8_t octets[64], *p = octets;
  AttributeValueAssertion *part = asn1_AttributeValueAssertion_parse(&text), *found = NULL;
  AttributeValueAssertion *empty = asn1_AttributeValueAssertion_new();
  RDNSequence *sequence = asn1_Name_to_RDNSequence("/c(19)=DE/o(12)=A,cn(12)=x");
  const RelativeDistinguishedName *rdn = (const RelativeDistinguishedName *)List_get(sequence, 1);
  RelativeDistinguishedName *rdn_back = NULL, *rdn_copy = asn1_RelativeDistinguishedName_clone(rdn);
  Name *name = asn1_RDNSequence_to_Name(sequence), *buffer = asn1_Name_new(10);
  EXPECT(strcmp(name, "/c(19)=DE/o(12)=A,cn(12)=x") == 0);
  EXPECT(asn1_RDNSequence_getAttr(sequence, asn1_Get_id_at_commonName(), &found) == found);
  EXPECT(asn1_AttributeValueAssertion_cmp(part, found) == 0);
  EXPECT(asn1_RelativeDistinguishedName_e(&p, rdn) > 0);
  EXPECT(asn1_RelativeDistinguishedName_d(octets, p, 0, &rdn_back, 0) == p);
  EXPECT(asn1_RelativeDistinguishedName_cmp(rdn, rdn_back) == 0);
  EXPECT(asn1_RDNSequence_cmp(sequence, sequence) == 0);
  THERE_AND_BACK(AttributeValueAssertion, part);
  THERE_AND_BACK(RDNSequence, sequence);
  THERE_AND_BACK(Name, name);
  asn1_AttributeValueAssertion_free(part);
  asn1_AttributeValueAssertion_free(empty);
  asn1_RelativeDistinguishedName_free(rdn_back);
  asn1_RelativeDistinguishedName_free(rdn_copy);
  asn1_RDNSequence_free(sequence);
  asn1_Name_free(name);
  asn1_Name_free(buffer);
}

static AlgId *new_algorithm(void) {
  AlgId *algorithm = asn1_AlgId_new();
  algorithm->algorithm = asn1_ObjId_clone(asn1_Get_sha256WithRSAEncryption());
  algorithm->parameters = asn1_Any_clone(asn1_Any_NULL());
  return algorithm;
}

static Extension *new_extension(void) {
  Extension *extension = asn1_Extension_new();
  extension->extnID = asn1_ObjId_clone(asn1_Get_id_ce_keyUsage());
  extension->critical = 0xFF;
  extension->extnValue = asn1_OctetString_new(4);
  return extension;
}

static void use_certificates(void) {
  Certificate *certificate = asn1_Certificate_new();
  Certificate_TBS *tbs = asn1_Certificate_TBS_new();
  certificate->tbsCertificate = tbs;
  certificate->signatureAlgorithm = new_algorithm();
  certificate->signatureValue = asn1_BitString_new(64);
  tbs->version = asn1_Integer_set(2);
  tbs->serialNumber = asn1_Integer_set(1);
  tbs->signature = new_algorithm();
  tbs->issuer = asn1_Name_clone("/cn(12)=issuer");
  tbs->validity = asn1_Validity_new();
  tbs->validity->notBefore = asn1_Time_get(NULL);
  tbs->validity->notAfter = asn1_Time_get(NULL);
  tbs->subject = asn1_Name_clone("/cn(12)=subject");
  tbs->subjectPublicKeyInfo = asn1_SubjectPKI_new();
  tbs->subjectPublicKeyInfo->algorithm = new_algorithm();
  tbs->subjectPublicKeyInfo->subjectPublicKey = asn1_BitString_new(64);
  tbs->extensions = List_new(0);
  EXPECT(List_append(tbs->extensions, new_extension(), 0) == 1);

  THERE_AND_BACK(AlgId, tbs->signature);
  THERE_AND_BACK(Validity, tbs->validity);
  THERE_AND_BACK(SubjectPKI, tbs->subjectPublicKeyInfo);
  THERE_AND_BACK(Extension, (const Extension *)List_get(tbs->extensions, 0));
  THERE_AND_BACK(Extensions, tbs->extensions);
  THERE_AND_BACK(Certificate_TBS, tbs);
  THERE_AND_BACK(Certificate, certificate);
  asn1_Certificate_free(certificate);
}

/* The functions of any family go to the wrappers and lists as they stand. */
static void use_wrappers_and_lists(void) {
  uint8_t octets[256], *p = octets;
  Extension *extension = new_extension(), *inside = NULL;
  List *list = List_new(0), *copy, *back = NULL;
  EXPECT(asn1_implicit_e(NULL, 0x81, extension, asn1_Extension_e) > 0);
  EXPECT(asn1_explicit_e(&p, 0xA1, extension, asn1_Extension_e) > 0);
  EXPECT(asn1_explicit_d(octets, p, 0xA1, asn1_Extension_d, &inside, 0) == p);
  asn1_Extension_free(inside);

  EXPECT(List_append(list, extension, 0) == 1 && List_len(list) == 1);
  EXPECT(List_get(list, 0) == extension);
  copy = List_clone(list, asn1_Extension_clone, asn1_Extension_free);
  EXPECT(List_len(copy) == 1 && List_get(copy, 0) != extension);
  List_free(copy, asn1_Extension_free);
  copy = List_new(0);
  EXPECT(List_contains(copy, extension, asn1_AttributeValueAssertion_cmp) == -1);
  List_free(copy, NULL);

#define LIST_THERE_AND_BACK(encode, decode) \
  do {                                      \
    p = octets;                             \
    EXPECT(encode > 0 && decode == p);      \
    EXPECT(List_len(back) == 1);            \
    List_free(back, asn1_Extension_free);   \
  } while (0)
  LIST_THERE_AND_BACK(
      asn1_List_e(&p, 0xA0, list, asn1_Extension_e),
      asn1_List_d(octets, p, 0, 0xA0, asn1_Extension_d, asn1_Extension_free, &back, 0));
  LIST_THERE_AND_BACK(asn1_SetOf_e(&p, list, asn1_Extension_e),
                      asn1_SetOf_d(octets, p, 0, asn1_Extension_d, asn1_Extension_free, &back, 0));
  LIST_THERE_AND_BACK(asn1_SeqOf_e(&p, list, asn1_Extension_e),
                      asn1_SeqOf_d(octets, p, 0, asn1_Extension_d, asn1_Extension_free, &back, 0));
  LIST_THERE_AND_BACK(
      asn1_expl_List_e(&p, 0xA3, 16, list, asn1_Extension_e),
      asn1_expl_List_d(octets, p, 0xA3, 16, asn1_Extension_d, asn1_Extension_free, &back, 0));
  LIST_THERE_AND_BACK(
      asn1_expl_SetOf_e(&p, 0xA3, list, asn1_Extension_e),
      asn1_expl_SetOf_d(octets, p, 0xA3, asn1_Extension_d, asn1_Extension_free, &back, 0));
  LIST_THERE_AND_BACK(
      asn1_expl_SeqOf_e(&p, 0xA3, list, asn1_Extension_e),
      asn1_expl_SeqOf_d(octets, p, 0xA3, asn1_Extension_d, asn1_Extension_free, &back, 0));
  List_free(list, asn1_Extension_free);
}

/* The functions of a caller's own record type go there as they stand, too. */
typedef struct Own {
  uint32_t number;
} Own;

static Own *new_own(uint32_t number) {
  Own *own = (Own *)malloc(sizeof *own);
  if (own != NULL) own->number = number;
  return own;
}

static uint32_t released = 0;

static void free_own(Own *own) {
  if (own != NULL) released++;
  free(own);
}

static Own *clone_own(const Own *own) { return new_own(own->number); }

static int32_t compare_own(const Own *a, const Own *b) { return a->number != b->number; }

static uint32_t encode_own(uint8_t **pp, const Own *own) {
  return asn1_Enumerated_e(pp, own->number);
}

static const uint8_t *decode_own(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 Own **place, uint32_t depth) {
  *place = new_own(0);
  return *place == NULL ? NULL : asn1_Enumerated_d(z, end, impl_tag, &(*place)->number, depth);
}

static void use_lists_of_an_own_type(void) {
  static const uint8_t five[] = {0x30, 0x03, 0x0A, 0x01, 0x05};
  const Own same = {5}, other = {6};
  uint8_t octets[sizeof five], *p = octets;
  void (*destructor)(Own *) = free_own;
  List *list = NULL, *copy;
  EXPECT(asn1_SeqOf_d(five, five + sizeof five, 0, decode_own, destructor, &list, 0) ==
         five + sizeof five);
  copy = List_clone(list, clone_own, &free_own);
  List_free(list, destructor);
  EXPECT(released == 1 && List_len(copy) == 1);
  EXPECT(List_contains(copy, &same, compare_own) == 0);
  EXPECT(List_contains(copy, &other, compare_own) == -1);
  EXPECT(asn1_SeqOf_e(&p, copy, encode_own) == sizeof five);
  EXPECT(memcmp(octets, five, sizeof five) == 0);
  List_free(copy, free);
  EXPECT(released == 1);
}

/* Where an element function may be NULL it is written as any null pointer is. */
static void use_lists_without_functions(void) {
  List *empty = List_new(0), *copy = List_clone(empty, NULL, NULL);
  EXPECT(copy != NULL && List_contains(copy, empty, NULL) == -1);
  EXPECT(asn1_SeqOf_e(NULL, empty, NULL) == 2);
  List_free(empty, 0);
#if defined __cplusplus || __STDC_VERSION__ >= 202311L
  List_free(copy, nullptr);
#else
  List_free(copy, NULL);
#endif
}

/*
 * The functions of a record type. The list functions take them as they stand; with an empty list
 * they are not called.
 */
static const uint8_t empty_sequence[] = {0x30, 0x00};

#define USE_DECODER(T)                                                                            \
  do {                                                                                            \
    const uint8_t *end = empty_sequence + sizeof empty_sequence;                                  \
    List *list = NULL;                                                                            \
    EXPECT(asn1_SeqOf_d(empty_sequence, end, 0, asn1_##T##_d, asn1_##T##_free, &list, 0) == end); \
    List_free(list, asn1_##T##_free);                                                             \
  } while (0)

#define USE_ENCODER(T)                                                       \
  do {                                                                       \
    List *list = List_new(0);                                                \
    EXPECT(asn1_SeqOf_e(NULL, list, asn1_##T##_e) == sizeof empty_sequence); \
    List_free(list, asn1_##T##_free);                                        \
  } while (0)

#define USE_CLONE(T)                                                                       \
  do {                                                                                     \
    List *list = List_new(0), *copy = List_clone(list, asn1_##T##_clone, asn1_##T##_free); \
    EXPECT(copy != NULL);                                                                  \
    List_free(copy, asn1_##T##_free);                                                      \
    List_free(list, asn1_##T##_free);                                                      \
  } while (0)

#define USE_NEW(T)                \
  do {                            \
    T *record = asn1_##T##_new(); \
    EXPECT(record != NULL);       \
    asn1_##T##_free(record);      \
  } while (0)

/* A type that the library only reads, and one that it writes too. */
#define USE_READ_TYPE(T) \
  do {                   \
    USE_NEW(T);          \
    USE_DECODER(T);      \
    USE_CLONE(T);        \
  } while (0)
#define USE_TYPE(T)   \
  do {                \
    USE_READ_TYPE(T); \
    USE_ENCODER(T);   \
  } while (0)

static void use_revocation_lists(void) {
  USE_TYPE(CRLEntry);
  USE_TYPE(CertificateList_TBS);
  USE_TYPE(CertificateRevocationList);
}

static void use_extension_values(void) {
  USE_TYPE(GeneralName);
  USE_TYPE(BasicConstraints);
  USE_TYPE(DistributionPoint);
  USE_TYPE(DistributionPointName);
  USE_TYPE(AccessDescription);
  USE_READ_TYPE(AuthorityKeyIdentifier);
  USE_READ_TYPE(GeneralSubtree);
  USE_READ_TYPE(NameConstraints);
  USE_READ_TYPE(PolicyConstraints);
  USE_READ_TYPE(PolicyMapping);
  USE_READ_TYPE(PrivateKeyUsagePeriod);
  USE_READ_TYPE(OtherName);
  USE_ENCODER(AuthorityInfoAccessSyntax);
  USE_DECODER(AuthorityInfoAccessSyntax);
  OtherName *other_name = asn1_OtherName_new();
  EXPECT(asn1_OtherName_e(NULL, NULL, other_name) == 0);
  asn1_OtherName_free(other_name);
}

static void use_logotypes(void) {
  USE_TYPE(HashAlgAndValue);
  USE_TYPE(LogotypeAudio);
  USE_TYPE(LogotypeAudioInfo);
  USE_TYPE(LogotypeData);
  USE_TYPE(LogotypeDetails);
  USE_TYPE(LogotypeExtn);
  USE_TYPE(LogotypeImage);
  USE_TYPE(LogotypeImageInfo);
  USE_TYPE(LogotypeImageResolution);
  USE_TYPE(LogotypeInfo);
  USE_TYPE(LogotypeReference);
  USE_TYPE(OtherLogotypeInfo);
}

static void use_status_messages(void) {
  USE_TYPE(CertID);
  USE_TYPE(OCSPRequest);
  USE_TYPE(OCSPSignature);
  USE_TYPE(Request);
  USE_TYPE(TBSRequest);
  USE_READ_TYPE(BasicOCSPResponse);
  USE_READ_TYPE(OCSPCertStatus);
  USE_READ_TYPE(OCSPResponse);
  USE_READ_TYPE(ResponderID);
  USE_READ_TYPE(ResponseBytes);
  USE_READ_TYPE(ResponseData);
  USE_READ_TYPE(RevokedInfo);
  USE_READ_TYPE(SingleResponse);
  List *list = List_new(0);
  EXPECT(List_contains(list, empty_sequence, asn1_CertID_cmp) == -1);
  List_free(list, asn1_CertID_free);
}

static void use_keys_and_requests(void) {
  USE_TYPE(RSAPrivateKey);
  USE_TYPE(RSAPublicKey);
  USE_TYPE(DigestInfo);
  USE_TYPE(PrivateKeyInfo);
  USE_TYPE(EncryptedPrivateKeyInfo);
  USE_TYPE(Attribute);
  USE_TYPE(CertRequestInfo);
  USE_TYPE(CertificationRequest);
  USE_TYPE(DomainParameters);
  USE_TYPE(ValidationParms);
  USE_TYPE(DssParms);
  USE_TYPE(DssSigValue);
  USE_TYPE(PublicKeyAndChallenge);
  USE_TYPE(SignedPublicKeyAndChallenge);
  EXPECT(asn1_Attributes_getAttribute(NULL, asn1_Get_challengePassword()) == NULL);
}

static void use_messages(void) {
  USE_TYPE(SignedData);
  USE_TYPE(SignerInfo);
  USE_TYPE(IssuerAndSerialNumber);
  USE_TYPE(EncryptedData);
  USE_TYPE(EncryptedContentInfo);
  USE_TYPE(PFX);
  USE_TYPE(PbeParams);
  USE_TYPE(MacData);
  USE_TYPE(SafeBag);
  USE_TYPE(CertBag);
  USE_TYPE(CRLBag);
  USE_TYPE(SecretBag);
  ContentInfo *content_info = asn1_ContentInfo_new();
  content_info->contentType = asn1_ObjId_clone(asn1_Get_data());
  asn1_ContentInfo_free(content_info);
  USE_ENCODER(ContentInfo);
  USE_DECODER(ContentInfo);
  USE_CLONE(ContentInfo);
  USE_NEW(Content);
}

static void use_card_objects(void) {
  USE_TYPE(PublicKeyMAC);
  static const uint8_t leaf[] = {0x30, 0x07, 0x06, 0x01, 0x05, 0x04, 0x02, 0x41, 0x42};
  static const uint8_t empty_set[] = {0x31, 0x00};
  GDOObject *object = NULL, *empty = asn1_GDOObject_new();
  List *sets = List_new(0), *back = NULL;
  EXPECT(asn1_GDOObject_d(leaf, leaf + sizeof leaf, 0, 0, &object, 0) == leaf + sizeof leaf);
  EXPECT(asn1_GDOObject_e(NULL, 0, object) == sizeof leaf);
  EXPECT(asn1_SetOfSetOf_e(NULL, sets, asn1_GDOObjectSetOf_e) == sizeof empty_set);
  EXPECT(asn1_SetOfSetOf_d(empty_set, empty_set + 2, 0, asn1_GDOObjectSetOf_d,
                           asn1_GDOObjectSetOf_free, &back, 0) == empty_set + 2);
  List_free(sets, NULL);
  List_free(back, NULL);
  asn1_GDOObjectSetOf_free(object);
  asn1_GDOObjectSetOfSetOf_free(empty);
  USE_ENCODER(GDOObjectSetOf);
  USE_ENCODER(GDOObjectSetOfSetOf);
  USE_DECODER(GDOObjectSetOf);
  USE_DECODER(GDOObjectSetOfSetOf);
  USE_NEW(GDO);
  USE_ENCODER(GDO);
  USE_DECODER(GDO);
  USE_NEW(CardInfo);
  USE_ENCODER(CardInfo);
  USE_DECODER(CardInfo);
}

static const ObjId *(*const getters[])(void) = {
    /* algorithms.h */
    asn1_Get_rsaSignatureWithripemd160,
    asn1_Get_ansi_X9_62,
    asn1_Get_id_ecPublicKey,
    asn1_Get_RIPEMD_160,
    asn1_Get_rsaEncryption,
    asn1_Get_md2WithRSAEncryption,
    asn1_Get_md5WithRSAEncryption,
    asn1_Get_sha_1WithRSAEncryption,
    asn1_Get_sha256WithRSAEncryption,
    asn1_Get_sha384WithRSAEncryption,
    asn1_Get_sha512WithRSAEncryption,
    asn1_Get_id_SHA1,
    asn1_Get_md2,
    asn1_Get_md5,
    /* asn1_ocsp.h */
    asn1_Get_id_pkix_ocsp,
    asn1_Get_id_pkix_ocsp_basic,
    asn1_Get_id_pkix_ocsp_nonce,
    asn1_Get_id_pkix_ocsp_crl,
    asn1_Get_id_pkix_ocsp_response,
    asn1_Get_id_pkix_ocsp_nocheck,
    asn1_Get_id_pkix_ocsp_archive_cutoff,
    asn1_Get_id_pkix_ocsp_service_locator,
    /* asn1_x509v3.h */
    asn1_Get_id_ce,
    asn1_Get_id_ce_authorityKeyIdentifier,
    asn1_Get_id_ce_subjectKeyIdentifier,
    asn1_Get_id_ce_keyUsage,
    asn1_Get_id_ce_privateKeyUsagePeriod,
    asn1_Get_id_qt,
    asn1_Get_id_ce_certificatePolicies,
    asn1_Get_anyPolicy,
    asn1_Get_id_qt_cps,
    asn1_Get_id_qt_unotice,
    asn1_Get_id_ce_policyMappings,
    asn1_Get_id_ce_subjectAltName,
    asn1_Get_id_ce_issuerAltName,
    asn1_Get_id_ce_subjectDirectoryAttributes,
    asn1_Get_id_ce_basicConstraints,
    asn1_Get_id_ce_nameConstraints,
    asn1_Get_id_ce_policyConstraints,
    asn1_Get_id_ce_extKeyUsage,
    asn1_Get_anyExtendedKeyUsage,
    asn1_Get_id_kp,
    asn1_Get_id_kp_serverAuth,
    asn1_Get_id_kp_clientAuth,
    asn1_Get_id_kp_codeSigning,
    asn1_Get_id_kp_emailProtection,
    asn1_Get_id_kp_timeStamping,
    asn1_Get_id_kp_OCSPSigning,
    asn1_Get_id_ce_cRLDistributionPoints,
    asn1_Get_id_pkix,
    asn1_Get_id_pe,
    asn1_Get_id_pe_authorityInfoAccess,
    asn1_Get_id_ad,
    asn1_Get_id_ad_ocsp,
    asn1_Get_id_ad_caIssuers,
    asn1_Get_id_ce_cRLNumber,
    asn1_Get_id_ce_deltaCRLIndicator,
    asn1_Get_id_ce_issuingDistributionPoint,
    asn1_Get_id_ce_freshestCRL,
    asn1_Get_id_ce_cRLReason,
    asn1_Get_id_ce_holdInstructionCode,
    asn1_Get_id_ce_invalidityDate,
    asn1_Get_id_ce_certificateIssuer,
    /* dsa_dh.h */
    asn1_Get_dhpublicnumber,
    asn1_Get_id_dsa_with_sha1,
    asn1_Get_id_dsa,
    asn1_Get_dsaWithSha,
    asn1_Get_dsaWithSha1,
    asn1_Get_dsa,
    /* global_identifier.h */
    asn1_Get_korvaneGlobalIdentifier,
    /* ms_enrolment.h */
    asn1_Get_ms_certificate_request_extensions,
    asn1_Get_ms_enrolment_csp,
    asn1_Get_ms_os_version,
    asn1_Get_ms_certificate_template_name,
    asn1_Get_ms_certificate_template_name_3,
    asn1_Get_ms_ca_key_cert_index_pair,
    /* netscape.h */
    asn1_Get_netscape,
    asn1_Get_netscape_cert_extension,
    asn1_Get_netscape_cert_type,
    asn1_Get_netscape_base_url,
    asn1_Get_netscape_revocation_url,
    asn1_Get_netscape_ca_revocation_url,
    asn1_Get_netscape_cert_renewal_url,
    asn1_Get_netscape_ca_policy_url,
    asn1_Get_netscape_ssl_server_name,
    asn1_Get_netscape_comment,
    asn1_Get_netscape_data_type,
    asn1_Get_netscape_cert_sequence,
    /* pkcs12.h */
    asn1_Get_pkcs_12,
    asn1_Get_pkcs_12PbeIds,
    asn1_Get_pbeWithSHA1And128BitRC4,
    asn1_Get_pbeWithSHA1And40BitRC4,
    asn1_Get_pbeWithSHA1And3_KeyTripleDES_CBC,
    asn1_Get_pbeWithSHA1And2_KeyTripleDES_CBC,
    asn1_Get_pbeWithSHA1And128BitRC2,
    asn1_Get_pbeWithSHA1And40BitRC2,
    asn1_Get_pkcs_12Version1,
    asn1_Get_pkcs_12BagIds,
    asn1_Get_keyBag,
    asn1_Get_pkcs_8ShroudedKeyBag,
    asn1_Get_certBag,
    asn1_Get_crlBag,
    asn1_Get_secretBag,
    asn1_Get_safeContentBag,
    asn1_Get_x509Certificate,
    asn1_Get_sdsiCertificate,
    asn1_Get_x509Crl,
    /* pkcs7.h */
    asn1_Get_data,
    asn1_Get_signedData,
    asn1_Get_envelopedData,
    asn1_Get_signedAndEnvelopedData,
    asn1_Get_digestedData,
    asn1_Get_encryptedData,
    /* pkcs9.h */
    asn1_Get_emailAddress,
    asn1_Get_unstructuredName,
    asn1_Get_contentType,
    asn1_Get_messageDigest,
    asn1_Get_signingTime,
    asn1_Get_counterSignature,
    asn1_Get_challengePassword,
    asn1_Get_unstructuredAddress,
    asn1_Get_extendedCertificateAttributes,
    asn1_Get_issuerAndSerialNumber,
    asn1_Get_passwordCheck,
    asn1_Get_publicKey,
    asn1_Get_signingDescription,
    asn1_Get_extensionRequest,
    asn1_Get_smimeCapabilities,
    asn1_Get_friendlyName,
    asn1_Get_localKeyId,
    asn1_Get_certTypes,
    asn1_Get_crlTypes,
    asn1_Get_userPKCS12,
    asn1_Get_pkcs15Token,
    asn1_Get_encryptedPrivateKeyInfo,
    asn1_Get_randomNonce,
    asn1_Get_sequenceNumber,
    asn1_Get_pkcs7PDU,
    asn1_Get_dateOfBirth,
    asn1_Get_placeOfBirth,
    asn1_Get_gender,
    asn1_Get_countryOfCitizenship,
    asn1_Get_countryOfResidence,
    /* x520.h */
    asn1_Get_id_at,
    asn1_Get_id_at_objectClass,
    asn1_Get_id_at_aliasedEntryName,
    asn1_Get_id_at_knowledgeInformation,
    asn1_Get_id_at_commonName,
    asn1_Get_id_at_surname,
    asn1_Get_id_at_serialNumber,
    asn1_Get_id_at_countryName,
    asn1_Get_id_at_localityName,
    asn1_Get_id_at_collectiveLocalityName,
    asn1_Get_id_at_stateOrProvinceName,
    asn1_Get_id_at_collectiveStateOrProvinceName,
    asn1_Get_id_at_streetAddress,
    asn1_Get_id_at_collectiveStreetAddress,
    asn1_Get_id_at_organizationName,
    asn1_Get_id_at_collectiveOrganizationName,
    asn1_Get_id_at_organizationalUnitName,
    asn1_Get_id_at_collectiveOrganizationalUnitName,
    asn1_Get_id_at_title,
    asn1_Get_id_at_description,
    asn1_Get_id_at_name,
    asn1_Get_id_at_givenName,
    asn1_Get_id_at_initials,
    asn1_Get_id_at_generationQualifier,
    asn1_Get_id_at_uniqueIdentifier,
    asn1_Get_id_at_dnQualifier,
};

static void use_getters(void) {
  size_t i;
  for (i = 0; i < sizeof getters / sizeof *getters; i++) {
    const ObjId *identifier = getters[i]();
    EXPECT(identifier != NULL && identifier == getters[i]() && identifier->count >= 2);
  }
}

static void use_descriptors(void) {
  static const uint8_t validity[] = {0x30, 0x02, 0x05, 0x00};
  const pki_Type *type = pki_Type_find("Validity"), *list = pki_Type_find("Extensions");
  const pki_Functions *functions = pki_Type_functions(type);
  pki_Field field;
  pki_Fault fault;
  char name[48];
  EXPECT(pki_Type_get(pki_Type_count()) == NULL);
  EXPECT(strcmp(pki_Type_name(type), pki_Type_record(type)) == 0);
  EXPECT(pki_Type_kind(type) == PKI_SEQUENCE && pki_Type_identifier(type) == 0x30);
  EXPECT(pki_Type_size(type) == sizeof(Validity) && pki_Type_field_count(type) == 2);
  EXPECT(pki_Type_field(type, 1, &field) == 1 && strcmp(field.name, "notAfter") == 0);
  EXPECT(pki_Type_element(list) == pki_Type_find("Extension"));
  EXPECT(strcmp(pki_identifier_name(0x30, name, sizeof name), "SEQUENCE (30)") == 0);
  EXPECT(pki_explain(type, validity, validity + sizeof validity, &fault) == 1);
  EXPECT(fault.offset == 2 && strcmp(fault.path, "notBefore") == 0);
  functions->free(functions->create());
}

static void use_texts_of_names(void) {
  ObjId *large = pki_ObjId_parse("2.25.18446744073709551616");
  char *digits = pki_ObjId_text(large), *string;
  RDNSequence *name = pki_name_parse_rfc4514("CN=a\\,b,C=DE");
  Name *text = pki_RDNSequence_text(name);
  string = pki_name_rfc4514(name);
  EXPECT(large->arcs[0] == PKI_LARGE_ARCS && strcmp(digits, "2.25.18446744073709551616") == 0);
  EXPECT(strcmp(text, "/c(19)=DE/cn(12)=a/,b") == 0);
  EXPECT(strcmp(string, "CN=a\\,b,C=DE") == 0);
  free(string);
  free(digits);
  asn1_Name_free(text);
  asn1_RDNSequence_free(name);
  asn1_ObjId_free(large);
}

static void use_views(void) {
  static const uint8_t octets[] = {0x30, 0x03, 0x02, 0x01, 0x05};
  pki_Octets fields[2], content;
  pki_CertificateView certificate;
  pki_ExtensionView extension;
  pki_CrlReader reader;
  pki_CrlEntry entry;
  pki_Fault fault;
  const pki_Octets whole = {octets, sizeof octets};
  content = pki_view_content(whole);
  EXPECT(pki_view_next(&content, &fields[0]) == 1 && fields[0].data == octets + 2);
  EXPECT(pki_view(pki_Type_find("pki_Validity"), octets, octets + 5, fields, 2) == NULL);
  EXPECT(pki_certificate_view(octets, octets + 5, &certificate) == NULL);
  EXPECT(pki_extension_view(certificate.extensions, octets, 1, &extension) == 0);
  EXPECT(pki_crl_open(&reader, octets, octets + 5) == 0);
  EXPECT(pki_crl_next(&reader, &entry) == 0);
  EXPECT(pki_crl_find(&reader, octets, 1, &entry) == 0);
  EXPECT(pki_find_missing(pki_Type_find("pki_Validity"), NULL, &fault) == 1);
}

static void use_questions_about_a_certificate(void) {
  static List *(*const lists[])(const Certificate *, uint32_t *) = {
      pki_dns_names,  pki_mail_addresses, pki_uris,         pki_ip_addresses,
      pki_crl_places, pki_ocsp_places,    pki_issuer_places};
  Certificate *certificate = pki_Certificate_new();
  char text[] = "700101000001Z";
  Time time;
  uint32_t number = 1;
  int64_t from = 1, to = 1;
  size_t i;
  time.kind = 23;
  time.value = text;
  for (i = 0; i < sizeof lists / sizeof *lists; i++) {
    List *list = lists[i](certificate, &number);
    EXPECT(list != NULL && List_len(list) == 0 && number == 0);
    List_free(list, asn1_IA5String_free);
  }
  EXPECT(pki_find_extension(NULL, asn1_Get_id_ce_keyUsage()) == NULL);
  EXPECT(pki_key_usage(certificate, &number) == 0 && number == 0);
  EXPECT((PKI_DIGITAL_SIGNATURE | PKI_DECIPHER_ONLY) == 0x101);
  EXPECT(pki_allows_purpose(certificate, asn1_Get_id_kp_serverAuth()) == 1);
  EXPECT(pki_may_issue(certificate, &number) == 0 && number == 0);
  EXPECT(pki_subject_key_identifier(certificate).data == NULL);
  EXPECT(pki_authority_key_identifier(certificate).data == NULL);
  EXPECT(pki_validity(certificate, &from, &to) == 0 && from == 0 && to == 0);
  EXPECT(pki_Time_seconds(&time, &from) == 1 && from == 1);
  pki_Certificate_free(certificate);
}

static void use_ocsp_forms(void) {
  OCSPResponse *response = pki_OCSPResponse_new();
  pki_SignedCertificateTimestamp *timestamp = pki_SignedCertificateTimestamp_new();
  pki_SignedCertificateTimestamp *copy = pki_SignedCertificateTimestamp_clone(timestamp);
  EXPECT(pki_OCSPResponse_basic(response) == NULL);
  EXPECT(copy != NULL && copy->timestamp == 0);
  EXPECT(pki_Type_defined_by(asn1_Get_id_ce_keyUsage()) == pki_Type_find("pki_KeyUsage"));
  pki_SignedCertificateTimestamp_free(copy);
  pki_SignedCertificateTimestamp_free(timestamp);
  pki_OCSPResponse_free(response);
}

static void use_signed_octets(void) {
  pki_SignerInfo *signer = pki_SignerInfo_new();
  EXPECT(pki_SignerInfo_signed_octets(NULL, signer) == 0);
  pki_SignerInfo_free(signer);
}

/* What a form does without a value; the other tests give it values. */
#define LIST_FORM(T, Record)                               \
  do {                                                     \
    Record *place = NULL;                                  \
    EXPECT(pki_##T##_d(NULL, NULL, 0, &place, 0) == NULL); \
    EXPECT(pki_##T##_e(NULL, NULL) == 0);                  \
    EXPECT(pki_##T##_clone(NULL) == NULL);                 \
    pki_##T##_free(NULL);                                  \
  } while (0);
#define FORM(T, Record)             \
  do {                              \
    Record *made = pki_##T##_new(); \
    EXPECT(made != NULL);           \
    pki_##T##_free(made);           \
  } while (0);                      \
  LIST_FORM(T, Record)

static void use_forms(void) {
#include "every_form.h"
}

int main(void) {
  use_the_frame();
  use_numbers();
  use_any();
  use_identifiers();
  use_bits();
  use_strings();
  use_times();
  use_names();
  use_certificates();
  use_wrappers_and_lists();
  use_lists_of_an_own_type();
  use_lists_without_functions();
  use_revocation_lists();
  use_extension_values();
  use_logotypes();
  use_status_messages();
  use_keys_and_requests();
  use_messages();
  use_card_objects();
  use_getters();
  use_descriptors();
  use_texts_of_names();
  use_views();
  use_questions_about_a_certificate();
  use_signed_octets();
  use_ocsp_forms();
  use_forms();
  return failures == 0 ? 0 : 1;
}
