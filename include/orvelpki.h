/**
 * @file orvelpki.h
 * All of liborvelpki.
 */
#ifndef ORVELPKI_H
#define ORVELPKI_H

#include "pki_explain.h"
#include "pki_type.h"
#include "pki_x680.h"
#include "rfc4514.h"
#include "rfc5280.h"
#include "rfc5652.h"

#endif
