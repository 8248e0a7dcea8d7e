/**
 * @file logotype.h
 * The logotype extension of certificates (RFC 3709), write only.
 *
 * The records can be built, encoded and released. Decoders and copies exist by name and give NULL.
 * The encoders depart from the RFC in four points: `otherLogos` is a list of LogotypeInfo that
 * hangs on `communityLogos`; the audio element is written from the images; a resolution has no
 * context tag; the language of an image has none either.
 */
#ifndef ORVELASN1_LOGOTYPE_H
#define ORVELASN1_LOGOTYPE_H

#include "certificate.h"

#ifdef __cplusplus
extern "C" {
#endif

/** HashAlgAndValue ::= SEQUENCE { hashAlg AlgorithmIdentifier, hashValue OCTET STRING }. */
typedef struct HashAlgAndValue {
  AlgId *hashAlg;         /**< owned */
  OctetString *hashValue; /**< owned */
} HashAlgAndValue;

/**
 * LogotypeDetails ::= SEQUENCE { mediaType IA5String, logotypeHash SEQUENCE OF HashAlgAndValue,
 * logotypeURI SEQUENCE OF IA5String }.
 */
typedef struct LogotypeDetails {
  IA5String *mediaType; /**< owned */
  List *logotypeHash;   /**< HashAlgAndValue records, owned */
  List *logotypeURI;    /**< IA5String records, owned */
} LogotypeDetails;

/**
 * LogotypeReference ::= SEQUENCE { refStructHash SEQUENCE OF HashAlgAndValue, refStructURI SEQUENCE
 * OF IA5String }.
 */
typedef struct LogotypeReference {
  List *refStructHash; /**< HashAlgAndValue records, owned */
  List *refStructURI;  /**< IA5String records, owned */
} LogotypeReference;

/**
 * LogotypeImageResolution ::= CHOICE { numBits INTEGER, tableSize INTEGER }, written without a tag
 * of its own.
 */
typedef struct LogotypeImageResolution {
  uint8_t kind; /**< 1: numBits; 2: tableSize */
  void *value;  /**< an Integer, owned */
} LogotypeImageResolution;

/**
 * LogotypeImageInfo ::= SEQUENCE { type [0] IMPLICIT INTEGER OPTIONAL, fileSize, xSize, ySize
 * INTEGER, resolution OPTIONAL, language IA5String OPTIONAL }.
 */
typedef struct LogotypeImageInfo {
  Integer *type;                       /**< owned, or NULL */
  Integer *fileSize;                   /**< owned */
  Integer *xSize;                      /**< owned */
  Integer *ySize;                      /**< owned */
  LogotypeImageResolution *resolution; /**< owned, or NULL */
  IA5String *language;                 /**< owned, or NULL */
} LogotypeImageInfo;

/** LogotypeImage ::= SEQUENCE { imageDetails, imageInfo OPTIONAL }. */
typedef struct LogotypeImage {
  LogotypeDetails *imageDetails; /**< owned */
  LogotypeImageInfo *imageInfo;  /**< owned, or NULL */
} LogotypeImage;

/**
 * LogotypeAudioInfo ::= SEQUENCE { fileSize, playTime, channels INTEGER, sampleRate [3] IMPLICIT
 * INTEGER OPTIONAL, language [4] IMPLICIT IA5String OPTIONAL }.
 */
typedef struct LogotypeAudioInfo {
  Integer *fileSize;   /**< owned */
  Integer *playTime;   /**< owned */
  Integer *channels;   /**< owned */
  Integer *sampleRate; /**< owned, or NULL */
  IA5String *language; /**< owned, or NULL */
} LogotypeAudioInfo;

/** LogotypeAudio ::= SEQUENCE { audioDetails, audioInfo OPTIONAL }. */
typedef struct LogotypeAudio {
  LogotypeDetails *audioDetails; /**< owned */
  LogotypeAudioInfo *audioInfo;  /**< owned, or NULL */
} LogotypeAudio;

/**
 * LogotypeData ::= SEQUENCE { image SEQUENCE OF LogotypeImage OPTIONAL, audio [1] IMPLICIT OPTIONAL
 * }. The second element is written where `audio` is set, but from the images.
 */
typedef struct LogotypeData {
  List *image; /**< LogotypeImage records, owned, or NULL */
  List *audio; /**< LogotypeAudio records, owned, or NULL; never written */
} LogotypeData;

/**
 * LogotypeInfo ::= CHOICE { direct [0] IMPLICIT LogotypeData, indirect [1] IMPLICIT
 * LogotypeReference }.
 */
typedef struct LogotypeInfo {
  uint8_t kind; /**< 0: direct; 1: indirect */
  void *value;  /**< a LogotypeData or LogotypeReference, owned */
} LogotypeInfo;

/** OtherLogotypeInfo ::= SEQUENCE { logotypeType OBJECT IDENTIFIER, info LogotypeInfo }. */
typedef struct OtherLogotypeInfo {
  ObjId *logotypeType; /**< owned */
  LogotypeInfo *info;  /**< owned */
} OtherLogotypeInfo;

/**
 * LogotypeExtn ::= SEQUENCE { communityLogos [0] EXPLICIT SEQUENCE OF LogotypeInfo, issuerLogo [1]
 * EXPLICIT, subjectLogo [2] EXPLICIT, otherLogos [3] EXPLICIT SEQUENCE OF LogotypeInfo }, all
 * optional. `otherLogos` is written with `communityLogos` and only then.
 */
typedef struct LogotypeExtn {
  List *communityLogos;      /**< LogotypeInfo records, owned, or NULL */
  LogotypeInfo *issuerLogo;  /**< owned, or NULL */
  LogotypeInfo *subjectLogo; /**< owned, or NULL */
  List *otherLogos;          /**< LogotypeInfo records, owned, or NULL */
} LogotypeExtn;

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
HashAlgAndValue *asn1_HashAlgAndValue_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_HashAlgAndValue_free(HashAlgAndValue *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_HashAlgAndValue_e(uint8_t **pp, const HashAlgAndValue *pElement);
/** Gives NULL and does nothing: logotypes are written only. */
const uint8_t *asn1_HashAlgAndValue_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      HashAlgAndValue **ppElement, uint32_t depth);
/** Gives NULL and does nothing: logotypes are written only. */
HashAlgAndValue *asn1_HashAlgAndValue_clone(const HashAlgAndValue *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
LogotypeDetails *asn1_LogotypeDetails_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_LogotypeDetails_free(LogotypeDetails *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_LogotypeDetails_e(uint8_t **pp, const LogotypeDetails *pElement);
/** Gives NULL and does nothing: logotypes are written only. */
const uint8_t *asn1_LogotypeDetails_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      LogotypeDetails **ppElement, uint32_t depth);
/** Gives NULL and does nothing: logotypes are written only. */
LogotypeDetails *asn1_LogotypeDetails_clone(const LogotypeDetails *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
LogotypeReference *asn1_LogotypeReference_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_LogotypeReference_free(LogotypeReference *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_LogotypeReference_e(uint8_t **pp, const LogotypeReference *pElement);
/** Gives NULL and does nothing: logotypes are written only. */
const uint8_t *asn1_LogotypeReference_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                        LogotypeReference **ppElement, uint32_t depth);
/** Gives NULL and does nothing: logotypes are written only. */
LogotypeReference *asn1_LogotypeReference_clone(const LogotypeReference *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
LogotypeImageResolution *asn1_LogotypeImageResolution_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_LogotypeImageResolution_free(LogotypeImageResolution *pElement);
/**
 * Gives the number of octets of the number of the record, which must not be NULL; 0 for an unknown
 * kind, or without a number.
 */
uint32_t asn1_LogotypeImageResolution_e(uint8_t **pp, const LogotypeImageResolution *pElement);
/** Gives NULL and does nothing: logotypes are written only. */
const uint8_t *asn1_LogotypeImageResolution_d(const uint8_t *z, const uint8_t *end,
                                              uint32_t impl_tag,
                                              LogotypeImageResolution **ppElement, uint32_t depth);
/** Gives NULL and does nothing: logotypes are written only. */
LogotypeImageResolution *asn1_LogotypeImageResolution_clone(
    const LogotypeImageResolution *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
LogotypeImageInfo *asn1_LogotypeImageInfo_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_LogotypeImageInfo_free(LogotypeImageInfo *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_LogotypeImageInfo_e(uint8_t **pp, const LogotypeImageInfo *pElement);
/** Gives NULL and does nothing: logotypes are written only. */
const uint8_t *asn1_LogotypeImageInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                        LogotypeImageInfo **ppElement, uint32_t depth);
/** Gives NULL and does nothing: logotypes are written only. */
LogotypeImageInfo *asn1_LogotypeImageInfo_clone(const LogotypeImageInfo *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
LogotypeImage *asn1_LogotypeImage_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_LogotypeImage_free(LogotypeImage *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_LogotypeImage_e(uint8_t **pp, const LogotypeImage *pElement);
/** Gives NULL and does nothing: logotypes are written only. */
const uint8_t *asn1_LogotypeImage_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    LogotypeImage **ppElement, uint32_t depth);
/** Gives NULL and does nothing: logotypes are written only. */
LogotypeImage *asn1_LogotypeImage_clone(const LogotypeImage *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
LogotypeAudioInfo *asn1_LogotypeAudioInfo_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_LogotypeAudioInfo_free(LogotypeAudioInfo *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_LogotypeAudioInfo_e(uint8_t **pp, const LogotypeAudioInfo *pElement);
/** Gives NULL and does nothing: logotypes are written only. */
const uint8_t *asn1_LogotypeAudioInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                        LogotypeAudioInfo **ppElement, uint32_t depth);
/** Gives NULL and does nothing: logotypes are written only. */
LogotypeAudioInfo *asn1_LogotypeAudioInfo_clone(const LogotypeAudioInfo *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
LogotypeAudio *asn1_LogotypeAudio_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_LogotypeAudio_free(LogotypeAudio *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_LogotypeAudio_e(uint8_t **pp, const LogotypeAudio *pElement);
/** Gives NULL and does nothing: logotypes are written only. */
const uint8_t *asn1_LogotypeAudio_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    LogotypeAudio **ppElement, uint32_t depth);
/** Gives NULL and does nothing: logotypes are written only. */
LogotypeAudio *asn1_LogotypeAudio_clone(const LogotypeAudio *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
LogotypeData *asn1_LogotypeData_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_LogotypeData_free(LogotypeData *pElement);
/**
 * Gives the number of octets of the record, which must not be NULL; 0 when a field fails, such as
 * where `audio` is set and an image has information without a `type`.
 */
uint32_t asn1_LogotypeData_e(uint8_t **pp, const LogotypeData *pElement);
/** Gives NULL and does nothing: logotypes are written only. */
const uint8_t *asn1_LogotypeData_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   LogotypeData **ppElement, uint32_t depth);
/** Gives NULL and does nothing: logotypes are written only. */
LogotypeData *asn1_LogotypeData_clone(const LogotypeData *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
LogotypeInfo *asn1_LogotypeInfo_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_LogotypeInfo_free(LogotypeInfo *pElement);
/**
 * Gives the number of octets of the record, which must not be NULL; 0 for an unknown kind, or a
 * value that fails. A NULL `value` of the other kinds ends the process.
 */
uint32_t asn1_LogotypeInfo_e(uint8_t **pp, const LogotypeInfo *pElement);
/** Gives NULL and does nothing: logotypes are written only. */
const uint8_t *asn1_LogotypeInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   LogotypeInfo **ppElement, uint32_t depth);
/** Gives NULL and does nothing: logotypes are written only. */
LogotypeInfo *asn1_LogotypeInfo_clone(const LogotypeInfo *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
OtherLogotypeInfo *asn1_OtherLogotypeInfo_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_OtherLogotypeInfo_free(OtherLogotypeInfo *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_OtherLogotypeInfo_e(uint8_t **pp, const OtherLogotypeInfo *pElement);
/** Gives NULL and does nothing: logotypes are written only. */
const uint8_t *asn1_OtherLogotypeInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                        OtherLogotypeInfo **ppElement, uint32_t depth);
/** Gives NULL and does nothing: logotypes are written only. */
OtherLogotypeInfo *asn1_OtherLogotypeInfo_clone(const OtherLogotypeInfo *pElement);

/** Gives a new record, all fields zero, or NULL when memory is exhausted. */
LogotypeExtn *asn1_LogotypeExtn_new(void);
/** Gives nothing; releases the record and what it owns. NULL is ignored. */
void asn1_LogotypeExtn_free(LogotypeExtn *pElement);
/** Gives the number of octets of the record, which must not be NULL; 0 when a field fails. */
uint32_t asn1_LogotypeExtn_e(uint8_t **pp, const LogotypeExtn *pElement);
/** Gives NULL and does nothing: logotypes are written only. */
const uint8_t *asn1_LogotypeExtn_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   LogotypeExtn **ppElement, uint32_t depth);
/** Gives NULL and does nothing: logotypes are written only. */
LogotypeExtn *asn1_LogotypeExtn_clone(const LogotypeExtn *pElement);

#ifdef __cplusplus
}
#endif

#endif
