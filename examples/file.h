/* Reading files, for the examples. */
#ifndef ORVELASN1_EXAMPLES_FILE_H
#define ORVELASN1_EXAMPLES_FILE_H

#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>

/* Reads a file of 2^31 - 1 octets at most into memory that the caller releases. Returns NULL where
 * it cannot be read. */
static inline uint8_t *read_file(const char *path, size_t *size) {
  FILE *file = fopen(path, "rb");
  long length = -1;
  uint8_t *octets = NULL;
  if (file == NULL) return NULL;
  if (fseek(file, 0, SEEK_END) == 0) length = ftell(file);
  if (length >= 0 && length <= INT32_MAX && fseek(file, 0, SEEK_SET) == 0) {
    *size = (size_t)length;
    octets = (uint8_t *)malloc(*size + 1);
    if (octets != NULL && fread(octets, 1, *size, file) != *size) {
      free(octets);
      octets = NULL;
    }
  }
  fclose(file);
  return octets;
}

#endif
