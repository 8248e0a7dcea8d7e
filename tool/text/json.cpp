#include "text/json.h"

#include <algorithm>

namespace tool {

namespace {

/// The string between quotation marks, with what RFC 8259, section 7 wants escaped.
std::string quoted(std::string_view utf8) {
  static constexpr std::string_view escaped = "\"\\\b\f\n\r\t";
  static constexpr std::string_view letters = "\"\\bfnrt";
  static constexpr std::string_view digits = "0123456789abcdef";
  std::string out(1, '"');
  for (const char c : utf8) {
    const size_t place = escaped.find(c);
    const auto code = static_cast<unsigned char>(c);
    if (place != std::string_view::npos) {
      out += '\\';
      out += letters[place];
    } else if (code < 0x20) {
      out += "\\u00";
      out += digits[code >> 4];
      out += digits[code & 0xF];
    } else {
      out += c;
    }
  }
  out += '"';
  return out;
}

}  // namespace

Json::Json(std::string_view utf8) : text_(quoted(utf8)) {}

Json Json::array(const std::vector<Json> &elements) {
  Json array(nullptr);
  array.text_ = "[";
  for (const Json &element : elements) {
    if (array.text_.size() > 1) array.text_ += ',';
    array.text_ += element.text();
  }
  array.text_ += ']';
  return array;
}

Json Json::object() {
  Json object(nullptr);
  object.text_.clear();
  object.keys_.emplace();
  return object;
}

Json &Json::put(std::string_view key, const Json &value) {
  add(quoted(key) + ":" + value.text());
  keys_->emplace_back(key);
  return *this;
}

bool Json::join(const Json &other) {
  const auto taken = [this](const std::string &key) {
    return std::ranges::find(*keys_, key) != keys_->end();
  };
  if (!other.keys_ || std::ranges::any_of(*other.keys_, taken)) return false;
  if (!other.keys_->empty()) add(other.text_);
  keys_->insert(keys_->end(), other.keys_->begin(), other.keys_->end());
  return true;
}

void Json::add(std::string_view members) {
  if (!text_.empty()) text_ += ',';
  text_ += members;
}

}  // namespace tool
