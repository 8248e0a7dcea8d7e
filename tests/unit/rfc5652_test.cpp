// Cryptographic messages in the form of RFC 5652. The octets are made by hand.
#include <forms.h>

namespace rfc5652_test {

namespace {

using namespace support;

const auto infos = FORM(ContentInfo, pki_ContentInfo);
const auto contents = FORM(EncapsulatedContentInfo, pki_EncapsulatedContentInfo);
const auto signers = FORM(SignerInfo, pki_SignerInfo);
const auto signed_messages = FORM(SignedData, pki_SignedData);
const auto digested_messages = FORM(DigestedData, pki_DigestedData);
const auto enveloped_messages = FORM(EnvelopedData, pki_EnvelopedData);
const auto encrypted_messages = FORM(EncryptedData, pki_EncryptedData);
const auto authenticated_messages = FORM(AuthenticatedData, pki_AuthenticatedData);
const auto recipients = FORM(RecipientInfo, pki_RecipientInfo);
const auto certificate_choices = FORM(CertificateChoices, pki_CertificateChoices);
const auto revocation_choices = FORM(RevocationInfoChoice, pki_RevocationInfoChoice);

Bytes set(const Bytes &content) { return element(0x31, content); }

const Bytes data = hex("06 09 2A 86 48 86 F7 0D 01 07 01");
const Bytes own_type = hex("06 03 2A 03 04");
const Bytes sha256 = sequence(hex("06 09 60 86 48 01 65 03 04 02 01"));
const Bytes ed25519 = sequence(hex("06 03 2B 65 70"));
const Bytes name = sequence(set(sequence(hex("06 03 55 04 06 13 02 44 45"))));
const Bytes issued = sequence(name + hex("02 01 05"));
const Bytes digest_attribute =
    sequence(hex("06 09 2A 86 48 86 F7 0D 01 09 04") + set(hex("04 02 AB CD")));
const Bytes type_attribute = sequence(hex("06 09 2A 86 48 86 F7 0D 01 09 03") + set(data));
const Bytes attributes = type_attribute + digest_attribute;
const Bytes other = own_type + hex("0C 01 78");

const Bytes validity =
    sequence(element(23, text("260101000000Z")) + element(23, text("270101000000Z")));
const Bytes certificate = sequence(sequence(hex("02 01 05") + ed25519 + name + validity + name +
                                            sequence(ed25519 + hex("03 02 00 02"))) +
                                   ed25519 + hex("03 02 00 AB"));
const Bytes crl = sequence(sequence(ed25519 + name + element(23, text("260101000000Z"))) + ed25519 +
                           hex("03 02 00 AB"));

// ---------------------------------------------------------------------------------------------
// Messages and their contents
// ---------------------------------------------------------------------------------------------

TEST(MessageInfo, KeepsItsContentWhole) {
  const Bytes inner = sequence(hex("30 80 00 00 02 01 01"));
  const auto info = expect_kept(infos, sequence(own_type + element(0xA0, inner)));
  EXPECT_EQ(own_type, encode(asn1_ObjId_e, info->contentType));
  EXPECT_EQ(inner, value(info->content));
}

TEST(MessageInfo, MayHaveNoContent) {
  EXPECT_EQ(nullptr, expect_kept(infos, sequence(own_type))->content);
}

TEST(MessageInfo, OfIndefiniteLengthIsWrittenInDerButForItsContent) {
  const Bytes inner = hex("30 80 24 80 04 01 AB 00 00 00 00");
  const auto info =
      expect_written(infos, hex("30 80") + own_type + hex("A0 80") + inner + hex("00 00 00 00"),
                     sequence(own_type + element(0xA0, inner)));
  EXPECT_EQ(inner, value(info->content));
}

TEST(MessageInfo, IsRefused) {
  for (const Bytes &content :
       {Bytes(), hex("A0 02 05 00"), own_type + hex("A0 00"), own_type + hex("A0 04 05 00 05 00"),
        own_type + hex("A1 02 05 00"), own_type + hex("05 00"), own_type + hex("80 00"),
        own_type + hex("A0 02 05 00 05 00"), hex("06 02 2A 81"), hex("06 00"),
        own_type + hex("A0 80 05 00"), own_type + hex("A0 02 05 01")}) {
    expect_form_refused(infos, sequence(content));
  }
}

TEST(EncapsulatedContent, IsAnOctetString) {
  const auto info = expect_kept(contents, sequence(data + hex("A0 05 04 03 01 02 03")));
  ASSERT_NE(nullptr, info->eContent);
  ASSERT_EQ(4, info->eContent->kind);
  EXPECT_EQ(hex("01 02 03"), value(static_cast<const OctetString *>(info->eContent->value)));
}

TEST(EncapsulatedContent, OfSegmentsIsJoined) {
  for (const char *segments :
       {"24 80 04 01 01 24 05 04 01 02 04 00 04 01 03 00 00", "24 08 04 02 01 02 04 02 03 04"}) {
    const auto info =
        decoded(contents, hex("30 80") + data + hex("A0 80") + hex(segments) + hex("00 00 00 00"));
    ASSERT_EQ(4, info->eContent->kind);
    const auto *octets = static_cast<const OctetString *>(info->eContent->value);
    const Bytes joined = {1, 2, 3, 4};
    EXPECT_EQ(Bytes(joined.begin(), std::next(joined.begin(), int32_t(octets->length))),
              value(octets));
    EXPECT_EQ(sequence(data + element(0xA0, element(0x04, value(octets)))),
              encoded(contents, info));
  }
}

TEST(EncapsulatedContent, OfPkcs7MayBeASequence) {
  const Bytes inner = sequence(hex("30 02 05 00 30 00"));
  const auto info = expect_kept(contents, sequence(own_type + element(0xA0, inner)));
  ASSERT_EQ(16, info->eContent->kind);
  EXPECT_EQ(inner, value(static_cast<const Any *>(info->eContent->value)));
}

TEST(EncapsulatedContent, MayStandElsewhere) {
  EXPECT_EQ(nullptr, expect_kept(contents, sequence(data))->eContent);
}

TEST(EncapsulatedContent, IsRefused) {
  for (const Bytes &content :
       {data + hex("A0 00"), data + hex("A0 02 05 00"), data + hex("A0 02 31 00"),
        data + hex("A0 04 04 00 04 00"), data + hex("A0 02 84 00"), data + hex("80 01 AB"),
        data + hex("A0 05 24 03 0C 01 78"), data + hex("04 00"), data + hex("A0 02 04 00 05 00")}) {
    expect_form_refused(contents, sequence(content));
  }
}

// ---------------------------------------------------------------------------------------------
// Signers
// ---------------------------------------------------------------------------------------------

const Bytes signature = hex("04 03 01 02 03");
const Bytes signer_with_attributes =
    sequence(hex("02 01 01") + issued + sha256 + element(0xA0, attributes) + ed25519 + signature +
             element(0xA1, digest_attribute));
const Bytes plain_signer =
    sequence(hex("02 01 03") + hex("80 02 AB CD") + sha256 + ed25519 + signature);

Bytes signed_octets(const Held<pki_SignerInfo> &signer) {
  return encode(pki_SignerInfo_signed_octets, signer.get());
}

TEST(Signer, IsIdentifiedByIssuerAndSerialNumber) {
  const auto signer = expect_kept(signers, signer_with_attributes);
  EXPECT_EQ(1U, asn1_Integer_get(signer->version));
  ASSERT_EQ(16, signer->sid->kind);
  const auto *sid = static_cast<const pki_IssuerAndSerialNumber *>(signer->sid->value);
  EXPECT_EQ(name, encode(pki_RDNSequence_e, sid->issuer));
  EXPECT_EQ(5U, asn1_Integer_get(sid->serialNumber));
  EXPECT_EQ(sha256, encode(pki_AlgId_e, signer->digestAlgorithm));
  ASSERT_EQ(2, List_len(signer->signedAttrs));
  EXPECT_EQ(type_attribute,
            encode(pki_Attribute_e, &element_of<const Attribute>(signer->signedAttrs, 0)));
  EXPECT_EQ(ed25519, encode(pki_AlgId_e, signer->signatureAlgorithm));
  EXPECT_EQ(hex("01 02 03"), value(signer->signature));
  ASSERT_EQ(1, List_len(signer->unsignedAttrs));
}

TEST(Signer, IsIdentifiedByKey) {
  const auto signer = expect_kept(signers, plain_signer);
  ASSERT_EQ(0, signer->sid->kind);
  EXPECT_EQ(hex("AB CD"), value(static_cast<const OctetString *>(signer->sid->value)));
  EXPECT_EQ(nullptr, signer->signedAttrs);
  EXPECT_EQ(nullptr, signer->signedAttrsEncoded);
  EXPECT_EQ(nullptr, signer->unsignedAttrs);
}

TEST(Signer, SignsItsAttributesUnderTheTagOfSetOf) {
  const auto signer = decoded(signers, signer_with_attributes);
  EXPECT_EQ(element(0xA0, attributes), value(signer->signedAttrsEncoded));
  EXPECT_EQ(set(attributes), signed_octets(signer));
  EXPECT_EQ(set(attributes), signed_octets(cloned(signers, signer)));
  clear(signer->signedAttrsEncoded, asn1_OctetString_free);
  EXPECT_EQ(set(attributes), signed_octets(signer));
  EXPECT_EQ(signer_with_attributes, encoded(signers, signer));
}

TEST(Signer, SignsTheOrderThatWasReadAndTheLengthsThatWereRead) {
  const Bytes swapped = digest_attribute + type_attribute;
  const Bytes length = {0x81, static_cast<uint8_t>(swapped.size())};
  const auto signer = expect_kept(signers, sequence(hex("02 01 01") + issued + sha256 + hex("A0") +
                                                    length + swapped + ed25519 + signature));
  EXPECT_EQ(hex("31") + length + swapped, signed_octets(signer));
}

TEST(Signer, SignsDerWhereTheAttributesHaveAnIndefiniteLength) {
  const auto signer = decoded(signers, sequence(hex("02 01 01") + issued + sha256 + hex("A0 80") +
                                                attributes + hex("00 00") + ed25519 + signature));
  EXPECT_EQ(set(attributes), signed_octets(signer));
}

TEST(Signer, SignsNothingOfItsOwnWithoutAttributes) {
  EXPECT_EQ(Bytes(), signed_octets(decoded(signers, plain_signer)));
  EXPECT_EQ(Bytes(), signed_octets(created(signers)));
  EXPECT_EQ(0U, pki_SignerInfo_signed_octets(nullptr, nullptr));
}

TEST(Signer, SignsAnEmptySet) {
  const auto signer = expect_kept(
      signers, sequence(hex("02 01 01") + issued + sha256 + hex("A0 00") + ed25519 + signature));
  EXPECT_EQ(hex("31 00"), signed_octets(signer));
}

TEST(Signer, WithOctetsThatAreNoElementSignsItsAttributes) {
  const auto signer = created(signers);
  signer->signedAttrsEncoded = asn1_OctetString_new(0);
  EXPECT_EQ(Bytes(), signed_octets(signer));
  signer->signedAttrs = List_new(0);
  EXPECT_EQ(hex("31 00"), signed_octets(signer));
}

TEST(Signer, IsRefused) {
  const Bytes start = hex("02 01 01") + issued + sha256;
  const Bytes end = ed25519 + signature;
  for (const Bytes &content :
       {hex("02 01 01") + sha256 + end, hex("02 01 01 81 00") + sha256 + end,
        hex("02 01 01 A1 00") + sha256 + end, start + ed25519, start + hex("A2 00") + end,
        start + hex("A0 02 05 00") + end, start + end + hex("A0 00"), start + end + hex("05 00"),
        start + end + hex("A1 00 A1 00"), start + hex("80 00") + end}) {
    expect_form_refused(signers, sequence(content));
  }
}

// ---------------------------------------------------------------------------------------------
// Signed and digested messages
// ---------------------------------------------------------------------------------------------

TEST(SignedMessage, HasCertificatesAndListsOfEachKind) {
  const Bytes octets = sequence(
      hex("02 01 05") + set(sha256) + sequence(data + hex("A0 03 04 01 AB")) +
      element(0xA0,
              certificate + hex("A0 02 05 00 A1 02 05 00 A2 02 05 00") + element(0xA3, other)) +
      element(0xA1, crl + element(0xA1, other)) + set(signer_with_attributes + plain_signer));
  const auto message = expect_kept(signed_messages, octets);
  EXPECT_EQ(5U, asn1_Integer_get(message->version));
  ASSERT_EQ(1, List_len(message->digestAlgorithms));
  EXPECT_EQ(sha256, encode(pki_AlgId_e, &element_of<const AlgId>(message->digestAlgorithms, 0)));
  EXPECT_EQ(data, encode(asn1_ObjId_e, message->encapContentInfo->eContentType));

  ASSERT_EQ(5, List_len(message->certificates));
  const auto &first = element_of<const pki_CertificateChoices>(message->certificates, 0);
  ASSERT_EQ(16, first.kind);
  EXPECT_EQ(5U, asn1_Integer_get(
                    static_cast<const Certificate *>(first.value)->tbsCertificate->serialNumber));
  for (int32_t i = 1; i < 4; ++i) {
    const auto &choice = element_of<const pki_CertificateChoices>(message->certificates, i);
    ASSERT_EQ(i - 1, choice.kind);
    EXPECT_EQ((Bytes{static_cast<uint8_t>(0xA0 + i - 1), 2, 5, 0}),
              value(static_cast<const Any *>(choice.value)));
  }
  const auto &last = element_of<const pki_CertificateChoices>(message->certificates, 4);
  ASSERT_EQ(3, last.kind);
  const auto *format = static_cast<const pki_OtherCertificateFormat *>(last.value);
  EXPECT_EQ(own_type, encode(asn1_ObjId_e, format->otherCertFormat));
  EXPECT_EQ(hex("0C 01 78"), value(format->otherCert));

  ASSERT_EQ(2, List_len(message->crls));
  const auto &list = element_of<const pki_RevocationInfoChoice>(message->crls, 0);
  ASSERT_EQ(16, list.kind);
  EXPECT_EQ(crl, encode(pki_CertificateRevocationList_e,
                        static_cast<const CertificateRevocationList *>(list.value)));
  const auto &info = element_of<const pki_RevocationInfoChoice>(message->crls, 1);
  ASSERT_EQ(1, info.kind);
  EXPECT_EQ(hex("0C 01 78"),
            value(static_cast<const pki_OtherRevocationInfoFormat *>(info.value)->otherRevInfo));
  EXPECT_EQ(2, List_len(message->signerInfos));
}

TEST(SignedMessage, MayBeCertificatesAlone) {
  const auto message = expect_kept(
      signed_messages, sequence(hex("02 01 01 31 00") + sequence(data) +
                                element(0xA0, certificate + certificate) + hex("31 00")));
  EXPECT_EQ(nullptr, message->encapContentInfo->eContent);
  EXPECT_EQ(2, List_len(message->certificates));
  EXPECT_EQ(nullptr, message->crls);
  EXPECT_EQ(0, List_len(message->signerInfos));
}

TEST(SignedMessage, OfIndefiniteLengthsIsWrittenInDer) {
  const Bytes read = hex("30 80 02 01 01 31 80") + sha256 + hex("00 00 30 80") + data +
                     hex("A0 80 24 80 04 01 AB 04 01 CD 00 00 00 00 00 00 A0 80") + certificate +
                     hex("00 00 31 80") + plain_signer + hex("00 00 00 00");
  expect_written(
      signed_messages, read,
      sequence(hex("02 01 01") + set(sha256) + sequence(data + hex("A0 04 04 02 AB CD")) +
               element(0xA0, certificate) + set(plain_signer)));
}

TEST(SignedMessage, IsRefused) {
  const Bytes start = hex("02 01 01 31 00") + sequence(data);
  for (const Bytes &content :
       {start, start + hex("A0 00"), start + hex("31 00 05 00"), start + hex("A1 00 A0 00 31 00"),
        start + hex("A2 00 31 00"), start + hex("A0 02 A4 00 31 00"),
        start + hex("A1 02 A0 00 31 00"), start + hex("A0 02 30 00 31 00"), start + hex("30 00"),
        start + hex("31 02 30 00"), hex("02 01 01 31 02 05 00") + sequence(data) + hex("31 00"),
        hex("31 00") + sequence(data) + hex("31 00")}) {
    expect_form_refused(signed_messages, sequence(content));
  }
  expect_form_refused(signed_messages, hex("30 80") + start + hex("31 00"));
  expect_form_refused(certificate_choices, hex("A4 00"));
  expect_form_refused(certificate_choices, hex("80 00"));
  expect_form_refused(revocation_choices, hex("A0 00"));
}

TEST(DigestedMessage, HasItsFieldsInTheirPlaces) {
  const auto message = expect_kept(
      digested_messages,
      sequence(hex("02 01 00") + sha256 + sequence(data + hex("A0 02 04 00")) + signature));
  EXPECT_EQ(0U, asn1_Integer_get(message->version));
  EXPECT_EQ(4, message->encapContentInfo->eContent->kind);
  EXPECT_EQ(hex("01 02 03"), value(message->digest));
  expect_form_refused(digested_messages, sequence(hex("02 01 00") + sha256 + sequence(data)));
}

// ---------------------------------------------------------------------------------------------
// Recipients
// ---------------------------------------------------------------------------------------------

const Bytes key = hex("04 02 AB CD");
const Bytes date = element(24, text("20260101000000Z"));
const Bytes key_attribute = sequence(own_type + hex("05 00"));

TEST(Recipient, HasTheKeyTransported) {
  const auto recipient = expect_kept(recipients, sequence(hex("02 01 00") + issued + sha256 + key));
  ASSERT_EQ(16, recipient->kind);
  const auto *info = static_cast<const pki_KeyTransRecipientInfo *>(recipient->value);
  EXPECT_EQ(16, info->rid->kind);
  EXPECT_EQ(sha256, encode(pki_AlgId_e, info->keyEncryptionAlgorithm));
  EXPECT_EQ(hex("AB CD"), value(info->encryptedKey));
}

TEST(Recipient, AgreesOnTheKey) {
  const Bytes originator_key = element(0xA1, ed25519 + hex("03 02 00 02"));
  const Bytes by_key = element(0xA0, hex("04 01 01") + date + key_attribute);
  const auto recipient = expect_kept(
      recipients, element(0xA1, hex("02 01 03") + element(0xA0, originator_key) +
                                    element(0xA1, hex("04 01 07")) + sha256 +
                                    sequence(sequence(issued + key) + sequence(by_key + key))));
  ASSERT_EQ(1, recipient->kind);
  const auto *info = static_cast<const pki_KeyAgreeRecipientInfo *>(recipient->value);
  ASSERT_EQ(1, info->originator->kind);
  const auto *originator = static_cast<const pki_OriginatorPublicKey *>(info->originator->value);
  EXPECT_EQ(ed25519, encode(pki_AlgId_e, originator->algorithm));
  EXPECT_EQ(hex("02"), value(originator->publicKey));
  EXPECT_EQ(hex("07"), value(info->ukm));
  ASSERT_EQ(2, List_len(info->recipientEncryptedKeys));
  const auto &first = element_of<const pki_RecipientEncryptedKey>(info->recipientEncryptedKeys, 0);
  EXPECT_EQ(16, first.rid->kind);
  EXPECT_EQ(hex("AB CD"), value(first.encryptedKey));
  const auto &second = element_of<const pki_RecipientEncryptedKey>(info->recipientEncryptedKeys, 1);
  ASSERT_EQ(0, second.rid->kind);
  const auto *identifier = static_cast<const pki_RecipientKeyIdentifier *>(second.rid->value);
  EXPECT_EQ(hex("01"), value(identifier->subjectKeyIdentifier));
  EXPECT_STREQ("20260101000000Z", identifier->date);
  EXPECT_EQ(hex("05 00"), value(identifier->other->keyAttr));
}

TEST(Recipient, HasTheKeyOfAKey) {
  const auto recipient = expect_kept(
      recipients, element(0xA2, hex("02 01 04") + sequence(hex("04 01 01") + date + key_attribute) +
                                    sha256 + key));
  ASSERT_EQ(2, recipient->kind);
  const auto *info = static_cast<const pki_KEKRecipientInfo *>(recipient->value);
  EXPECT_EQ(hex("01"), value(info->kekid->keyIdentifier));
  EXPECT_STREQ("20260101000000Z", info->kekid->date);
  EXPECT_EQ(own_type, encode(asn1_ObjId_e, info->kekid->other->keyAttrId));
  EXPECT_EQ(hex("AB CD"), value(info->encryptedKey));
}

TEST(Recipient, HasTheKeyOfAPassword) {
  const Bytes derivation = hex("06 03 2A 03 04");
  const auto recipient = expect_kept(
      recipients, element(0xA3, hex("02 01 00") + element(0xA0, derivation) + sha256 + key));
  ASSERT_EQ(3, recipient->kind);
  const auto *info = static_cast<const pki_PasswordRecipientInfo *>(recipient->value);
  EXPECT_EQ(sequence(derivation), encode(pki_AlgId_e, info->keyDerivationAlgorithm));
  EXPECT_EQ(sha256, encode(pki_AlgId_e, info->keyEncryptionAlgorithm));
}

TEST(Recipient, MayBeOfAnotherKind) {
  const auto recipient = expect_kept(recipients, element(0xA4, other));
  ASSERT_EQ(4, recipient->kind);
  const auto *info = static_cast<const pki_OtherRecipientInfo *>(recipient->value);
  EXPECT_EQ(own_type, encode(asn1_ObjId_e, info->oriType));
  EXPECT_EQ(hex("0C 01 78"), value(info->oriValue));
}

TEST(Recipient, IsRefused) {
  for (const Bytes &octets :
       {hex("A0 00"), hex("A5 00"), element(0xA4, own_type), element(0xA4, other + hex("05 00")),
        element(0xA3, hex("02 01 00") + sha256), sequence(hex("02 01 00") + issued + key),
        element(0xA1, hex("02 01 03") + issued + sha256 + hex("30 00")),
        element(0xA2, hex("02 01 04") + sequence(key_attribute) + sha256 + key)}) {
    expect_form_refused(recipients, octets);
  }
}

// ---------------------------------------------------------------------------------------------
// Encrypted and authenticated messages
// ---------------------------------------------------------------------------------------------

const Bytes recipient = sequence(hex("02 01 00") + issued + sha256 + key);
const Bytes encrypted = sequence(data + sha256 + hex("80 02 AB CD"));

TEST(EnvelopedMessage, HasItsFieldsInTheirPlaces) {
  const auto message = expect_kept(
      enveloped_messages,
      sequence(hex("02 01 03") + element(0xA0, element(0xA0, certificate) + element(0xA1, crl)) +
               set(recipient + element(0xA4, other)) + encrypted + element(0xA1, attributes)));
  EXPECT_EQ(3U, asn1_Integer_get(message->version));
  EXPECT_EQ(1, List_len(message->originatorInfo->certs));
  EXPECT_EQ(1, List_len(message->originatorInfo->crls));
  EXPECT_EQ(2, List_len(message->recipientInfos));
  EXPECT_EQ(hex("AB CD"), value(message->encryptedContentInfo->encryptedContent));
  EXPECT_EQ(2, List_len(message->unprotectedAttrs));
}

TEST(EnvelopedMessage, OfSegmentsIsWrittenInOnePiece) {
  const auto message =
      expect_written(enveloped_messages,
                     hex("30 80 02 01 00 31 80") + recipient + hex("00 00 30 80") + data + sha256 +
                         hex("A0 80 04 01 AB 04 01 CD 00 00 00 00 00 00"),
                     sequence(hex("02 01 00") + set(recipient) + encrypted));
  EXPECT_EQ(nullptr, message->originatorInfo);
  EXPECT_EQ(nullptr, message->unprotectedAttrs);
}

TEST(EnvelopedMessage, MayHaveItsContentElsewhere) {
  const auto message = expect_kept(
      enveloped_messages, sequence(hex("02 01 00") + set(recipient) + sequence(data + sha256)));
  EXPECT_EQ(nullptr, message->encryptedContentInfo->encryptedContent);
}

TEST(EnvelopedMessage, IsRefused) {
  const Bytes start = hex("02 01 00") + set(recipient);
  for (const Bytes &content :
       {start, hex("02 01 00") + encrypted, start + encrypted + hex("A0 00"),
        start + encrypted + hex("05 00"), start + sequence(data + sha256 + hex("A1 00")),
        hex("02 01 00 A1 00") + set(recipient) + encrypted}) {
    expect_form_refused(enveloped_messages, sequence(content));
  }
}

TEST(EncryptedMessage, MayHaveAttributes) {
  EXPECT_EQ(
      nullptr,
      expect_kept(encrypted_messages, sequence(hex("02 01 00") + encrypted))->unprotectedAttrs);
  const auto message = expect_kept(
      encrypted_messages, sequence(hex("02 01 02") + encrypted + element(0xA1, attributes)));
  EXPECT_EQ(2, List_len(message->unprotectedAttrs));
  expect_form_refused(encrypted_messages, sequence(hex("02 01 00") + encrypted + hex("A0 00")));
}

TEST(AuthenticatedMessage, HasItsFieldsInTheirPlaces) {
  const Bytes encapsulated = sequence(data + hex("A0 03 04 01 07"));
  const auto message =
      expect_kept(authenticated_messages,
                  sequence(hex("02 01 03") + element(0xA0, element(0xA0, certificate)) +
                           set(recipient) + sha256 + element(0xA1, own_type) + encapsulated +
                           element(0xA2, attributes) + key + element(0xA3, digest_attribute)));
  EXPECT_EQ(1, List_len(message->originatorInfo->certs));
  EXPECT_EQ(nullptr, message->originatorInfo->crls);
  EXPECT_EQ(sha256, encode(pki_AlgId_e, message->macAlgorithm));
  EXPECT_EQ(sequence(own_type), encode(pki_AlgId_e, message->digestAlgorithm));
  EXPECT_EQ(set(attributes), encode(pki_Attributes_e, message->authAttrs));
  EXPECT_EQ(hex("AB CD"), value(message->mac));
  EXPECT_EQ(1, List_len(message->unauthAttrs));
}

TEST(SignerInfoForm, SignsItsAttributesWhereTheKeptOctetsAreNotThere) {
  const auto signer = created(signers);
  signer->signedAttrs = List_new(0);
  signer->signedAttrsEncoded = asn1_OctetString_new(0);
  const auto signed_octets = [&] {
    return encode_with(
        [&](uint8_t **pp) { return pki_SignerInfo_signed_octets(pp, signer.get()); });
  };
  EXPECT_EQ(hex("31 00"), signed_octets());
  signer->signedAttrsEncoded->length = 4;
  EXPECT_EQ(hex("31 00"), signed_octets());
  signer->signedAttrsEncoded->length = 0;
}

}  // namespace

}  // namespace rfc5652_test
