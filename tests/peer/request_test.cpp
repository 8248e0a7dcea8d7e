// Tests certification requests against the openssl tool. The library reads those that the tool
// makes, and those by hand that the tool reads first, as the tool does. The tool reads and verifies
// those of the library.
#include "openssl.h"

namespace request_test {

namespace {

using namespace support;

using RequestPointer = Owned<CertificationRequest, asn1_CertificationRequest_free>;

RequestPointer decoded_request(const Bytes &der) {
  return record_of<asn1_CertificationRequest_free>(asn1_CertificationRequest_d, der);
}

/* ------------------------------------------------------------------------------------------- */
/* A decoded request compared with what the tool prints                                          */
/* ------------------------------------------------------------------------------------------- */

/// Returns the tool's lines for the attributes except requested extensions: "name:value", and
/// ":value" for further values.
Lines attribute_lines(const List *attributes) {
  static const std::map<std::string, std::string> names = {
      {"1.2.840.113549.1.9.1", "emailAddress"},
      {"1.2.840.113549.1.9.2", "unstructuredName"},
      {"1.2.840.113549.1.9.7", "challengePassword"},
      {"1.2.840.113549.1.9.8", "unstructuredAddress"},
      // 2 * 40 + 999 is 26 * 40 + 39, and the library splits it so.
      {"26.39.1", "2.999.1"}};
  Lines lines;
  for (const Attribute *attribute : elements_of<Attribute>(attributes)) {
    if (asn1_ObjId_cmp(attribute->type, asn1_Get_extensionRequest()) == 0) continue;
    const std::string dotted = identifier_text(attribute->type);
    std::string name = names.count(dotted) == 0 ? dotted : names.at(dotted);
    for (const Any *any : elements_of<Any>(attribute->values)) {
      const Bytes octets = value(any);
      lines.push_back(name + ":" + std::string(octets.begin() + 2, octets.end()));
      name.clear();
    }
  }
  return lines;
}

Lines printed_attributes(const std::string &report) {
  Lines lines;
  for (std::string &line :
       section("Attributes:", report, {"Requested Extensions:", "Signature Algorithm:"})) {
    const size_t colon = line.find(':');
    if (colon == std::string::npos) continue;  // "(none)"
    const size_t blanks = line.find_last_not_of(' ', colon - 1) + 1;
    lines.push_back(line.erase(blanks, colon - blanks));
  }
  return lines;
}

/// Checks that every field has the value that `openssl req` prints for the request.
void expect_printed_values(const CertificationRequest *request, const std::string &file) {
  const CertRequestInfo *info = request->certificationRequestInfo;
  const std::string report =
      openssl("req -inform DER -noout -subject -text -in " + file + as_encoded);
  EXPECT_EQ(after("subject=", report), name_text(info->subjectSequence));
  EXPECT_EQ(0U, asn1_Integer_get(info->version));
  EXPECT_EQ("1 (0x0)", after("Version: ", report));
  EXPECT_EQ(printed_attributes(report), attribute_lines(info->attributes));
}

/// Checks that every field has the octets that `openssl asn1parse` finds in its place.
void expect_same_octets(const CertificationRequest *request, const std::string &file) {
  const Element whole = take_apart(file);
  ASSERT_EQ(3U, whole.parts.size());
  EXPECT_EQ(whole.parts[0].whole, value(request->tbsEncoded));
  EXPECT_EQ(whole.parts[1].whole, encode(asn1_AlgId_e, request->signatureAlgorithm));
  EXPECT_EQ(whole.parts[2].whole, encode(asn1_BitString_BER_e, request->signature));

  const CertRequestInfo *info = request->certificationRequestInfo;
  const std::vector<Element> &fields = whole.parts[0].parts;
  ASSERT_EQ(info->attributes == nullptr ? 3U : 4U, fields.size());
  EXPECT_EQ(fields[0].whole, encode(asn1_Integer_e, info->version));
  EXPECT_EQ(fields[1].whole, value(info->subjectEncoded));
  const std::vector<Element> &key = fields[2].parts;
  EXPECT_EQ(key.at(0).whole, encode(asn1_AlgId_e, info->subjectPKInfo->algorithm));
  EXPECT_EQ(key.at(1).whole, encode(asn1_BitString_BER_e, info->subjectPKInfo->subjectPublicKey));
  if (info->attributes == nullptr) return;

  EXPECT_EQ("cont [ 0 ]", fields[3].type);
  const auto attributes = elements_of<Attribute>(info->attributes);
  ASSERT_EQ(fields[3].parts.size(), attributes.size());
  for (size_t i = 0; i < attributes.size(); ++i) {
    const std::vector<Element> &parts = fields[3].parts[i].parts;
    EXPECT_EQ(parts.at(0).whole, encode(asn1_ObjId_e, attributes[i]->type));
    const auto values = elements_of<Any>(attributes[i]->values);
    ASSERT_EQ(parts.at(1).parts.size(), values.size());
    for (size_t k = 0; k < values.size(); ++k) EXPECT_EQ(parts[1].parts[k].whole, value(values[k]));
  }
}

/// Returns a BIT STRING of whole octets as a named bit list (X.690, 11.2.2), without zero bits at
/// its end.
Bytes named_bits(Bytes octets) {
  while (!octets.empty() && octets.back() == 0) octets.pop_back();
  uint8_t unused = 0;
  while (!octets.empty() && (octets.back() >> unused) % 2 == 0) ++unused;
  return element(0x03, Bytes{unused} + octets);
}

/// Returns the octets of a request with the same signed part and algorithm and another signature.
Bytes with_signature(const Element &whole, const Bytes &signature) {
  return element(0x30, whole.parts.at(0).whole + whole.parts.at(1).whole + signature);
}

/// Checks that the request and its copies are written as `written`: from the stored octets, from
/// the fields, and from the text of the subject where that keeps it whole.
void expect_comes_back(CertificationRequest *request, const Bytes &written,
                       bool text_keeps_the_subject = true) {
  const auto copy_comes_back_as = [&] {
    const RequestPointer copy(asn1_CertificationRequest_clone(request));
    return encode(asn1_CertificationRequest_e, copy.get());
  };
  CertRequestInfo *info = request->certificationRequestInfo;
  EXPECT_EQ(written, encode(asn1_CertificationRequest_e, request)) << "from the stored octets";
  EXPECT_EQ(written, copy_comes_back_as()) << "from a copy of the stored octets";
  release(asn1_OctetString_free, request->tbsEncoded);
  EXPECT_EQ(written, encode(asn1_CertificationRequest_e, request)) << "subject from its octets";
  EXPECT_EQ(written, copy_comes_back_as()) << "from a copy of the fields";
  release(asn1_OctetString_free, info->subjectEncoded);
  EXPECT_EQ(written, encode(asn1_CertificationRequest_e, request)) << "subject from its sequence";
  release(asn1_RDNSequence_free, info->subjectSequence);
  EXPECT_EQ(text_keeps_the_subject, written == encode(asn1_CertificationRequest_e, request))
      << "subject from its text, " << info->subject;
}

/* ------------------------------------------------------------------------------------------- */
/* Reading what the tool makes                                                                   */
/* ------------------------------------------------------------------------------------------- */

struct Shape {
  const char *name;
  const char *key;
  const char *arguments;
  bool text_keeps_the_subject;
  const char *subject;
  const char *attributes;
  const char *extensions;
};

void PrintTo(const Shape &shape, std::ostream *out) { *out << shape.name; }

constexpr const char *plain_name = "C=DE\nCN=Some One\n";
constexpr const char *all_attributes =
    "challengePassword=a secret: word\nunstructuredName=Übergröße\nunstructuredAddress=here\n"
    "emailAddress=a@b.example\n1.2.3.4.5=other\n2.999.1=another\n";
constexpr const char *some_extensions =
    "basicConstraints=critical,CA:TRUE,pathlen:3\nsubjectAltName=DNS:a.example,IP:192.0.2.1\n"
    "keyUsage=critical,digitalSignature\n1.2.3.4.5=DER:0500\n";

const Shape shapes[] = {
    {"Rsa", "rsa", "-sha256", true, plain_name, "", ""},
    {"RsaPss", "rsa", "-sha384 -sigopt rsa_padding_mode:pss -sigopt rsa_pss_saltlen:48", true,
     plain_name, "", ""},
    {"Ec", "ec", "-sha512", true, plain_name, "", ""},
    {"Ed25519", "ed25519", "", true, plain_name, "", ""},
    {"RsaWithAttributes", "rsa", "-sha512", true, plain_name, all_attributes, some_extensions},
    {"EcWithAttributes", "ec", "-sha256", true, plain_name, all_attributes, some_extensions},
    {"Ed25519WithAttributes", "ed25519", "", true, plain_name, all_attributes, some_extensions},
    {"ChallengePassword", "ec", "-sha256", true, plain_name, "challengePassword=secret\n", ""},
    {"UnstructuredName", "ec", "-sha256", true, plain_name, "unstructuredName=a name\n", ""},
    {"ExtensionRequest", "ec", "-sha256", true, plain_name, "", some_extensions},
    {"MultiValuedSubject", "ec", "-sha256", true, "C=DE\nO=a\n+OU=b/c\n+L=d,e\nCN=f\n", "", ""},
    {"SubjectWithASerialNumber", "ec", "-sha256", false, "CN=card\nserialNumber=12-34\n", "", ""},
};

class RequestOfOpenssl : public testing::TestWithParam<Shape> {};

TEST_P(RequestOfOpenssl, ReadsAsItIsReportedAndComesBackWithItsSignatureTrimmed) {
  const Shape &shape = GetParam();
  const bool with_attributes = *shape.attributes != '\0', extended = *shape.extensions != '\0';
  std::string configuration =
      "[req]\nprompt=no\nstring_mask=utf8only\nutf8=yes\ndistinguished_name=name\n";
  if (with_attributes) configuration += "attributes=attributes\n";
  if (extended) configuration += "req_extensions=extensions\n";
  configuration += std::string("[name]\n") + shape.subject + "[attributes]\n" + shape.attributes +
                   "[extensions]\n" + shape.extensions;
  write_file("shape.cnf", text(configuration));
  openssl("req -new -config shape.cnf -key " + key(shape.key) + " " + shape.arguments +
          " -outform DER -out shape.der");

  const RequestPointer request = decoded_request(read_file("shape.der"));
  const Element whole = take_apart("shape.der");
  expect_printed_values(request.get(), "shape.der");
  expect_same_octets(request.get(), "shape.der");
  expect_comes_back(request.get(), with_signature(whole, named_bits(value(request->signature))),
                    shape.text_keeps_the_subject);
}

INSTANTIATE_TEST_SUITE_P(Shapes, RequestOfOpenssl, testing::ValuesIn(shapes),
                         [](const auto &shape) { return std::string(shape.param.name); });

TEST(RequestAttributesOfOpenssl, AreFoundByTheirIdentifiers) {
  write_file("request.cnf",
             text("[req]\nprompt=no\ndistinguished_name=name\nattributes=attributes\n"
                  "req_extensions=extensions\n[name]\nCN=x\n[attributes]\n"
                  "challengePassword=secret\n[extensions]\n"
                  "basicConstraints=critical,CA:TRUE,pathlen:3\nsubjectAltName=DNS:a.example\n"));
  openssl("req -new -config request.cnf -outform DER -out request.der -key " + key("ec"));
  const RequestPointer request = decoded_request(read_file("request.der"));
  const List *attributes = request->certificationRequestInfo->attributes;
  EXPECT_EQ(2, List_len(attributes));
  EXPECT_EQ(nullptr, asn1_Attributes_getAttribute(attributes, asn1_Get_unstructuredName()));

  const auto the_value = [&](const ObjId *id) {
    const Attribute *attribute = asn1_Attributes_getAttribute(attributes, id);
    if (attribute == nullptr) throw std::runtime_error("no attribute " + identifier_text(id));
    EXPECT_EQ(1, List_len(attribute->values));
    return value(elements_of<Any>(attribute->values).at(0));
  };
  EXPECT_EQ(element(0x0C, text("secret")), the_value(asn1_Get_challengePassword()));

  const auto extensions =
      record_of<asn1_Extensions_free>(asn1_Extensions_d, the_value(asn1_Get_extensionRequest()));
  const auto rows = elements_of<Extension>(extensions.get());
  ASSERT_EQ(2U, rows.size());
  EXPECT_EQ(0xFFU, rows[0]->critical);
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_id_ce_basicConstraints(), rows[0]->extnID));
  const auto constraints =
      record_of<asn1_BasicConstraints_free>(asn1_BasicConstraints_d, value(rows[0]->extnValue));
  EXPECT_EQ(0xFFU, constraints->cA);
  EXPECT_EQ(3U, asn1_Integer_get(constraints->pathLenConstraint));
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_id_ce_subjectAltName(), rows[1]->extnID));
  EXPECT_EQ(element(0x30, element(0x82, text("a.example"))), value(rows[1]->extnValue));
}

/* ------------------------------------------------------------------------------------------- */
/* Requests by hand, which the tool reads first                                                  */
/* ------------------------------------------------------------------------------------------- */

/// Returns a request that the tool makes with the key of a kind, without attributes.
Element plain_request(const std::string &kind) {
  write_file("plain.cnf", text("[req]\nprompt=no\ndistinguished_name=name\n[name]\nCN=x\n"));
  openssl("req -new -config plain.cnf -sha256 -outform DER -out plain.der -key " + key(kind));
  return take_apart("plain.der");
}

void expect_verified(const std::string &file) {
  EXPECT_NE(std::string::npos,
            openssl("req -inform DER -noout -verify -in " + file).find("verify OK\n"));
}

/// Returns a request with this subject and with `attributes` after the key. The tool signs and
/// verifies it as by_hand.der. An empty subject means the tool's own.
Bytes request_by_hand(const Bytes &subject, const Bytes &attributes) {
  const Element pieces = plain_request("ec");
  const std::vector<Element> &parts = pieces.parts.at(0).parts;
  const Bytes info =
      element(0x30, parts.at(0).whole + (subject.empty() ? parts.at(1).whole : subject) +
                        parts.at(2).whole + attributes);
  const Bytes der = element(
      0x30, info + pieces.parts.at(1).whole + element(0x03, Bytes{0} + signature_over(info, "ec")));
  write_file("by_hand.der", der);
  expect_verified("by_hand.der");
  return der;
}

struct Attributes {
  const char *name;
  Bytes octets;
};

void PrintTo(const Attributes &attributes, std::ostream *out) { *out << attributes.name; }

const Bytes password_type = hex("06 09 2A 86 48 86 F7 0D 01 09 07");
const Bytes name_type = hex("06 09 2A 86 48 86 F7 0D 01 09 02");

/// Returns an attribute with values that are letters.
Bytes attribute_octets(const Bytes &type, const std::string &letters) {
  Bytes values;
  for (const char letter : letters) values = values + Bytes{0x0C, 1, static_cast<uint8_t>(letter)};
  return element(0x30, type + element(0x31, values));
}

const Attributes attributes_by_hand[] = {
    {"None", {}},
    {"EmptyList", hex("A0 00")},
    {"ValuesInOrder", element(0xA0, attribute_octets(name_type, "abc"))},
    {"ValuesNotInOrder", element(0xA0, attribute_octets(name_type, "cab"))},
    {"TheSameValueTwice", element(0xA0, attribute_octets(name_type, "aa"))},
    {"AttributesNotInOrder",
     element(0xA0, attribute_octets(password_type, "a") + attribute_octets(name_type, "b"))},
    {"TheSameTypeTwice",
     element(0xA0, attribute_octets(name_type, "b") + attribute_octets(name_type, "a"))},
};

class RequestByHand : public testing::TestWithParam<Attributes> {};

TEST_P(RequestByHand, IsVerifiedByOpensslReadsAsItIsReportedAndComesBack) {
  const RequestPointer request = decoded_request(request_by_hand({}, GetParam().octets));
  EXPECT_EQ(GetParam().octets.empty(), request->certificationRequestInfo->attributes == nullptr);
  expect_printed_values(request.get(), "by_hand.der");
  expect_same_octets(request.get(), "by_hand.der");
  expect_comes_back(request.get(), with_signature(take_apart("by_hand.der"),
                                                  named_bits(value(request->signature))));
}

INSTANTIATE_TEST_SUITE_P(AttributeLists, RequestByHand, testing::ValuesIn(attributes_by_hand),
                         [](const auto &row) { return std::string(row.param.name); });

// The tool verifies the request but prints no line for the attribute.
TEST(RequestByHandAttributes, OneWithoutValuesComesBack) {
  const RequestPointer request =
      decoded_request(request_by_hand({}, element(0xA0, attribute_octets(name_type, ""))));
  expect_same_octets(request.get(), "by_hand.der");
  expect_comes_back(request.get(), with_signature(take_apart("by_hand.der"),
                                                  named_bits(value(request->signature))));
}

TEST(RequestByHandAttributes, TheFirstOfATypeIsFound) {
  const RequestPointer request = decoded_request(request_by_hand(
      {}, element(0xA0, attribute_octets(password_type, "c") + attribute_octets(name_type, "b") +
                            attribute_octets(name_type, "a"))));
  const List *list = request->certificationRequestInfo->attributes;
  EXPECT_EQ(List_get(list, 1), asn1_Attributes_getAttribute(list, asn1_Get_unstructuredName()));
  EXPECT_EQ(List_get(list, 0), asn1_Attributes_getAttribute(list, asn1_Get_challengePassword()));
}

// The tool verifies it. The library refuses it, because an empty name has no text.
TEST(RequestByHandRefusal, IsForAnEmptySubject) {
  const Bytes der = request_by_hand(hex("30 00"), hex("A0 00"));
  EXPECT_EQ(nullptr,
            left_by_refusal<CertificationRequest>(asn1_CertificationRequest_d, der, nullptr));
}

class BitsOfARequest : public testing::TestWithParam<TrimmedBits> {};

TEST_P(BitsOfARequest, OfTheSignatureAreWrittenWithoutTheZeroBitsAtTheEnd) {
  const Element pieces = plain_request("ec");
  const Bytes der = with_signature(pieces, hex(GetParam().read));
  write_file("by_hand.der", der);
  const RequestPointer request = decoded_request(der);
  expect_printed_values(request.get(), "by_hand.der");
  expect_same_octets(request.get(), "by_hand.der");
  const Bytes written = with_signature(pieces, hex(GetParam().written));
  expect_comes_back(request.get(), written);
  write_file("written.der", written);
  openssl("req -inform DER -noout -in written.der");
}

// The stored octets keep the key whole. It is trimmed when the request is written from its fields.
TEST_P(BitsOfARequest, OfTheKeyAreWrittenWithoutTheZeroBitsAtTheEndFromFieldsOnly) {
  const Element pieces = plain_request("ed25519");
  const std::vector<Element> &parts = pieces.parts.at(0).parts;
  const Bytes algorithm = parts.at(2).parts.at(0).whole;
  const auto info_with = [&](const char *bits) {
    return element(0x30, parts.at(0).whole + parts.at(1).whole +
                             element(0x30, algorithm + hex(bits)) + parts.at(3).whole);
  };
  const Bytes signature = hex("03 02 00 01");
  const auto with = [&](const Bytes &info) {
    return element(0x30, info + pieces.parts.at(1).whole + signature);
  };
  const Bytes der = with(info_with(GetParam().read));
  write_file("by_hand.der", der);
  const RequestPointer request = decoded_request(der);
  expect_same_octets(request.get(), "by_hand.der");
  EXPECT_EQ(der, encode(asn1_CertificationRequest_e, request.get()));
  release(asn1_OctetString_free, request->tbsEncoded);
  expect_comes_back(request.get(), with(info_with(GetParam().written)));
}

INSTANTIATE_TEST_SUITE_P(Bits, BitsOfARequest, testing::ValuesIn(trimmed_bits));

/* ------------------------------------------------------------------------------------------- */
/* Making what the tool reads                                                                    */
/* ------------------------------------------------------------------------------------------- */

Attribute *attribute(const ObjId *type, std::initializer_list<void *> values) {
  Attribute *result = asn1_Attribute_new();
  result->type = asn1_ObjId_clone(type);
  result->values = owning_list(values);
  return result;
}

/// Returns the element that a family of strings writes.
Any *string_value(uint32_t (*string_e)(uint8_t **, const ASN1String *), const char *text) {
  const Owned<ASN1String, asn1_ASN1String_free> string(
      asn1_ASN1String_new(0, reinterpret_cast<const uint8_t *>(text)));
  return octet_string(encode(string_e, string.get()));
}

Extension *constraints(uint32_t path_length) {
  const Owned<BasicConstraints, asn1_BasicConstraints_free> record(asn1_BasicConstraints_new());
  record->cA = 0xFF;
  record->pathLenConstraint = asn1_Integer_set(path_length);
  return extension(asn1_Get_id_ce_basicConstraints(), 0xFF,
                   encode(asn1_BasicConstraints_e, record.get()));
}

Extension *host_name(const char *host) {
  GeneralName *name = asn1_GeneralName_new();
  name->kind = 2;
  name->value = asn1_ASN1String_new(0, reinterpret_cast<const uint8_t *>(host));
  List *names = owning_list({name});
  const Bytes octets =
      encode_with([&](uint8_t **pp) { return asn1_SeqOf_e(pp, names, asn1_GeneralName_e); });
  List_free(names, asn1_GeneralName_free);
  return extension(asn1_Get_id_ce_subjectAltName(), 0, octets);
}

Attribute *extension_request(std::initializer_list<void *> extensions) {
  const Owned<Extensions, asn1_Extensions_free> list(owning_list(extensions));
  return attribute(asn1_Get_extensionRequest(),
                   {octet_string(encode(asn1_Extensions_e, list.get()))});
}

/// Returns a request for the key of a kind, without subject, attributes and signature.
RequestPointer unsigned_request(const std::string &kind) {
  key(kind);
  CertificationRequest *request = asn1_CertificationRequest_new();
  CertRequestInfo *info = asn1_CertRequestInfo_new();
  request->certificationRequestInfo = info;
  request->signatureAlgorithm = signature_algorithm(kind);
  info->version = asn1_Integer_set(0);
  info->subjectPKInfo = decode(asn1_SubjectPKI_d, read_file(kind + ".spki")).record;
  return RequestPointer(request);
}

/// Names the subject, makes the tool sign with the key of a kind, and writes the request to `file`.
/// The name gets a number with which the signature has no zero bit at its end, because that would
/// not be written. Returns the name as the tool prints it.
std::string sign(CertificationRequest *request, const std::string &kind, const std::string &file) {
  CertRequestInfo *info = request->certificationRequestInfo;
  for (int number = 0;; ++number) {
    const std::string last = "Some One " + std::to_string(number);
    release(asn1_Name_free, info->subject);
    info->subject = asn1_Name_clone(("/c(19)=DE/o(12)=A//B,ou(12)=C/cn(12)=" + last).c_str());
    const Bytes signature = signature_over(encode(asn1_CertRequestInfo_e, info), kind);
    if (signature.back() % 2 == 0) continue;
    asn1_BitString_free(request->signature);
    request->signature = bit_string(signature);
    write_file(file, encode(asn1_CertificationRequest_e, request));
    return "C=DE,O=A/B+OU=C,CN=" + last;
  }
}

std::string report_of(const std::string &file) {
  return openssl("req -inform DER -noout -subject -text -nameopt sname,sep_comma_plus -in " + file);
}

class RequestForOpenssl : public testing::TestWithParam<const char *> {};

TEST_P(RequestForOpenssl, WithoutAttributesIsPrintedAndVerified) {
  for (const bool empty_list : {false, true}) {
    const RequestPointer request = unsigned_request(GetParam());
    if (empty_list) request->certificationRequestInfo->attributes = List_new(0);
    const std::string subject = sign(request.get(), GetParam(), "made.der");
    expect_verified("made.der");
    const std::string report = report_of("made.der");
    EXPECT_EQ("1 (0x0)", after("Version: ", report));
    EXPECT_EQ(subject, after("subject=", report));
    EXPECT_EQ(Lines{}, printed_attributes(report));
    const std::vector<Element> fields = take_apart("made.der").parts.at(0).parts;
    EXPECT_EQ(read_file(std::string(GetParam()) + ".spki"), fields.at(2).whole);
    ASSERT_EQ(empty_list ? 4U : 3U, fields.size());
    if (empty_list) {
      EXPECT_EQ(hex("A0 00"), fields[3].whole);
    }
  }
}

TEST_P(RequestForOpenssl, WithAttributesIsPrintedAndVerified) {
  const RequestPointer request = unsigned_request(GetParam());
  const char *dotted = "2.5.4.3.4.5";
  const Owned<ObjId, asn1_ObjId_free> other(asn1_ObjId_parse(&dotted));
  request->certificationRequestInfo->attributes = owning_list({
      attribute(asn1_Get_unstructuredName(), {string_value(asn1_UTF8String_e, "Übergröße"),
                                              string_value(asn1_IA5String_e, "a name")}),
      attribute(asn1_Get_challengePassword(),
                {string_value(asn1_PrintableString_e, "secret word")}),
      attribute(other.get(), {string_value(asn1_TeletexString_e, "other")}),
      extension_request({constraints(3), host_name("a.example")}),
  });
  const std::string subject = sign(request.get(), GetParam(), "made.der");
  expect_verified("made.der");
  const std::string report = report_of("made.der");
  EXPECT_EQ(subject, after("subject=", report));
  EXPECT_EQ((Lines{"unstructuredName:Übergröße", ":a name", "challengePassword:secret word",
                   "2.5.4.3.4.5:other"}),
            printed_attributes(report));
  EXPECT_EQ((Lines{"X509v3 Basic Constraints: critical", "CA:TRUE, pathlen:3",
                   "X509v3 Subject Alternative Name:", "DNS:a.example"}),
            section("Requested Extensions:", report, {"Signature Algorithm:"}));
}

TEST_P(RequestForOpenssl, IsVerifiedAfterADecodedOneWasChanged) {
  const std::string kind = GetParam();
  plain_request(kind);
  const RequestPointer request = decoded_request(read_file("plain.der"));
  CertRequestInfo *info = request->certificationRequestInfo;
  release(asn1_OctetString_free, request->tbsEncoded);
  release(asn1_OctetString_free, info->subjectEncoded);
  release(asn1_RDNSequence_free, info->subjectSequence);
  ASSERT_EQ(1, List_append(info->attributes,
                           attribute(asn1_Get_challengePassword(),
                                     {string_value(asn1_UTF8String_e, "secret")}),
                           0));
  const std::string subject = sign(request.get(), kind, "changed.der");
  expect_verified("changed.der");
  const std::string report = report_of("changed.der");
  EXPECT_EQ(subject, after("subject=", report));
  EXPECT_EQ(Lines{"challengePassword:secret"}, printed_attributes(report));
}

INSTANTIATE_TEST_SUITE_P(Keys, RequestForOpenssl, testing::Values("rsa", "ec", "ed25519"),
                         [](const auto &kind) { return std::string(kind.param); });

}  // namespace

}  // namespace request_test
