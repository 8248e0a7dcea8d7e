/**
 * @file rfc4055.h
 * Parameters of RSA algorithms (RFC 4055). rfc5280.h says what the functions promise.
 *
 * A field that is absent has its default value; a default value that was written out is kept.
 */
#ifndef ORVELPKI_RFC4055_H
#define ORVELPKI_RFC4055_H

#include "rfc5280.h"

#ifdef __cplusplus
extern "C" {
#endif

/** RSASSA-PSS-params. */
typedef struct pki_RSASSA_PSS_params {
  AlgId *hashAlgorithm;    /**< owned; NULL where absent, which means SHA-1 */
  AlgId *maskGenAlgorithm; /**< owned; NULL where absent, which means MGF1 with SHA-1 */
  Integer *saltLength;     /**< in octets, owned; NULL where absent, which means 20 */
  Integer *trailerField;   /**< owned; NULL where absent, which means 1 */
} pki_RSASSA_PSS_params;

/** RSAES-OAEP-params. */
typedef struct pki_RSAES_OAEP_params {
  AlgId *hashFunc;    /**< owned; NULL where absent, which means SHA-1 */
  AlgId *maskGenFunc; /**< owned; NULL where absent, which means MGF1 with SHA-1 */
  AlgId *pSourceFunc; /**< owned; NULL where absent, which means an empty label */
} pki_RSAES_OAEP_params;

/**
 * RSASSA-PSS-params ::= SEQUENCE { hashAlgorithm [0] EXPLICIT AlgorithmIdentifier DEFAULT
 * sha1Identifier, maskGenAlgorithm [1] EXPLICIT AlgorithmIdentifier DEFAULT mgf1SHA1Identifier,
 * saltLength [2] EXPLICIT INTEGER DEFAULT 20, trailerField [3] EXPLICIT INTEGER DEFAULT 1 } (3.1).
 * The parameters of maskGenAlgorithm are an AlgorithmIdentifier.
 */
pki_RSASSA_PSS_params *pki_RSASSA_PSS_params_new(void);
void pki_RSASSA_PSS_params_free(pki_RSASSA_PSS_params *pElement);
uint32_t pki_RSASSA_PSS_params_e(uint8_t **pp, const pki_RSASSA_PSS_params *pElement);
const uint8_t *pki_RSASSA_PSS_params_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                       pki_RSASSA_PSS_params **ppElement, uint32_t depth);
pki_RSASSA_PSS_params *pki_RSASSA_PSS_params_clone(const pki_RSASSA_PSS_params *pElement);

/**
 * RSAES-OAEP-params ::= SEQUENCE { hashFunc [0] EXPLICIT AlgorithmIdentifier DEFAULT
 * sha1Identifier, maskGenFunc [1] EXPLICIT AlgorithmIdentifier DEFAULT mgf1SHA1Identifier,
 * pSourceFunc [2] EXPLICIT AlgorithmIdentifier DEFAULT pSpecifiedEmptyIdentifier } (4.1). The
 * parameters of maskGenFunc are an AlgorithmIdentifier, those of pSourceFunc an OCTET STRING.
 */
pki_RSAES_OAEP_params *pki_RSAES_OAEP_params_new(void);
void pki_RSAES_OAEP_params_free(pki_RSAES_OAEP_params *pElement);
uint32_t pki_RSAES_OAEP_params_e(uint8_t **pp, const pki_RSAES_OAEP_params *pElement);
const uint8_t *pki_RSAES_OAEP_params_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                       pki_RSAES_OAEP_params **ppElement, uint32_t depth);
pki_RSAES_OAEP_params *pki_RSAES_OAEP_params_clone(const pki_RSAES_OAEP_params *pElement);

#ifdef __cplusplus
}
#endif

#endif
