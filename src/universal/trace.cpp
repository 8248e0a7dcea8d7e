// The trace: what the decoders read, as lines on a stream.
#include <pthread.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdarg>
#include <cstdio>
#include <ctime>

#include "core/cursor.h"

using namespace asn1;

namespace {

FILE *asn1log = nullptr;

// The trace counts levels in 16 bits, the decoders in 32.
uint32_t level(uint32_t depth) { return depth & 0xFFFF; }

bool silent(uint32_t depth) { return asn1log == nullptr || level(depth) == 0; }

constexpr int32_t octets_a_line = 16;

// One line of a dump. Its octets go to the stream at once: a call for each of them takes longer than
// everything else that a trace does.
void log_line(uint32_t depth, uint32_t index, const uint8_t *bytes, int32_t count) {
  asn1_LogMessage(depth, "  0x%08X ", index << 4);
  char line[4 * octets_a_line + 1];
  char *z = line;
  for (int32_t i = 0; i < octets_a_line; ++i) {
    constexpr char digits[] = "0123456789ABCDEF";
    const bool there = i < count;
    *z++ = there ? digits[bytes[i] >> 4] : ' ';
    *z++ = there ? digits[bytes[i] & 0xF] : ' ';
    *z++ = ' ';
  }
  z = std::transform(bytes, bytes + count, z,
                     [](uint8_t octet) { return std::isprint(octet) != 0 ? octet : '.'; });
  *z++ = '\n';
  std::fwrite(line, 1, static_cast<size_t>(z - line), asn1log);
}

}  // namespace

void asn1_LogStart(FILE *stream) { asn1log = stream; }

void asn1_LogMessage(uint32_t depth, const char *format, ...) {
  if (silent(depth)) return;
  const time_t now = std::time(nullptr);
  struct tm local = {};
  tzset();  // a zone that was set since the last line counts, as for localtime()
  localtime_r(&now, &local);
  std::fprintf(asn1log, "%04d:%04d %02i:%02i:%02i ", static_cast<int>(getpid()),
               static_cast<int>(pthread_self()), local.tm_hour, local.tm_min, local.tm_sec);
  std::fputs("ASN.1: ", asn1log);
  for (uint32_t i = 1; i < level(depth); ++i) std::fputs(". ", asn1log);
  va_list arguments;
  va_start(arguments, format);
  std::vfprintf(asn1log, format, arguments);
  va_end(arguments);
  std::fflush(asn1log);
}

void asn1_LogObjId(uint32_t depth, const ObjId *oid) {
  if (silent(depth)) return;
  for (uint32_t i = 0; i < oid->count; ++i) {
    if (i == 0) {
      asn1_LogMessage(depth, "  ");
    } else {
      std::fputc('.', asn1log);
    }
    std::fprintf(asn1log, "%i", static_cast<int>(oid->arcs[i]));
  }
  std::fputc('\n', asn1log);
}

void asn1_LogByteArray(uint32_t depth, const uint8_t *bytes, int32_t length) {
  if (silent(depth) || bytes == nullptr) return;
  for (uint32_t line = 0; length > 0; ++line) {
    const int32_t count = std::min(length, octets_a_line);
    log_line(depth, line, bytes, count);
    bytes += count;
    length -= count;
  }
}
