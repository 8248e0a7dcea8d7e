// The encoding frame: tag, length and end-of-contents, tagging wrappers and lists, the trace, and
// the end of the process.
#include <pthread.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdarg>
#include <cstdio>
#include <ctime>

#include "core/cursor.h"
#include "core/element_functions.h"
#include "core/pattern.h"

namespace asn1 {

void fatal(const char *unit, const char *function, const char *finding) {
  std::fprintf(stderr, "%s: %s: %s\n", unit, function, finding);
  std::abort();
}

void assertion_failed(const char *unit, const char *function, const char *test) {
  std::fprintf(stderr, "%s: %s: assertion \"%s\" failed\n", unit, function, test);
  std::abort();
}

namespace {

constexpr const char *unit = "asn1_x680";

}  // namespace
}  // namespace asn1

using namespace asn1;

// ---------------------------------------------------------------------------------------------
// Trace
// ---------------------------------------------------------------------------------------------

namespace {

FILE *asn1log = nullptr;

constexpr const char *tag_table[] = {"END OF CONTENTS",
                                     "BOOLEAN ",
                                     "INTEGER",
                                     "BITSTRING",
                                     "OCTETSTRING",
                                     "NULL",
                                     "OBJECT IDENTIFIER ",
                                     "",
                                     "",
                                     "REAL ",
                                     "ENUMERATED ",
                                     "",
                                     "UTF8STRING",
                                     "",
                                     "",
                                     "",
                                     "SEQUENCE",
                                     "SET",
                                     "NUMERICSTRING ",
                                     "PRINTABLESTRING ",
                                     "TELETEXSTRING ",
                                     "VIDEOTEXTSTRING ",
                                     "IA5STRING ",
                                     "UTCTIME ",
                                     "GENERALIZEDTIME ",
                                     "GRAPHICSTRING ",
                                     "VISIBLESTRING ",
                                     "GENERALSTRING ",
                                     "UNIVERSALSTRING ",
                                     "",
                                     "BMPSTRING ",
                                     ""};

constexpr const char *class_table[] = {"", "APPLICATION", "CONTEXT-SPECIFIC", "PRIVATE"};

// The trace counts levels in 16 bits, the decoders in 32.
uint32_t level(uint32_t depth) { return depth & 0xFFFF; }

bool silent(uint32_t depth) { return asn1log == nullptr || level(depth) == 0; }

constexpr int32_t octets_a_line = 16;

void asn1_LogByteArrayLine(uint32_t depth, uint32_t index, const uint8_t *bytes, int32_t count) {
  asn1_LogMessage(depth, "  0x%08X ", index << 4);
  for (int32_t i = 0; i < count; ++i) std::fprintf(asn1log, "%02X ", bytes[i]);
  for (int32_t i = count; i < octets_a_line; ++i) std::fputs("   ", asn1log);
  for (int32_t i = 0; i < count; ++i) {
    std::fputc(std::isprint(bytes[i]) != 0 ? bytes[i] : '.', asn1log);
  }
  std::fputc('\n', asn1log);
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
    asn1_LogByteArrayLine(depth, line, bytes, count);
    bytes += count;
    length -= count;
  }
}

void asn1::trace_tag(uint32_t depth, uint8_t octet, uint8_t effective, uint8_t tag) {
  const bool constructed = (octet & constructed_bit) != 0;
  const auto shown = static_cast<uint8_t>(effective & ~constructed_bit);
  if (shown == 0) return;
  if (shown <= 30) {
    asn1_LogMessage(depth, constructed ? "%s {\n" : "%s\n", tag_table[shown]);
    return;
  }
  const int tag_class = shown >> 6;
  const bool type_is_known = tag_class != 3 && tag <= 0x1F;
  asn1_LogMessage(depth, "%s %s [%i] %s\n", class_table[tag_class],
                  constructed ? "CONSTRUCTED" : "PRIMITIVE", shown & 0x1F,
                  type_is_known ? tag_table[tag] : "{");
}

// ---------------------------------------------------------------------------------------------
// Tag and length
// ---------------------------------------------------------------------------------------------

uint32_t asn1_Tag_e(uint8_t **pp, uint32_t tag) {
  if (pp != nullptr) Writer(pp).octet(static_cast<uint8_t>(tag));
  return 1;
}

uint32_t asn1_Length_e(uint8_t **pp, uint32_t length) {
  if (pp != nullptr) Writer(pp).length(length);
  return length_octets(length);
}

uint32_t asn1_TagLength_e(uint8_t **pp, uint32_t tag, uint32_t length) {
  return asn1_Tag_e(pp, tag) + asn1_Length_e(pp, length);
}

uint32_t asn1_eoc_e(uint8_t **pp) {
  if (pp != nullptr) Writer(pp).header(0, 0);
  return 2;
}

const uint8_t *asn1_Tag_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, uint32_t tag,
                          uint32_t *constructed, uint32_t depth) {
  Reader in(z, end);
  bool is_constructed = false;
  const bool accepted = in.read_tag(impl_tag, static_cast<uint8_t>(tag),
                                    constructed == nullptr ? nullptr : &is_constructed, depth);
  if (constructed != nullptr) *constructed = is_constructed;
  return accepted ? in.position() : nullptr;
}

const uint8_t *asn1_Length_d(const uint8_t *z, const uint8_t *end, uint32_t *length,
                             uint32_t *indefinite, uint32_t depth) {
  require(z != nullptr, unit, __func__, "z != NULL");
  require(end != nullptr, unit, __func__, "end != NULL");
  require(length != nullptr, unit, __func__, "length != NULL");
  Reader in(z, end);
  bool is_indefinite = false;
  const bool accepted =
      in.read_length(length, indefinite == nullptr ? nullptr : &is_indefinite, depth);
  if (indefinite != nullptr) *indefinite = is_indefinite;
  return accepted ? in.position() : nullptr;
}

const uint8_t *asn1_TagLength_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                uint32_t tag, uint32_t *constructed, uint32_t *length,
                                uint32_t *indefinite, uint32_t depth) {
  z = asn1_Tag_d(z, end, impl_tag, tag, constructed, depth);
  return z == nullptr ? nullptr : asn1_Length_d(z, end, length, indefinite, depth);
}

const uint8_t *asn1_eoc_d(const uint8_t *z, const uint8_t *end) {
  if (z == nullptr) return nullptr;
  Reader in(z, end);
  return in.read_eoc() ? in.position() : nullptr;
}

// ---------------------------------------------------------------------------------------------
// Tagging wrappers and lists
// ---------------------------------------------------------------------------------------------

uint32_t asn1_implicit_e(uint8_t **pp, uint32_t tag, const void *pElement, asn1_encoder element_e) {
  require(pElement != nullptr, unit, __func__, "pElement");
  require(element_e.function != nullptr, unit, __func__, "element_e");
  return encode_implicit(pp, tag, [&](uint8_t **to) { return call(element_e, to, pElement); });
}

uint32_t asn1_explicit_e(uint8_t **pp, uint32_t tag, const void *pElement, asn1_encoder element_e) {
  require(pElement != nullptr, unit, __func__, "pElement");
  require(element_e.function != nullptr, unit, __func__, "element_e");
  return encode_explicit(pp, tag, [&](uint8_t **to) { return call(element_e, to, pElement); });
}

const uint8_t *asn1_explicit_d(const uint8_t *z, const uint8_t *end, uint32_t tag,
                               asn1_decoder element_d, void *ppElement, uint32_t depth) {
  require(z != nullptr, unit, __func__, "z");
  require(ppElement != nullptr, unit, __func__, "ppElement");
  require(element_d.function != nullptr, unit, __func__, "element_d");
  return decode_explicit(z, end, tag, depth, [&](const uint8_t *from, const uint8_t *limit) {
    return call(element_d, from, limit, ppElement, depth);
  });
}

uint32_t asn1_List_e(uint8_t **pp, uint32_t tag, const List *list, asn1_encoder element_e) {
  return encode_list(pp, tag, list, [&](uint8_t **to, const void *element) {
    return call(element_e, to, element);
  });
}

const uint8_t *asn1_List_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag, uint32_t tag,
                           asn1_decoder element_d, asn1_destructor element_free, List **ppList,
                           uint32_t depth) {
  return decode_list<void>(
      z, end, impl_tag, tag, ppList, depth,
      [&](const uint8_t *from, const uint8_t *limit, void **element, uint32_t inner_depth) {
        return call(element_d, from, limit, element, inner_depth);
      },
      [&](void *element) { call(element_free, element); },
      [&](List *list) { List_free(list, element_free); });
}

uint32_t asn1_expl_List_e(uint8_t **pp, uint32_t explicit_tag, uint32_t list_tag, const List *list,
                          asn1_encoder element_e) {
  if (list == nullptr) return 0;
  return encode_explicit(pp, explicit_tag,
                         [&](uint8_t **to) { return asn1_List_e(to, list_tag, list, element_e); });
}

const uint8_t *asn1_expl_List_d(const uint8_t *z, const uint8_t *end, uint32_t explicit_tag,
                                uint32_t list_tag, asn1_decoder element_d,
                                asn1_destructor element_free, List **ppList, uint32_t depth) {
  if (z == nullptr || ppList == nullptr) return nullptr;
  return decode_explicit(
      z, end, explicit_tag, depth, [&](const uint8_t *from, const uint8_t *limit) {
        return asn1_List_d(from, limit, 0, list_tag, element_d, element_free, ppList, depth);
      });
}

namespace {
constexpr uint32_t seq_of = 16;
constexpr uint32_t set_of = 17;
}  // namespace

uint32_t asn1_SetOf_e(uint8_t **pp, const List *list, asn1_encoder element_e) {
  return asn1_List_e(pp, set_of, list, element_e);
}

uint32_t asn1_SeqOf_e(uint8_t **pp, const List *list, asn1_encoder element_e) {
  return asn1_List_e(pp, seq_of, list, element_e);
}

const uint8_t *asn1_SetOf_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                            asn1_decoder element_d, asn1_destructor element_free, List **ppList,
                            uint32_t depth) {
  return asn1_List_d(z, end, impl_tag, set_of, element_d, element_free, ppList, depth);
}

const uint8_t *asn1_SeqOf_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                            asn1_decoder element_d, asn1_destructor element_free, List **ppList,
                            uint32_t depth) {
  return asn1_List_d(z, end, impl_tag, seq_of, element_d, element_free, ppList, depth);
}

uint32_t asn1_expl_SetOf_e(uint8_t **pp, uint32_t explicit_tag, const List *list,
                           asn1_encoder element_e) {
  return asn1_expl_List_e(pp, explicit_tag, set_of, list, element_e);
}

uint32_t asn1_expl_SeqOf_e(uint8_t **pp, uint32_t explicit_tag, const List *list,
                           asn1_encoder element_e) {
  return asn1_expl_List_e(pp, explicit_tag, seq_of, list, element_e);
}

const uint8_t *asn1_expl_SetOf_d(const uint8_t *z, const uint8_t *end, uint32_t explicit_tag,
                                 asn1_decoder element_d, asn1_destructor element_free,
                                 List **ppList, uint32_t depth) {
  return asn1_expl_List_d(z, end, explicit_tag, set_of, element_d, element_free, ppList, depth);
}

const uint8_t *asn1_expl_SeqOf_d(const uint8_t *z, const uint8_t *end, uint32_t explicit_tag,
                                 asn1_decoder element_d, asn1_destructor element_free,
                                 List **ppList, uint32_t depth) {
  return asn1_expl_List_d(z, end, explicit_tag, seq_of, element_d, element_free, ppList, depth);
}
