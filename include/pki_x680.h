#ifndef ORVELPKI_X680_H
#define ORVELPKI_X680_H
#include "asn1_x680.h"
enum { PKI_LARGE_ARCS_ = 0 };
#define PKI_LARGE_ARCS 0xFFFFFFFFU
#endif
