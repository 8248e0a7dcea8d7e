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
    return fields.field("content", describe("EncryptedData", value, view)).node();
  if (!is(info->contentType, asn1_Get_signedData))
    return fields.field("content", static_cast<const Any *>(value)).node();
  if (!inside.too_deep())
    return fields.field("content", describe("SignedData", value, inside)).node();
  return fields.field("content", text("(nested more deeply than is shown)", nullptr)).node();
}

Node describe(const ContentInfo *info, const View &view) { return message(info, "", view); }

namespace {

Node certificates_inside(const List *certificates, const View &view) {
  return list_inside(certificates, "certificate", view);
}

Node crls_inside(const List *crls, const View &view) { return list_inside(crls, "crl", view); }

/// Whether there is a content. Many types begin with an identifier; a message in a file of its own
/// has a content after it.
bool has_content(Octets octets) {
  constexpr uint8_t wrapper = tag::context | tag::constructed;
  const Octets content = component(octets, 1);
  return !content.empty() && content[0] == wrapper;
}

}  // namespace

// A SignedData record keeps its certificates and CRLs undecoded.
std::vector<Type> message_types() {
  return {
      {.syntax = "ContentInfo",
       .about = "a message, signed or encrypted or neither (PKCS #7)",
       .labels = {"PKCS7", "CMS", "PKCS #7 SIGNED DATA"},
       .stands_alone = true,
       .resembles = has_content,
       .by_hand = as<ContentInfo>},
      {.syntax = "SignedData",
       .about = "the content of a signed message",
       .hints = {{"version", as<number>},
                 brief("certificates", as<certificates_inside>),
                 brief("crls", as<crls_inside>),
                 brief("signerInfos")}},
      {.syntax = "SignerInfo",
       .about = "one signature of a signed message",
       .hints = {{"version", as<number>}}},
      {.syntax = "IssuerAndSerialNumber", .about = "which certificate a message refers to"},
      {.syntax = "EncryptedData",
       .about = "the content of an encrypted message",
       .hints = {{"version", as<number>}}},
      {.syntax = "EncryptedContentInfo",
       .about = "encrypted octets and how they are encrypted",
       .hints = {brief("contentEncryptionAlgorithm", as<encryption_algorithm>),
                 brief("encryptedContent", as<encrypted>)}},
  };
}

}  // namespace tool
