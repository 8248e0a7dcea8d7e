// Tests the registry of object identifiers: each of the 169 names with its value.
#include <cstring>
#include <set>
#include <thread>

#include "support.h"

namespace registry_test {

namespace {

using support::Bytes;
using support::hex;
using support::operator+;

struct Named {
  const char *name;
  const ObjId *(*get)();
  const char *dotted;
};

#define NAMED(name, dotted) \
  { #name, asn1_Get_##name, dotted }

constexpr Named registry[] = {
    // Digital Signature Standard and Diffie-Hellman (ANSI X9.42, X9.57, OIW).
    NAMED(dhpublicnumber, "1.2.840.10046.2.1"),
    NAMED(id_dsa_with_sha1, "1.2.840.10040.4.3"),
    NAMED(id_dsa, "1.2.840.10040.4.1"),
    NAMED(dsaWithSha, "1.3.14.3.2.13"),
    NAMED(dsaWithSha1, "1.3.14.3.2.27"),
    NAMED(dsa, "1.3.14.3.2.12"),
    // Microsoft enrolment.
    NAMED(ms_certificate_request_extensions, "1.3.6.1.4.1.311.2.1.14"),
    NAMED(ms_enrolment_csp, "1.3.6.1.4.1.311.13.2.2"),
    NAMED(ms_os_version, "1.3.6.1.4.1.311.13.2.3"),
    NAMED(ms_certificate_template_name, "1.3.6.1.4.1.311.20.2"),
    NAMED(ms_certificate_template_name_3, "1.3.6.1.4.1.311.20.2.3"),
    NAMED(ms_ca_key_cert_index_pair, "1.3.6.1.4.1.311.21.1"),
    // Netscape.
    NAMED(netscape, "2.16.840.1.113730"),
    NAMED(netscape_cert_extension, "2.16.840.1.113730.1"),
    NAMED(netscape_cert_type, "2.16.840.1.113730.1.1"),
    NAMED(netscape_base_url, "2.16.840.1.113730.1.2"),
    NAMED(netscape_revocation_url, "2.16.840.1.113730.1.3"),
    NAMED(netscape_ca_revocation_url, "2.16.840.1.113730.1.4"),
    NAMED(netscape_cert_renewal_url, "2.16.840.1.113730.1.7"),
    NAMED(netscape_ca_policy_url, "2.16.840.1.113730.1.8"),
    NAMED(netscape_ssl_server_name, "2.16.840.1.113730.1.12"),
    NAMED(netscape_comment, "2.16.840.1.113730.1.13"),
    NAMED(netscape_data_type, "2.16.840.1.113730.2"),
    NAMED(netscape_cert_sequence, "2.16.840.1.113730.2.5"),
    // Global identifier attribute.
    NAMED(korvaneGlobalIdentifier, "1.3.6.1.4.1.53917.1.1.2.2.75"),
    // OCSP.
    NAMED(id_pkix_ocsp, "1.3.6.1.5.5.7.48.1"),
    NAMED(id_pkix_ocsp_basic, "1.3.6.1.5.5.7.48.1.1"),
    NAMED(id_pkix_ocsp_nonce, "1.3.6.1.5.5.7.48.1.2"),
    NAMED(id_pkix_ocsp_crl, "1.3.6.1.5.5.7.48.1.3"),
    NAMED(id_pkix_ocsp_response, "1.3.6.1.5.5.7.48.1.4"),
    NAMED(id_pkix_ocsp_nocheck, "1.3.6.1.5.5.7.48.1.5"),
    NAMED(id_pkix_ocsp_archive_cutoff, "1.3.6.1.5.5.7.48.1.6"),
    NAMED(id_pkix_ocsp_service_locator, "1.3.6.1.5.5.7.48.1.7"),
    // Algorithms.
    NAMED(rsaSignatureWithripemd160, "1.3.36.3.3.1.2"),
    NAMED(ansi_X9_62, "1.2.840.10045"),
    NAMED(id_ecPublicKey, "1.2.840.10045.2.1"),
    NAMED(RIPEMD_160, "1.3.36.3.2.1"),
    NAMED(rsaEncryption, "1.2.840.113549.1.1.1"),
    NAMED(md2WithRSAEncryption, "1.2.840.113549.1.1.2"),
    NAMED(md5WithRSAEncryption, "1.2.840.113549.1.1.4"),
    NAMED(sha_1WithRSAEncryption, "1.2.840.113549.1.1.5"),
    NAMED(sha256WithRSAEncryption, "1.2.840.113549.1.1.11"),
    NAMED(sha384WithRSAEncryption, "1.2.840.113549.1.1.12"),
    NAMED(sha512WithRSAEncryption, "1.2.840.113549.1.1.13"),
    NAMED(id_SHA1, "1.3.14.3.2.26"),
    NAMED(md2, "1.2.840.113549.2.2"),
    NAMED(md5, "1.2.840.113549.2.5"),
    // PKCS #12.
    NAMED(pkcs_12, "1.2.840.113549.1.12"),
    NAMED(pkcs_12PbeIds, "1.2.840.113549.1.12.1"),
    NAMED(pbeWithSHA1And128BitRC4, "1.2.840.113549.1.12.1.1"),
    NAMED(pbeWithSHA1And40BitRC4, "1.2.840.113549.1.12.1.2"),
    NAMED(pbeWithSHA1And3_KeyTripleDES_CBC, "1.2.840.113549.1.12.1.3"),
    NAMED(pbeWithSHA1And2_KeyTripleDES_CBC, "1.2.840.113549.1.12.1.4"),
    NAMED(pbeWithSHA1And128BitRC2, "1.2.840.113549.1.12.1.5"),
    NAMED(pbeWithSHA1And40BitRC2, "1.2.840.113549.1.12.1.6"),
    NAMED(pkcs_12Version1, "1.2.840.113549.1.12.10"),
    NAMED(pkcs_12BagIds, "1.2.840.113549.1.12.10.1"),
    NAMED(keyBag, "1.2.840.113549.1.12.10.1.1"),
    NAMED(pkcs_8ShroudedKeyBag, "1.2.840.113549.1.12.10.1.2"),
    NAMED(certBag, "1.2.840.113549.1.12.10.1.3"),
    NAMED(crlBag, "1.2.840.113549.1.12.10.1.4"),
    NAMED(secretBag, "1.2.840.113549.1.12.10.1.5"),
    NAMED(safeContentBag, "1.2.840.113549.1.12.10.1.6"),
    NAMED(x509Certificate, "1.2.840.113549.1.9.22.1"),
    NAMED(sdsiCertificate, "1.2.840.113549.1.9.22.2"),
    NAMED(x509Crl, "1.2.840.113549.1.9.23.1"),
    // PKCS #7 content types.
    NAMED(data, "1.2.840.113549.1.7.1"),
    NAMED(signedData, "1.2.840.113549.1.7.2"),
    NAMED(envelopedData, "1.2.840.113549.1.7.3"),
    NAMED(signedAndEnvelopedData, "1.2.840.113549.1.7.4"),
    NAMED(digestedData, "1.2.840.113549.1.7.5"),
    NAMED(encryptedData, "1.2.840.113549.1.7.6"),
    // PKCS #9 and personal-data attributes.
    NAMED(emailAddress, "1.2.840.113549.1.9.1"),
    NAMED(unstructuredName, "1.2.840.113549.1.9.2"),
    NAMED(contentType, "1.2.840.113549.1.9.3"),
    NAMED(messageDigest, "1.2.840.113549.1.9.4"),
    NAMED(signingTime, "1.2.840.113549.1.9.5"),
    NAMED(counterSignature, "1.2.840.113549.1.9.6"),
    NAMED(challengePassword, "1.2.840.113549.1.9.7"),
    NAMED(unstructuredAddress, "1.2.840.113549.1.9.8"),
    NAMED(extendedCertificateAttributes, "1.2.840.113549.1.9.9"),
    NAMED(issuerAndSerialNumber, "1.2.840.113549.1.9.10"),
    NAMED(passwordCheck, "1.2.840.113549.1.9.11"),
    NAMED(publicKey, "1.2.840.113549.1.9.12"),
    NAMED(signingDescription, "1.2.840.113549.1.9.13"),
    NAMED(extensionRequest, "1.2.840.113549.1.9.14"),
    NAMED(smimeCapabilities, "1.2.840.113549.1.9.15"),
    NAMED(friendlyName, "1.2.840.113549.1.9.20"),
    NAMED(localKeyId, "1.2.840.113549.1.9.21"),
    NAMED(certTypes, "1.2.840.113549.1.9.22"),
    NAMED(crlTypes, "1.2.840.113549.1.9.23"),
    NAMED(userPKCS12, "2.16.840.1.113730.3.1.216"),
    NAMED(pkcs15Token, "1.2.840.113549.1.9.25.1"),
    NAMED(encryptedPrivateKeyInfo, "1.2.840.113549.1.9.25.2"),
    NAMED(randomNonce, "1.2.840.113549.1.9.25.3"),
    NAMED(sequenceNumber, "1.2.840.113549.1.9.25.4"),
    NAMED(pkcs7PDU, "1.2.840.113549.1.9.25.5"),
    NAMED(dateOfBirth, "1.3.6.1.5.5.7.9.1"),
    NAMED(placeOfBirth, "1.3.6.1.5.5.7.9.2"),
    NAMED(gender, "1.3.6.1.5.5.7.9.3"),
    NAMED(countryOfCitizenship, "1.3.6.1.5.5.7.9.4"),
    NAMED(countryOfResidence, "1.3.6.1.5.5.7.9.5"),
    // X.509 certificate extensions and PKIX.
    NAMED(id_ce, "2.5.29"),
    NAMED(id_ce_authorityKeyIdentifier, "2.5.29.35"),
    NAMED(id_ce_subjectKeyIdentifier, "2.5.29.14"),
    NAMED(id_ce_keyUsage, "2.5.29.15"),
    NAMED(id_ce_privateKeyUsagePeriod, "2.5.29.16"),
    NAMED(id_qt, "1.3.6.1.5.5.7.2"),
    NAMED(id_ce_certificatePolicies, "2.5.29.32"),
    NAMED(anyPolicy, "2.5.29.32.0"),
    NAMED(id_qt_cps, "1.3.6.1.5.5.7.2.1"),
    NAMED(id_qt_unotice, "1.3.6.1.5.5.7.2.1"),
    NAMED(id_ce_policyMappings, "2.5.29.33"),
    NAMED(id_ce_subjectAltName, "2.5.29.17"),
    NAMED(id_ce_issuerAltName, "2.5.29.18"),
    NAMED(id_ce_subjectDirectoryAttributes, "2.5.29.9"),
    NAMED(id_ce_basicConstraints, "2.5.29.19"),
    NAMED(id_ce_nameConstraints, "2.5.29.30"),
    NAMED(id_ce_policyConstraints, "2.5.29.36"),
    NAMED(id_ce_extKeyUsage, "2.5.29.37"),
    NAMED(anyExtendedKeyUsage, "2.5.29.37.0"),
    NAMED(id_kp, "1.3.6.1.5.5.7.3"),
    NAMED(id_kp_serverAuth, "1.3.6.1.5.5.7.3.1"),
    NAMED(id_kp_clientAuth, "1.3.6.1.5.5.7.3.2"),
    NAMED(id_kp_codeSigning, "1.3.6.1.5.5.7.3.3"),
    NAMED(id_kp_emailProtection, "1.3.6.1.5.5.7.3.4"),
    NAMED(id_kp_timeStamping, "1.3.6.1.5.5.7.3.8"),
    NAMED(id_kp_OCSPSigning, "1.3.6.1.5.5.7.3.9"),
    NAMED(id_ce_cRLDistributionPoints, "2.5.29.31"),
    NAMED(id_pkix, "1.3.6.1.5.5.7"),
    NAMED(id_pe, "1.3.6.1.5.5.7.1"),
    NAMED(id_pe_authorityInfoAccess, "1.3.6.1.5.5.7.1.1"),
    NAMED(id_ad, "1.3.6.1.5.5.7.48"),
    NAMED(id_ad_ocsp, "1.3.6.1.5.5.7.48.1"),
    NAMED(id_ad_caIssuers, "1.3.6.1.5.5.7.48.2"),
    NAMED(id_ce_cRLNumber, "2.5.29.20"),
    NAMED(id_ce_deltaCRLIndicator, "2.5.29.27"),
    NAMED(id_ce_issuingDistributionPoint, "2.5.29.28"),
    NAMED(id_ce_freshestCRL, "2.5.29.46"),
    NAMED(id_ce_cRLReason, "2.5.29.21"),
    NAMED(id_ce_holdInstructionCode, "2.5.29.23"),
    NAMED(id_ce_invalidityDate, "2.5.29.24"),
    NAMED(id_ce_certificateIssuer, "2.5.29.29"),
    // X.520 attribute types.
    NAMED(id_at, "2.5.4"),
    NAMED(id_at_objectClass, "2.5.4.0"),
    NAMED(id_at_aliasedEntryName, "2.5.4.1"),
    NAMED(id_at_knowledgeInformation, "2.5.4.2"),
    NAMED(id_at_commonName, "2.5.4.3"),
    NAMED(id_at_surname, "2.5.4.4"),
    NAMED(id_at_serialNumber, "2.5.4.5"),
    NAMED(id_at_countryName, "2.5.4.6"),
    NAMED(id_at_localityName, "2.5.4.7"),
    NAMED(id_at_collectiveLocalityName, "2.5.4.7.1"),
    NAMED(id_at_stateOrProvinceName, "2.5.4.8"),
    NAMED(id_at_collectiveStateOrProvinceName, "2.5.4.8.1"),
    NAMED(id_at_streetAddress, "2.5.4.9"),
    NAMED(id_at_collectiveStreetAddress, "2.5.4.9.1"),
    NAMED(id_at_organizationName, "2.5.4.10"),
    NAMED(id_at_collectiveOrganizationName, "2.5.4.10.1"),
    NAMED(id_at_organizationalUnitName, "2.5.4.11"),
    NAMED(id_at_collectiveOrganizationalUnitName, "2.5.4.11.1"),
    NAMED(id_at_title, "2.5.4.12"),
    NAMED(id_at_description, "2.5.4.13"),
    NAMED(id_at_name, "2.5.4.41"),
    NAMED(id_at_givenName, "2.5.4.42"),
    NAMED(id_at_initials, "2.5.4.43"),
    NAMED(id_at_generationQualifier, "2.5.4.44"),
    NAMED(id_at_uniqueIdentifier, "2.5.4.45"),
    NAMED(id_at_dnQualifier, "2.5.4.46"),
};

#undef NAMED

static_assert(std::size(registry) == 169);

std::string sprint(const ObjId *oid) {
  uint32_t size = 0;
  EXPECT_EQ(0, asn1_ObjId_sprint(oid, nullptr, &size));
  std::string text(size, '?');
  EXPECT_EQ(0, asn1_ObjId_sprint(oid, text.data(), &size));
  EXPECT_EQ(text.size(), size);
  EXPECT_EQ('\0', text.back());
  text.pop_back();
  return text;
}

std::vector<uint32_t> arcs_of(const char *dotted) {
  std::vector<uint32_t> arcs;
  for (const char *p = dotted; *p != '\0'; p += *p == '.') {
    char *stop = nullptr;
    arcs.push_back(static_cast<uint32_t>(std::strtoul(p, &stop, 10)));
    p = stop;
  }
  return arcs;
}

/// Returns the identifier in DER (X.690, 8.19): seven bits an octet, the top bit set on all but the
/// last.
Bytes der(const std::vector<uint32_t> &arcs) {
  Bytes content;
  for (size_t i = 1; i < arcs.size(); ++i) {
    const uint32_t number = i == 1 ? arcs[0] * 40 + arcs[1] : arcs[i];
    Bytes octets{static_cast<uint8_t>(number & 0x7F)};
    for (uint32_t rest = number >> 7; rest != 0; rest >>= 7) {
      octets.insert(octets.begin(), static_cast<uint8_t>(0x80 | (rest & 0x7F)));
    }
    content = content + octets;
  }
  return support::element(6, content);
}

TEST(Registry, EachNameHasItsDottedValue) {
  for (const Named &row : registry) EXPECT_EQ(row.dotted, sprint(row.get())) << row.name;
}

TEST(Registry, EachRecordHoldsItsArcsOneByOne) {
  for (const Named &row : registry) {
    const ObjId *oid = row.get();
    ASSERT_NE(nullptr, oid) << row.name;
    ASSERT_NE(nullptr, oid->arcs) << row.name;
    EXPECT_EQ(arcs_of(row.dotted), std::vector<uint32_t>(oid->arcs, oid->arcs + oid->count))
        << row.name;
  }
}

TEST(Registry, EachNameGivesTheSamePointerOnEveryCall) {
  for (const Named &row : registry) {
    const ObjId *first = row.get();
    EXPECT_EQ(first, row.get()) << row.name;
    EXPECT_EQ(first, row.get()) << row.name;
  }
}

TEST(Registry, EachNameEncodesToItsOctetsAndComesBackFromThem) {
  for (const Named &row : registry) {
    const Bytes octets = der(arcs_of(row.dotted));
    EXPECT_EQ(octets, support::encode(asn1_ObjId_e, row.get())) << row.name;

    const auto decoded = support::decode(asn1_ObjId_d, octets);
    ASSERT_EQ(static_cast<long>(octets.size()), decoded.consumed) << row.name;
    EXPECT_EQ(0, asn1_ObjId_cmp(row.get(), decoded.record)) << row.name;
    asn1_ObjId_free(decoded.record);
  }
}

TEST(Registry, EachNameIsEqualToItsParsedText) {
  for (const Named &row : registry) {
    const char *text = row.dotted;
    ObjId *parsed = asn1_ObjId_parse(&text);
    ASSERT_NE(nullptr, parsed) << row.name;
    EXPECT_EQ('\0', *text) << row.name;
    EXPECT_EQ(0, asn1_ObjId_cmp(parsed, row.get())) << row.name;
    asn1_ObjId_free(parsed);
  }
}

TEST(Registry, ACloneIsTheCallersOwn) {
  for (const Named &row : registry) {
    ObjId *copy = asn1_ObjId_clone(row.get());
    ASSERT_NE(nullptr, copy) << row.name;
    EXPECT_NE(row.get(), copy) << row.name;
    EXPECT_NE(row.get()->arcs, copy->arcs) << row.name;
    std::memset(copy->arcs, 0, copy->count * sizeof *copy->arcs);
    EXPECT_EQ(row.dotted, sprint(row.get())) << row.name;
    asn1_ObjId_free(copy);
  }
}

TEST(Registry, WritesKnownOctets) {
  const struct {
    const ObjId *oid;
    const char *octets;
  } rows[] = {
      {asn1_Get_id_at(), "06 02 55 04"},
      {asn1_Get_id_ce(), "06 02 55 1D"},
      {asn1_Get_id_at_objectClass(), "06 03 55 04 00"},
      {asn1_Get_id_at_commonName(), "06 03 55 04 03"},
      {asn1_Get_anyPolicy(), "06 04 55 1D 20 00"},
      {asn1_Get_anyExtendedKeyUsage(), "06 04 55 1D 25 00"},
      {asn1_Get_id_SHA1(), "06 05 2B 0E 03 02 1A"},
      {asn1_Get_id_ecPublicKey(), "06 07 2A 86 48 CE 3D 02 01"},
      {asn1_Get_id_dsa(), "06 07 2A 86 48 CE 38 04 01"},
      {asn1_Get_dhpublicnumber(), "06 07 2A 86 48 CE 3E 02 01"},
      {asn1_Get_netscape(), "06 07 60 86 48 01 86 F8 42"},
      {asn1_Get_id_pkix_ocsp_nonce(), "06 09 2B 06 01 05 05 07 30 01 02"},
      {asn1_Get_sha256WithRSAEncryption(), "06 09 2A 86 48 86 F7 0D 01 01 0B"},
      {asn1_Get_signedData(), "06 09 2A 86 48 86 F7 0D 01 07 02"},
      {asn1_Get_emailAddress(), "06 09 2A 86 48 86 F7 0D 01 09 01"},
      {asn1_Get_x509Certificate(), "06 0A 2A 86 48 86 F7 0D 01 09 16 01"},
      {asn1_Get_ms_certificate_request_extensions(), "06 0A 2B 06 01 04 01 82 37 02 01 0E"},
      {asn1_Get_userPKCS12(), "06 0B 60 86 48 01 86 F8 42 03 01 81 58"},
      {asn1_Get_pkcs_8ShroudedKeyBag(), "06 0B 2A 86 48 86 F7 0D 01 0C 0A 01 02"},
      {asn1_Get_korvaneGlobalIdentifier(), "06 0D 2B 06 01 04 01 83 A5 1D 01 01 02 02 4B"},
  };
  for (const auto &row : rows) {
    EXPECT_EQ(hex(row.octets), support::encode(asn1_ObjId_e, row.oid)) << row.octets;
  }
}

TEST(Registry, AZeroArcAtTheEndIsARealValue) {
  for (const ObjId *oid :
       {asn1_Get_id_at_objectClass(), asn1_Get_anyPolicy(), asn1_Get_anyExtendedKeyUsage()}) {
    EXPECT_EQ(0U, oid->arcs[oid->count - 1]) << sprint(oid);
  }
}

TEST(Registry, TheTwoPolicyQualifiersCannotBeToldApart) {
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_id_qt_cps(), asn1_Get_id_qt_unotice()));
}

TEST(Registry, OcspHasTwoNamesForOneValue) {
  EXPECT_EQ(0, asn1_ObjId_cmp(asn1_Get_id_pkix_ocsp(), asn1_Get_id_ad_ocsp()));
}

TEST(Registry, OnlyTwoValuesAreShared) {
  std::set<std::set<std::string>> shared;
  for (const Named &a : registry) {
    std::set<std::string> names;
    for (const Named &b : registry) {
      if (asn1_ObjId_cmp(a.get(), b.get()) == 0) names.insert(b.name);
    }
    if (names.size() > 1) shared.insert(names);
  }
  const std::set<std::set<std::string>> expected = {{"id_pkix_ocsp", "id_ad_ocsp"},
                                                    {"id_qt_cps", "id_qt_unotice"}};
  EXPECT_EQ(expected, shared);
}

TEST(Registry, ThreadsReadItTogether) {
  std::vector<std::thread> threads;
  std::vector<int> unlike(4, 0);
  for (int &count : unlike) {
    threads.emplace_back([&count] {
      for (const Named &row : registry) {
        uint32_t size = 0;
        if (asn1_ObjId_cmp(row.get(), row.get()) != 0) ++count;
        if (asn1_ObjId_sprint(row.get(), nullptr, &size) != 0) ++count;
        if (size != std::strlen(row.dotted) + 1) ++count;
      }
    });
  }
  for (std::thread &thread : threads) thread.join();
  EXPECT_EQ(std::vector<int>(4, 0), unlike);
}

}  // namespace

}  // namespace registry_test
