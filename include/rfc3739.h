/**
 * @file rfc3739.h
 * The statements of qualified certificates (RFC 3739; ETSI EN 319 412-5), in the functions that
 * rfc5280.h describes.
 */
#ifndef ORVELPKI_RFC3739_H
#define ORVELPKI_RFC3739_H

#include "asn1_x509v3.h"

#ifdef __cplusplus
extern "C" {
#endif

/* -------------------------------------------------------------------------------------------- */
/* Statements (RFC 3739, 3.2.6)                                                                 */
/* -------------------------------------------------------------------------------------------- */

/**
 * QCStatement ::= SEQUENCE { statementId OBJECT IDENTIFIER, statementInfo ANY DEFINED BY
 * statementId OPTIONAL }.
 */
typedef struct pki_QCStatement {
  ObjId *statementId; /**< owned */
  Any *statementInfo; /**< one whole element, owned, or NULL */
} pki_QCStatement;

/**
 * SemanticsInformation ::= SEQUENCE { semanticsIdentifier OBJECT IDENTIFIER OPTIONAL,
 * nameRegistrationAuthorities SEQUENCE OF GeneralName OPTIONAL }.
 */
typedef struct pki_SemanticsInformation {
  ObjId *semanticsIdentifier;        /**< owned, or NULL */
  List *nameRegistrationAuthorities; /**< GeneralName records, owned, or NULL */
} pki_SemanticsInformation;

/**
 * QCStatements ::= SEQUENCE OF QCStatement, the extension 1.3.6.1.5.5.7.1.3: a List of
 * pki_QCStatement records.
 */
void pki_QCStatements_free(List *pElement);
uint32_t pki_QCStatements_e(uint8_t **pp, const List *pElement);
const uint8_t *pki_QCStatements_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  List **ppElement, uint32_t depth);
List *pki_QCStatements_clone(const List *pElement);

/**
 * A statement. The identifier says which type reads `statementInfo`: SemanticsInformation for
 * 1.3.6.1.5.5.7.11.1 and 1.3.6.1.5.5.7.11.2, and those below for 0.4.0.1862.1 with the number of
 * each.
 */
pki_QCStatement *pki_QCStatement_new(void);
void pki_QCStatement_free(pki_QCStatement *pElement);
uint32_t pki_QCStatement_e(uint8_t **pp, const pki_QCStatement *pElement);
const uint8_t *pki_QCStatement_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 pki_QCStatement **ppElement, uint32_t depth);
pki_QCStatement *pki_QCStatement_clone(const pki_QCStatement *pElement);

/** The information of the statements 1.3.6.1.5.5.7.11.1 and 1.3.6.1.5.5.7.11.2. */
pki_SemanticsInformation *pki_SemanticsInformation_new(void);
void pki_SemanticsInformation_free(pki_SemanticsInformation *pElement);
uint32_t pki_SemanticsInformation_e(uint8_t **pp, const pki_SemanticsInformation *pElement);
const uint8_t *pki_SemanticsInformation_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                          pki_SemanticsInformation **ppElement, uint32_t depth);
pki_SemanticsInformation *pki_SemanticsInformation_clone(const pki_SemanticsInformation *pElement);

/* -------------------------------------------------------------------------------------------- */
/* Statements of ETSI EN 319 412-5                                                              */
/* -------------------------------------------------------------------------------------------- */

/**
 * Iso4217CurrencyCode ::= CHOICE { alphabetic PrintableString, numeric INTEGER }. `kind` is the
 * number of the universal tag.
 */
typedef struct pki_Iso4217CurrencyCode {
  uint8_t kind; /**< 19: alphabetic; 2: numeric */
  void *value;  /**< a PrintableString or an Integer, owned */
} pki_Iso4217CurrencyCode;

/**
 * MonetaryValue ::= SEQUENCE { currency Iso4217CurrencyCode, amount INTEGER, exponent INTEGER }:
 * `amount` times ten to the power of `exponent`.
 */
typedef struct pki_MonetaryValue {
  pki_Iso4217CurrencyCode *currency; /**< owned */
  Integer *amount;                   /**< owned */
  Integer *exponent;                 /**< owned */
} pki_MonetaryValue;

/** PdsLocation ::= SEQUENCE { url IA5String, language PrintableString }. */
typedef struct pki_PdsLocation {
  IA5String *url;            /**< owned */
  PrintableString *language; /**< two letters (ISO 639-1), owned */
} pki_PdsLocation;

/** A currency by its letters or its number (4.3.2). */
pki_Iso4217CurrencyCode *pki_Iso4217CurrencyCode_new(void);
void pki_Iso4217CurrencyCode_free(pki_Iso4217CurrencyCode *pElement);
uint32_t pki_Iso4217CurrencyCode_e(uint8_t **pp, const pki_Iso4217CurrencyCode *pElement);
const uint8_t *pki_Iso4217CurrencyCode_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                         pki_Iso4217CurrencyCode **ppElement, uint32_t depth);
pki_Iso4217CurrencyCode *pki_Iso4217CurrencyCode_clone(const pki_Iso4217CurrencyCode *pElement);

/** QcEuLimitValue ::= MonetaryValue (4.3.2), of statement 0.4.0.1862.1.2. */
pki_MonetaryValue *pki_MonetaryValue_new(void);
void pki_MonetaryValue_free(pki_MonetaryValue *pElement);
uint32_t pki_MonetaryValue_e(uint8_t **pp, const pki_MonetaryValue *pElement);
const uint8_t *pki_MonetaryValue_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   pki_MonetaryValue **ppElement, uint32_t depth);
pki_MonetaryValue *pki_MonetaryValue_clone(const pki_MonetaryValue *pElement);

/** QcEuRetentionPeriod ::= INTEGER (4.3.3), of statement 0.4.0.1862.1.3: years. */
void pki_QcEuRetentionPeriod_free(Integer *pElement);
uint32_t pki_QcEuRetentionPeriod_e(uint8_t **pp, const Integer *pElement);
const uint8_t *pki_QcEuRetentionPeriod_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                         Integer **ppElement, uint32_t depth);
Integer *pki_QcEuRetentionPeriod_clone(const Integer *pElement);

/**
 * QcEuPDS ::= PdsLocations ::= SEQUENCE OF PdsLocation (4.3.4), of statement 0.4.0.1862.1.5: a
 * List of pki_PdsLocation records.
 */
void pki_PdsLocations_free(List *pElement);
uint32_t pki_PdsLocations_e(uint8_t **pp, const List *pElement);
const uint8_t *pki_PdsLocations_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  List **ppElement, uint32_t depth);
List *pki_PdsLocations_clone(const List *pElement);

/** An element of PdsLocations (4.3.4). */
pki_PdsLocation *pki_PdsLocation_new(void);
void pki_PdsLocation_free(pki_PdsLocation *pElement);
uint32_t pki_PdsLocation_e(uint8_t **pp, const pki_PdsLocation *pElement);
const uint8_t *pki_PdsLocation_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                 pki_PdsLocation **ppElement, uint32_t depth);
pki_PdsLocation *pki_PdsLocation_clone(const pki_PdsLocation *pElement);

/**
 * QcType ::= SEQUENCE OF OBJECT IDENTIFIER (4.2.3), of statement 0.4.0.1862.1.6: a List of ObjId
 * records.
 */
void pki_QcType_free(List *pElement);
uint32_t pki_QcType_e(uint8_t **pp, const List *pElement);
const uint8_t *pki_QcType_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                            List **ppElement, uint32_t depth);
List *pki_QcType_clone(const List *pElement);

/**
 * QcCClegislation ::= SEQUENCE OF CountryName (4.2.4), of statement 0.4.0.1862.1.7: a List of
 * PrintableString records, two letters each (ISO 3166-1).
 */
void pki_QcCClegislation_free(List *pElement);
uint32_t pki_QcCClegislation_e(uint8_t **pp, const List *pElement);
const uint8_t *pki_QcCClegislation_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                     List **ppElement, uint32_t depth);
List *pki_QcCClegislation_clone(const List *pElement);

#ifdef __cplusplus
}
#endif

#endif
