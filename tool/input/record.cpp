#include "input/record.h"

#include <nettle/base64.h>

#include <algorithm>
#include <cstring>
#include <nlohmann/json.hpp>

#include "input/base64.h"
#include "input/pem.h"

namespace tool {

namespace {

using Kind = Format::Kind;

Element refused(std::string why) {
  Element element;
  element.fault = Fault{std::nullopt, std::move(why)};
  return element;
}

Element element_of(Octets octets) {
  Element element;
  element.octets = octets;
  return element;
}

/// Decodes base64, in which blanks may stand. Fails on any other character.
std::optional<std::span<uint8_t>> decode(std::span<uint8_t> text) {
  const size_t groups = Base64Digits(text_of(text)).groups(text.size(), text.data());
  const std::span<uint8_t> rest = text.subspan(4 * groups);
  base64_decode_ctx context;
  base64_decode_init(&context);
  size_t size = 0;
  if (base64_decode_update(&context, &size, text.data() + 3 * groups, rest.size(),
                           reinterpret_cast<const char *>(rest.data())) == 0 ||
      base64_decode_final(&context) == 0)
    return std::nullopt;
  return text.first(3 * groups + size);
}

/// Reads the base64 of an element.
Element read_base64(std::span<uint8_t> text) {
  const bool is_empty = text_of(text).find_first_not_of(" \t\r\n") == std::string_view::npos;
  if (is_empty) return refused("expected base64, found nothing");
  if (is_pem(text))
    if (auto element = first_block(text)) return std::move(*element);
  const auto octets = decode(text);
  return octets ? element_of(*octets) : refused("it is not base64");
}

/// Returns a text in the place of a record, which has room for it.
std::span<uint8_t> put(std::span<uint8_t> record, std::string_view text) {
  std::ranges::copy(text, record.begin());
  return record.first(text.size());
}

Element read_csv(std::span<uint8_t> line, size_t column) {
  const auto fields = csv_fields(text_of(line));
  if (column >= fields.size())
    return refused("the line has no column " + std::to_string(column + 1));
  return read_base64(put(line, fields[column]));
}

/// Takes the texts of members out of a JSON object, without building the object.
class Members : public nlohmann::json_sax<nlohmann::json> {
 public:
  explicit Members(std::initializer_list<std::string_view> names)
      : names_(names), found_(names.size()) {}

  const std::optional<std::string> &operator[](size_t i) const { return found_[i]; }

  bool key(string_t &name) override {
    wanted_ = depth_ == 1 ? std::ranges::find(names_, name) - names_.begin() : none();
    return true;
  }
  bool string(string_t &value) override {
    if (depth_ == 1 && wanted_ < none()) found_[static_cast<size_t>(wanted_)] = std::move(value);
    return true;
  }
  bool start_object(size_t) override { return go_in(); }
  bool start_array(size_t) override { return go_in(); }
  bool end_object() override { return go_out(); }
  bool end_array() override { return go_out(); }
  bool null() override { return true; }
  bool boolean(bool) override { return true; }
  bool number_integer(number_integer_t) override { return true; }
  bool number_unsigned(number_unsigned_t) override { return true; }
  bool number_float(number_float_t, const string_t &) override { return true; }
  bool binary(binary_t &) override { return true; }
  bool parse_error(size_t, const std::string &, const nlohmann::detail::exception &) override {
    return false;
  }

 private:
  std::ptrdiff_t none() const { return std::ssize(names_); }
  bool go_in() {
    ++depth_;
    wanted_ = none();
    return true;
  }
  bool go_out() {
    --depth_;
    return true;
  }

  std::vector<std::string_view> names_;
  std::vector<std::optional<std::string>> found_;
  std::ptrdiff_t wanted_ = 0;
  size_t depth_ = 0;
};

Element read_jsonl(std::span<uint8_t> line, const std::string &member) {
  Members members{member};
  if (!nlohmann::json::sax_parse(text_of(line), &members)) return refused("it is not JSON");
  if (!members[0]) return refused("it has no text \"" + member + "\"");
  return read_base64(put(line, *members[0]));
}

/// Takes a number of octets, and as many octets as that says, from the front (RFC 8446, 3.4).
std::optional<Octets> take_vector(Octets &octets) {
  constexpr size_t header = 3;
  if (octets.size() < header) return std::nullopt;
  const size_t size = size_t{octets[0]} << 16 | size_t{octets[1]} << 8 | octets[2];
  if (size > octets.size() - header) return std::nullopt;
  const Octets taken = octets.subspan(header, size);
  octets = octets.subspan(header + size);
  return taken;
}

/// Reads an entry of a log's answer (RFC 6962, 3.4 and 4.6): a certificate, or a precertificate
/// with its poison.
std::optional<Element> read_entry(std::span<uint8_t> record) {
  const size_t start = text_of(record).rfind('{');
  if (start == std::string_view::npos) return std::nullopt;
  // An answer without entries.
  if (text_of(record).find("\"entries\"", start) != std::string_view::npos) return std::nullopt;
  Members members{"leaf_input", "extra_data"};
  if (!nlohmann::json::sax_parse(text_of(record.subspan(start)), &members))
    return refused("it is not JSON");
  if (!members[0] || !members[1]) return refused("it has no \"leaf_input\" with \"extra_data\"");
  if (members[0]->size() > record.size() - members[1]->size())
    return refused("the entry is not of RFC 6962");
  const auto leaf = decode(put(record, *members[0]));
  const auto extra = decode(put(record.subspan(members[0]->size()), *members[1]));
  if (!leaf || !extra) return refused("it is not base64");
  // Version, type of the leaf, time of 8 octets, type of the entry of 2 octets.
  constexpr size_t fixed = 12;
  constexpr uint8_t precertificate = 1;
  if (leaf->size() < fixed || (*leaf)[0] != 0 || (*leaf)[1] != 0 || (*leaf)[10] != 0 ||
      (*leaf)[11] > precertificate)
    return refused("the leaf is not of RFC 6962");
  Octets rest = (*leaf)[11] == precertificate ? Octets(*extra) : Octets(*leaf).subspan(fixed);
  const auto octets = take_vector(rest);
  return octets ? element_of(*octets) : refused("the entry is not of RFC 6962");
}

std::optional<Element> read_pem(std::span<uint8_t> record) {
  if (text_of(record).find("-----BEGIN ") == std::string_view::npos) return std::nullopt;
  return first_block(record);
}

}  // namespace

std::vector<std::string> csv_fields(std::string_view line) {
  std::vector<std::string> fields(1);
  bool is_quoted = false;
  for (size_t at = 0; at < line.size(); ++at) {
    const char c = line[at];
    if (is_quoted && c == '"' && line.substr(at + 1).starts_with('"'))
      fields.back() += line[++at];
    else if (c == '"')
      is_quoted = !is_quoted;
    else if (is_quoted)
      fields.back() += c;
    else if (c == ',')
      fields.emplace_back();
    else if (c != '\n' && c != '\r')
      fields.back() += c;
  }
  return fields;
}

size_t label_size(Octets record, const Format &format) {
  if (format.kind != Kind::base64 || record.empty()) return 0;
  const void *const tab = memrchr(record.data(), '\t', record.size());
  return tab == nullptr
             ? 0
             : static_cast<size_t>(static_cast<const uint8_t *>(tab) - record.data()) + 1;
}

std::optional<Element> read_record(std::span<uint8_t> record, const Format &format) {
  switch (format.kind) {
    case Kind::csv:
      return read_csv(record, format.column);
    case Kind::jsonl:
      return read_jsonl(record, format.part);
    case Kind::ct:
      return read_entry(record);
    case Kind::pem:
      return read_pem(record);
    case Kind::der:
      return element_of(record);
    case Kind::unknown:
    case Kind::base64:
      break;
  }
  return read_base64(record);
}

}  // namespace tool
