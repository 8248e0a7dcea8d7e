// The common questions about a certificate: what each call answers for extensions by hand, what it
// does with those that cannot be read, and when memory is exhausted.
#include <orvelpki.h>

#include "allocator.h"
#include "support.h"

namespace certificate_calls_test {

namespace {

using support::Bytes;
using support::element;
using support::hex;
using support::Input;
using support::text;
using support::operator+;

Bytes sequence(const Bytes &content) { return element(0x30, content); }
Bytes set(const Bytes &content) { return element(0x31, content); }
Bytes dns(std::string_view name) { return element(0x82, text(name)); }
Bytes mail(std::string_view name) { return element(0x81, text(name)); }
Bytes uri(std::string_view name) { return element(0x86, text(name)); }
Bytes ip(std::string_view octets) { return element(0x87, hex(octets)); }

const Bytes common_name = set(sequence(hex("06 03 55 04 03") + element(12, text("www.example"))));
const Bytes algorithm = sequence(hex("06 03 2B 65 70"));
const Bytes validity =
    sequence(element(23, text("260101000000Z")) + element(24, text("20560101000000Z")));

/// An extension with the identifier 2.5.29.n.
Bytes extension(uint8_t number, const Bytes &value) {
  return sequence(hex("06 03 55 1D") + Bytes{number} + element(4, value));
}
constexpr uint8_t subject_key = 14, usage = 15, alternative_name = 17, basic = 19, crl_points = 31,
                  authority_key = 35, purposes = 37;

Bytes certificate_octets(const Bytes &extensions, const Bytes &period = validity) {
  const Bytes list = extensions.empty() ? Bytes() : element(0xA3, sequence(extensions));
  const Bytes tbs =
      sequence(hex("A0 03 02 01 02 02 01 05") + algorithm + sequence(common_name) + period +
               sequence(common_name) + sequence(algorithm + hex("03 02 00 01")) + list);
  return sequence(tbs + algorithm + hex("03 02 00 AA"));
}

/// A decoded certificate.
class Decoded {
 public:
  explicit Decoded(const Bytes &extensions, const Bytes &period = validity) {
    const Input input(certificate_octets(extensions, period));
    EXPECT_EQ(input.end(), pki_Certificate_d(input.z(), input.end(), 0, &record_, 0));
  }
  ~Decoded() { pki_Certificate_free(record_); }
  Decoded(const Decoded &) = delete;
  Decoded &operator=(const Decoded &) = delete;
  operator const Certificate *() const { return record_; }
  Certificate *operator->() const { return record_; }

 private:
  Certificate *record_ = nullptr;
};

Decoded with_names(const Bytes &names) {
  return Decoded(extension(alternative_name, sequence(names)));
}

using Call = List *(const Certificate *, uint32_t *);

constexpr Call *list_calls[] = {pki_dns_names,    pki_mail_addresses, pki_uris,
                                pki_ip_addresses, pki_crl_places,     pki_ocsp_places,
                                pki_issuer_places};

/// What a call lists, each element followed by a blank, and then the number that cannot be read.
std::string answer(Call *call, const Certificate *certificate) {
  uint32_t unreadable = 77;
  List *const list = call(certificate, &unreadable);
  EXPECT_NE(nullptr, list);
  std::string all;
  for (int32_t i = 0; i < List_len(list); ++i) {
    const auto *const string = static_cast<const ASN1String *>(List_get(list, i));
    const Bytes octets = support::value(string);
    all += std::string(octets.begin(), octets.end()) + " ";
  }
  List_free(list, asn1_IA5String_free);
  List *const again = call(certificate, nullptr);
  EXPECT_NE(nullptr, again);
  List_free(again, asn1_IA5String_free);
  return all + std::to_string(unreadable);
}

Bytes octets(pki_Octets view) { return {view.data, view.data + view.length}; }

// ---------------------------------------------------------------------------------------------
// Extensions
// ---------------------------------------------------------------------------------------------

TEST(FindExtension, FindsTheFirst) {
  const Decoded c(extension(usage, hex("03 02 05 A0")) + extension(basic, hex("30 00")) +
                  extension(usage, hex("03 02 01 06")));
  const Extensions *const list = c->tbsCertificate->extensions;
  EXPECT_EQ(List_get(list, 0), pki_find_extension(list, asn1_Get_id_ce_keyUsage()));
  EXPECT_EQ(List_get(list, 1), pki_find_extension(list, asn1_Get_id_ce_basicConstraints()));
  EXPECT_EQ(nullptr, pki_find_extension(list, asn1_Get_id_ce_subjectAltName()));
  EXPECT_EQ(nullptr, pki_find_extension(list, asn1_Get_id_ce()));
  EXPECT_EQ(nullptr, pki_find_extension(list, nullptr));
  EXPECT_EQ(nullptr, pki_find_extension(nullptr, asn1_Get_id_ce_keyUsage()));
}

TEST(FindExtension, PassesByRecordsThatAreNotFilled) {
  List *const list = List_new(0);
  Extension *const without_identifier = pki_Extension_new();
  ASSERT_EQ(1, List_append(list, nullptr, 0));
  ASSERT_EQ(1, List_append(list, without_identifier, 0));
  EXPECT_EQ(nullptr, pki_find_extension(list, asn1_Get_id_ce_keyUsage()));
  const ObjId nothing{};
  EXPECT_EQ(nullptr, pki_find_extension(list, &nothing));
  List_free(list, pki_Extension_free);
}

// ---------------------------------------------------------------------------------------------
// Names
// ---------------------------------------------------------------------------------------------

TEST(NamesOfACertificate, AreThoseOfTheirKindInOrder) {
  const Decoded c = with_names(
      dns("a.example") + mail("x@a.example") + ip("7F 00 00 01") + uri("https://a.example/") +
      dns("*.b.example") + element(0xA4, sequence(common_name)) + hex("88 02 2A 03") +
      dns("a.example") + ip("20 01 0D B8 00 00 00 00 00 00 00 00 00 00 00 01"));
  EXPECT_EQ("a.example *.b.example a.example 0", answer(pki_dns_names, c));
  EXPECT_EQ("x@a.example 0", answer(pki_mail_addresses, c));
  EXPECT_EQ("https://a.example/ 0", answer(pki_uris, c));
  List *const addresses = pki_ip_addresses(c, nullptr);
  ASSERT_EQ(2, List_len(addresses));
  EXPECT_EQ(hex("7F 00 00 01"),
            support::value(static_cast<const OctetString *>(List_get(addresses, 0))));
  EXPECT_EQ(hex("20 01 0D B8 00 00 00 00 00 00 00 00 00 00 00 01"),
            support::value(static_cast<const OctetString *>(List_get(addresses, 1))));
  List_free(addresses, asn1_OctetString_free);
}

TEST(NamesOfACertificate, OutliveIt) {
  List *names = nullptr;
  {
    const Decoded c = with_names(dns("a.example"));
    names = pki_dns_names(c, nullptr);
  }
  ASSERT_EQ(1, List_len(names));
  EXPECT_EQ(text("a.example"), support::value(static_cast<const IA5String *>(List_get(names, 0))));
  List_free(names, asn1_IA5String_free);
}

// The subject's common name is none of them.
TEST(NamesOfACertificate, AreNoneWithoutTheExtension) {
  const Decoded none{Bytes()}, others(extension(basic, hex("30 00"))), empty = with_names({});
  for (Call *const call : list_calls) {
    EXPECT_EQ("0", answer(call, none));
    EXPECT_EQ("0", answer(call, others));
    EXPECT_EQ("0", answer(call, empty));
    uint32_t unreadable = 77;
    EXPECT_EQ(nullptr, call(nullptr, &unreadable));
    EXPECT_EQ(0U, unreadable);
    EXPECT_EQ(nullptr, call(nullptr, nullptr));
  }
  const Certificate not_filled{};
  EXPECT_EQ("0", answer(pki_dns_names, &not_filled));
}

TEST(NamesOfACertificate, AreThoseOfTheFirstExtension) {
  const Decoded c(extension(alternative_name, sequence(dns("a.example"))) +
                  extension(alternative_name, sequence(dns("b.example"))));
  EXPECT_EQ("a.example 0", answer(pki_dns_names, c));
}

// One name that cannot be read, of any kind, hides none of the others, and every call counts it.
TEST(NamesOfACertificate, AreReadEachByItself) {
  const Bytes wrong[] = {
      element(0xA4, common_name),                           // a directory name without its SEQUENCE
      element(0xA4, sequence(hex("05 00"))),                // with something else in it
      element(0xA4, sequence(common_name) + hex("05 00")),  // with octets left over
      element(0x82, hex("61 80")),                          // above 0x7F
      element(0x82, hex("61 00 2E 78")),                    // a NUL octet
      element(0x81, hex("C3 A4 40 78")),                    // UTF-8
      element(0x86, hex("00")),
      element(0xA2, hex("16 01 61")),  // a segment that is no OCTET STRING
      ip("7F 00 00"),
      ip(""),
      ip("7F 00 00 01 FF 00 00 00"),     // a subnet, of name constraints
      hex("88 02 2A 80"),                // an identifier that does not end
      element(0xA0, hex("06 01 2A")),    // an otherName without its value
      element(0x89, {}),                 // no alternative
      element(0x42, text("a.example")),  // another class
      hex("05 00"),
      hex("9F 82 02 01 61"),  // a tag of three octets
  };
  for (const Bytes &name : wrong) {
    const Decoded c = with_names(dns("a.example") + mail("x@a") + name + dns("b.example") +
                                 ip("41 42 43 44") + uri("c:d"));
    EXPECT_EQ("a.example b.example 1", answer(pki_dns_names, c)) << int{name[0]};
    EXPECT_EQ("x@a 1", answer(pki_mail_addresses, c)) << int{name[0]};
    EXPECT_EQ("ABCD 1", answer(pki_ip_addresses, c)) << int{name[0]};
    EXPECT_EQ("c:d 1", answer(pki_uris, c)) << int{name[0]};
  }
  const Decoded several = with_names(wrong[0] + dns("a.example") + wrong[3] + wrong[8]);
  EXPECT_EQ("a.example 3", answer(pki_dns_names, several));
}

TEST(NamesOfACertificate, EndWhereTheOctetsAreNoElement) {
  for (const char *const rest : {"82 7F 61", "82", "00 00", "82 85 00 00 00 00 01 61", "02 80",
                                 "30 80 82 01 61", "82 84 FF FF FF FF 61"}) {
    const Decoded c = with_names(dns("a.example") + hex(rest));
    EXPECT_EQ("a.example 1", answer(pki_dns_names, c)) << rest;
  }
}

TEST(NamesOfACertificate, AreNoneInAnExtensionThatIsNoList) {
  const Bytes names = sequence(dns("a.example"));
  const Bytes truncated(names.begin(), names.end() - 1);
  for (const Bytes &value : {Bytes(), truncated, names + hex("05 00"), set(dns("a.example")),
                             dns("a.example"), hex("30"), hex("30 80 82 01 61"), hex("10 00")}) {
    const Decoded c(extension(alternative_name, value));
    EXPECT_EQ("1", answer(pki_dns_names, c));
  }
  const Decoded without_octets(extension(alternative_name, names));
  auto *const first =
      static_cast<Extension *>(List_get(without_octets->tbsCertificate->extensions, 0));
  asn1_OctetString_free(first->extnValue);
  first->extnValue = nullptr;
  EXPECT_EQ("1", answer(pki_dns_names, without_octets));
}

// BER, which RFC 5280 does not allow and other programs read: strings in segments (X.690, 8.23), lists
// of indefinite length. And what is in no grammar of names, but in IA5String.
TEST(NamesOfACertificate, AreReadInEveryFormOfTheirType) {
  const Bytes segments = element(0xA2, hex("04 02 61 2E 24 80 04 01 62 00 00"));
  EXPECT_EQ("a.b 0", answer(pki_dns_names, with_names(segments)));
  const Decoded indefinite(
      extension(alternative_name, hex("30 80") + dns("a.example") + hex("00 00")));
  EXPECT_EQ("a.example 0", answer(pki_dns_names, indefinite));
  const Decoded address = with_names(element(0xA7, hex("04 02 41 42 04 02 43 44")));
  EXPECT_EQ("ABCD 0", answer(pki_ip_addresses, address));
  EXPECT_EQ("\x01\x7F\n   0", answer(pki_dns_names, with_names(dns("\x01\x7F\n ") + dns(""))));
}

// ---------------------------------------------------------------------------------------------
// What the key is for
// ---------------------------------------------------------------------------------------------

/// The answer and the bits of keyUsage.
std::pair<int32_t, uint32_t> key_usage(std::string_view value) {
  const Decoded c(extension(usage, hex(value)));
  uint32_t bits = 77;
  const int32_t found = pki_key_usage(c, &bits);
  EXPECT_EQ(found, pki_key_usage(c, nullptr));
  return {found, bits};
}

using Usage = std::pair<int32_t, uint32_t>;

TEST(KeyUsage, HasABitForEachUse) {
  EXPECT_EQ(Usage(1, PKI_DIGITAL_SIGNATURE), key_usage("03 02 07 80"));
  EXPECT_EQ(Usage(1, PKI_NON_REPUDIATION), key_usage("03 02 06 40"));
  EXPECT_EQ(Usage(1, PKI_KEY_ENCIPHERMENT), key_usage("03 02 05 20"));
  EXPECT_EQ(Usage(1, PKI_DATA_ENCIPHERMENT), key_usage("03 02 04 10"));
  EXPECT_EQ(Usage(1, PKI_KEY_AGREEMENT), key_usage("03 02 03 08"));
  EXPECT_EQ(Usage(1, PKI_KEY_CERT_SIGN), key_usage("03 02 02 04"));
  EXPECT_EQ(Usage(1, PKI_CRL_SIGN), key_usage("03 02 01 02"));
  EXPECT_EQ(Usage(1, PKI_ENCIPHER_ONLY), key_usage("03 02 00 01"));
  EXPECT_EQ(Usage(1, PKI_DECIPHER_ONLY), key_usage("03 03 07 00 80"));
  EXPECT_EQ(Usage(1, PKI_KEY_CERT_SIGN | PKI_CRL_SIGN), key_usage("03 02 01 06"));
  EXPECT_EQ(Usage(1, 0x1FF), key_usage("03 03 07 FF 80"));
}

TEST(KeyUsage, LeavesOutBitsThatHaveNoNameOrAreNotThere) {
  EXPECT_EQ(Usage(1, 0), key_usage("03 01 00"));
  EXPECT_EQ(Usage(1, 0x1FF), key_usage("03 06 00 FF FF FF FF FF"));
  EXPECT_EQ(Usage(1, PKI_DIGITAL_SIGNATURE), key_usage("03 02 07 FF"));
  EXPECT_EQ(Usage(1, 0xFF), key_usage("03 02 00 FF"));
  // In segments.
  EXPECT_EQ(Usage(1, 0x180 | PKI_CRL_SIGN), key_usage("23 08 03 02 00 03 03 02 07 FF"));
}

TEST(KeyUsage, SaysWhereItIsNotThereOrCannotBeRead) {
  const Decoded none{Bytes()};
  uint32_t bits = 77;
  EXPECT_EQ(0, pki_key_usage(none, &bits));
  EXPECT_EQ(0U, bits);
  bits = 77;
  EXPECT_EQ(-1, pki_key_usage(nullptr, &bits));
  EXPECT_EQ(0U, bits);
  for (const char *const wrong :
       {"", "03", "03 00", "03 02 08 80", "03 02 07", "03 02 07 80 00", "04 02 07 80", "03 01 01",
        "83 02 07 80", "03 80 00 00", "23 04 04 02 07 80"}) {
    EXPECT_EQ(Usage(-1, 0), key_usage(wrong)) << wrong;
  }
}

const Bytes server = hex("06 08 2B 06 01 05 05 07 03 01");
const Bytes client = hex("06 08 2B 06 01 05 05 07 03 02");
const Bytes any_purpose = hex("06 04 55 1D 25 00");

int32_t allows_server(const Bytes &value) {
  const Decoded c(extension(purposes, value));
  return pki_allows_purpose(c, asn1_Get_id_kp_serverAuth());
}

TEST(Purpose, IsAllowedWhereItIsListed) {
  EXPECT_EQ(1, allows_server(sequence(server)));
  EXPECT_EQ(1, allows_server(sequence(client + server)));
  EXPECT_EQ(1, allows_server(sequence(client + any_purpose)));
  EXPECT_EQ(0, allows_server(sequence(client)));
  EXPECT_EQ(0, allows_server(sequence({})));
  EXPECT_EQ(0, allows_server(sequence(hex("06 07 2B 06 01 05 05 07 03"))));
  const Decoded none{Bytes()};
  EXPECT_EQ(1, pki_allows_purpose(none, asn1_Get_id_kp_serverAuth()));
}

TEST(Purpose, IsNotAllowedByAnExtensionThatCannotBeRead) {
  for (const Bytes &wrong :
       {Bytes(), server, sequence(server + hex("05 00")), sequence(server + hex("06 02 2A 80")),
        sequence(server + hex("06")), sequence(server) + hex("00"), set(server),
        sequence(server + hex("06 00"))}) {
    EXPECT_EQ(-1, allows_server(wrong));
  }
  const Decoded c(extension(purposes, sequence(any_purpose)));
  const ObjId nothing{};
  uint32_t no_root[] = {3, 50};
  const ObjId no_identifier{2, no_root};
  EXPECT_EQ(-1, pki_allows_purpose(c, nullptr));
  EXPECT_EQ(-1, pki_allows_purpose(nullptr, asn1_Get_id_kp_serverAuth()));
  EXPECT_EQ(-1, pki_allows_purpose(c, &nothing));
  EXPECT_EQ(-1, pki_allows_purpose(c, &no_identifier));
}

// 2.25.2^64, an arc that 64 bits do not hold.
TEST(Purpose, MayHaveArcsOfAnySize) {
  const Bytes large = hex("69 82 80 80 80 80 80 80 80 80 00");
  ObjId *const purpose = pki_ObjId_parse("2.25.18446744073709551616");
  const Decoded c(extension(purposes, sequence(element(6, large))));
  EXPECT_EQ(1, pki_allows_purpose(c, purpose));
  EXPECT_EQ(0, pki_allows_purpose(c, asn1_Get_id_kp_serverAuth()));
  asn1_ObjId_free(purpose);
}

/// Whether a certificate may issue, and how long a path it may begin.
std::pair<int32_t, uint32_t> may_issue(const Bytes &extensions) {
  const Decoded c(extensions);
  uint32_t length = 77;
  const int32_t may = pki_may_issue(c, &length);
  EXPECT_EQ(may, pki_may_issue(c, nullptr));
  return {may, length};
}

Bytes constraints(std::string_view fields) { return extension(basic, sequence(hex(fields))); }

const Bytes signs_certificates = extension(usage, hex("03 02 02 04"));
const Bytes signs = extension(usage, hex("03 02 07 80"));

TEST(MayIssue, AsksBothExtensions) {
  EXPECT_EQ(Usage(1, UINT32_MAX), may_issue(constraints("01 01 FF")));
  EXPECT_EQ(Usage(1, UINT32_MAX), may_issue(constraints("01 01 FF") + signs_certificates));
  EXPECT_EQ(Usage(1, UINT32_MAX), may_issue(constraints("01 01 01")));
  EXPECT_EQ(Usage(0, 0), may_issue(constraints("01 01 FF") + signs));
  EXPECT_EQ(Usage(0, 0), may_issue(constraints("")));
  EXPECT_EQ(Usage(0, 0), may_issue(constraints("01 01 00")));
  EXPECT_EQ(Usage(0, 0), may_issue(constraints("02 01 05")));
  EXPECT_EQ(Usage(0, 0), may_issue(signs_certificates));
  EXPECT_EQ(Usage(0, 0), may_issue({}));
  EXPECT_EQ(Usage(0, 0), may_issue(constraints("") + constraints("01 01 FF")));
}

TEST(MayIssue, TellsTheLengthOfThePath) {
  EXPECT_EQ(Usage(1, 0), may_issue(constraints("01 01 FF 02 01 00")));
  EXPECT_EQ(Usage(1, 3), may_issue(constraints("01 01 FF 02 01 03")));
  EXPECT_EQ(Usage(1, 127), may_issue(constraints("01 01 FF 02 01 7F")));
  EXPECT_EQ(Usage(1, 200), may_issue(constraints("01 01 FF 02 02 00 C8")));
  EXPECT_EQ(Usage(1, 0xFFFFFFFE), may_issue(constraints("01 01 FF 02 05 00 FF FF FF FE")));
  EXPECT_EQ(Usage(1, UINT32_MAX), may_issue(constraints("01 01 FF 02 05 00 FF FF FF FF")));
  EXPECT_EQ(Usage(1, UINT32_MAX), may_issue(constraints("01 01 FF 02 05 01 00 00 00 00")));
  EXPECT_EQ(Usage(1, UINT32_MAX),
            may_issue(constraints("01 01 FF 02 0A 01 00 00 00 00 00 00 00 00 05")));
}

TEST(MayIssue, FailsWhereOneCannotBeRead) {
  EXPECT_EQ(Usage(-1, 0), may_issue(constraints("01 01 FF") + extension(usage, hex("03 00"))));
  EXPECT_EQ(Usage(-1, 0), may_issue(constraints("") + extension(usage, hex("03 00"))));
  for (const char *const wrong :
       {"01 00", "01 02 FF FF", "01 01 FF 02 01 FF", "02 01 FF", "01 01 FF 02 02 00 05",
        "01 01 FF 02 00", "01 01 FF 05 00", "02 01 05 01 01 FF", "01"}) {
    EXPECT_EQ(Usage(-1, 0), may_issue(constraints(wrong))) << wrong;
  }
  for (const char *const wrong : {"", "05 00", "30 03 01 01 FF 00", "30 04 01 01 FF"}) {
    EXPECT_EQ(Usage(-1, 0), may_issue(extension(basic, hex(wrong)))) << wrong;
  }
  uint32_t length = 77;
  EXPECT_EQ(-1, pki_may_issue(nullptr, &length));
  EXPECT_EQ(0U, length);
}

// ---------------------------------------------------------------------------------------------
// Key identifiers
// ---------------------------------------------------------------------------------------------

TEST(SubjectKey, IsAViewIntoTheRecord) {
  const Decoded c(extension(subject_key, hex("04 03 01 02 03")));
  const auto *const first =
      static_cast<const Extension *>(List_get(c->tbsCertificate->extensions, 0));
  const pki_Octets view = pki_subject_key_identifier(c);
  EXPECT_EQ(hex("01 02 03"), octets(view));
  EXPECT_EQ(first->extnValue->data + 2, view.data);
  const Decoded empty(extension(subject_key, hex("04 00")));
  EXPECT_EQ(0U, pki_subject_key_identifier(empty).length);
  EXPECT_NE(nullptr, pki_subject_key_identifier(empty).data);
}

TEST(SubjectKey, HasNoOctetsWhereThereAreNone) {
  const Decoded none{Bytes()};
  EXPECT_EQ(nullptr, pki_subject_key_identifier(none).data);
  EXPECT_EQ(nullptr, pki_subject_key_identifier(nullptr).data);
  for (const char *const wrong :
       {"", "04", "04 03 01 02", "04 01 01 00", "24 03 04 01 01", "03 02 00 01"}) {
    const Decoded c(extension(subject_key, hex(wrong)));
    EXPECT_EQ(nullptr, pki_subject_key_identifier(c).data) << wrong;
    EXPECT_EQ(0U, pki_subject_key_identifier(c).length) << wrong;
  }
}

TEST(AuthorityKey, IsAViewIntoTheRecord) {
  const Decoded c(extension(authority_key, hex("30 04 80 02 01 02")));
  const auto *const first =
      static_cast<const Extension *>(List_get(c->tbsCertificate->extensions, 0));
  EXPECT_EQ(first->extnValue->data + 4, pki_authority_key_identifier(c).data);
  EXPECT_EQ(hex("01 02"), octets(pki_authority_key_identifier(c)));
  const Decoded all(
      extension(authority_key,
                sequence(hex("80 02 01 02") + element(0xA1, element(0xA4, sequence(common_name))) +
                         hex("82 01 05"))));
  EXPECT_EQ(hex("01 02"), octets(pki_authority_key_identifier(all)));
}

TEST(AuthorityKey, HasNoOctetsWhereThereAreNone) {
  const Decoded none{Bytes()};
  EXPECT_EQ(nullptr, pki_authority_key_identifier(none).data);
  EXPECT_EQ(nullptr, pki_authority_key_identifier(nullptr).data);
  for (const char *const wrong :
       {"", "30 00", "30 03 82 01 05", "30 04 80 02 01", "30 04 80 02 01 02 00",
        "30 06 80 02 01 02 05 00", "30 07 82 01 05 80 02 01 02", "30 05 A0 03 04 01 01",
        "04 02 01 02"}) {
    const Decoded c(extension(authority_key, hex(wrong)));
    EXPECT_EQ(nullptr, pki_authority_key_identifier(c).data) << wrong;
  }
}

// ---------------------------------------------------------------------------------------------
// Places
// ---------------------------------------------------------------------------------------------

/// A DistributionPoint with a full name.
Bytes point(const Bytes &names, const Bytes &rest = {}) {
  return sequence(element(0xA0, element(0xA0, names)) + rest);
}

std::string crl_places(const Bytes &value) {
  return answer(pki_crl_places, Decoded(extension(crl_points, value)));
}

TEST(CrlPlaces, AreTheUrisOfTheFullNames) {
  EXPECT_EQ("http://a/1 0", crl_places(sequence(point(uri("http://a/1")))));
  EXPECT_EQ("http://a/1 ldap://b http://c 0",
            crl_places(sequence(
                point(uri("http://a/1") + element(0xA4, sequence(common_name)) + uri("ldap://b")) +
                point(uri("http://c"), hex("81 02 01 06")))));
  // With another issuer; only another issuer; a name relative to the issuer.
  const Bytes issuer = element(0xA2, element(0xA4, sequence(common_name)));
  const Bytes relative = element(0xA1, sequence(hex("06 03 55 04 03") + element(12, text("crl"))));
  EXPECT_EQ("http://a 0", crl_places(sequence(point(uri("http://a"), issuer) + sequence(issuer) +
                                              sequence(element(0xA0, relative)))));
}

TEST(CrlPlaces, CountWhatCannotBeRead) {
  const Bytes good = point(uri("http://a"));
  EXPECT_EQ("http://a http://b 1",
            crl_places(sequence(good + point(element(0xA4, common_name) + uri("http://b")))));
  const Bytes wrong[] = {
      hex("05 00"),
      sequence(hex("05 00")),
      sequence(element(0xA0, {})),
      sequence(element(0xA0, uri("http://b"))),
      sequence(element(0xA0, element(0xA0, uri("http://b")) + hex("05 00"))),
      sequence(element(0xA0, element(0xA0, hex("86 05 61")))),
      point(uri("http://b") + hex("86 05 61"), {}),
  };
  for (const Bytes &one : wrong) {
    const std::string found = crl_places(sequence(one + good));
    EXPECT_EQ(&one == &wrong[6] ? "http://b http://a 1" : "http://a 1", found);
  }
  EXPECT_EQ("http://a 1", crl_places(sequence(good + hex("30 05 00"))));
  EXPECT_EQ("1", crl_places(good));
  EXPECT_EQ("1", crl_places(sequence(good) + hex("00")));
}

const Bytes ocsp = hex("06 08 2B 06 01 05 05 07 30 01");
const Bytes ca_issuers = hex("06 08 2B 06 01 05 05 07 30 02");

/// A certificate with descriptions in its authorityInfoAccess.
Decoded with_access(const Bytes &value) {
  return Decoded(sequence(hex("06 08 2B 06 01 05 05 07 01 01") + element(4, value)));
}

TEST(AccessPlaces, AreTheUrisOfTheirMethod) {
  const Decoded c = with_access(
      sequence(sequence(ocsp + uri("http://a")) + sequence(ca_issuers + uri("http://b")) +
               sequence(ocsp + element(0xA4, sequence(common_name))) +
               sequence(ocsp + uri("http://c")) + sequence(hex("06 01 2A") + uri("http://d"))));
  EXPECT_EQ("http://a http://c 0", answer(pki_ocsp_places, c));
  EXPECT_EQ("http://b 0", answer(pki_issuer_places, c));
}

TEST(AccessPlaces, CountWhatCannotBeRead) {
  for (const Bytes &wrong :
       {hex("05 00"), sequence(ocsp), sequence(uri("http://b")),
        sequence(ocsp + element(0x86, hex("FF"))), sequence(ocsp + ip("01")),
        sequence(hex("06 02 2A 80") + uri("http://b")), sequence(hex("06 00") + uri("http://b")),
        sequence(ocsp + uri("http://b") + hex("05 00"))}) {
    const Decoded c = with_access(sequence(wrong + sequence(ocsp + uri("http://a")) +
                                           sequence(ca_issuers + uri("http://c"))));
    EXPECT_EQ("http://a 1", answer(pki_ocsp_places, c));
    EXPECT_EQ("http://c 1", answer(pki_issuer_places, c));
  }
  EXPECT_EQ("1", answer(pki_ocsp_places, with_access(hex("05 00"))));
}

// ---------------------------------------------------------------------------------------------
// Times
// ---------------------------------------------------------------------------------------------

/// Runs `f` in a zone of the process.
template <class F>
void in_zone(const char *zone, F f) {
  const char *const before = std::getenv("TZ");
  const std::string kept = before != nullptr ? before : "";
  setenv("TZ", zone, 1);
  tzset();
  f();
  if (before != nullptr) {
    setenv("TZ", kept.c_str(), 1);
  } else {
    unsetenv("TZ");
  }
  tzset();
}

// The numbers are those of `date -u -d ... +%s`.
TEST(ValidityInSeconds, IsTheSameInEveryZone) {
  const Decoded c{Bytes()};
  for (const char *const zone : {"UTC", "EST5EDT", "XYZ-14"}) {
    in_zone(zone, [&c] {
      int64_t from = 77, to = 77;
      EXPECT_EQ(1, pki_validity(c, &from, &to));
      EXPECT_EQ(1767225600, from);  // 2026-01-01
      EXPECT_EQ(2713910400, to);    // 2056-01-01
      EXPECT_EQ(1, pki_validity(c, nullptr, nullptr));
    });
  }
}

TEST(ValidityInSeconds, IsNoneWhereOneIsNoTime) {
  const Bytes good = element(23, text("260101000000Z")), bad = element(23, text("261301000000Z"));
  const Bytes never = element(24, text("99991231235959Z"));
  int64_t from = 77, to = 77;
  EXPECT_EQ(0, pki_validity(Decoded({}, sequence(good + bad)), &from, &to));
  EXPECT_EQ(0, from);
  EXPECT_EQ(0, to);
  from = to = 77;
  EXPECT_EQ(0, pki_validity(Decoded({}, sequence(bad + good)), &from, &to));
  EXPECT_EQ(0, from);
  EXPECT_EQ(0, to);
  EXPECT_EQ(1, pki_validity(Decoded({}, sequence(good + never)), &from, &to));
  EXPECT_EQ(253402300799, to);
  EXPECT_EQ(0, pki_validity(nullptr, &from, &to));
  EXPECT_EQ(0, to);
  const Certificate not_filled{};
  EXPECT_EQ(0, pki_validity(&not_filled, nullptr, nullptr));
  Certificate_TBS tbs{};
  Certificate without_validity{};
  without_validity.tbsCertificate = &tbs;
  EXPECT_EQ(0, pki_validity(&without_validity, &from, &to));
}

TEST(TimeInSeconds, IsThatOfItsKind) {
  char utc[] = "700101000001Z", generalized[] = "19700101000001Z", nothing[] = "";
  int64_t seconds = 77;
  const Time first{23, utc};
  EXPECT_EQ(1, pki_Time_seconds(&first, &seconds));
  EXPECT_EQ(1, seconds);
  const Time second{24, generalized};
  EXPECT_EQ(1, pki_Time_seconds(&second, nullptr));
  for (const Time &wrong :
       {Time{24, utc}, Time{23, generalized}, Time{0, utc}, Time{23, nothing}, Time{23, nullptr}}) {
    seconds = 77;
    EXPECT_EQ(0, pki_Time_seconds(&wrong, &seconds));
    EXPECT_EQ(0, seconds);
  }
  seconds = 77;
  EXPECT_EQ(0, pki_Time_seconds(nullptr, &seconds));
  EXPECT_EQ(0, seconds);
}

// The numbers are those of `date -u -d ... +%s`, and those that OpenSSL reads. The year 0000 is a leap
// year of the calendar that ISO 8601 continues to before its introduction.
TEST(TimeInSeconds, CountsFromTheYearZero) {
  const auto seconds_of = [](std::string text) {
    int64_t seconds = 77;
    const Time time{24, text.data()};
    EXPECT_EQ(1, pki_Time_seconds(&time, &seconds)) << text;
    return seconds;
  };
  EXPECT_EQ(-62167219200, seconds_of("00000101000000Z"));
  EXPECT_EQ(-62162121600, seconds_of("00000229000000Z"));
  EXPECT_EQ(-62162035200, seconds_of("00000301000000Z"));
  EXPECT_EQ(-62135596801, seconds_of("00001231235959Z"));
  EXPECT_EQ(-62135596800, seconds_of("00010101000000Z"));
}

// 2025 is no leap year. Its first day begins at 1735689600, by `date -u -d 2025-01-01 +%s`.
TEST(TimeInSeconds, CountsEveryDayOfAYearAndNoOther) {
  constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  int64_t midnight = 1735689600;
  for (int month = 1; month <= 12; ++month) {
    for (int day = 1; day <= 32; ++day) {
      std::string text = std::to_string(20250000 + month * 100 + day) + "000000Z";
      const Time time{24, text.data()};
      const bool is_day = day <= days[month - 1];
      int64_t seconds = 77;
      EXPECT_EQ(is_day, pki_Time_seconds(&time, &seconds)) << text;
      EXPECT_EQ(is_day ? midnight : 0, seconds) << text;
      if (is_day) midnight += 24 * 60 * 60;
    }
  }
}

// ---------------------------------------------------------------------------------------------
// Everything at once
// ---------------------------------------------------------------------------------------------

const Bytes all_names = sequence(dns("a") + mail("b") + uri("c") + ip("01 02 03 04") + dns("d") +
                                 dns("e") + dns("f") + dns("g"));
const Bytes full = extension(alternative_name, all_names) +
                   extension(crl_points, sequence(point(uri("http://a")))) +
                   sequence(hex("06 08 2B 06 01 05 05 07 01 01") +
                            element(4, sequence(sequence(ocsp + uri("http://a")) +
                                                sequence(ca_issuers + uri("http://b"))))) +
                   constraints("01 01 FF 02 01 00") + signs_certificates +
                   extension(purposes, sequence(client + server)) +
                   extension(subject_key, hex("04 02 01 02")) +
                   extension(authority_key, hex("30 04 80 02 01 02"));

void ask_everything(const Certificate *c) {
  for (Call *const call : list_calls) {
    uint32_t unreadable = 0;
    List *const list = call(c, &unreadable);
    EXPECT_NE(nullptr, list);
    List_free(list, asn1_IA5String_free);
  }
  uint32_t number = 0;
  int64_t from = 0, to = 0;
  EXPECT_LE(-1, pki_key_usage(c, &number));
  EXPECT_LE(-1, pki_may_issue(c, &number));
  EXPECT_LE(-1, pki_allows_purpose(c, asn1_Get_id_kp_serverAuth()));
  EXPECT_LE(0, pki_validity(c, &from, &to));
  Bytes read = octets(pki_subject_key_identifier(c));
  read = octets(pki_authority_key_identifier(c));
}

// Each bit of the extensions is changed, and each end is tried, so that the sanitizers see every read.
TEST(QuestionsAboutACertificate, HaveAnAnswerWhateverTheOctetsAre) {
  const Bytes whole = certificate_octets(full);
  unsigned decoded = 0;
  for (size_t bit = 0; bit < whole.size() * 8; ++bit) {
    Bytes changed = whole;
    changed[bit / 8] = static_cast<uint8_t>(changed[bit / 8] ^ (1U << bit % 8));
    const Input input(changed);
    Certificate *record = nullptr;
    pki_Certificate_d(input.z(), input.end(), 0, &record, 0);
    if (record == nullptr) continue;
    ++decoded;
    ask_everything(record);
    pki_Certificate_free(record);
  }
  EXPECT_GT(decoded, whole.size() * 4);
  for (size_t i = 1; i <= all_names.size(); ++i) {
    const Decoded cut(extension(alternative_name,
                                Bytes(all_names.data(), all_names.data() + all_names.size() - i)));
    ask_everything(cut);
  }
}

#ifndef ORVELASN1_TESTS_SANITIZED

TEST(QuestionsAboutACertificate, FailWhenMemoryIsExhausted) {
  const Decoded c(full);
  for (Call *const call : list_calls) {
    const long failures = support::expect_failure_at_each_allocation([&] {
      List *const list = call(c, nullptr);
      const bool made = list != nullptr;
      List_free(list, asn1_IA5String_free);
      return made;
    });
    EXPECT_LE(3, failures);
  }
  const long failures = support::expect_failure_at_each_allocation([&] {
    const int32_t found = pki_allows_purpose(c, asn1_Get_id_kp_serverAuth());
    EXPECT_NE(0, found);
    return found == 1;
  });
  EXPECT_EQ(1, failures);
}

#endif

// The other questions take none.
TEST(QuestionsAboutACertificate, KeepNothing) {
  const Decoded c(full);
  support::expect_nothing_kept([&] { ask_everything(c); });
}

}  // namespace

}  // namespace certificate_calls_test
