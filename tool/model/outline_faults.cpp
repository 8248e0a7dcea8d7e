#include "model/outline_faults.h"

#include "model/ber.h"

namespace tool {

bool on_one_way(std::string_view a, std::string_view b) {
  if (a.size() > b.size()) std::swap(a, b);
  return b.starts_with(a) &&
         (a.empty() || a.size() == b.size() || b[a.size()] == '.' || b[a.size()] == '[');
}

void TypeFaults::expect(const pki_Type *type, Octets input, size_t at, size_t end,
                        const std::string &path, bool whole) {
  pki_Fault found;
  if (pki_explain(type, input.data() + at, input.data() + end, &found) != 0)
    add(at + found.offset, path, found.path, found.sentence);
  else if (at == end)
    add(at, path, "", "expected a value, but the enclosing element ends");
  else if (const size_t next = at + found.offset; whole && next < end)
    add(next, path, "",
        "expected the end, found " + ber::tag_name(ber::read_header(input.subspan(next))));
}

void TypeFaults::add(size_t offset, const std::string &around, std::string_view inside,
                     std::string sentence) {
  std::string path = around;
  if (!path.empty() && !inside.empty() && inside[0] != '[') path += '.';
  path += inside;
  waiting_.push_back({offset, std::move(path), std::move(sentence)});
}

}  // namespace tool
