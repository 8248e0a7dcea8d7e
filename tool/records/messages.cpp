// Signed and encrypted messages (PKCS #7, RFC 2315).
#include "records/messages.h"

#include "records/inside.h"
#include "text/object_identifiers.h"

namespace tool {

Node encrypted(const OctetString *string, const View &view) {
  if (string == nullptr) return {};
  const size_t count = octets(string).size();
  std::vector<std::string> lines{"encrypted, " + std::to_string(count) +
                                 (count == 1 ? " octet" : " octets")};
  if (view.full)
    for (std::string &line : dump(octets(string), true)) lines.push_back(std::move(line));
  return shown_as(describe(string, view), text(std::move(lines), nullptr));
}

// ContentInfo ::= SEQUENCE { contentType, content [0] ANY DEFINED BY contentType OPTIONAL }
Node message(const ContentInfo *info, std::string_view data_type, const View &view) {
  Description fields(view);
  fields.field("contentType", info->contentType).brief();
  const void *const value = info->content->value;
  const View inside = view.inside();
  if (value == nullptr) return fields.node();
  if (is(info->contentType, asn1_Get_data)) {
    const auto *const data = static_cast<const OctetString *>(value);
    if (data_type.empty()) return fields.field("content", octets_with_text(data, view)).node();
    return add_inside(fields, "content", describe(data, view),
                      read_inside(octets(data), data_type, view))
        .brief()
        .node();
  }
  if (is(info->contentType, asn1_Get_encryptedData))
    return fields.field("content", static_cast<const EncryptedData *>(value)).node();
  if (!is(info->contentType, asn1_Get_signedData))
    return fields.field("content", static_cast<const Any *>(value)).node();
  const auto *const data = static_cast<const SignedData *>(value);
  if (!inside.too_deep()) return fields.field("content", describe(data, inside)).node();
  return fields.field("content", text("(nested more deeply than is shown)", nullptr)).node();
}

Node describe(const ContentInfo *info, const View &view) { return message(info, "", view); }

// IssuerAndSerialNumber ::= SEQUENCE { issuer, serialNumber }
Node describe(const IssuerAndSerialNumber *certificate, const View &view) {
  return Description(view)
      .name("issuer", nullptr, certificate->issuer, certificate->issuerEncoded)
      .field("serialNumber", certificate->serialNumber)
      .node();
}

// SignerInfo ::= SEQUENCE { version, issuerAndSerialNumber, digestAlgorithm,
//   authenticatedAttributes [0], digestEncryptionAlgorithm, encryptedDigest,
//   unauthenticatedAttributes [1] }
Node describe(const SignerInfo *signer, const View &view) {
  return Description(view)
      .small("version", signer->version)
      .field("issuerAndSerialNumber", signer->issuerAndSerialNumber)
      .field("digestAlgorithm", signer->digestAlgorithm)
      .list<Attribute>("authenticatedAttributes", signer->authenticatedAttributes)
      .field("digestEncryptionAlgorithm", signer->digestEncryptionAlgorithm)
      .field("encryptedDigest", signer->encryptedDigest)
      .list<Attribute>("unauthenticatedAttributes", signer->unauthenticatedAttributes)
      .node();
}

// SignedData ::= SEQUENCE { version, digestAlgorithms, contentInfo, certificates [0], crls [1],
//   signerInfos }
//
// The record has certificates and CRLs undecoded.
Node describe(const SignedData *data, const View &view) {
  return Description(view)
      .small("version", data->version)
      .list<AlgId>("digestAlgorithms", data->digestAlgorithms)
      .field("contentInfo", data->contentInfo)
      .field("certificates", list_inside(data->certificates, "certificate", view))
      .brief()
      .field("crls", list_inside(data->crls, "crl", view))
      .brief()
      .list<SignerInfo>("signerInfos", data->signerInfos)
      .brief()
      .node();
}

// EncryptedContentInfo ::= SEQUENCE { contentType, contentEncryptionAlgorithm,
//   encryptedContent [0] OPTIONAL }
Node describe(const EncryptedContentInfo *info, const View &view) {
  return Description(view)
      .field("contentType", info->contentType)
      .field("contentEncryptionAlgorithm",
             encryption_algorithm(info->contentEncryptionAlgorithm, view))
      .brief()
      .field("encryptedContent", encrypted(info->encryptedContent, view))
      .brief()
      .node();
}

// EncryptedData ::= SEQUENCE { version, encryptedContentInfo }
Node describe(const EncryptedData *data, const View &view) {
  return Description(view)
      .small("version", data->version)
      .field("encryptedContentInfo", data->encryptedContentInfo)
      .node();
}

namespace {

constexpr Syntax content_value_syntax{.indefinite = true};
constexpr Field wrapped_content[] = {{"", &content_value_syntax}};
constexpr Syntax content_syntax{.tag = 0xA0, .indefinite = true, .fields = wrapped_content};
constexpr Field content_info_fields[] = {{"contentType", &oid_syntax},
                                         {"content", &content_syntax, true}};

constexpr Field issuer_fields[] = {{"issuer", &name_syntax}, {"serialNumber", &integer_syntax}};
constexpr Syntax issuer_syntax{.tag = 0x30, .fields = issuer_fields};

constexpr Syntax attributes_1_syntax{.tag = 0xA1, .element = &attribute_syntax};
constexpr Field signer_fields[] = {{"version", &integer_syntax},
                                   {"issuerAndSerialNumber", &issuer_syntax},
                                   {"digestAlgorithm", &algorithm_syntax},
                                   {"authenticatedAttributes", &attributes_0_syntax, true},
                                   {"digestEncryptionAlgorithm", &algorithm_syntax},
                                   {"encryptedDigest", &octet_string_syntax},
                                   {"unauthenticatedAttributes", &attributes_1_syntax, true}};
constexpr Syntax signer_syntax{.tag = 0x30, .fields = signer_fields};

constexpr Syntax algorithms_syntax{.tag = 0x31, .element = &algorithm_syntax};
constexpr Syntax certificates_syntax{.tag = 0xA0, .element = &any_syntax};
constexpr Syntax crls_syntax{.tag = 0xA1, .element = &any_syntax};
constexpr Syntax signers_syntax{.tag = 0x31, .element = &signer_syntax};
constexpr Field signed_data_fields[] = {
    {"version", &integer_syntax},          {"digestAlgorithms", &algorithms_syntax},
    {"contentInfo", &content_info_syntax}, {"certificates", &certificates_syntax, true},
    {"crls", &crls_syntax, true},          {"signerInfos", &signers_syntax}};
constexpr Syntax signed_data_syntax{.tag = 0x30, .fields = signed_data_fields};

constexpr Syntax encrypted_content_syntax{.tag = 0x80, .other_tag = 0xA0, .segments = true};
constexpr Field encrypted_info_fields[] = {{"contentType", &oid_syntax},
                                           {"contentEncryptionAlgorithm", &algorithm_syntax},
                                           {"encryptedContent", &encrypted_content_syntax, true}};
constexpr Syntax encrypted_info_syntax{
    .tag = 0x30, .indefinite = true, .fields = encrypted_info_fields};
constexpr Field encrypted_data_fields[] = {{"version", &integer_syntax},
                                           {"encryptedContentInfo", &encrypted_info_syntax}};
constexpr Syntax encrypted_data_syntax{
    .tag = 0x30, .indefinite = true, .fields = encrypted_data_fields};

/// Returns the syntax of the content of a message.
const Syntax &syntax_of_content(Octets content_type) {
  const auto oid = decoded(asn1_ObjId_d, asn1_ObjId_free, content_type);
  if (oid && is(oid.get(), asn1_Get_data)) return octet_string_syntax;
  if (oid && is(oid.get(), asn1_Get_signedData)) return signed_data_syntax;
  if (oid && is(oid.get(), asn1_Get_encryptedData)) return encrypted_data_syntax;
  return any_syntax;
}

/// Returns the message that signed data holds.
Octets signed_message(Octets signed_data) { return component(signed_data, 2); }

std::optional<Fault> signed_data_fault(Octets octets) {
  const Octets inner = signed_message(octets);
  return inner.empty() ? std::nullopt : fault_of_part(message_fault(inner), inner, octets);
}

/// Whether there is a content. Many a SEQUENCE begins with an identifier; a message in a file of
/// its own also has a content.
bool has_content(Octets octets) {
  const Octets content = component(octets, 1);
  return !content.empty() && content[0] == content_syntax.tag;
}

void forget_encodings_of_signers(SignedData *data) {
  for (int32_t i = 0; i < List_len(data->signerInfos); ++i)
    forget(static_cast<SignerInfo *>(List_get(data->signerInfos, i))
               ->issuerAndSerialNumber->issuerEncoded);
}

SignedData *signed_data_of(ContentInfo *message) {
  return is(message->contentType, asn1_Get_signedData)
             ? static_cast<SignedData *>(message->content->value)
             : nullptr;
}

}  // namespace

constexpr Syntax content_info_syntax{
    .tag = 0x30, .indefinite = true, .fields = content_info_fields};

std::optional<Fault> message_fault(Octets octets) {
  for (Octets message = octets; !message.empty();) {
    if (auto fault = syntax_fault(message, content_info_syntax))
      return fault_of_part(std::move(fault), message, octets);
    const Octets value = component(component(message, 1), 0);
    if (value.empty()) break;
    const Syntax &syntax = syntax_of_content(component(message, 0));
    if (auto fault = syntax_fault(value, syntax))
      return fault_of_part(std::move(fault), value, octets);
    message = &syntax == &signed_data_syntax ? signed_message(value) : Octets();
  }
  return std::nullopt;
}

void forget_encodings_of(ContentInfo *message) {
  for (SignedData *data = signed_data_of(message); data != nullptr;
       data = signed_data_of(data->contentInfo))
    forget_encodings_of_signers(data);
}

namespace {

constexpr std::string_view message_labels[] = {"PKCS7", "CMS", "PKCS #7 SIGNED DATA"};

constexpr Type rows[] = {
    type<asn1_ContentInfo_d, asn1_ContentInfo_e, asn1_ContentInfo_free>(
        {.name = "content-info",
         .heading = "ContentInfo",
         .about = "a message, signed or encrypted or neither (PKCS #7)",
         .labels = message_labels,
         .syntax = &content_info_syntax,
         .stands_alone = true,
         .resembles = has_content,
         .explain = message_fault,
         .forget_encodings =
             [](void *record) { forget_encodings_of(static_cast<ContentInfo *>(record)); }}),
    type<asn1_SignedData_d, asn1_SignedData_e, asn1_SignedData_free>(
        {.name = "signed-data",
         .heading = "SignedData",
         .about = "the content of a signed message",
         .syntax = &signed_data_syntax,
         .explain = signed_data_fault,
         .forget_encodings =
             [](void *record) {
               auto *const data = static_cast<SignedData *>(record);
               forget_encodings_of_signers(data);
               forget_encodings_of(data->contentInfo);
             }}),
    type<asn1_SignerInfo_d, asn1_SignerInfo_e, asn1_SignerInfo_free>(
        {.name = "signer-info",
         .heading = "SignerInfo",
         .about = "one signature of a signed message",
         .syntax = &signer_syntax,
         .forget_encodings =
             [](void *record) {
               forget(static_cast<SignerInfo *>(record)->issuerAndSerialNumber->issuerEncoded);
             }}),
    type<asn1_IssuerAndSerialNumber_d, asn1_IssuerAndSerialNumber_e,
         asn1_IssuerAndSerialNumber_free>(
        {.name = "issuer-and-serial-number",
         .heading = "IssuerAndSerialNumber",
         .about = "which certificate a message speaks of",
         .syntax = &issuer_syntax,
         .forget_encodings =
             [](void *record) {
               forget(static_cast<IssuerAndSerialNumber *>(record)->issuerEncoded);
             }}),
    type<asn1_EncryptedData_d, asn1_EncryptedData_e, asn1_EncryptedData_free>(
        {.name = "encrypted-data",
         .heading = "EncryptedData",
         .about = "the content of an encrypted message",
         .syntax = &encrypted_data_syntax}),
    type<asn1_EncryptedContentInfo_d, asn1_EncryptedContentInfo_e, asn1_EncryptedContentInfo_free>(
        {.name = "encrypted-content-info",
         .heading = "EncryptedContentInfo",
         .about = "encrypted octets and how they are encrypted",
         .syntax = &encrypted_info_syntax}),
};

}  // namespace

std::span<const Type> message_types() { return rows; }

}  // namespace tool
