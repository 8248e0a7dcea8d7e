/**
 * @file orvelpki.h
 * All of liborvelpki.
 */
#ifndef ORVELPKI_H
#define ORVELPKI_H

#include "pki_explain.h"
#include "pki_type.h"

#endif
