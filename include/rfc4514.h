#ifndef ORVELPKI_RFC4514_H
#define ORVELPKI_RFC4514_H
#include "asn1_x501.h"
#ifdef __cplusplus
extern "C" {
#endif
Name *pki_RDNSequence_text(const RDNSequence *);
#ifdef __cplusplus
}
#endif
#endif
