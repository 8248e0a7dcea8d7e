// Shared by the tests of CRLs and of OCSP: the tool's certification authority, its index of issued
// and revoked certificates, and the extensions of a revocation as the tool prints them.
#ifndef ORVELASN1_TESTS_PEER_REVOCATION_H
#define ORVELASN1_TESTS_PEER_REVOCATION_H

#include "openssl.h"

namespace support {

/* ------------------------------------------------------------------------------------------- */
/* The tool as an authority                                                                      */
/* ------------------------------------------------------------------------------------------- */

/// The authority's name, as the tool writes it into its certificate.
constexpr const char *authority_name = "/c(19)=DE/o(12)=Example/cn(12)=Authority";

/// Returns the file of the certificate of the authority that has the key of a kind.
inline std::string authority(const std::string &kind) {
  const std::string file = kind + "_authority.pem";
  if (std::filesystem::exists(folder() / file)) return file;
  write_file("authority.cnf", text(R"([req]
prompt=no
string_mask=utf8only
distinguished_name=name
x509_extensions=extensions
[name]
C=DE
O=Example
CN=Authority
[extensions]
basicConstraints=critical,CA:TRUE
subjectKeyIdentifier=hash
)"));
  openssl("req -x509 -new -config authority.cnf -sha256 -key " + key(kind) + " -out " + file);
  return file;
}

/// The line of the authority's index for one certificate.
struct Indexed {
  std::string revoked;  ///< "260131120000Z", "260131120000Z,keyCompromise"; empty where it is good
  std::string serial;   ///< as the tool prints it
};

inline void write_index(const std::vector<Indexed> &certificates) {
  std::string lines;
  for (const auto &[revoked, serial] : certificates) {
    lines += revoked.empty() ? "V" : "R";
    lines += "\t301231235959Z\t" + revoked + "\t" + serial + "\tunknown\t/CN=" + serial + "\n";
  }
  write_file("index.txt", text(lines));
}

/// Returns one certificate for each reason that the tool's index knows, and one without a reason.
inline const std::vector<Indexed> revoked_for_all_reasons = {
    {"260131120000Z", "01"},
    {"260131120000Z,unspecified", "02"},
    {"260131120001Z,keyCompromise", "03"},
    {"260201000000Z,CACompromise", "04"},
    {"991231235959Z,affiliationChanged", "05"},
    {"000101000000Z,superseded", "06"},
    {"491231235959Z,cessationOfOperation", "07"},
    {"500101000000Z,certificateHold", "7F"},
    {"260131120000Z,removeFromCRL", "80"},
    {"260131120000Z,keyTime,20251231235959Z", "FF"},
    {"260131120000Z,CAkeyTime,19000101000000Z", "0100"},
    {"260131120000Z,holdInstruction,holdInstructionNone", "FFFFFFFF"},
    {"260131120000Z,holdInstruction,holdInstructionCallIssuer", "0100000000"},
    {"260131120000Z,holdInstruction,holdInstructionReject",
     "7FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF"},
};

/* ------------------------------------------------------------------------------------------- */
/* Extensions as the tool prints them                                                            */
/* ------------------------------------------------------------------------------------------- */

inline std::string reason_text(const Bytes &octets) {
  static const Lines reasons = {
      "Unspecified",     "Key Compromise",         "CA Compromise",    "Affiliation Changed",
      "Superseded",      "Cessation Of Operation", "Certificate Hold", "",
      "Remove From CRL", "Privilege Withdrawn",    "AA Compromise"};
  const Input input(octets);
  uint32_t reason = 7;
  EXPECT_EQ(input.end(), asn1_Enumerated_d(input.z(), input.end(), 0, &reason, 0));
  return reasons.at(reason);
}

inline std::string generalized_time_text(const Bytes &octets) {
  return gmt_text(record_of<asn1_GeneralizedTime_free>(asn1_GeneralizedTime_d, octets).get());
}

inline std::string instruction_text(const Bytes &octets) {
  static const std::map<std::string, std::string> instructions = {
      {"1.2.840.10040.2.1", "Hold Instruction None"},
      {"1.2.840.10040.2.2", "Hold Instruction Call Issuer"},
      {"1.2.840.10040.2.3", "Hold Instruction Reject"}};
  return instructions.at(identifier_text(record_of<asn1_ObjId_free>(asn1_ObjId_d, octets).get()));
}

/// Makes the tool's lines for the extensions of a CRL's entry, or of the response for one
/// certificate, from values that this library decodes. `title` is the line above them.
inline Lines extension_lines(const std::string &title, const Extensions *extensions) {
  static const struct {
    const ObjId *(*id)(void);
    const char *name;
    std::string (*value_text)(const Bytes &);
  } known[] = {
      {asn1_Get_id_ce_cRLReason, "X509v3 CRL Reason Code:", reason_text},
      {asn1_Get_id_ce_invalidityDate, "Invalidity Date:", generalized_time_text},
      {asn1_Get_id_ce_holdInstructionCode, "Hold Instruction Code:", instruction_text},
      {asn1_Get_id_pkix_ocsp_archive_cutoff, "OCSP Archive Cutoff:", generalized_time_text},
  };
  Lines lines;
  for (const Extension *extension : elements_of<Extension>(extensions)) {
    if (lines.empty()) lines.push_back(title);
    for (const auto &row : known) {
      if (asn1_ObjId_cmp(row.id(), extension->extnID) != 0) continue;
      lines.push_back(row.name + std::string(extension->critical != 0 ? " critical" : ""));
      lines.push_back(row.value_text(value(extension->extnValue)));
    }
  }
  return lines;
}

inline Lines operator+(Lines a, const Lines &b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

/// Checks that the lines are the same. Prints only the first difference, because lists may be long.
inline void expect_same_lines(const Lines &printed, const Lines &ours) {
  const size_t common = std::min(printed.size(), ours.size());
  for (size_t i = 0; i < common; ++i) ASSERT_EQ(printed[i], ours[i]) << "line " << i;
  EXPECT_EQ(printed.size(), ours.size());
}

}  // namespace support

#endif
