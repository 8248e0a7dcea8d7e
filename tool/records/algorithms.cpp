// Algorithms and their parameters: RSA (RFC 4055), elliptic curves (RFC 5480), DSA and
// Diffie-Hellman (RFC 3279), passwords (PKCS #5, RFC 8018; PKCS #12) and ciphers.
#include <algorithm>

#include "records/components.h"
#include "text/characters.h"
#include "text/integers.h"
#include "text/object_identifiers.h"

namespace tool {

namespace {

// PBKDF2-params ::= SEQUENCE { salt, iterationCount, keyLength OPTIONAL, prf OPTIONAL }
Node pbkdf2(Octets octets, const View &view) {
  return Components(octets, view)
      .take("salt", "OctetString")
      .take("iterationCount", "Integer", as<number>)
      .take("keyLength", "Integer", as<number>)
      .take("prf", "pki_AlgId")
      .node();
}

// PBES2-params ::= SEQUENCE { keyDerivationFunc, encryptionScheme }
Node pbes2(Octets octets, const View &view) {
  return Components(octets, view)
      .take("keyDerivationFunc", "pki_AlgId")
      .take("encryptionScheme", "pki_AlgId")
      .node();
}

// PBMAC1-params ::= SEQUENCE { keyDerivationFunc, messageAuthScheme }
Node pbmac1(Octets octets, const View &view) {
  return Components(octets, view)
      .take("keyDerivationFunc", "pki_AlgId")
      .take("messageAuthScheme", "pki_AlgId")
      .node();
}

// scrypt-params ::= SEQUENCE { salt, costParameter, blockSize, parallelizationParameter, keyLength
//   OPTIONAL } (RFC 7914, 7.1)
Node scrypt(Octets octets, const View &view) {
  return Components(octets, view)
      .take("salt", "OctetString")
      .take("costParameter", "Integer", as<number>)
      .take("blockSize", "Integer", as<number>)
      .take("parallelizationParameter", "Integer", as<number>)
      .take("keyLength", "Integer", as<number>)
      .node();
}

// GCMParameters ::= SEQUENCE { aes-nonce, aes-ICVlen DEFAULT 12 } (RFC 5084, 3.2)
Node gcm(Octets octets, const View &view) {
  return Components(octets, view)
      .take("aes-nonce", "OctetString")
      .take("aes-ICVlen", "Integer", as<number>)
      .node();
}

/// The types that pki_Type_defined_by() does not know, each under the display name of its
/// algorithm.
constexpr ValueRow rows[] = {
    {"mgf1", "pki_AlgId"},
    {"id-dsa", "DssParms"},
    {"dsa", "DssParms"},
    {"dhpublicnumber", "DomainParameters"},
    {.name = "PBKDF2", .type = "Any", .read = pbkdf2},
    {.name = "PBES2", .type = "Any", .read = pbes2},
    {.name = "PBMAC1", .type = "Any", .read = pbmac1},
    {.name = "scrypt", .type = "Any", .read = scrypt},
    {.name = "aes128-GCM", .type = "Any", .read = gcm},
    {.name = "aes192-GCM", .type = "Any", .read = gcm},
    {.name = "aes256-GCM", .type = "Any", .read = gcm},
    {"des-CBC", "OctetString"},
    {"des-EDE3-CBC", "OctetString"},
    {"aes128-CBC", "OctetString"},
    {"aes192-CBC", "OctetString"},
    {"aes256-CBC", "OctetString"},
};

/// Reads the parameters of an algorithm; nothing where there are none, or where nobody knows them.
Inside read_parameters(const AlgId *algorithm, const View &view) {
  const Octets parameters = octets(algorithm->parameters);
  if (parameters.empty() || asn1_Any_cmp(algorithm->parameters, asn1_Any_NULL()) == 0) return {};
  if (const pki_Type *const type = pki_Type_defined_by(algorithm->algorithm))
    return read_value(parameters, type, view);
  const std::string name = display_name(algorithm->algorithm);
  if (name.starts_with("pbeWith")) return read_value(parameters, "pki_PbeParams", view);
  const auto *const row = std::ranges::find(rows, std::string_view(name), &ValueRow::name);
  if (row != std::end(rows)) return read_value(parameters, *row, view);
  return {unknown_octets(parameters, view), "", false};
}

}  // namespace

// AlgorithmIdentifier ::= SEQUENCE { algorithm, parameters OPTIONAL }
//
// A page shows parameters of one line behind the name, and others below it.
Node describe(const AlgId *algorithm, const View &view) {
  Inside parameters = read_parameters(algorithm, view);
  const auto lines = view.lines ? lines_of(parameters.node, view) : std::nullopt;
  Description fields(view);
  fields.field("algorithm", algorithm->algorithm);
  if (!parameters.node.empty() && !lines) fields.brief();
  const bool complete = parameters.read && parameters.malformed.empty();
  if (!complete || !view.compact) fields.field("parameters", algorithm->parameters);
  if (!parameters.malformed.empty()) fields.hidden("malformed", parameters.malformed);
  if (parameters.read) fields.field("decoded", parameters.node);
  return shown_as(view, fields.node(), [&] {
    if (!parameters.node.empty() && !lines)
      return Description(view)
          .field("algorithm", algorithm->algorithm)
          .field("parameters", std::move(parameters.node))
          .node();
    std::vector<std::string> shown{label(algorithm->algorithm, view)};
    if (lines && parameters.read && lines->size() == 1)
      shown.front() += ", " + lines->front();
    else if (lines)
      for (const std::string &line : *lines) shown.push_back("  " + line);
    return text(std::move(shown), nullptr);
  });
}

Node with_bits(const char *type, const void *record, const Integer *modulus, const View &view) {
  const uint64_t bits = bit_length(modulus);
  return Description(view)
      .all(type, record)
      .field("keyBits", text(std::to_string(bits), bits))
      .brief()
      .node();
}

Node describe(const DssParms *parameters, const View &view) {
  return with_bits("DssParms", parameters, parameters->p, view);
}

Node describe(const DomainParameters *parameters, const View &view) {
  return with_bits("DomainParameters", parameters, parameters->p, view);
}

namespace {

std::string name_or(const AlgId *algorithm, const char *otherwise, const View &view) {
  return algorithm == nullptr
             ? otherwise
             : lines_of(describe(algorithm, view), view)
                   .value_or(std::vector<std::string>{label(algorithm->algorithm, view)})[0];
}

}  // namespace

// RSASSA-PSS-params ::= SEQUENCE { hashAlgorithm [0] DEFAULT sha1Identifier, maskGenAlgorithm [1]
//   DEFAULT mgf1SHA1Identifier, saltLength [2] DEFAULT 20, trailerField [3] DEFAULT 1 }
Node describe(const pki_RSASSA_PSS_params *parameters, const View &view) {
  std::string line =
      name_or(parameters->hashAlgorithm, "sha1", view) + ", " +
      name_or(parameters->maskGenAlgorithm, "mgf1, sha1", view) + ", salt " +
      (parameters->saltLength == nullptr ? "20" : number_text(parameters->saltLength));
  if (parameters->trailerField != nullptr && asn1_Integer_get(parameters->trailerField) != 1)
    line += ", trailer " + number_text(parameters->trailerField);
  return shown_as(Description(view).all("pki_RSASSA_PSS_params", parameters).node(),
                  text(std::move(line), nullptr));
}

// RSAES-OAEP-params ::= SEQUENCE { hashFunc [0] DEFAULT sha1Identifier, maskGenFunc [1] DEFAULT
//   mgf1SHA1Identifier, pSourceFunc [2] DEFAULT pSpecifiedEmptyIdentifier }
Node describe(const pki_RSAES_OAEP_params *parameters, const View &view) {
  std::string line = name_or(parameters->hashFunc, "sha1", view) + ", " +
                     name_or(parameters->maskGenFunc, "mgf1, sha1", view);
  if (parameters->pSourceFunc != nullptr)
    line += ", label by " + name_or(parameters->pSourceFunc, "", view);
  return shown_as(Description(view).all("pki_RSAES_OAEP_params", parameters).node(),
                  text(std::move(line), nullptr));
}

std::vector<Type> algorithm_types() {
  return {
      {.syntax = "pki_AlgId", .about = "an algorithm and its parameters", .by_hand = as<AlgId>},
      {.syntax = "pki_RSASSA_PSS_params",
       .about = "the parameters of RSASSA-PSS",
       .hints = {{"saltLength", as<number>}, {"trailerField", as<number>}},
       .by_hand = as<pki_RSASSA_PSS_params>},
      {.syntax = "pki_RSAES_OAEP_params",
       .about = "the parameters of RSAES-OAEP",
       .by_hand = as<pki_RSAES_OAEP_params>},
      {.syntax = "pki_ECParameters",
       .about = "the parameters of an elliptic curve",
       .labels = {"EC PARAMETERS"},
       .bare = true},
      {.syntax = "pki_PbeParams",
       .about = "the salt and the iterations of password-based encryption",
       .name = "pbe-params",
       .heading = "PbeParams",
       .hints = {{"iterations", as<number>}}},
      {.syntax = "DssParms",
       .about = "the parameters of DSA",
       .labels = {"DSA PARAMETERS"},
       .stands_alone = true,
       .by_hand = as<DssParms>},
      {.syntax = "DomainParameters",
       .about = "the parameters of X9.42 Diffie-Hellman",
       .labels = {"X9.42 DH PARAMETERS"},
       .stands_alone = true,
       .by_hand = as<DomainParameters>},
      {.syntax = "ValidationParms",
       .about = "how a prime of Diffie-Hellman was found",
       .hints = {{"pgenCounter", as<number>}}},
  };
}

}  // namespace tool
