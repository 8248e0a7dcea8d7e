/**
 * @file pki_certificate.h
 * The common questions about a certificate, one call each: its names, what its key is for,
 * whether it may issue, its key identifiers, its places on the net, its validity.
 *
 * A certificate is a record that pki_Certificate_d() made (rfc5280.h). Of several extensions with
 * the same identifier, which RFC 5280, 4.2 does not allow, the first counts. Whether an extension
 * is critical, whether the certificate is valid now, and whether its signature is good, is not
 * asked here.
 *
 * The calls that return a list read each name of an extension by itself. What cannot be read is
 * counted and skipped, and the names around it are in the list:
 *
 * - a name that is no GeneralName of RFC 5280, 4.2.1.6, of whatever kind, such as a directory
 *   name that is malformed, or one with octets left over;
 * - a name in characters with an octet above 0x7F, or with a NUL octet;
 * - an IP address that is not of 4 or 16 octets;
 * - as one, octets that are no element, and all that follows them in their list;
 * - as one, an extension that is no list, or has octets left over.
 *
 * The count is that of the whole extension, whatever kind of name was asked for. It goes to
 * `*unreadable`, unless that is NULL. Whoever refuses a certificate for a name that he cannot
 * read compares it with 0.
 *
 * The list is new and the caller's, its elements too: List_free(list, asn1_IA5String_free)
 * releases it. The elements stand in the order of the certificate, and may be there more than
 * once. The list is empty where the certificate has no such extension, and NULL only when memory
 * is exhausted or `certificate` is NULL. The characters are those of the certificate, compared
 * with no grammar: a name may be empty, and may hold blanks and control characters. Mind them
 * where you print it.
 *
 * No input, no record and no null pointer ends the process. All of this may be used from any
 * thread.
 */
#ifndef ORVELPKI_CERTIFICATE_H
#define ORVELPKI_CERTIFICATE_H

#include <stdint.h>

#include "pki_view.h"
#include "rfc5280.h"

#ifdef __cplusplus
extern "C" {
#endif

/* -------------------------------------------------------------------------------------------- */
/* Extensions                                                                                   */
/* -------------------------------------------------------------------------------------------- */

/**
 * Finds the first extension with an identifier, such as asn1_Get_id_ce_keyUsage(). Returns it,
 * which stays the list's; NULL where there is none, or an argument is NULL.
 */
const Extension *pki_find_extension(const Extensions *extensions, const ObjId *identifier);

/* -------------------------------------------------------------------------------------------- */
/* Names                                                                                        */
/* -------------------------------------------------------------------------------------------- */

/**
 * Lists the DNS names of the subject, dNSName in subjectAltName (RFC 5280, 4.2.1.6), as IA5String
 * records. None is read from the subject field.
 */
List *pki_dns_names(const Certificate *certificate, uint32_t *unreadable);

/**
 * Lists the mail addresses of the subject, rfc822Name in subjectAltName (RFC 5280, 4.2.1.6), as
 * IA5String records. None is read from the subject field, nor from an otherName (RFC 9598).
 */
List *pki_mail_addresses(const Certificate *certificate, uint32_t *unreadable);

/**
 * Lists the URIs of the subject, uniformResourceIdentifier in subjectAltName (RFC 5280, 4.2.1.6),
 * as IA5String records.
 */
List *pki_uris(const Certificate *certificate, uint32_t *unreadable);

/**
 * Lists the addresses of the subject, iPAddress in subjectAltName (RFC 5280, 4.2.1.6), as
 * OctetString records: 4 octets for IP version 4, 16 for version 6, in network byte order.
 */
List *pki_ip_addresses(const Certificate *certificate, uint32_t *unreadable);

/* -------------------------------------------------------------------------------------------- */
/* What the key is for                                                                          */
/* -------------------------------------------------------------------------------------------- */

/** The bits of keyUsage (RFC 5280, 4.2.1.3). */
enum {
  PKI_DIGITAL_SIGNATURE = 1 << 0, /**< signatures, but for those of certificates and CRLs */
  PKI_NON_REPUDIATION = 1 << 1,   /**< contentCommitment */
  PKI_KEY_ENCIPHERMENT = 1 << 2,  /**< keys are encrypted */
  PKI_DATA_ENCIPHERMENT = 1 << 3, /**< data are encrypted */
  PKI_KEY_AGREEMENT = 1 << 4,     /**< keys are agreed on */
  PKI_KEY_CERT_SIGN = 1 << 5,     /**< signatures of certificates */
  PKI_CRL_SIGN = 1 << 6,          /**< signatures of revocation lists */
  PKI_ENCIPHER_ONLY = 1 << 7,     /**< with key agreement: only to encrypt */
  PKI_DECIPHER_ONLY = 1 << 8      /**< with key agreement: only to decrypt */
};

/**
 * Reads keyUsage (RFC 5280, 4.2.1.3) into `*usage`, a sum of the bits above; bits without a name
 * are left out. Returns 1; 0 where the certificate does not have the extension, which allows
 * every use; -1 where the extension cannot be read, or `certificate` is NULL. In both cases
 * `*usage` is 0. `usage` may be NULL.
 */
int32_t pki_key_usage(const Certificate *certificate, uint32_t *usage);

/**
 * Asks extKeyUsage (RFC 5280, 4.2.1.12) for a purpose, such as asn1_Get_id_kp_serverAuth().
 * Returns 1 where the extension has the purpose or anyExtendedKeyUsage, and where the certificate
 * does not have the extension, which allows every purpose; 0 where the extension does not have
 * it; -1 where the extension cannot be read to its end, when memory is exhausted, and where an
 * argument is NULL or `purpose` is no identifier.
 */
int32_t pki_allows_purpose(const Certificate *certificate, const ObjId *purpose);

/**
 * Tells whether the subject may issue certificates: basicConstraints is there and has cA (RFC
 * 5280, 4.2.1.9), and keyUsage has keyCertSign or is not there (4.2.1.3). Returns 1 or 0; -1
 * where one of the two extensions cannot be read, or `certificate` is NULL. A certificate of
 * version 1 or 2 has no extensions, and so is answered with 0.
 *
 * `*path_length` is pathLenConstraint, the number of certificates of other issuers that may
 * follow in a path; UINT32_MAX where there is no such limit, or one that 32 bits do not hold. It
 * is 0 where the answer is not 1. `path_length` may be NULL.
 */
int32_t pki_may_issue(const Certificate *certificate, uint32_t *path_length);

/* -------------------------------------------------------------------------------------------- */
/* Key identifiers                                                                              */
/* -------------------------------------------------------------------------------------------- */

/**
 * Finds the content of subjectKeyIdentifier (RFC 5280, 4.2.1.2). Returns a view into the record,
 * which lives as long as the record does; no octets, with `data` NULL, where the extension is not
 * there or cannot be read, or where its string stands in segments (X.690, 8.7.3).
 */
pki_Octets pki_subject_key_identifier(const Certificate *certificate);

/**
 * Finds the content of keyIdentifier in authorityKeyIdentifier (RFC 5280, 4.2.1.1). What stands
 * inside the other fields is not looked at. Returns what pki_subject_key_identifier() returns.
 */
pki_Octets pki_authority_key_identifier(const Certificate *certificate);

/* -------------------------------------------------------------------------------------------- */
/* Places                                                                                       */
/* -------------------------------------------------------------------------------------------- */

/**
 * Lists the places of the revocation lists: the URIs of fullName in cRLDistributionPoints (RFC
 * 5280, 4.2.1.13), as IA5String records, also those of points for some reasons only, or with a
 * cRLIssuer. A name relative to the issuer is no place. A distribution point that is malformed
 * counts as one name that cannot be read.
 */
List *pki_crl_places(const Certificate *certificate, uint32_t *unreadable);

/**
 * Lists the places of the OCSP responders: the URIs with the access method id-ad-ocsp in
 * authorityInfoAccess (RFC 5280, 4.2.2.1), as IA5String records. An AccessDescription that is
 * malformed counts as one name that cannot be read.
 */
List *pki_ocsp_places(const Certificate *certificate, uint32_t *unreadable);

/**
 * Lists the places of the issuer's certificates: the URIs with the access method id-ad-caIssuers
 * in authorityInfoAccess, as pki_ocsp_places() does.
 */
List *pki_issuer_places(const Certificate *certificate, uint32_t *unreadable);

/* -------------------------------------------------------------------------------------------- */
/* Times                                                                                        */
/* -------------------------------------------------------------------------------------------- */

/**
 * Reads the validity (RFC 5280, 4.1.2.5) in seconds since 1970-01-01 00:00:00 UTC, whatever the
 * zone of the process is. Returns 1; 0 where one of the two is no time, or `certificate` is NULL,
 * and then both are 0: such a certificate is valid at no time. 9999-12-31 23:59:59 stands for no
 * end that is known. Both places may be NULL.
 */
int32_t pki_validity(const Certificate *certificate, int64_t *not_before, int64_t *not_after);

/**
 * Reads a time in seconds since 1970-01-01 00:00:00 UTC, whatever the zone of the process is.
 * Seconds may be left out, and a difference from UTC may stand in place of "Z" (X.680, 46 and
 * 47), which certificates must not have (RFC 5280, 4.1.2.5). The years of a UTCTime are 1950 to
 * 2049. Returns 1; 0, with `*seconds` 0, where the text is no time, and for NULL. `seconds` may
 * be NULL.
 */
int32_t pki_Time_seconds(const Time *time, int64_t *seconds);

#ifdef __cplusplus
}
#endif

#endif
