#include <octets.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <string>
#include <type_traits>

#include "family.h"
#include "forms.h"
#include "logotypes.h"
#include "pages.h"

namespace attack {

namespace {

using support::element;
using support::hex;
using support::text;
using support::operator+;

// ---------------------------------------------------------------------------------------------
// The functions of a family
// ---------------------------------------------------------------------------------------------

/// Functions in place of those of a descriptor.
struct Instead {
  decltype(pki_Functions::create) create = nullptr;
  decltype(pki_Functions::decode) decode = nullptr;
  decltype(pki_Functions::encode) encode = nullptr;
  decltype(pki_Functions::free) free = nullptr;
};

/// A type, with the functions of its descriptor but for those of `instead`.
Family type(std::string_view group, const char *name, unsigned departures,
            std::vector<Bytes> samples, const Instead &instead = {}) {
  const pki_Type *const found = pki_Type_find(name);
  if (found == nullptr) throw std::invalid_argument(std::string("there is no type ") + name);
  Family out{*pki_Type_functions(found), group, name, departures, found, std::move(samples)};
  if (instead.create != nullptr) out.create = instead.create;
  if (instead.decode != nullptr) out.decode = instead.decode;
  if (instead.encode != nullptr) out.encode = instead.encode;
  if (instead.free != nullptr) out.free = instead.free;
  return out;
}

/// Functions over a record of type T that are no type's. A null pointer stands for one that there
/// is not.
template <class T, auto Decode, auto Free, auto Encode = nullptr, auto Clone = nullptr,
          auto Compare = nullptr>
Family family(std::string_view group, std::string_view name, unsigned departures,
              std::vector<Bytes> samples) {
  Family out{{}, group, name, departures, nullptr, std::move(samples)};
  out.decode = [](const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void **record,
                  uint32_t depth) {
    // A decoder that fails may leave the place as it was, which must not get lost here.
    T *made = static_cast<T *>(*record);
    const uint8_t *const next = Decode(z, end, impl_tag, &made, depth);
    *record = made;
    return next;
  };
  out.free = [](void *record) { Free(static_cast<T *>(record)); };
  if constexpr (!std::is_null_pointer_v<decltype(Encode)>) {
    out.encode = [](uint8_t **pp, const void *record) {
      return Encode(pp, static_cast<const T *>(record));
    };
  }
  if constexpr (!std::is_null_pointer_v<decltype(Clone)>) {
    out.clone = [](const void *record) -> void * { return Clone(static_cast<const T *>(record)); };
  }
  if constexpr (!std::is_null_pointer_v<decltype(Compare)>) {
    out.compare = [](const void *a, const void *b) {
      return Compare(static_cast<const T *>(a), static_cast<const T *>(b));
    };
  }
  return out;
}

// A constructor that takes a size.
template <auto Create>
void *create_sized() {
  return Create(5);
}
#define OF_SIZE(T) \
  { .create = create_sized<asn1_##T##_new> }

// A reader of the tests stands in for the decoder of a logotype, which refuses everything.
template <auto Read, class T>
const uint8_t *stand_in(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void **place,
                        uint32_t depth) {
  return Read(z, end, impl_tag, reinterpret_cast<T **>(place), depth);
}
template <auto Read, class T>
Family logotype(const char *name, std::vector<Bytes> samples) {
  return type("logotype", name, is_not_read_back | is_never_read, std::move(samples),
              {.decode = stand_in<Read, T>});
}
#define LOGOTYPE_FAMILY(decode, T) logotype<logotypes::LOGOTYPE(decode, T), T>

// BOOLEAN and ENUMERATED are plain numbers: they get a box.
template <auto Decode>
const uint8_t *decode_boxed(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void **place,
                            uint32_t depth) {
  uint32_t value = 0;
  const uint8_t *const next = Decode(z, end, impl_tag, &value, depth);
  if (next != nullptr) *place = new uint32_t(value);
  return next;
}
template <auto Encode>
uint32_t encode_boxed(uint8_t **pp, const void *box) {
  return Encode(pp, *static_cast<const uint32_t *>(box));
}
void free_box(void *box) { delete static_cast<uint32_t *>(box); }
#define BOXED(T) \
  { .decode = decode_boxed<asn1_##T##_d>, .encode = encode_boxed<asn1_##T##_e>, .free = free_box }

// NULL has no record at all.
const uint8_t *decode_null(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, void **,
                           uint32_t depth) {
  void *unused = nullptr;
  return asn1_Null_d(z, end, impl_tag, &unused, depth);
}
uint32_t encode_null(uint8_t **pp, const void *) { return asn1_Null_e(pp); }
void free_nothing(void *) {}

// Lists, by the functions of their elements.
void free_integers(List *list) { List_free(list, asn1_Integer_free); }
const uint8_t *decode_sequence_of(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  List **place, uint32_t depth) {
  return asn1_SeqOf_d(z, end, impl_tag, asn1_Integer_d, asn1_Integer_free, place, depth);
}
uint32_t encode_sequence_of(uint8_t **pp, const List *list) {
  return asn1_SeqOf_e(pp, list, asn1_Integer_e);
}
const uint8_t *decode_set_of(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, List **place,
                             uint32_t depth) {
  return asn1_SetOf_d(z, end, impl_tag, asn1_OctetString_d, asn1_OctetString_free, place, depth);
}
uint32_t encode_set_of(uint8_t **pp, const List *list) {
  return asn1_SetOf_e(pp, list, asn1_OctetString_e);
}
void free_strings(List *list) { List_free(list, asn1_OctetString_free); }
const uint8_t *decode_explicit_sequence_of(const uint8_t *z, const uint8_t *end, uint32_t,
                                           List **place, uint32_t depth) {
  return asn1_expl_SeqOf_d(z, end, 0xA0, asn1_Integer_d, asn1_Integer_free, place, depth);
}
uint32_t encode_explicit_sequence_of(uint8_t **pp, const List *list) {
  return asn1_expl_SeqOf_e(pp, 0xA0, list, asn1_Integer_e);
}
const uint8_t *decode_set_of_sets(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  List **place, uint32_t depth) {
  return asn1_SetOfSetOf_d(z, end, impl_tag, asn1_Integer_d, asn1_Integer_free, place, depth);
}
uint32_t encode_set_of_sets(uint8_t **pp, const List *list) {
  return asn1_SetOfSetOf_e(pp, list, asn1_Integer_e);
}
void free_sets(List *list) { List_free(list, free_integers); }
const uint8_t *decode_safe_contents(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    List **place, uint32_t depth) {
  return asn1_SeqOf_d(z, end, impl_tag, asn1_SafeBag_d, asn1_SafeBag_free, place, depth);
}
uint32_t encode_safe_contents(uint8_t **pp, const List *list) {
  return asn1_SeqOf_e(pp, list, asn1_SafeBag_e);
}
void free_safe_contents(List *list) { List_free(list, asn1_SafeBag_free); }

// The signed octets of a response are the caller's.
void free_basic_response(void *record) {
  auto *const response = static_cast<BasicOCSPResponse *>(record);
  if (response == nullptr) return;
  asn1_OctetString_free(response->tbsResponseDataBytes);
  asn1_BasicOCSPResponse_free(response);
}

// The encoder has one argument more.
uint32_t encode_other_name(uint8_t **pp, const void *name) {
  return asn1_OtherName_e(pp, nullptr, static_cast<const OtherName *>(name));
}

// Texts, as if they were encodings: the octets of the input, up to a NUL octet, are the text. What stands
// after its closing NUL cannot be read.
template <class Record, class Parse>
const uint8_t *read_text(const uint8_t *z, const uint8_t *end, Record **place, Parse parse) {
  thread_local TextAtEdge text;
  const char *const start = text.copy({z, end});
  const char *cursor = start;
  Record *const record = parse(&cursor);
  if (record == nullptr) return nullptr;
  *place = record;
  return z + (cursor - start);
}
uint32_t write_text(uint8_t **pp, std::string_view characters) {
  if (pp != nullptr)
    for (const char c : characters) *(*pp)++ = static_cast<uint8_t>(c);
  return static_cast<uint32_t>(characters.size());
}

const uint8_t *read_name(const uint8_t *z, const uint8_t *end, uint32_t, RDNSequence **place,
                         uint32_t) {
  return read_text(z, end, place, [](const char **cursor) {
    RDNSequence *const name = asn1_Name_to_RDNSequence(*cursor);
    *cursor += std::strlen(*cursor);
    return name;
  });
}
uint32_t write_name(uint8_t **pp, const RDNSequence *name) {
  Name *const characters = asn1_RDNSequence_to_Name(name);
  const uint32_t size = characters == nullptr ? 0 : write_text(pp, characters);
  asn1_Name_free(characters);
  return size;
}

const uint8_t *read_assertion(const uint8_t *z, const uint8_t *end, uint32_t,
                              AttributeValueAssertion **place, uint32_t) {
  return read_text(z, end, place, asn1_AttributeValueAssertion_parse);
}

const uint8_t *read_identifier(const uint8_t *z, const uint8_t *end, uint32_t, ObjId **place,
                               uint32_t) {
  return read_text(z, end, place, asn1_ObjId_parse);
}
uint32_t write_identifier(uint8_t **pp, const ObjId *identifier) {
  uint32_t size = 0;
  if (asn1_ObjId_sprint(identifier, nullptr, &size) != 0) return 0;
  std::string characters(size, '\0');
  if (asn1_ObjId_sprint(identifier, characters.data(), &size) != 0) return 0;
  return write_text(pp, {characters.data(), size - 1});
}

// The text of a time is read to seconds, and the seconds are written.
template <uint8_t kind>
const uint8_t *read_time(const uint8_t *z, const uint8_t *end, uint32_t, Time **place, uint32_t) {
  return read_text(z, end, place, [](const char **cursor) -> Time * {
    Time time{kind, const_cast<char *>(*cursor)};  // which is read only
    time_t seconds = 0;
    if (asn1_Time2Seconds(&seconds, &time) != 0) return nullptr;
    Time *const copy = asn1_Time_clone(&time);
    Time *const set = copy == nullptr ? nullptr : asn1_Seconds2Time(copy, seconds);
    if (set == nullptr) asn1_Time_free(copy);
    *cursor += std::strlen(*cursor);
    return set;
  });
}

// ---------------------------------------------------------------------------------------------
// Samples
// ---------------------------------------------------------------------------------------------

Bytes sequence(const Bytes &content) { return element(0x30, content); }
Bytes set(const Bytes &content) { return element(0x31, content); }
Bytes context(uint8_t number, const Bytes &content) {
  return element(static_cast<uint8_t>(0xA0 | number), content);
}
Bytes octets(const Bytes &content) { return element(4, content); }
Bytes integer(std::string_view digits) { return element(2, hex(digits)); }
Bytes utc_time(std::string_view digits) { return element(23, text(digits)); }
Bytes generalized_time(std::string_view digits) { return element(24, text(digits)); }

const Bytes null = hex("05 00");
const Bytes sha1 = sequence(hex("06 05 2B 0E 03 02 1A") + null);
const Bytes rsa_encryption = sequence(hex("06 09 2A 86 48 86 F7 0D 01 01 01") + null);
const Bytes rsa_with_sha256 = sequence(hex("06 09 2A 86 48 86 F7 0D 01 01 0B") + null);
const Bytes signature = element(3, hex("00 8B 5A 11"));

// C=DE, O=Example and CN=a in one RDN
const Bytes country = sequence(hex("06 03 55 04 06") + element(19, text("DE")));
const Bytes organisation = sequence(hex("06 03 55 04 0A") + element(12, text("Example")));
const Bytes common_name = sequence(hex("06 03 55 04 03") + element(12, text("a")));
const Bytes rdn = set(organisation + common_name);
const Bytes name = sequence(set(country) + rdn);

const Bytes validity = sequence(utc_time("260101000000Z") + generalized_time("20560101000000Z"));
const Bytes public_key = sequence(rsa_encryption + element(3, hex("00 30 06 02 01 15 02 01 03")));
const Bytes basic_constraints = sequence(hex("01 01 FF") + integer("02"));
const Bytes critical_extension =
    sequence(hex("06 03 55 1D 13 01 01 FF") + octets(basic_constraints));
const Bytes plain_extension = sequence(hex("06 03 55 1D 0E") + octets(octets(hex("01 02 03"))));
const Bytes extensions = sequence(critical_extension + plain_extension);
const Bytes crl_entry_extensions = sequence(sequence(hex("06 03 55 1D 15 04 03 0A 01 01")));

const Bytes tbs_certificate =
    sequence(context(0, integer("02")) + integer("12 67") + rsa_with_sha256 + name + validity +
             name + public_key + element(0x81, hex("00 AB")) + element(0x82, hex("04 50")) +
             context(3, extensions));
const Bytes certificate = sequence(tbs_certificate + rsa_with_sha256 + signature);

const Bytes crl_entry = sequence(integer("05") + utc_time("260201000000Z") + crl_entry_extensions);
const Bytes tbs_crl = sequence(
    integer("01") + rsa_with_sha256 + name + utc_time("260101000000Z") + utc_time("260301000000Z") +
    sequence(crl_entry + sequence(integer("06") + utc_time("260202000000Z"))) +
    context(0, extensions));
const Bytes crl = sequence(tbs_crl + rsa_with_sha256 + signature);

const Bytes other_name = hex("06 03 2A 03 04") + context(0, element(12, text("x")));
const Bytes dns_name = element(0x82, text("example.org"));
const Bytes uri = element(0x86, text("http://a/"));

const Bytes cert_id =
    sequence(sha1 + octets(hex("11 22 33")) + octets(hex("44 55 66")) + integer("12 67"));
const Bytes tbs_request =
    sequence(context(0, integer("00")) + context(1, dns_name) +
             sequence(sequence(cert_id) + sequence(cert_id)) + context(2, extensions));
const Bytes ocsp_signature = sequence(rsa_with_sha256 + signature);
const Bytes responder_by_name = context(1, name);
const Bytes revoked = generalized_time("20260101000000Z") + context(0, hex("0A 01 01"));
const Bytes single_response =
    sequence(cert_id + element(0xA1, revoked) + generalized_time("20260301000000Z") +
             context(0, generalized_time("20260401000000Z")) + context(1, extensions));
const Bytes good_response = sequence(cert_id + hex("80 00") + generalized_time("20260301000000Z"));
const Bytes response_data =
    sequence(context(0, integer("00")) + responder_by_name + generalized_time("20260301000000Z") +
             sequence(single_response + good_response) + context(1, extensions));
const Bytes basic_response = sequence(response_data + rsa_with_sha256 + signature);
const Bytes response_bytes =
    sequence(hex("06 09 2B 06 01 05 05 07 30 01 01") + octets(basic_response));

const Bytes hash = sequence(sha1 + octets(hex("01 02 03")));
const Bytes uris = sequence(element(22, text("http://a/")) + element(22, text("")));
const Bytes logotype_reference = sequence(sequence(hash + hash) + uris);
const Bytes logotype_details = sequence(element(22, text("image/png")) + sequence(hash) + uris);
const Bytes image_info = sequence(integer("01") + integer("12 34") + integer("64") + integer("32") +
                                  context(2, integer("01 00")) + element(22, text("en")));
const Bytes image = sequence(logotype_details + image_info);
const Bytes audio_info = sequence(integer("12 34") + integer("05") + integer("02") +
                                  integer("00 AC 44") + element(22, text("en")));
const Bytes audio = sequence(logotype_details + audio_info);
const Bytes direct_logo = context(0, sequence(sequence(image) + null));
const Bytes indirect_logo = context(1, logotype_reference);

const Bytes rsa_private_key =
    sequence(integer("00") + integer("0C A1") + integer("11") + integer("0A C1") + integer("3D") +
             integer("35") + integer("35") + integer("31") + integer("26"));
const Bytes attribute =
    sequence(hex("06 09 2A 86 48 86 F7 0D 01 09 14") + set(element(30, hex("00 61 00 62")) + null));
const Bytes digest_info = sequence(sha1 + octets(hex("01 02 03 04")));
const Bytes private_key_info =
    sequence(integer("00") + rsa_encryption + octets(rsa_private_key) + context(0, attribute));
const Bytes pbe = sequence(octets(hex("01 02 03 04 05 06 07 08")) + integer("08 00"));
const Bytes pbe_algorithm = sequence(hex("06 0A 2A 86 48 86 F7 0D 01 0C 01 03") + pbe);
const Bytes encrypted_key = sequence(pbe_algorithm + octets(hex("DE AD BE EF")));

const Bytes request_info =
    sequence(integer("00") + name + public_key + context(0, attribute + attribute));
const Bytes request = sequence(request_info + rsa_with_sha256 + signature);

const Bytes data_type = hex("06 09 2A 86 48 86 F7 0D 01 07 01");
const Bytes data_message = sequence(data_type + context(0, octets(text("hello"))));
const Bytes issuer_and_serial = sequence(name + integer("12 67"));
const Bytes signer = sequence(integer("01") + issuer_and_serial + sha1 + context(0, attribute) +
                              rsa_encryption + octets(hex("01 02")) + context(1, attribute));
const Bytes signed_data = sequence(integer("01") + set(sha1) + data_message +
                                   context(0, certificate) + context(1, crl) + set(signer));
const Bytes signed_message =
    sequence(hex("06 09 2A 86 48 86 F7 0D 01 07 02") + context(0, signed_data));
const Bytes encrypted_content =
    sequence(data_type + pbe_algorithm + element(0x80, hex("CA FE 00 01")));
const Bytes encrypted_data = sequence(integer("00") + encrypted_content);
const Bytes encrypted_message =
    sequence(hex("06 09 2A 86 48 86 F7 0D 01 07 06") + context(0, encrypted_data));
const Bytes other_message = sequence(hex("06 03 2A 03 04") + context(0, null));

const Bytes key_bag = sequence(hex("06 0B 2A 86 48 86 F7 0D 01 0C 0A 01 01") +
                               context(0, private_key_info) + set(attribute));
const Bytes cert_bag =
    sequence(hex("06 0A 2A 86 48 86 F7 0D 01 09 16 01") + context(0, octets(certificate)));
const Bytes bag_of_certificate =
    sequence(hex("06 0B 2A 86 48 86 F7 0D 01 0C 0A 01 03") + context(0, cert_bag));
const Bytes safe_contents = sequence(key_bag + bag_of_certificate);
const Bytes mac = sequence(digest_info + octets(hex("0A 0B")) + integer("08 00"));
const Bytes pfx = sequence(
    integer("03") +
    sequence(data_type + context(0, octets(sequence(encrypted_message + data_message)))) + mac);

const Bytes dss_parameters = sequence(integer("17") + integer("0B") + integer("04"));
const Bytes validation = sequence(element(3, hex("00 01 05")) + integer("2A"));
const Bytes domain_parameters =
    sequence(integer("17") + integer("02") + integer("0B") + integer("02") + validation);

/// More RDNs than a new list has room for.
Bytes many_rdns() {
  Bytes out;
  for (int i = 0; i < 40; ++i) out = out + text("/c(19)=DE");
  return out;
}

const Bytes key_and_challenge = sequence(public_key + element(22, text("secret")));

// A leaf, and a container of two of them at a plain place.
const Bytes leaf = sequence(hex("06 01 01") + octets(hex("61 62")));
const Bytes container = sequence(hex("06 01 10") + octets(set(leaf + leaf)));
const Bytes nested_container = sequence(hex("06 01 11") + octets(set(set(leaf) + set(leaf))));
const Bytes attribute_holder = sequence(
    hex("06 01 20") + element(3, set(sequence(hex("06 04 10 00 00 00") + octets(hex("07"))))));
const Bytes card_object =
    sequence(container + nested_container + nested_container + nested_container + nested_container);

std::vector<Family> make_families() {
  constexpr unsigned names = writes_attribute_values | copy_forgets_value_tags;
  return {
      type("universal", "BOOLEAN", none, {hex("01 01 FF")}, BOXED(Boolean)),
      type("universal", "ENUMERATED", none, {hex("0A 01 05")}, BOXED(Enumerated)),
      type("universal", "NULL", none, {null},
           {.decode = decode_null, .encode = encode_null, .free = free_nothing}),
      type("universal", "INTEGER", none, {integer("12 67"), integer("80")}, OF_SIZE(Integer)),
      type("universal", "OBJECT IDENTIFIER", none, {hex("06 06 2A 86 48 86 F7 0D")},
           OF_SIZE(ObjId)),
      type("universal", "BIT STRING", none, {element(3, hex("04 A5 50"))}, OF_SIZE(BitString)),
      type("universal", "OCTET STRING", none, {octets(hex("01 02 03"))}, OF_SIZE(OctetString)),
      type("universal", "UTF8String", none, {element(12, text("ab"))}, OF_SIZE(UTF8String)),
      type("universal", "IA5String", none, {element(22, text("ab"))}, OF_SIZE(IA5String)),
      type("universal", "GeneralString", none, {element(27, text("12"))}, OF_SIZE(GeneralString)),
      type("universal", "GraphicString", none, {element(25, text("12"))}, OF_SIZE(GraphicString)),
      type("universal", "NumericString", none, {element(18, text("12"))}, OF_SIZE(NumericString)),
      type("universal", "PrintableString", none, {element(19, text("12"))},
           OF_SIZE(PrintableString)),
      type("universal", "TeletexString", none, {element(20, text("12"))}, OF_SIZE(TeletexString)),
      type("universal", "UniversalString", none, {element(28, text("12"))},
           OF_SIZE(UniversalString)),
      type("universal", "VideotextString", none, {element(21, text("12"))},
           OF_SIZE(VideotextString)),
      type("universal", "VisibleString", none, {element(26, text("12"))}, OF_SIZE(VisibleString)),
      type("universal", "ANY", keeps_any, {data_message, null}, OF_SIZE(Any)),
      type("universal", "Time", may_not_compare,
           {utc_time("260101000000Z"), generalized_time("20260101000000Z")}),
      type("universal", "UTCTime", may_not_compare, {utc_time("260101000000Z")}),
      type("universal", "GeneralizedTime", may_not_compare, {generalized_time("20260101000000Z")}),
      family<List, decode_sequence_of, free_integers, encode_sequence_of>(
          "universal", "SEQUENCE OF INTEGER", may_leave_a_list,
          {sequence(integer("01") + integer("02"))}),
      family<List, decode_set_of, free_strings, encode_set_of>(
          "universal", "SET OF OCTET STRING", may_leave_a_list,
          {set(octets(hex("01")) + octets({}))}),
      family<List, decode_explicit_sequence_of, free_integers, encode_explicit_sequence_of>(
          "universal", "[0] SEQUENCE OF INTEGER", may_leave_a_list,
          {context(0, sequence(integer("01")))}),
      family<List, decode_set_of_sets, free_sets, encode_set_of_sets>(
          "universal", "SET OF SET OF INTEGER", may_leave_a_list,
          {set(set(integer("01")) + set({}))}),

      type("name", "AttributeValueAssertion", names, {country, common_name}),
      type("name", "RelativeDistinguishedName", names | may_leave_a_list, {rdn}),
      type("name", "RDNSequence", names | may_leave_a_list, {name}),
      type("name", "Name", writes_attribute_values, {name}, OF_SIZE(Name)),

      type("certificate", "AlgorithmIdentifier", keeps_any, {sha1, pbe_algorithm}),
      type("certificate", "Validity", none, {validity}),
      type("certificate", "SubjectPublicKeyInfo", keeps_any, {public_key}),
      type("certificate", "Extension", none, {critical_extension, plain_extension}),
      type("certificate", "Extensions", may_leave_a_list, {extensions}),
      type("certificate", "TBSCertificate", keeps_any, {tbs_certificate}),
      type("certificate", "Certificate", keeps_any, {certificate}),

      type("crl", "CRLEntry", none, {crl_entry}),
      type("crl", "TBSCertList", keeps_any, {tbs_crl}),
      type("crl", "CertificateList", keeps_any, {crl}),

      type("extension", "OtherName", keeps_any | may_lack_copies, {sequence(other_name)},
           {.encode = encode_other_name}),
      type("extension", "GeneralName", keeps_any | writes_attribute_values | may_lack_copies,
           {context(0, other_name), element(0x81, text("a@b")), dns_name,
            context(4, set(country) + rdn), uri, element(0x87, hex("7F 00 00 01")),
            element(0x88, hex("2A 03"))}),
      type("extension", "AuthorityKeyIdentifier", none,
           {sequence(context(0, octets(hex("01 02"))) + context(1, sequence(dns_name)) +
                     context(2, integer("12 67")))}),
      type("extension", "BasicConstraints", none, {basic_constraints}),
      type("extension", "GeneralSubtree", none,
           {sequence(dns_name + context(0, integer("00")) + context(1, integer("03")))}),
      type("extension", "NameConstraints", may_lack_copies,
           {sequence(context(0, sequence(sequence(dns_name))) +
                     context(1, sequence(sequence(uri))))}),
      type("extension", "PolicyConstraints", may_lack_copies,
           {sequence(context(0, integer("00")) + context(1, integer("01")))}),
      type("extension", "PolicyMapping", none, {sequence(hex("06 03 2A 03 04 06 03 2A 03 05"))}),
      type("extension", "PrivateKeyUsagePeriod", none,
           {sequence(context(0, utc_time("260101000000Z")) +
                     context(1, utc_time("270101000000Z")))}),
      type("extension", "DistributionPointName",
           keeps_any | writes_attribute_values | copy_forgets_value_tags | may_lack_copies,
           {context(0, uri + dns_name), context(1, country)}),
      type("extension", "DistributionPoint",
           keeps_any | writes_attribute_values | copy_forgets_value_tags | may_lack_copies |
               is_not_read_back,
           {sequence(context(0, context(0, uri)) + element(0x81, hex("05 60")))}),
      type("extension", "AccessDescription", keeps_any | writes_attribute_values | may_lack_copies,
           {sequence(hex("06 08 2B 06 01 05 05 07 30 01") + uri)}),
      type("extension", "AuthorityInfoAccessSyntax",
           may_leave_a_list | keeps_any | writes_attribute_values,
           {sequence(sequence(hex("06 08 2B 06 01 05 05 07 30 01") + uri))}),

      LOGOTYPE_FAMILY(decode, HashAlgAndValue)("HashAlgAndValue", {hash}),
      LOGOTYPE_FAMILY(decode, LogotypeDetails)("LogotypeDetails", {logotype_details}),
      LOGOTYPE_FAMILY(decode, LogotypeReference)("LogotypeReference", {logotype_reference}),
      LOGOTYPE_FAMILY(decode_choice, LogotypeImageResolution)(
          "LogotypeImageResolution", {context(1, integer("08")), context(2, integer("01 00"))}),
      LOGOTYPE_FAMILY(decode, LogotypeImageInfo)(
          "LogotypeImageInfo", {image_info, sequence(null + integer("01") + integer("02") +
                                                     integer("03") + null + null)}),
      LOGOTYPE_FAMILY(decode, LogotypeImage)("LogotypeImage",
                                             {image, sequence(logotype_details + null)}),
      LOGOTYPE_FAMILY(decode, LogotypeAudioInfo)("LogotypeAudioInfo", {audio_info}),
      LOGOTYPE_FAMILY(decode, LogotypeAudio)("LogotypeAudio", {audio}),
      LOGOTYPE_FAMILY(decode, LogotypeData)(
          "LogotypeData",
          {sequence(sequence(image + image) + sequence(audio)), sequence(null + null)}),
      LOGOTYPE_FAMILY(decode_choice, LogotypeInfo)("LogotypeInfo", {direct_logo, indirect_logo}),
      LOGOTYPE_FAMILY(decode, OtherLogotypeInfo)("OtherLogotypeInfo",
                                                 {sequence(hex("06 02 2A 03") + direct_logo)}),
      LOGOTYPE_FAMILY(decode, LogotypeExtn)(
          "LogotypeExtn", {sequence(sequence(direct_logo + indirect_logo) + indirect_logo +
                                    direct_logo + sequence(direct_logo)),
                           sequence(null + indirect_logo + null + null)}),

      type("ocsp", "CertID", keeps_any, {cert_id}),
      type("ocsp", "Request", keeps_any, {sequence(cert_id)}),
      type("ocsp", "TBSRequest", keeps_any | writes_attribute_values | may_lack_copies,
           {tbs_request}),
      type("ocsp", "Signature", keeps_any, {ocsp_signature}),
      type("ocsp", "OCSPRequest", keeps_any | writes_attribute_values | may_lack_copies,
           {sequence(tbs_request + context(0, ocsp_signature))}),
      type("ocsp", "ResponderID", none, {responder_by_name, context(2, octets(hex("01 02")))}),
      type("ocsp", "RevokedInfo", none, {sequence(revoked)}),
      type("ocsp", "CertStatus", none, {hex("80 00"), element(0xA1, revoked), hex("82 00")}),
      type("ocsp", "SingleResponse", keeps_any, {single_response}),
      type("ocsp", "ResponseData", keeps_any, {response_data}),
      type("ocsp", "BasicOCSPResponse", keeps_any, {basic_response}, {.free = free_basic_response}),
      type("ocsp", "ResponseBytes", none, {response_bytes}),
      type("ocsp", "OCSPResponse", none, {sequence(hex("0A 01 00") + context(0, response_bytes))}),

      type("key", "DigestInfo", keeps_any, {digest_info}),
      type("key", "RSAPublicKey", none, {sequence(integer("0C A1") + integer("11"))}),
      type("key", "RSAPrivateKey", none, {rsa_private_key}),
      type("key", "PrivateKeyInfo", keeps_any, {private_key_info}),
      type("key", "EncryptedPrivateKeyInfo", keeps_any, {encrypted_key}),
      type("key", "DssParms", none, {dss_parameters}),
      type("key", "DssSigValue", none, {sequence(integer("17") + integer("0B"))}),
      type("key", "ValidationParms", none, {validation}),
      type("key", "DomainParameters", is_not_read_back, {domain_parameters}),
      type("key", "PublicKeyAndChallenge", keeps_any, {key_and_challenge}),
      type("key", "SignedPublicKeyAndChallenge", keeps_any | is_not_written,
           {sequence(key_and_challenge + rsa_with_sha256 + signature)}),

      type("request", "Attribute", keeps_any, {attribute}),
      type("request", "CertificationRequestInfo", keeps_any, {request_info}),
      type("request", "CertificationRequest", keeps_any, {request}),

      type("message", "IssuerAndSerialNumber", none, {issuer_and_serial}),
      type("message", "SignerInfo", keeps_any, {signer}),
      type("message", "SignedData", keeps_any, {signed_data}),
      type("message", "EncryptedContentInfo", keeps_any, {encrypted_content}),
      type("message", "EncryptedData", keeps_any, {encrypted_data}),
      type("message", "ContentInfo", keeps_any,
           {data_message, signed_message, encrypted_message, other_message}),

      type("exchange", "PBEParameter", none, {pbe}),
      type("exchange", "MacData", keeps_any, {mac}),
      type("exchange", "SafeBag", keeps_any, {key_bag, bag_of_certificate}),
      type("exchange", "CertBag", keeps_any, {cert_bag}),
      type("exchange", "CRLBag", keeps_any,
           {sequence(hex("06 03 2A 03 04") + context(0, octets(crl)))}),
      type("exchange", "SecretBag", keeps_any,
           {sequence(hex("06 03 2A 03 04") + context(0, null))}),
      family<List, decode_safe_contents, free_safe_contents, encode_safe_contents>(
          "exchange", "SafeContents", may_leave_a_list | keeps_any, {safe_contents}),
      type("exchange", "PFX", keeps_any, {pfx}),

      type("card", "GDOObject", is_not_read_back, {leaf, container, attribute_holder}),
      type("card", "GDOObjectSetOfSetOf", is_not_read_back,
           {leaf, nested_container, attribute_holder}),
      type("card", "GDO", is_not_read_back, {card_object}),
      type("card", "CardInfo", none,
           {sequence(octets(hex("01")) + octets(hex("02")) + octets(hex("03")) + octets(hex("04")) +
                     octets(hex("05")) + octets(hex("06")))}),
      type("card", "PublicKeyMAC", none, {sequence(octets(hex("01 02")) + octets(hex("03")))}),

      family<RDNSequence, read_name, asn1_RDNSequence_free, write_name, asn1_RDNSequence_clone,
             asn1_RDNSequence_cmp>(
          "text", "textual name",
          copy_forgets_value_tags | cannot_read_sn | cannot_read_negative_arcs,
          {text("/c(19)=DE/o(12)=A//B/,C/cn(12)=a"), text("/c(19)=DE,1.2.3.4(19)=7"), many_rdns()}),
      family<AttributeValueAssertion, read_assertion, asn1_AttributeValueAssertion_free>(
          "text", "textual assertion", none, {text("cn(12)=a"), text("1.2.3.4(19)=x")}),
      family<ObjId, read_identifier, asn1_ObjId_free, write_identifier, asn1_ObjId_clone,
             asn1_ObjId_cmp>("text", "dotted identifier", cannot_read_negative_arcs,
                             {text("1.2.840.113549.1")}),
      family<Time, read_time<23>, asn1_Time_free>("text", "UTCTime text", none,
                                                  {text("260101000000Z"), text("2601010000+0130")}),
      family<Time, read_time<24>, asn1_Time_free>(
          "text", "GeneralizedTime text", none,
          {text("20260101000000Z"), text("20260101000000+0130")}),
  };
}

}  // namespace

namespace {

struct Forms {
  std::string_view group;
  std::vector<Form> (*make)();
};
constexpr Forms forms[] = {
    {"further", rfc3709_forms},           {"further", rfc3739_forms}, {"further", rfc3779_forms},
    {"further", rfc6962_forms},           {"further", rfc7633_forms}, {"keys", key_forms},
    {"rfc5280", rfc5280_extension_forms}, {"rfc5280", rfc5280_forms}, {"rfc5652", rfc5652_forms},
    {"rfc6960", rfc6960_forms},           {"rfc7292", rfc7292_forms},
};

}  // namespace

const std::vector<Family> &families() {
  static const std::vector<Family> all = [] {
    std::vector<Family> made = make_families();
    for (const auto &[group, make] : forms) {
      for (Form &form : make())
        made.push_back(type(group, form.name, none, std::move(form.samples)));
    }
    for (uint32_t i = 0; i < pki_Type_count(); ++i) {
      const pki_Type *const missing = pki_Type_get(i);
      if (std::ranges::find(made, missing, &Family::type) == made.end()) {
        made.push_back(
            {*pki_Type_functions(missing), "unknown", pki_Type_record(missing), none, missing, {}});
      }
    }
    return made;
  }();
  return all;
}

std::vector<const Family *> families_of(std::string_view group) {
  std::vector<const Family *> found;
  for (const Family &family : families())
    if (family.group == group) found.push_back(&family);
  return found;
}

std::vector<std::string_view> groups() {
  std::vector<std::string_view> found;
  for (const Family &family : families())
    if (found.empty() || found.back() != family.group) found.push_back(family.group);
  return found;
}

}  // namespace attack
