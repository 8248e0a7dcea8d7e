/**
 * @file rfc3709.h
 * The logotypes of certificates (RFC 3709), in the functions that rfc5280.h describes. The records
 * are those of logotype.h.
 */
#ifndef ORVELPKI_RFC3709_H
#define ORVELPKI_RFC3709_H

#include "logotype.h"

#ifdef __cplusplus
extern "C" {
#endif

/* -------------------------------------------------------------------------------------------- */
/* Logotypes (4.1)                                                                              */
/* -------------------------------------------------------------------------------------------- */

/**
 * LogotypeExtn ::= SEQUENCE { communityLogos [0] EXPLICIT SEQUENCE OF LogotypeInfo OPTIONAL,
 * issuerLogo [1] EXPLICIT LogotypeInfo OPTIONAL, subjectLogo [2] EXPLICIT LogotypeInfo OPTIONAL,
 * otherLogos [3] EXPLICIT SEQUENCE OF OtherLogotypeInfo OPTIONAL }, the extension
 * 1.3.6.1.5.5.7.1.12. `otherLogos` has OtherLogotypeInfo records.
 */
LogotypeExtn *pki_LogotypeExtn_new(void);
void pki_LogotypeExtn_free(LogotypeExtn *pElement);
uint32_t pki_LogotypeExtn_e(uint8_t **pp, const LogotypeExtn *pElement);
const uint8_t *pki_LogotypeExtn_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  LogotypeExtn **ppElement, uint32_t depth);
LogotypeExtn *pki_LogotypeExtn_clone(const LogotypeExtn *pElement);

/**
 * LogotypeInfo ::= CHOICE { direct [0] IMPLICIT LogotypeData, indirect [1] IMPLICIT
 * LogotypeReference }.
 */
LogotypeInfo *pki_LogotypeInfo_new(void);
void pki_LogotypeInfo_free(LogotypeInfo *pElement);
uint32_t pki_LogotypeInfo_e(uint8_t **pp, const LogotypeInfo *pElement);
const uint8_t *pki_LogotypeInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  LogotypeInfo **ppElement, uint32_t depth);
LogotypeInfo *pki_LogotypeInfo_clone(const LogotypeInfo *pElement);

/**
 * LogotypeData ::= SEQUENCE { image SEQUENCE OF LogotypeImage OPTIONAL, audio [1] IMPLICIT
 * SEQUENCE OF LogotypeAudio OPTIONAL }.
 */
LogotypeData *pki_LogotypeData_new(void);
void pki_LogotypeData_free(LogotypeData *pElement);
uint32_t pki_LogotypeData_e(uint8_t **pp, const LogotypeData *pElement);
const uint8_t *pki_LogotypeData_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  LogotypeData **ppElement, uint32_t depth);
LogotypeData *pki_LogotypeData_clone(const LogotypeData *pElement);

/**
 * LogotypeImage ::= SEQUENCE { imageDetails LogotypeDetails, imageInfo LogotypeImageInfo OPTIONAL
 * }.
 */
LogotypeImage *pki_LogotypeImage_new(void);
void pki_LogotypeImage_free(LogotypeImage *pElement);
uint32_t pki_LogotypeImage_e(uint8_t **pp, const LogotypeImage *pElement);
const uint8_t *pki_LogotypeImage_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   LogotypeImage **ppElement, uint32_t depth);
LogotypeImage *pki_LogotypeImage_clone(const LogotypeImage *pElement);

/**
 * LogotypeAudio ::= SEQUENCE { audioDetails LogotypeDetails, audioInfo LogotypeAudioInfo OPTIONAL
 * }.
 */
LogotypeAudio *pki_LogotypeAudio_new(void);
void pki_LogotypeAudio_free(LogotypeAudio *pElement);
uint32_t pki_LogotypeAudio_e(uint8_t **pp, const LogotypeAudio *pElement);
const uint8_t *pki_LogotypeAudio_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   LogotypeAudio **ppElement, uint32_t depth);
LogotypeAudio *pki_LogotypeAudio_clone(const LogotypeAudio *pElement);

/**
 * LogotypeDetails ::= SEQUENCE { mediaType IA5String, logotypeHash SEQUENCE OF HashAlgAndValue,
 * logotypeURI SEQUENCE OF IA5String }.
 */
LogotypeDetails *pki_LogotypeDetails_new(void);
void pki_LogotypeDetails_free(LogotypeDetails *pElement);
uint32_t pki_LogotypeDetails_e(uint8_t **pp, const LogotypeDetails *pElement);
const uint8_t *pki_LogotypeDetails_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                     LogotypeDetails **ppElement, uint32_t depth);
LogotypeDetails *pki_LogotypeDetails_clone(const LogotypeDetails *pElement);

/**
 * LogotypeImageInfo ::= SEQUENCE { type [0] IMPLICIT INTEGER DEFAULT color, fileSize INTEGER,
 * xSize INTEGER, ySize INTEGER, resolution LogotypeImageResolution OPTIONAL, language [4] IMPLICIT
 * IA5String OPTIONAL }. `type` is 0 for grayScale and 1 for color.
 */
LogotypeImageInfo *pki_LogotypeImageInfo_new(void);
void pki_LogotypeImageInfo_free(LogotypeImageInfo *pElement);
uint32_t pki_LogotypeImageInfo_e(uint8_t **pp, const LogotypeImageInfo *pElement);
const uint8_t *pki_LogotypeImageInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                       LogotypeImageInfo **ppElement, uint32_t depth);
LogotypeImageInfo *pki_LogotypeImageInfo_clone(const LogotypeImageInfo *pElement);

/**
 * LogotypeImageResolution ::= CHOICE { numBits [1] IMPLICIT INTEGER, tableSize [2] IMPLICIT
 * INTEGER }.
 */
LogotypeImageResolution *pki_LogotypeImageResolution_new(void);
void pki_LogotypeImageResolution_free(LogotypeImageResolution *pElement);
uint32_t pki_LogotypeImageResolution_e(uint8_t **pp, const LogotypeImageResolution *pElement);
const uint8_t *pki_LogotypeImageResolution_d(const uint8_t *z, const uint8_t *end,
                                             uint32_t impl_tag, LogotypeImageResolution **ppElement,
                                             uint32_t depth);
LogotypeImageResolution *pki_LogotypeImageResolution_clone(const LogotypeImageResolution *pElement);

/**
 * LogotypeAudioInfo ::= SEQUENCE { fileSize INTEGER, playTime INTEGER, channels INTEGER,
 * sampleRate [3] IMPLICIT INTEGER OPTIONAL, language [4] IMPLICIT IA5String OPTIONAL }.
 */
LogotypeAudioInfo *pki_LogotypeAudioInfo_new(void);
void pki_LogotypeAudioInfo_free(LogotypeAudioInfo *pElement);
uint32_t pki_LogotypeAudioInfo_e(uint8_t **pp, const LogotypeAudioInfo *pElement);
const uint8_t *pki_LogotypeAudioInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                       LogotypeAudioInfo **ppElement, uint32_t depth);
LogotypeAudioInfo *pki_LogotypeAudioInfo_clone(const LogotypeAudioInfo *pElement);

/** OtherLogotypeInfo ::= SEQUENCE { logotypeType OBJECT IDENTIFIER, info LogotypeInfo }. */
OtherLogotypeInfo *pki_OtherLogotypeInfo_new(void);
void pki_OtherLogotypeInfo_free(OtherLogotypeInfo *pElement);
uint32_t pki_OtherLogotypeInfo_e(uint8_t **pp, const OtherLogotypeInfo *pElement);
const uint8_t *pki_OtherLogotypeInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                       OtherLogotypeInfo **ppElement, uint32_t depth);
OtherLogotypeInfo *pki_OtherLogotypeInfo_clone(const OtherLogotypeInfo *pElement);

/**
 * LogotypeReference ::= SEQUENCE { refStructHash SEQUENCE OF HashAlgAndValue, refStructURI
 * SEQUENCE OF IA5String }.
 */
LogotypeReference *pki_LogotypeReference_new(void);
void pki_LogotypeReference_free(LogotypeReference *pElement);
uint32_t pki_LogotypeReference_e(uint8_t **pp, const LogotypeReference *pElement);
const uint8_t *pki_LogotypeReference_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                       LogotypeReference **ppElement, uint32_t depth);
LogotypeReference *pki_LogotypeReference_clone(const LogotypeReference *pElement);

/** HashAlgAndValue ::= SEQUENCE { hashAlg AlgorithmIdentifier, hashValue OCTET STRING }. */
HashAlgAndValue *pki_HashAlgAndValue_new(void);
void pki_HashAlgAndValue_free(HashAlgAndValue *pElement);
uint32_t pki_HashAlgAndValue_e(uint8_t **pp, const HashAlgAndValue *pElement);
const uint8_t *pki_HashAlgAndValue_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                     HashAlgAndValue **ppElement, uint32_t depth);
HashAlgAndValue *pki_HashAlgAndValue_clone(const HashAlgAndValue *pElement);

#ifdef __cplusplus
}
#endif

#endif
