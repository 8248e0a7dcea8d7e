/**
 * @file orvelasn1.hpp
 * liborvelpki for C++20 and later: records that own themselves, typed views, faults, builders.
 */
#ifndef ORVELASN1_HPP
#define ORVELASN1_HPP

#include "orvelasn1_cpp/build.hpp"
#include "orvelasn1_cpp/crl.hpp"
#include "orvelasn1_cpp/oids.hpp"
#include "orvelasn1_cpp/print.hpp"
#include "orvelasn1_cpp/questions.hpp"
#include "orvelasn1_cpp/records.hpp"
#include "orvelasn1_cpp/result.hpp"
#include "orvelasn1_cpp/types.hpp"
#include "orvelasn1_cpp/values.hpp"
#include "orvelpki.h"

#endif
