// Signed and encrypted messages (PKCS #7, RFC 2315).
#include "records/values.h"
#include "text/characters.h"
#include "text/object_identifiers.h"

namespace tool {

Node encrypted(const OctetString *string, const View &view) {
  if (string == nullptr) return {};
  std::vector<std::string> lines{"encrypted, " + counted(octets(string).size(), "octet")};
  if (view.full)
    for (std::string &line : dump(octets(string), true)) lines.push_back(std::move(line));
  return shown_as(describe(string, view), text(std::move(lines), nullptr));
}

// ContentInfo ::= SEQUENCE { contentType, content [0] ANY DEFINED BY contentType OPTIONAL }
Node message(const pki_ContentInfo *info, const char *data_type, const View &view) {
  Description fields(view);
  fields.field("contentType", info->contentType).brief();
  if (info->content == nullptr) return fields.node();
  const Octets content = octets(info->content);
  if (!is(info->contentType, asn1_Get_data)) {
    const pki_Type *const type = pki_Type_defined_by(info->contentType);
    return add_inside(fields, "content", describe(info->content, view),
                      type == nullptr ? Inside() : read_value(content, type, view))
        .node();
  }
  auto data = octet_string(content);
  if (!data)
    return add_inside(fields, "content", describe(info->content, view),
                      read_value(content, "pki_Nonce", view))
        .node();
  if (data_type == nullptr)
    fields.field("content", octets_with_text(data.get(), view));
  else
    add_inside(fields, "content", secret(describe(info->content, view), view),
               read_value(octets(data.get()), data_type, view))
        .brief();
  return owning(fields.node(), std::move(data));
}

Node describe(const pki_ContentInfo *info, const View &view) {
  return message(info, nullptr, view);
}

// EncapsulatedContentInfo ::= SEQUENCE { eContentType, eContent [0] OPTIONAL }
//
// The content of data is shown as a text where it is one, and any other by its type.
Node describe(const pki_EncapsulatedContentInfo *info, const View &view) {
  constexpr uint8_t octets_kind = 4;
  Description fields(view);
  fields.field("eContentType", info->eContentType).brief();
  if (info->eContent == nullptr || info->eContent->value == nullptr) return fields.node();
  const auto *const content = static_cast<const ASN1String *>(info->eContent->value);
  const pki_Type *const type = pki_Type_defined_by(info->eContentType);
  if (type == nullptr && info->eContent->kind == octets_kind)
    return fields.field("eContent", octets_with_text(content, view)).node();
  return add_inside(fields, "eContent", describe(content, view),
                    type == nullptr ? Inside() : read_value(octets(content), type, view))
      .node();
}

namespace {

/// Whether there is a content. Many types begin with an identifier; a message in a file of its own
/// has a content after it.
bool has_content(Octets octets) {
  constexpr uint8_t wrapper = tag::context | tag::constructed;
  const Octets content = component(octets, 1);
  return !content.empty() && content[0] == wrapper;
}

}  // namespace

std::vector<Type> message_types() {
  return {
      {.syntax = "pki_ContentInfo",
       .about = "a message, signed or encrypted or neither (CMS, PKCS #7)",
       .labels = {"PKCS7", "CMS", "PKCS #7 SIGNED DATA"},
       .stands_alone = true,
       .resembles = has_content,
       .by_hand = as<pki_ContentInfo>},
      {.syntax = "pki_SignedData",
       .about = "the content of a signed message",
       .hints =
           {{"version", as<number>}, brief("certificates"), brief("crls"), brief("signerInfos")}},
      {.syntax = "pki_EncapsulatedContentInfo",
       .about = "what a message signs or digests",
       .by_hand = as<pki_EncapsulatedContentInfo>},
      {.syntax = "pki_CertificateChoices",
       .about = "a certificate of any kind in a message",
       .bare = true},
      {.syntax = "pki_RevocationInfoChoice",
       .about = "a CRL or something like it in a message",
       .bare = true},
      {.syntax = "pki_SignerIdentifier", .about = "who signed, or who can read", .bare = true},
      {.syntax = "pki_SignerInfo",
       .about = "one signature of a signed message",
       .hints = {{.field = "version", .describe = as<number>},
                 {.field = "signedAttrs", .kept = "signedAttrsEncoded"}}},
      {.syntax = "pki_IssuerAndSerialNumber", .about = "which certificate a message refers to"},
      {.syntax = "pki_EnvelopedData",
       .about = "the content of a message that is encrypted for recipients",
       .hints = {{"version", as<number>}, brief("recipientInfos")}},
      {.syntax = "pki_RecipientInfo", .about = "one who can read a message", .bare = true},
      {.syntax = "pki_KeyTransRecipientInfo",
       .about = "one who can read a message with a private key",
       .hints = {{"version", as<number>}, {"encryptedKey", as<encrypted>}}},
      {.syntax = "pki_DigestedData",
       .about = "the content of a message with its digest",
       .hints = {{"version", as<number>}}},
      {.syntax = "pki_AuthenticatedData",
       .about = "the content of an authenticated message",
       .hints = {{"version", as<number>}}},
      {.syntax = "pki_EncryptedData",
       .about = "the content of an encrypted message",
       .hints = {{"version", as<number>}}},
      {.syntax = "pki_EncryptedContentInfo",
       .about = "encrypted octets and how they are encrypted",
       .hints = {brief("contentEncryptionAlgorithm"), brief("encryptedContent", as<encrypted>)}},
  };
}

}  // namespace tool
