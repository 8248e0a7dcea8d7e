#include "records/object_json.h"

#include "input/pem.h"
#include "text/characters.h"

namespace tool {

namespace {

/// Writes an object, and knows its keys.
class Members {
 public:
  explicit Members(std::string &out) : out_(out) { out_ += '{'; }

  /// Begins a member, whose value follows.
  std::string &operator[](std::string_view key) {
    keys_.push_back(key);
    append_key(out_, key);
    return out_;
  }
  template <class Value>
  void put(std::string_view key, const Value &value) {
    append_value((*this)[key], value);
  }

  const std::vector<std::string_view> &keys() const { return keys_; }

 private:
  std::string &out_;
  std::vector<std::string_view> keys_;
};

}  // namespace

void append_json(std::string &out, const Object &object, const View &view) {
  constexpr size_t about = 8;  // characters an octet
  out.reserve(out.size() + about * object.octets.size());
  Members members(out);
  if (!object.id.empty()) members.put("id", valid_utf8(object.id));
  if (object.record != nullptr) members.put("type", object.type->name);
  members.put("file", valid_utf8(object.file));
  members.put("element", object.number);
  if (object.record == nullptr) {
    members.put("error", valid_utf8(object.fault->text));
    if (object.fault->offset) members.put("offset", *object.fault->offset);
    if (!object.fault->path.empty()) members.put("path", valid_utf8(object.fault->path));
  } else {
    const Type &type = *object.type;
    const bool is_hidden = view.compact || (type.secret && !view.secrets);
    if (!is_hidden && type.labels.empty()) {
      members.put("octets", object.octets);
    } else if (!is_hidden) {
      members["pem"] += '"';
      append_pem(out, type.labels.front(), object.octets, "\\n");
      out += '"';
    }
    View only_json = view;
    only_json.lines = false;
    append_members(out, members.keys(), type.describe(object.record, only_json));
  }
  out += '}';
}

}  // namespace tool
