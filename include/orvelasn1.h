/**
 * @file orvelasn1.h
 * The whole library: X.509, OCSP, PKCS and card objects between their encoded and in-memory forms.
 */
#ifndef ORVELASN1_H
#define ORVELASN1_H

#include "algorithms.h"
#include "asn1_gdo.h"
#include "asn1_ocsp.h"
#include "asn1_x501.h"
#include "asn1_x509v3.h"
#include "asn1_x680.h"
#include "card.h"
#include "certificate.h"
#include "crl.h"
#include "dsa_dh.h"
#include "global_identifier.h"
#include "logotype.h"
#include "ms_enrolment.h"
#include "netscape.h"
#include "orvelasn1_version.h"
#include "orvelutils.h"
#include "pkcs1.h"
#include "pkcs10.h"
#include "pkcs12.h"
#include "pkcs7.h"
#include "pkcs8.h"
#include "pkcs9.h"
#include "spkac.h"
#include "x520.h"

#endif
