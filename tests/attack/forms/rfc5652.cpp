// Cryptographic messages (RFC 5652), and stores (RFC 7292), which are made of them.
#include "forms.h"

namespace attack {

namespace {

using support::element;
using support::hex;
using support::text;
using support::operator+;

Bytes sequence(const Bytes &content) { return element(0x30, content); }
Bytes set(const Bytes &content) { return element(0x31, content); }

const Bytes version = hex("02 01 03");
const Bytes sha256 = sequence(hex("06 09 60 86 48 01 65 03 04 02 01"));
const Bytes ed25519 = sequence(hex("06 03 2B 65 70"));
const Bytes octets = hex("04 03 01 02 03");
const Bytes own_type = hex("06 03 2A 03 04");
const Bytes data = hex("06 09 2A 86 48 86 F7 0D 01 07 01");
const Bytes encrypted_data = hex("06 09 2A 86 48 86 F7 0D 01 07 06");
const Bytes date = element(24, text("20260101000000Z"));

const Bytes country = sequence(hex("06 03 55 04 06 13 02 44 45"));
const Bytes name = sequence(set(country));
const Bytes issued = sequence(name + hex("02 02 00 AB"));
const Bytes public_key = sequence(ed25519 + hex("03 03 00 02 00"));
const Bytes validity =
    sequence(element(23, text("260101000000Z")) + element(23, text("270101000000Z")));
const Bytes tbs = sequence(hex("02 01 05") + ed25519 + name + validity + name + public_key);
const Bytes certificate = sequence(tbs + ed25519 + hex("03 02 00 AB"));
const Bytes crl = sequence(sequence(ed25519 + name + element(23, text("260101000000Z"))) + ed25519 +
                           hex("03 02 00 AB"));

const Bytes attribute = sequence(hex("06 09 2A 86 48 86 F7 0D 01 09 04") + set(hex("04 02 AB CD")));
const Bytes many_values = sequence(own_type + set(hex("05 00 1F 81 00 00 30 00")));
const Bytes attributes = attribute + many_values;

const Bytes content_info = sequence(data + element(0xA0, octets));
const Bytes other = own_type + hex("0C 01 78");
const Bytes certificates = certificate + hex("A0 02 05 00 A1 00 A2 00") + element(0xA3, other);
const Bytes crls = crl + element(0xA1, other);

// The content of an OCTET STRING, that of signed code, and one that stands elsewhere.
const Bytes encapsulated = sequence(data + element(0xA0, octets));
const Bytes code = sequence(own_type + element(0xA0, sequence(hex("30 80 00 00 02 01 01"))));
const Bytes detached = sequence(data);

const Bytes signer = sequence(version + issued + sha256 + element(0xA0, attributes) + ed25519 +
                              octets + element(0xA1, many_values));
const Bytes plain_signer = sequence(version + hex("80 02 AB CD") + sha256 + ed25519 + octets);
const Bytes signed_data =
    sequence(version + set(sha256 + sha256) + encapsulated + element(0xA0, certificates) +
             element(0xA1, crls) + set(signer + plain_signer));
const Bytes only_certificates =
    sequence(hex("02 01 01") + set({}) + detached + element(0xA0, certificate) + set({}));

const Bytes key_attribute = sequence(own_type + hex("05 00"));
const Bytes key_trans = version + issued + sha256 + octets;
const Bytes originator_key = ed25519 + hex("03 02 00 02");
const Bytes key_identifier = octets + date + key_attribute;
const Bytes encrypted_keys =
    sequence(issued + octets) + sequence(element(0xA0, key_identifier) + octets);
const Bytes key_agree = version + element(0xA0, element(0xA1, originator_key)) +
                        element(0xA1, octets) + sha256 + sequence(encrypted_keys);
const Bytes plain_key_agree = version + element(0xA0, issued) + sha256 + sequence({});
const Bytes kek = version + sequence(key_identifier) + sha256 + octets;
const Bytes password = version + hex("A0 05 06 03 2A 03 04") + sha256 + octets;
const Bytes recipients = sequence(key_trans) + element(0xA1, key_agree) + element(0xA2, kek) +
                         element(0xA3, password) + element(0xA4, other);
const Bytes originator = element(0xA0, certificates) + element(0xA1, crls);
const Bytes encrypted = sequence(data + sha256 + hex("80 03 01 02 03"));
const Bytes nothing_encrypted = sequence(data + sha256);
const Bytes message_of_recipients = version + element(0xA0, originator) + set(recipients);

const Bytes digest = sequence(sha256 + octets);
const Bytes mac = sequence(digest + octets + hex("02 02 08 00"));
const Bytes plain_mac = sequence(digest + octets);
const Bytes encrypted_safe = sequence(encrypted_data + element(0xA0, hex("30 00")));
const Bytes bag = sequence(own_type + element(0xA0, hex("30 03 02 01 00")) + set(attributes));
const Bytes plain_bag = sequence(own_type + element(0xA0, octets));
const Bytes typed = sequence(own_type + element(0xA0, octets));
const Bytes typed_otherwise = sequence(own_type + element(0xA0, hex("16 01 78")));

}  // namespace

std::vector<Form> rfc5652_forms() {
  return {
      {"pki_Attributes", {set({}), set(attributes)}},
      {"pki_ContentInfo", {content_info, sequence(own_type)}},
      {"pki_IssuerAndSerialNumber", {issued, sequence(hex("30 00 02 01 80"))}},
      {"pki_OtherCertificateFormat", {sequence(other)}},
      {"pki_CertificateChoices",
       {certificate, hex("A0 02 05 00"), hex("A1 00"), hex("A2 00"), element(0xA3, other)}},
      {"pki_OtherRevocationInfoFormat", {sequence(other)}},
      {"pki_RevocationInfoChoice", {crl, element(0xA1, other)}},
      {"pki_EncapsulatedContent", {octets, hex("04 00"), sequence(octets)}},
      {"pki_EncapsulatedContentInfo", {encapsulated, code, detached}},
      {"pki_SignerIdentifier", {issued, hex("80 02 AB CD")}},
      {"pki_SignerInfo", {signer, plain_signer}},
      {"pki_SignedData", {signed_data, only_certificates}},
      {"pki_DigestedData",
       {sequence(version + sha256 + encapsulated + octets),
        sequence(version + sha256 + detached + octets)}},
      {"pki_KeyTransRecipientInfo", {sequence(key_trans)}},
      {"pki_OriginatorPublicKey", {sequence(originator_key)}},
      {"pki_OriginatorIdentifierOrKey",
       {issued, hex("80 02 AB CD"), element(0xA1, originator_key)}},
      {"pki_OtherKeyAttribute", {key_attribute, sequence(own_type)}},
      {"pki_RecipientKeyIdentifier", {sequence(key_identifier), sequence(octets)}},
      {"pki_KeyAgreeRecipientIdentifier", {issued, element(0xA0, key_identifier)}},
      {"pki_RecipientEncryptedKey", {sequence(issued + octets)}},
      {"pki_KeyAgreeRecipientInfo", {sequence(key_agree), sequence(plain_key_agree)}},
      {"pki_KEKIdentifier", {sequence(key_identifier), sequence(octets)}},
      {"pki_KEKRecipientInfo", {sequence(kek)}},
      {"pki_PasswordRecipientInfo", {sequence(password), sequence(version + sha256 + octets)}},
      {"pki_OtherRecipientInfo", {sequence(other)}},
      {"pki_RecipientInfo",
       {sequence(key_trans), element(0xA1, key_agree), element(0xA2, kek), element(0xA3, password),
        element(0xA4, other)}},
      {"pki_OriginatorInfo", {sequence({}), sequence(originator)}},
      {"pki_EncryptedContentInfo", {encrypted, nothing_encrypted}},
      {"pki_EncryptedData",
       {sequence(version + encrypted), sequence(version + encrypted + element(0xA1, attributes))}},
      {"pki_EnvelopedData",
       {sequence(message_of_recipients + encrypted + element(0xA1, attributes)),
        sequence(version + set({}) + nothing_encrypted)}},
      {"pki_AuthenticatedData",
       {sequence(message_of_recipients + sha256 + hex("A1 05 06 03 2A 03 04") + encapsulated +
                 element(0xA2, attributes) + octets + element(0xA3, many_values)),
        sequence(version + set({}) + sha256 + detached + octets)}},
  };
}

std::vector<Form> rfc7292_forms() {
  return {
      {"pki_PFX", {sequence(version + content_info), sequence(version + content_info + mac)}},
      {"pki_MacData", {mac, plain_mac}},
      {"pki_AuthenticatedSafe", {sequence({}), sequence(content_info + encrypted_safe)}},
      {"pki_SafeBag", {bag, plain_bag}},
      {"pki_SafeContents", {sequence({}), sequence(bag + plain_bag)}},
      {"pki_CertBag", {typed, typed_otherwise}},
      {"pki_CRLBag", {typed, typed_otherwise}},
      {"pki_SecretBag", {typed, typed_otherwise}},
      {"pki_PbeParams", {sequence(octets + hex("02 02 08 00"))}},
  };
}

}  // namespace attack
