/**
 * @file orvelasn1.h
 * The whole library: X.509, OCSP, PKCS and card objects between their encoded and in-memory forms.
 */
#ifndef ORVELASN1_H
#define ORVELASN1_H

#include "algorithms.h"
#include "asn1_ocsp.h"
#include "asn1_x501.h"
#include "asn1_x509v3.h"
#include "asn1_x680.h"
#include "certificate.h"
#include "dsa_dh.h"
#include "global_identifier.h"
#include "ms_enrolment.h"
#include "netscape.h"
#include "orvelutils.h"
#include "pkcs12.h"
#include "pkcs7.h"
#include "pkcs9.h"
#include "x520.h"

#endif
