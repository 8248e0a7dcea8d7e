/**
 * @file logotype.h
 * The logotype extension of certificates (RFC 3709). It can only be encoded.
 *
 * The records can be made, encoded and released. The decoders and copy functions exist, but only
 * return NULL. The encoders differ from RFC 3709, 4.1 in four points: `otherLogos` is a list of
 * LogotypeInfo and written only with `communityLogos`; the audio element is written from the
 * images; a resolution has no context tag; the language of an image has no context tag.
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
 * }. Where `audio` is set, the second element is written from the images.
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
 * optional. Where `communityLogos` is set, `otherLogos` must be set too; otherwise it is not
 * written.
 */
typedef struct LogotypeExtn {
  List *communityLogos;      /**< LogotypeInfo records, owned, or NULL */
  LogotypeInfo *issuerLogo;  /**< owned, or NULL */
  LogotypeInfo *subjectLogo; /**< owned, or NULL */
  List *otherLogos;          /**< LogotypeInfo records, owned, or NULL */
} LogotypeExtn;

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
HashAlgAndValue *asn1_HashAlgAndValue_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_HashAlgAndValue_free(HashAlgAndValue *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_HashAlgAndValue_e(uint8_t **pp, const HashAlgAndValue *pElement);
/** Does nothing and returns NULL: logotypes can only be encoded. */
const uint8_t *asn1_HashAlgAndValue_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      HashAlgAndValue **ppElement, uint32_t depth);
/** Does nothing and returns NULL: logotypes can only be encoded. */
HashAlgAndValue *asn1_HashAlgAndValue_clone(const HashAlgAndValue *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
LogotypeDetails *asn1_LogotypeDetails_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_LogotypeDetails_free(LogotypeDetails *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_LogotypeDetails_e(uint8_t **pp, const LogotypeDetails *pElement);
/** Does nothing and returns NULL: logotypes can only be encoded. */
const uint8_t *asn1_LogotypeDetails_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                      LogotypeDetails **ppElement, uint32_t depth);
/** Does nothing and returns NULL: logotypes can only be encoded. */
LogotypeDetails *asn1_LogotypeDetails_clone(const LogotypeDetails *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
LogotypeReference *asn1_LogotypeReference_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_LogotypeReference_free(LogotypeReference *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_LogotypeReference_e(uint8_t **pp, const LogotypeReference *pElement);
/** Does nothing and returns NULL: logotypes can only be encoded. */
const uint8_t *asn1_LogotypeReference_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                        LogotypeReference **ppElement, uint32_t depth);
/** Does nothing and returns NULL: logotypes can only be encoded. */
LogotypeReference *asn1_LogotypeReference_clone(const LogotypeReference *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
LogotypeImageResolution *asn1_LogotypeImageResolution_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_LogotypeImageResolution_free(LogotypeImageResolution *pElement);
/**
 * Encodes the number of the record, which must not be NULL. Returns the number of octets, or 0 for
 * an unknown kind and for a NULL number.
 */
uint32_t asn1_LogotypeImageResolution_e(uint8_t **pp, const LogotypeImageResolution *pElement);
/** Does nothing and returns NULL: logotypes can only be encoded. */
const uint8_t *asn1_LogotypeImageResolution_d(const uint8_t *z, const uint8_t *end,
                                              uint32_t impl_tag,
                                              LogotypeImageResolution **ppElement, uint32_t depth);
/** Does nothing and returns NULL: logotypes can only be encoded. */
LogotypeImageResolution *asn1_LogotypeImageResolution_clone(
    const LogotypeImageResolution *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
LogotypeImageInfo *asn1_LogotypeImageInfo_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_LogotypeImageInfo_free(LogotypeImageInfo *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_LogotypeImageInfo_e(uint8_t **pp, const LogotypeImageInfo *pElement);
/** Does nothing and returns NULL: logotypes can only be encoded. */
const uint8_t *asn1_LogotypeImageInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                        LogotypeImageInfo **ppElement, uint32_t depth);
/** Does nothing and returns NULL: logotypes can only be encoded. */
LogotypeImageInfo *asn1_LogotypeImageInfo_clone(const LogotypeImageInfo *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
LogotypeImage *asn1_LogotypeImage_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_LogotypeImage_free(LogotypeImage *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_LogotypeImage_e(uint8_t **pp, const LogotypeImage *pElement);
/** Does nothing and returns NULL: logotypes can only be encoded. */
const uint8_t *asn1_LogotypeImage_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    LogotypeImage **ppElement, uint32_t depth);
/** Does nothing and returns NULL: logotypes can only be encoded. */
LogotypeImage *asn1_LogotypeImage_clone(const LogotypeImage *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
LogotypeAudioInfo *asn1_LogotypeAudioInfo_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_LogotypeAudioInfo_free(LogotypeAudioInfo *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_LogotypeAudioInfo_e(uint8_t **pp, const LogotypeAudioInfo *pElement);
/** Does nothing and returns NULL: logotypes can only be encoded. */
const uint8_t *asn1_LogotypeAudioInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                        LogotypeAudioInfo **ppElement, uint32_t depth);
/** Does nothing and returns NULL: logotypes can only be encoded. */
LogotypeAudioInfo *asn1_LogotypeAudioInfo_clone(const LogotypeAudioInfo *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
LogotypeAudio *asn1_LogotypeAudio_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_LogotypeAudio_free(LogotypeAudio *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_LogotypeAudio_e(uint8_t **pp, const LogotypeAudio *pElement);
/** Does nothing and returns NULL: logotypes can only be encoded. */
const uint8_t *asn1_LogotypeAudio_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                    LogotypeAudio **ppElement, uint32_t depth);
/** Does nothing and returns NULL: logotypes can only be encoded. */
LogotypeAudio *asn1_LogotypeAudio_clone(const LogotypeAudio *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
LogotypeData *asn1_LogotypeData_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_LogotypeData_free(LogotypeData *pElement);
/**
 * Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. Where
 * `audio` is set, an image that has information without a `type` fails.
 */
uint32_t asn1_LogotypeData_e(uint8_t **pp, const LogotypeData *pElement);
/** Does nothing and returns NULL: logotypes can only be encoded. */
const uint8_t *asn1_LogotypeData_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   LogotypeData **ppElement, uint32_t depth);
/** Does nothing and returns NULL: logotypes can only be encoded. */
LogotypeData *asn1_LogotypeData_clone(const LogotypeData *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
LogotypeInfo *asn1_LogotypeInfo_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_LogotypeInfo_free(LogotypeInfo *pElement);
/**
 * Encodes the record, which must not be NULL. Returns its size in octets, or 0 for an unknown kind
 * and for a value that fails. A NULL `value` of a known kind ends the process.
 */
uint32_t asn1_LogotypeInfo_e(uint8_t **pp, const LogotypeInfo *pElement);
/** Does nothing and returns NULL: logotypes can only be encoded. */
const uint8_t *asn1_LogotypeInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   LogotypeInfo **ppElement, uint32_t depth);
/** Does nothing and returns NULL: logotypes can only be encoded. */
LogotypeInfo *asn1_LogotypeInfo_clone(const LogotypeInfo *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
OtherLogotypeInfo *asn1_OtherLogotypeInfo_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_OtherLogotypeInfo_free(OtherLogotypeInfo *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_OtherLogotypeInfo_e(uint8_t **pp, const OtherLogotypeInfo *pElement);
/** Does nothing and returns NULL: logotypes can only be encoded. */
const uint8_t *asn1_OtherLogotypeInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                        OtherLogotypeInfo **ppElement, uint32_t depth);
/** Does nothing and returns NULL: logotypes can only be encoded. */
OtherLogotypeInfo *asn1_OtherLogotypeInfo_clone(const OtherLogotypeInfo *pElement);

/** Makes a record with all fields zero. Returns NULL when memory is exhausted. */
LogotypeExtn *asn1_LogotypeExtn_new(void);
/** Releases the record and what it owns. NULL is ignored. */
void asn1_LogotypeExtn_free(LogotypeExtn *pElement);
/** Encodes the record, which must not be NULL. Returns its size in octets, or 0 on failure. */
uint32_t asn1_LogotypeExtn_e(uint8_t **pp, const LogotypeExtn *pElement);
/** Does nothing and returns NULL: logotypes can only be encoded. */
const uint8_t *asn1_LogotypeExtn_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                   LogotypeExtn **ppElement, uint32_t depth);
/** Does nothing and returns NULL: logotypes can only be encoded. */
LogotypeExtn *asn1_LogotypeExtn_clone(const LogotypeExtn *pElement);

#ifdef __cplusplus
}
#endif

#endif
