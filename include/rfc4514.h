/**
 * @file rfc4514.h
 * Distinguished names as a text: the string of RFC 4514, and this library's own text for names of
 * every kind.
 *
 * A name is an RDNSequence, as asn1_x501.h has it. The value of an assertion is its content
 * octets, `value`, under its identifier octet, `valueTag`. No input and no record ends the
 * process. The time is linear in the size of a name, but for arcs of more than 32 bits, for which
 * see pki_ObjId_text() and pki_ObjId_parse().
 */
#ifndef ORVELPKI_RFC4514_H
#define ORVELPKI_RFC4514_H

#include "asn1_x501.h"
#include "pki_x680.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Makes the text of a name that asn1_RDNSequence_to_Name() makes, such as "/c(19)=DE/cn(12)=x".
 * The caller owns it and releases it with asn1_Name_free(). Where the two differ:
 *
 * - a sequence without an RDN has the text "";
 * - the parentheses hold a `valueTag` of any size;
 * - a type without a short name has the digits of pki_ObjId_text();
 * - a record that is not filled has no text.
 *
 * Returns NULL for NULL, when an RDN, an assertion, its type or its value is NULL, when a type is
 * no identifier, and when memory is exhausted. A value is cut at its first NUL octet: the text is
 * for people, and pki_name_rfc4514() for what decides.
 */
Name *pki_RDNSequence_text(const RDNSequence *sequence);

/**
 * Makes the string of a name (RFC 4514, 2), such as "CN=Some One,O=A\, B,C=DE". The caller owns
 * it and releases it with free() or asn1_Name_free().
 *
 * - The last RDN comes first (2.1). Assertions of one RDN keep their order, with "+" between them
 *   (2.2).
 * - The types of the table in section 3 have their short names: CN, L, ST, O, OU, C, STREET, DC,
 *   UID. Any other is written in digits (2.3).
 * - The value of a type with a short name is written in UTF-8: UTF8String, BMPString with
 *   surrogates as UTF-16 has them, UniversalString, NumericString, PrintableString, IA5String,
 *   VisibleString, and TeletexString, which is taken for ISO 8859-1. A backslash stands in front
 *   of a quotation mark, `+`, `,`, `;`, `<`, `>`, another backslash, a blank at either end, and a
 *   "#" at the start. NUL is a backslash and 00 (2.4).
 * - Every other value, and one whose octets are not of its type, is "#" and the hexadecimal
 *   digits of its identifier octet, its length as in DER, and its content octets.
 *
 * A sequence without an RDN has the string "". Returns NULL for NULL; when an RDN, an assertion,
 * its type or its value is NULL; when an RDN has no assertion, a type is no identifier, or a
 * `valueTag` is not in 0 to 255; and when memory is exhausted.
 */
char *pki_name_rfc4514(const RDNSequence *sequence);

/**
 * Makes the name of a string by the grammar of RFC 4514, 3. The caller owns it and releases it
 * with asn1_RDNSequence_free(). Short names are those of the table in section 3, in any case.
 *
 * A value in hexadecimal digits is one element of definite length: its identifier octet becomes
 * the `valueTag`, its content octets become the `value`. Any other value becomes a UTF8String;
 * but a countryName becomes a PrintableString, and a domainComponent or emailAddress
 * (1.2.840.113549.1.9.1) an IA5String, where those can hold it.
 *
 * The empty string is the sequence without an RDN. Returns NULL for NULL, when memory is
 * exhausted, and for everything that the grammar does not have: blanks around a "=", "," or "+",
 * values in quotation marks, other short names, values that are not UTF-8 once the escapes are
 * resolved.
 *
 * pki_name_rfc4514() writes the result as the same text, but for the spelling of short names and
 * digits, escapes that were not needed, and values that have another form there.
 */
RDNSequence *pki_name_parse_rfc4514(const char *text);

#ifdef __cplusplus
}
#endif

#endif
