#include "input/text.h"

#include <algorithm>

namespace tool {

bool is_utf16(Octets data) {
  return text_of(data).starts_with("\xFE\xFF") || text_of(data).starts_with("\xFF\xFE");
}

std::span<uint8_t> without_mark(std::span<uint8_t> data) {
  if (text_of(data).starts_with("\xEF\xBB\xBF")) return data.subspan(3);
  if (!is_utf16(data)) return data;
  const bool big = data[0] == 0xFE;
  size_t count = 0;
  for (size_t i = 2; i + 1 < data.size(); i += 2) {
    const uint8_t high = data[big ? i : i + 1];
    const uint8_t low = data[big ? i + 1 : i];
    data[count++] = high == 0 && low < 0x80 ? low : '?';
  }
  return data.first(count);
}

bool is_text(Octets data) {
  constexpr size_t start = 4096;
  return std::ranges::none_of(data.first(std::min(start, data.size())), [](uint8_t c) {
    return (c < 0x20 && !(c >= '\t' && c <= '\r')) || c == 0x7F;
  });
}

}  // namespace tool
