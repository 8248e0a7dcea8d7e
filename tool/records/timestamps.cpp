// Signed certificate timestamps: what logs of certificates promise (RFC 6962).
#include "records/values.h"
#include "text/characters.h"

namespace tool {

namespace {

/// Returns "2026-01-31 12:00:00.123", or the number itself where its year has more than four
/// digits.
std::string moment_text(uint64_t milliseconds) {
  constexpr uint64_t a_second = 1000;
  constexpr uint64_t end_of_9999 = 253402300800;
  if (milliseconds / a_second >= end_of_9999)
    return std::to_string(milliseconds) + " milliseconds since 1970";
  const std::string fraction = std::to_string(a_second + milliseconds % a_second).substr(1);
  return calendar(static_cast<Seconds>(milliseconds / a_second)) + "." + fraction + " UTC";
}

/// The algorithms of TLS (RFC 5246, 7.4.1.4.1).
std::string algorithm_text(const pki_SignedCertificateTimestamp *timestamp) {
  static constexpr const char *signatures[] = {"anonymous", "rsa", "dsa", "ecdsa"};
  static constexpr const char *hashes[] = {"none",   "md5",    "sha1",  "sha224",
                                           "sha256", "sha384", "sha512"};
  return word_of(signatures, timestamp->signatureAlgorithm, "signature") + " with " +
         word_of(hashes, timestamp->hashAlgorithm, "hash");
}

Node describe_timestamp(const pki_SignedCertificateTimestamp *timestamp, const View &view) {
  Description fields(view);
  fields.field("version", text("v" + std::to_string(timestamp->version + 1), timestamp->version));
  if (timestamp->version != 0)
    return with_lines(view, fields.field("opaque", timestamp->opaque).node(), [&] {
      return std::vector<std::string>{"of version " + std::to_string(timestamp->version + 1) +
                                      ": " + counted(octets(timestamp->opaque).size(), "octet")};
    });
  const Octets log = timestamp->logID;
  const auto moment = [&] { return moment_text(timestamp->timestamp); };
  const std::string algorithm = algorithm_text(timestamp);
  Node record = fields
                    .field("logID", text(
                                        view, [&] { return hex(log); }, log))
                    .field("timestamp", text(view, moment, timestamp->timestamp))
                    .field("extensions", timestamp->extensions)
                    .field("signatureAlgorithm", text(algorithm, algorithm))
                    .field("signature", timestamp->signature)
                    .node();
  return with_lines(view, std::move(record), [&] {
    return std::vector<std::string>{moment() + ", " + algorithm, "  log " + hex(log)};
  });
}

Node timestamps(const List *list, const View &view) {
  return list_of<pki_SignedCertificateTimestamp>(list, describe_timestamp, view);
}

}  // namespace

std::vector<Type> timestamp_types() {
  return {
      {.syntax = "pki_SignedCertificateTimestampList",
       .about = "what logs of certificates promise",
       .by_hand = as<timestamps>},
  };
}

}  // namespace tool
