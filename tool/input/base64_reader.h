// DER in base64 without BEGIN lines: alone in its input, or inside a text, as in SAML (XML) or in
// the x5c of JOSE (JSON).
#ifndef ORVELASN1_TOOL_INPUT_BASE64_READER_H
#define ORVELASN1_TOOL_INPUT_BASE64_READER_H

#include "input/element.h"

namespace tool {

/// Decodes a text that is all base64, in one or several pieces with padding between them, over
/// itself. Fails, and leaves the text as it is, where it has another character, or does not stand
/// for DER or PEM.
std::optional<std::span<uint8_t>> decode_base64(std::span<uint8_t> data);

/// Takes each DER SEQUENCE that stands in base64 somewhere in a text. Its own length says where it
/// ends. Writes its octets over the text.
class Base64Reader {
 public:
  explicit Base64Reader(std::span<uint8_t> data) : data_(data) {}

  std::optional<Element> operator()();

 private:
  std::optional<Octets> sequence_here();
  void skip_word();
  std::string_view rest() const { return text_of(data_).substr(at_); }

  std::span<uint8_t> data_;
  size_t at_ = 0;
  size_t line_ = 1;
  size_t count_ = 0;
};

}  // namespace tool

#endif
