/**
 * @file orvelasn1_version.h
 * The version of the libraries that these headers belong to.
 */
#ifndef ORVELASN1_VERSION_H
#define ORVELASN1_VERSION_H

/** The version as a text. A program of the same major number goes on to work. */
#define ORVELASN1_VERSION "1.0.0"

/** The version as a number to compare, such as 10203 for 1.2.3. */
#define ORVELASN1_VERSION_NUMBER 10000

#endif
