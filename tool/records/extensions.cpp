// The syntaxes of certificate and CRL extensions (RFC 5280, 4.2, 5.2), and logotypes (RFC 3709).
#include "records/extension_values.h"
#include "records/general_names.h"
#include "records/type.h"
#include "text/characters.h"
#include "text/integers.h"
#include "text/object_identifiers.h"

namespace tool {

// AuthorityKeyIdentifier ::= SEQUENCE { keyIdentifier [0], authorityCertIssuer [1],
//   authorityCertSerialNumber [2] }
Node describe(const AuthorityKeyIdentifier *identifier, const View &view) {
  return with_lines(
      view, Description(view).all("pki_AuthorityKeyIdentifier", identifier).node(), [&] {
        std::vector<std::string> lines;
        if (identifier->keyIdentifier != nullptr)
          lines.push_back(hex(octets(identifier->keyIdentifier)));
        for (const std::string &line : general_name_lines(identifier->authorityCertIssuer, view))
          lines.push_back("issuer " + line);
        if (identifier->authorityCertSerialNumber != nullptr)
          lines.push_back("serial " + integer_text(identifier->authorityCertSerialNumber));
        return lines;
      });
}

// BasicConstraints ::= SEQUENCE { cA DEFAULT FALSE, pathLenConstraint OPTIONAL }
Node describe(const BasicConstraints *constraints, const View &view) {
  return with_lines(view, Description(view).all("pki_BasicConstraints", constraints).node(), [&] {
    std::string line = constraints->cA != 0 ? "CA" : "not a CA";
    if (constraints->pathLenConstraint != nullptr)
      line += ", path length " + number_text(constraints->pathLenConstraint);
    return std::vector<std::string>{line};
  });
}

// GeneralSubtree ::= SEQUENCE { base, minimum [0], maximum [1] }
Node describe(const GeneralSubtree *subtree, const View &view) {
  const Node base = subtree_base(subtree->base, view);
  Node record = Description(view)
                    .field("base", base)
                    .field("minimum", number(subtree->minimum))
                    .field("maximum", number(subtree->maximum))
                    .node();
  return with_lines(view, std::move(record), [&] {
    std::string line = lines_of(base, view)->front();
    if (subtree->minimum != nullptr) line += ", minimum " + number_text(subtree->minimum);
    if (subtree->maximum != nullptr) line += ", maximum " + number_text(subtree->maximum);
    return std::vector<std::string>{line};
  });
}

// NameConstraints ::= SEQUENCE { permittedSubtrees [0], excludedSubtrees [1] }
Node describe(const NameConstraints *constraints, const View &view) {
  return with_lines(view, Description(view).all("pki_NameConstraints", constraints).node(), [&] {
    std::vector<std::string> lines;
    const auto add = [&](const char *word, const List *subtrees) {
      for (const auto *subtree : elements<GeneralSubtree>(subtrees))
        lines.push_back(word + lines_of(*describe(subtree, view).shown, view)->front());
    };
    add("permitted ", constraints->permittedSubtrees);
    add("excluded ", constraints->excludedSubtrees);
    return lines;
  });
}

// PrivateKeyUsagePeriod ::= SEQUENCE { notBefore [0], notAfter [1] }
Node describe(const pki_PrivateKeyUsagePeriod *period, const View &view) {
  return with_lines(view, Description(view).all("pki_PrivateKeyUsagePeriod", period).node(), [&] {
    std::vector<std::string> lines;
    const auto add = [&](const char *word, const GeneralizedTime *time) {
      const Node node = time_of(tag::generalized_time, time, view);
      if (const auto line = lines_of(node, view)) lines.push_back(word + line->front());
    };
    add("from  ", period->notBefore);
    add("until ", period->notAfter);
    return lines;
  });
}

Node named_bits(const BitString *bits, std::span<const char *const> names) {
  std::vector<std::string> words;
  for (uint32_t i = 0; i < bits->length; ++i)
    if (asn1_BitString_test(bits, i) != 0) words.push_back(word_of(names, i, "bit"));
  return text(words.empty() ? "none" : joined(words), words);
}

std::string reason_name(uint32_t code) {
  static constexpr const char *names[] = {
      "unspecified",   "keyCompromise",        "cACompromise",    "affiliationChanged",
      "superseded",    "cessationOfOperation", "certificateHold", "reason 7",
      "removeFromCRL", "privilegeWithdrawn",   "aACompromise"};
  return word_of(names, code, "reason");
}

Node revocation_reason(const Integer *code) {
  const std::string name = reason_name(asn1_Integer_get(code));
  return text(name, name);
}

namespace {

Node key_usage(const BitString *bits) {
  static constexpr const char *names[] = {"digitalSignature", "nonRepudiation", "keyEncipherment",
                                          "dataEncipherment", "keyAgreement",   "keyCertSign",
                                          "cRLSign",          "encipherOnly",   "decipherOnly"};
  return named_bits(bits, names);
}

void append_purposes(std::string &out, const List *purposes) {
  append_array(out, elements<ObjId>(purposes), [&out](const ObjId *purpose) {
    out += '{';
    append_oid(out, "keyPurposeId", purpose);
    out += '}';
  });
}

Node extended_key_usage(const List *purposes, const View &view) {
  const auto lines = [&] {
    std::vector<std::string> words;
    for (const auto *purpose : elements<ObjId>(purposes)) words.push_back(label(purpose, view));
    return view.oids ? words : std::vector<std::string>{joined(words)};
  };
  return text(view, lines, Json::of_part<append_purposes>(purposes));
}

/// CRLNumber ::= INTEGER (0..MAX), of up to 20 octets. JSON has digits, as of a serial number.
Node crl_number(const Integer *number) { return text(number_text(number), integer_text(number)); }

/// Features ::= SEQUENCE OF INTEGER, numbers of extensions of TLS (RFC 7633)
Node features(const List *numbers) {
  std::vector<std::string> words;
  std::vector<Json> json;
  for (const auto *number : elements<Integer>(numbers)) {
    const std::string digits = number_text(number);
    words.push_back(digits == "5"    ? "status_request"
                    : digits == "17" ? "status_request_v2"
                                     : "extension " + digits);
    json.push_back(json_of_number(number));
  }
  return text(joined(words), json);
}

}  // namespace

// AccessDescription ::= SEQUENCE { accessMethod, accessLocation }
Node describe(const AccessDescription *access, const View &view) {
  return with_lines(view, Description(view).all("pki_AccessDescription", access).node(), [&] {
    return std::vector<std::string>{label(access->accessMethod, view) + ", " +
                                    general_name_text(access->accessLocation, view)};
  });
}

namespace {

Type logotype(const char *name) { return {.syntax = name, .about = "a part of logotypes"}; }

}  // namespace

std::vector<Type> extension_types() {
  return {
      {.syntax = "pki_AuthorityKeyIdentifier",
       .about = "which key an issuer signed with",
       .by_hand = as<AuthorityKeyIdentifier>},
      {.syntax = "pki_BasicConstraints",
       .about = "whether a certificate is that of an issuer",
       .hints = {{"pathLenConstraint", as<number>}},
       .by_hand = as<BasicConstraints>},
      {.syntax = "pki_GeneralSubtree",
       .about = "a part of the names of one kind",
       .by_hand = as<GeneralSubtree>},
      {.syntax = "pki_NameConstraints",
       .about = "which names an issuer may give",
       .by_hand = as<NameConstraints>},
      {.syntax = "pki_Features", .about = "what a server must offer", .by_hand = as<features>},
      {.syntax = "pki_PrivateKeyUsagePeriod",
       .about = "from when and until when a key signs",
       .by_hand = as<pki_PrivateKeyUsagePeriod>},
      {.syntax = "pki_AccessDescription",
       .about = "a service and where it is found",
       .by_hand = as<AccessDescription>},
      {.syntax = "pki_AuthorityInfoAccessSyntax", .about = "services and where they are found"},
      {.syntax = "pki_KeyUsage", .about = "what a key is for", .by_hand = as<key_usage>},
      {.syntax = "pki_ExtKeyUsageSyntax",
       .about = "for which purposes a key is",
       .by_hand = as<extended_key_usage>},
      {.syntax = "pki_CRLNumber", .about = "the number of a CRL", .by_hand = as<crl_number>},
      {.syntax = "pki_BaseCRLNumber",
       .about = "the number of the CRL that a delta CRL goes with",
       .by_hand = as<crl_number>},
      {.syntax = "pki_CRLReason",
       .about = "why a certificate was revoked",
       .by_hand = as<revocation_reason>},
      logotype("pki_LogotypeExtn"),
      logotype("pki_OtherLogotypeInfo"),
      logotype("pki_LogotypeInfo"),
      logotype("pki_LogotypeData"),
      logotype("pki_LogotypeImage"),
      logotype("pki_LogotypeImageInfo"),
      logotype("pki_LogotypeImageResolution"),
      logotype("pki_LogotypeAudio"),
      logotype("pki_LogotypeAudioInfo"),
      logotype("pki_LogotypeDetails"),
      logotype("pki_LogotypeReference"),
      logotype("pki_HashAlgAndValue"),
  };
}

}  // namespace tool
