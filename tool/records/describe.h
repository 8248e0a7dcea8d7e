// The descriptions of the library's records: of any type by the library's description of it, and of
// some by an overload of describe(), which the file of their syntax defines. A null pointer is not
// described: Description leaves out a field that is not there.
#ifndef ORVELASN1_TOOL_RECORDS_DESCRIBE_H
#define ORVELASN1_TOOL_RECORDS_DESCRIBE_H

#include <orvelpki.h>

#include "model/node.h"
#include "text/times.h"

namespace tool {

// Universal types. A string is shown as octets; characters() shows it as a text.
Node describe(const Integer *integer, const View &view);
Node describe(const ObjId *oid, const View &view);
Node describe(const BitString *bits, const View &view);
Node describe(const ASN1String *string, const View &view);
Node describe(const Time *time, const View &view);
Node describe(const AlgId *algorithm, const View &view);

// What fields alone do not tell.
Node describe(const AttributeValueAssertion *assertion, const View &view);
Node describe(const SubjectPKI *key, const View &view);
Node describe(const Extension *extension, const View &view);
Node describe(const CRLEntry *entry, const View &view);
Node describe(const GeneralName *name, const View &view);
Node describe(const AuthorityKeyIdentifier *identifier, const View &view);
Node describe(const NameConstraints *constraints, const View &view);
Node describe(const pki_DisplayText *display, const View &view);
Node describe(const pki_UserNotice *notice, const View &view);
Node describe(const pki_PolicyQualifierInfo *qualifier, const View &view);
Node describe(const pki_PolicyInformation *policy, const View &view);
Node describe(const pki_IssuingDistributionPoint *point, const View &view);
Node describe(const pki_IPAddressFamily *family, const View &view);
Node describe(const pki_ASIdentifierChoice *choice, const View &view);
Node describe(const pki_ASIdentifiers *identifiers, const View &view);
Node describe(const pki_QCStatement *statement, const View &view);
Node describe(const pki_SemanticsInformation *semantics, const View &view);
Node describe(const pki_MonetaryValue *value, const View &view);
Node describe(const pki_PdsLocation *location, const View &view);
Node describe(const BasicConstraints *constraints, const View &view);
Node describe(const GeneralSubtree *subtree, const View &view);
Node describe(const PolicyConstraints *constraints, const View &view);
Node describe(const PolicyMapping *mapping, const View &view);
Node describe(const pki_PrivateKeyUsagePeriod *period, const View &view);
Node describe(const DistributionPointName *name, const View &view);
Node describe(const DistributionPoint *point, const View &view);
Node describe(const AccessDescription *access, const View &view);
Node describe(const Attribute *attribute, const View &view);
Node describe(const ResponseBytes *bytes, const View &view);
Node describe(const ResponderID *responder, const View &view);
Node describe(const OCSPCertStatus *status, const View &view);
Node describe(const RSAPublicKey *key, const View &view);
Node describe(const pki_RSAPrivateKey *key, const View &view);
Node describe(const pki_OneAsymmetricKey *info, const View &view);
Node describe(const pki_RSASSA_PSS_params *parameters, const View &view);
Node describe(const pki_RSAES_OAEP_params *parameters, const View &view);
Node describe(const DssParms *parameters, const View &view);
Node describe(const DomainParameters *parameters, const View &view);
Node describe(const pki_ContentInfo *message, const View &view);
Node describe(const pki_EncapsulatedContentInfo *content, const View &view);
Node describe(const CertBag *bag, const View &view);
Node describe(const CRLBag *bag, const View &view);
Node describe(const SafeBag *bag, const View &view);
Node describe(const GDOObject *object, const View &view);
Node describe(const GDO *gdo, const View &view);

/// Returns what pki_Type_find() returns, in less time.
const pki_Type *type_called(std::string_view name);

/// Describes a value of any type: as its row says, or else field by field.
Node describe(const pki_Type *type, const void *value, const View &view);

/// Describes a message. A content of the type data is an element of the type of this name; null for
/// data of any kind.
Node message(const pki_ContentInfo *info, const char *data_type, const View &view);

/// Returns lines that a page shows in the place of a record, at least one.
Node record_lines(std::vector<std::string> lines);

/// Returns the record. A page shows the lines that `lines` returns in its place inside another one.
template <std::invocable Lines>
Node with_lines(const View &view, Node record, Lines lines) {
  return shown_as(view, std::move(record), [&] { return record_lines(lines()); });
}

/// Returns the lines of a node, and of one that has none those of what is in it: "cA TRUE".
std::vector<std::string> flat_lines(const Node &node, const View &view);

/// Returns the octets as a text. Fails if they are not a text that can be printed as it is.
std::optional<std::string> text_in(Octets octets);

/// Describes octets. A page shows them with their text if all of it is printable.
Node octets_with_text(const OctetString *octets, const View &view);

/// What stands in the place of a secret.
constexpr const char *secret_text = "(secret; --secrets shows it)";

/// Returns the node where the view asks for secrets, or else the line in its place.
Node secret(Node node, const View &view);

/// Describes octets that are secret.
Node secret_octets(const OctetString *octets, const View &view);

/// Describes encrypted octets. A page shows their number.
Node encrypted(const OctetString *octets, const View &view);

/// Describes a record, and adds the number of bits of its modulus or prime.
Node with_bits(const char *type, const void *record, const Integer *modulus, const View &view);

/// Describes one of the library's lists of T records, each with `describe_element(record, view)`.
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

/// Describes one of the library's lists of values of a type.
Node list_of(const pki_Type *element, const List *list, const View &view);

/// The same by the name of the type, as pki_Type_find() takes it. Takes a null pointer.
Node list_of(const char *element, const List *list, const View &view);

/// Describes a character string whose universal tag is `tag`.
Node characters(uint8_t tag, const ASN1String *string, const View &view);

/// Describes the text of a UTCTime or GeneralizedTime.
Node time_of(uint8_t kind, const char *value, const View &view);

/// Describes a version that counts from 0. A page shows it as "1 (v2)".
Node version(const Integer *integer);

/// Returns the names of the bits that are set.
Node named_bits(const BitString *bits, std::span<const char *const> names);

/// Describes the reason of a revocation: "keyCompromise".
Node revocation_reason(const Integer *code);

/// Returns the name of the reason of a revocation.
std::string reason_name(uint32_t code);

/// Describes a distinguished name as a structure. A page shows it in one line.
Node rdn_sequence(const RDNSequence *name, const View &view);

/// Describes a distinguished name in the library's textual form. A page shows it like a structure.
Node name_text(const Name *name, const View &view);

/// Returns the tone for the standing of a period of validity.
Tone tone_of(const Standing &standing);

/// The description of a record, put together field by field.
class Description {
 public:
  explicit Description(const View &view) : view_(view) {}

  /// Adds a field of any kind. Leaves out an empty node.
  Description &field(std::string name, Node node);

  /// Adds a record that has a description of its own. Leaves out a null pointer.
  template <class T>
  Description &field(std::string name, const T *record) {
    return field(std::move(name), record == nullptr ? Node() : describe(record, view_));
  }

  /// Adds all fields of a record, described by their types and the hints of the record's row.
  Description &all(const pki_Type *type, const void *record);
  Description &all(const char *type, const void *record) { return all(type_called(type), record); }

  /// Adds the encoding that a record keeps besides its fields. Only JSON that is not compact has
  /// it.
  Description &encoding(std::string name, const OctetString *octets);

  /// Adds a name in three forms: its structure NAMESequence, its text NAME, and NAMEEncoded where
  /// that is kept. A page shows one.
  Description &name(const std::string &name, const RDNSequence *sequence,
                    const OctetString *encoded);

  /// Adds octets that a page shows as what they are. Compact JSON does not have them.
  Description &undecoded(std::string name, Node octets, Node shown);

  /// Adds a field that JSON does not have.
  Description &page_only(std::string name, Node node);

  /// Adds a field that only JSON has.
  Description &hidden(std::string name, Node node);
  Description &hidden(std::string name, Json json) {
    return hidden(std::move(name), text(std::move(json)));
  }

  /// Keeps something that the record borrows from.
  Description &keep(std::shared_ptr<const void> source);

  /// Marks the last field that is not hidden as one of the short form.
  Description &brief();

  /// Returns the record of all these fields.
  Node node();

 private:
  Description &add(std::string name, Node node);
  Description &period(const std::string &from_name, Time from, const std::string &until_name,
                      Time until);

  const View &view_;
  Node::Fields fields_;
  std::shared_ptr<const void> source_;
  std::optional<size_t> last_;  ///< the field that brief() marks, if it was not left out
};

}  // namespace tool

#endif
