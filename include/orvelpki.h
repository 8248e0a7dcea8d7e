/**
 * @file orvelpki.h
 * All of liborvelpki.
 */
#ifndef ORVELPKI_H
#define ORVELPKI_H

#include "pki_certificate.h"
#include "pki_crl.h"
#include "pki_explain.h"
#include "pki_type.h"
#include "pki_view.h"
#include "pki_x680.h"
#include "rfc3709.h"
#include "rfc3739.h"
#include "rfc3779.h"
#include "rfc4514.h"
#include "rfc5280.h"
#include "rfc6962.h"
#include "rfc7633.h"

#endif
