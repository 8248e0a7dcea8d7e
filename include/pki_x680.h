/**
 * @file pki_x680.h
 * The universal types of ASN.1 (ITU-T X.680, X.690) as liborvelpki has them: object identifiers
 * of any size.
 *
 * An OBJECT IDENTIFIER is the record ObjId of asn1_x680.h. Where an arc takes more than 32 bits,
 * the record holds the content octets (X.690, 8.19) in place of the arcs, so that comparing,
 * copying and releasing go on as ever:
 *
 * - `arcs[0]` is PKI_LARGE_ARCS, which is no root arc;
 * - `arcs[1]` is the number of content octets;
 * - the words after it are those octets, four a word, the first octet highest, the last word
 *   filled up with zeros. `count` is 2 + (octets + 3) / 4.
 *
 * The first two arcs are arcs of their own, as X.660 has them: 2.999.3 is {2, 999, 3}.
 */
#ifndef ORVELPKI_X680_H
#define ORVELPKI_X680_H

#include "asn1_x680.h"
#include "pki_type.h"

#ifdef __cplusplus
extern "C" {
#endif

/** The first word of an ObjId that holds content octets. */
static const uint32_t PKI_LARGE_ARCS = 0xFFFFFFFF;

/**
 * Makes the text of an identifier, decimal arcs with dots between them, for arcs of any size. The
 * caller owns the text and releases it with free() or asn1_Name_free(). Returns NULL for NULL,
 * for a record that is no identifier, and when memory is exhausted.
 *
 * No identifier are: fewer than two arcs, a second arc of 40 or more under the root arc 0 or 1,
 * and content octets that X.690, 8.19.2 does not allow. An identifier that asn1_ObjId_d()
 * decoded, which splits the first number of the content otherwise, has its own text, too:
 * "2.999.3" for {26, 39, 3}.
 *
 * The time is linear in the number of arcs, and quadratic in the octets of one arc that takes
 * more than 32 bits. Measure what a stranger sends before you ask for its text.
 */
char *pki_ObjId_text(const ObjId *oid);

/**
 * Makes the identifier of a text, such as "2.5.4.3", for arcs of any size. The caller owns the
 * record and releases it with asn1_ObjId_free(). Returns NULL when memory is exhausted, and for
 * everything else than such a text: two or more decimal numbers with dots between them, without
 * signs, blanks or leading zeros; the root arc 0, 1 or 2; the second arc below 40 under 0 and 1.
 * NULL is no text.
 *
 * The time is quadratic in the digits of one arc that takes more than 32 bits.
 */
ObjId *pki_ObjId_parse(const char *text);

/**
 * Returns the form of the values that an identifier stands in front of: the content of an
 * extension's `extnValue`, the `content` of a ContentInfo, the `bagValue` of a SafeBag, the
 * `qualifier` of a policy, the `response` of an OCSP response, the values of an attribute, the
 * parameters of an algorithm. NULL where the library has none, and for NULL.
 */
const pki_Type *pki_Type_defined_by(const ObjId *identifier);

#ifdef __cplusplus
}
#endif

#endif
