#include "input/text.h"

#include <algorithm>

namespace tool {

std::span<uint8_t> without_mark(std::span<uint8_t> data) {
  if (text_of(data).starts_with("\xEF\xBB\xBF")) return data.subspan(3);
  if (data.size() < 2) return data;
  const bool big = data[0] == 0xFE && data[1] == 0xFF;
  const bool little = data[0] == 0xFF && data[1] == 0xFE;
  if (!big && !little) return data;
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
