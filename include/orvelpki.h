/**
 * @file orvelpki.h
 * All of liborvelpki.
 */
#ifndef ORVELPKI_H
#define ORVELPKI_H

#include "orvelasn1_version.h"
#include "pki_certificate.h"
#include "pki_crl.h"
#include "pki_explain.h"
#include "pki_type.h"
#include "pki_view.h"
#include "pki_x680.h"
#include "rfc2986.h"
#include "rfc3709.h"
#include "rfc3739.h"
#include "rfc3779.h"
#include "rfc4055.h"
#include "rfc4514.h"
#include "rfc5280.h"
#include "rfc5480.h"
#include "rfc5652.h"
#include "rfc5915.h"
#include "rfc5958.h"
#include "rfc6960.h"
#include "rfc6962.h"
#include "rfc7292.h"
#include "rfc7633.h"
#include "rfc8017.h"

#endif
