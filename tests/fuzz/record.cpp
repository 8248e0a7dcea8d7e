// A fuzz target for the records of map: the first octet of an input says what its records are, the second
// how many octets come at once. Wherever a stream is cut into what is read of it, its records are the same.
#include "input/record.h"

#include <algorithm>

#include "tool_target.h"

namespace {

using namespace tool;
using fuzz::expect;
using Kind = Format::Kind;

const Format formats[] = {{Kind::base64, ""},   {Kind::csv, "", 0}, {Kind::csv, "", 1},
                          {Kind::jsonl, "raw"}, {Kind::ct, ""},     {Kind::pem, ""},
                          {Kind::der, ""}};

/// Returns where the records end, where so many octets come at once.
std::vector<size_t> ends(Octets data, const Format &format, size_t at_once) {
  std::vector<size_t> found;
  const Cutter cut = format.cutter();
  for (size_t at = 0; at < data.size();) {
    const Octets some = data.subspan(at, std::min(at_once, data.size() - at));
    const size_t size = cut(text_of(some));
    expect(size == goes_on || (size != 0 && size <= some.size()), "a record ends where it is cut");
    at += size == goes_on ? some.size() : size;
    if (size != goes_on) found.push_back(at);
  }
  return found;
}

bool is_in(Octets part, Octets whole) {
  return part.empty() ||
         (part.data() >= whole.data() && part.data() + part.size() <= whole.data() + whole.size());
}

}  // namespace

void fuzz::hold(Octets input) {
  const Format &format = formats[input.empty() ? 0 : input[0] % std::size(formats)];
  const size_t at_once = input.size() < 2 ? 1 : input[1] + size_t{1};
  const Octets data = input.subspan(std::min<size_t>(2, input.size()));
  std::vector<size_t> all = ends(data, format, SIZE_MAX);
  expect(all == ends(data, format, at_once), "records do not depend on how they are read");
  if (all.empty() || all.back() != data.size()) all.push_back(data.size());
  size_t start = 0;
  for (const size_t end : all) {
    // A block of its own, so that a sanitizer sees a read past it.
    const Octets cut = data.subspan(start, end - start);
    Bytes record(cut.begin(), cut.end());
    start = end;
    const size_t label = label_size(record, format);
    expect(label <= record.size(), "a label is a part of its record");
    expect(label == 0 || record[label - 1] == '\t', "a label ends with a tab");
    const auto element = read_record(std::span(record).subspan(label), format);
    expect(std::ranges::equal(Octets(record).first(label), cut.first(label)),
           "a label is not written over");
    if (!element) continue;
    expect(is_in(element->octets, record), "an element is a view of its record");
    expect(!element->fault || !element->fault->text.empty(), "a fault has a text");
  }
}
