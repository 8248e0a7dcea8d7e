// The descriptions of the library's records. Each overload of describe() is defined in the file of
// its syntax, describe_*.cpp, where the fields stand as the ASN.1 has them. A null pointer is not
// described: Description leaves a field out that is not there.
#ifndef ORVELASN1_TOOL_RECORDS_DESCRIBE_H
#define ORVELASN1_TOOL_RECORDS_DESCRIBE_H

#include "model/node.h"
#include "text/times.h"

namespace tool {

// Universal types. A string is shown as octets: where it is a text, take characters().
Node describe(const Integer *integer, const View &view);
Node describe(const ObjId *oid, const View &view);
Node describe(const BitString *bits, const View &view);
Node describe(const ASN1String *string, const View &view);
Node describe(const Time *time, const View &view);
Node describe(const AlgId *algorithm, const View &view);

// Names.
Node describe(const AttributeValueAssertion *assertion, const View &view);

// Certificates and CRLs.
Node describe(const Validity *validity, const View &view);
Node describe(const SubjectPKI *key, const View &view);
Node describe(const Extension *extension, const View &view);
Node describe(const Certificate_TBS *tbs, const View &view);
Node describe(const Certificate *certificate, const View &view);
Node describe(const CRLEntry *entry, const View &view);
Node describe(const CertificateList_TBS *tbs, const View &view);
Node describe(const CertificateRevocationList *crl, const View &view);

// Extension values.
Node describe(const OtherName *name, const View &view);
Node describe(const GeneralName *name, const View &view);
Node describe(const AuthorityKeyIdentifier *identifier, const View &view);
Node describe(const BasicConstraints *constraints, const View &view);
Node describe(const GeneralSubtree *subtree, const View &view);
Node describe(const NameConstraints *constraints, const View &view);
Node describe(const PolicyConstraints *constraints, const View &view);
Node describe(const PolicyMapping *mapping, const View &view);
Node describe(const PrivateKeyUsagePeriod *period, const View &view);
Node describe(const DistributionPointName *name, const View &view);
Node describe(const DistributionPoint *point, const View &view);
Node describe(const AccessDescription *access, const View &view);

// Certification requests.
Node describe(const Attribute *attribute, const View &view);
Node describe(const CertRequestInfo *info, const View &view);
Node describe(const CertificationRequest *request, const View &view);

// OCSP.
Node describe(const CertID *id, const View &view);
Node describe(const Request *request, const View &view);
Node describe(const TBSRequest *tbs, const View &view);
Node describe(const OCSPSignature *signature, const View &view);
Node describe(const OCSPRequest *request, const View &view);
Node describe(const ResponseBytes *bytes, const View &view);
Node describe(const OCSPResponse *response, const View &view);
Node describe(const ResponderID *responder, const View &view);
Node describe(const RevokedInfo *info, const View &view);
Node describe(const OCSPCertStatus *status, const View &view);
Node describe(const SingleResponse *single, const View &view);
Node describe(const ResponseData *data, const View &view);
Node describe(const BasicOCSPResponse *response, const View &view);

// Keys, digests and their parameters.
Node describe(const RSAPublicKey *key, const View &view);
Node describe(const RSAPrivateKey *key, const View &view);
Node describe(const DigestInfo *info, const View &view);
Node describe(const PrivateKeyInfo *info, const View &view);
Node describe(const EncryptedPrivateKeyInfo *info, const View &view);
Node describe(const DssParms *parameters, const View &view);
Node describe(const DssSigValue *signature, const View &view);
Node describe(const ValidationParms *parameters, const View &view);
Node describe(const DomainParameters *parameters, const View &view);
Node describe(const PublicKeyAndChallenge *signed_part, const View &view);
Node describe(const SignedPublicKeyAndChallenge *record, const View &view);

// Messages.
Node describe(const ContentInfo *message, const View &view);
Node describe(const IssuerAndSerialNumber *certificate, const View &view);
Node describe(const SignerInfo *signer, const View &view);
Node describe(const SignedData *data, const View &view);
Node describe(const EncryptedContentInfo *info, const View &view);
Node describe(const EncryptedData *data, const View &view);

// Personal information exchange.
Node describe(const PbeParams *parameters, const View &view);
Node describe(const MacData *mac, const View &view);
Node describe(const CertBag *bag, const View &view);
Node describe(const CRLBag *bag, const View &view);
Node describe(const SecretBag *bag, const View &view);
Node describe(const SafeBag *bag, const View &view);
Node describe(const PFX *pfx, const View &view);

// Card objects.
Node describe(const GDOObject *object, const View &view);
Node describe(const GDO *gdo, const View &view);
Node describe(const CardInfo *info, const View &view);
Node describe(const PublicKeyMAC *mac, const View &view);

/// A message whose content, where it is of the type data, is an element of the type of this name;
/// an empty name for data of any kind.
Node message(const ContentInfo *info, std::string_view data_type, const View &view);

/// The text that octets are; nothing where they are none, or one that cannot be printed as it is.
std::optional<std::string> text_in(Octets octets);

/// Octets, which a page shows with their text where all of it is printable.
Node octets_with_text(const OctetString *octets, const View &view);

/// Octets that are encrypted, of which a page shows the number.
Node encrypted(const OctetString *octets, const View &view);

/// An algorithm of password-based encryption, whose parameters are decoded; any other one as
/// describe() has it.
Node encryption_algorithm(const AlgId *algorithm, const View &view);

/// The T records of one of the library's lists, each as `describe_element(record, view)` has it.
template <class T, class F>
Node list_of(const List *list, F describe_element, const View &view) {
  Node node;
  node.value =
      Node::Items{static_cast<size_t>(List_len(list)), [list, describe_element, view](size_t i) {
                    const auto index = static_cast<int32_t>(i);
                    return describe_element(static_cast<const T *>(List_get(list, index)), view);
                  }};
  return node;
}

/// The T records of one of the library's lists.
template <class T>
Node list_of(const List *list, const View &view) {
  const auto describe_element = [](const T *record, const View &at) {
    return describe(record, at);
  };
  return list_of<T>(list, describe_element, view);
}

/// A character string whose universal tag is `tag`.
Node characters(uint8_t tag, const ASN1String *string);

/// The text of a UTCTime (23) or GeneralizedTime (24).
Node time_of(uint8_t kind, const char *value);

/// The reason of a revocation: "keyCompromise".
Node revocation_reason(uint32_t code);

/// A PrivateKeyUsagePeriod whose times are of this kind.
Node usage_period(uint8_t kind, const char *from, const char *until, const View &view);

/// A distinguished name as a structure, which a page shows in one line.
Node rdn_sequence(const RDNSequence *name, const View &view);

/// A distinguished name in the library's textual form, which a page shows as that of a structure.
Node name_text(const Name *name, const View &view);

/// The tone in which the standing of a period of validity is shown.
Tone tone_of(const Standing &standing);

/// The fields of a record, put together one behind the other.
class Description {
 public:
  explicit Description(const View &view) : view_(view) {}

  /// A field of any kind; nothing where the node is empty.
  Description &field(std::string name, Node node);

  /// A field whose record has a description of its own; nothing for a null pointer.
  template <class T>
  Description &field(std::string name, const T *record) {
    return field(std::move(name), record == nullptr ? Node() : describe(record, view_));
  }

  /// A list of T records; nothing for a null pointer.
  template <class T>
  Description &list(std::string name, const List *records) {
    return field(std::move(name), records == nullptr ? Node() : list_of<T>(records, view_));
  }

  /// A small INTEGER, such as a version.
  Description &small(std::string name, const Integer *integer) {
    return field(std::move(name), number(integer));
  }

  /// The encoding that a record keeps beside its fields; only JSON has it.
  Description &encoding(std::string name, const OctetString *octets);

  /// A version that counts from 0, which a page shows as "1 (v2)".
  Description &version(std::string name, const Integer *integer);

  /// The three forms that a record keeps a name in, NAMESequence, NAME and NAMEEncoded. A page
  /// shows one.
  Description &name(const std::string &name, const RDNSequence *sequence, const Name *text,
                    const OctetString *encoded);

  /// Two times, and how the moment of the view stands to them.
  Description &period(std::string from_name, Time *from, std::string until_name, Time *until);

  /// A field that only JSON has.
  Description &hidden(std::string name, Node node);

  /// Marks the last field, hidden ones aside, as one of the short form.
  Description &brief();

  /// The record of all these fields.
  Node node();

 private:
  Description &add(std::string name, Node node);

  const View &view_;
  Node::Fields fields_;
  std::optional<size_t> last_;  ///< the field that brief() marks, where it is there
};

}  // namespace tool

#endif
