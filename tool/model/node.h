// What a record holds: the one description from which its page, its short form and its JSON are
// made. A description borrows from its record. It is made as far as it is looked at: the elements
// of a list are described one by one when their turn comes.
#ifndef ORVELASN1_TOOL_MODEL_NODE_H
#define ORVELASN1_TOOL_MODEL_NODE_H

#include <functional>
#include <variant>

#include "model/page.h"
#include "model/view.h"
#include "text/json.h"

namespace tool {

struct Node {
  /// A value that is complete in itself.
  struct Text {
    std::vector<std::string> lines;  ///< for people
    Json json;
    Tone tone = Tone::plain;
  };
  /// The fields of a record, each with its name.
  using Fields = std::vector<Node>;
  /// The elements of a list.
  struct Items {
    size_t count = 0;
    std::function<Node(size_t)> at;
  };
  /// Nothing, for a field that is not there, or one of the others.
  using Value = std::variant<std::monostate, Text, Octets, const ObjId *, Fields, Items>;

  std::string name;    ///< as a field its name; as an element what stands for its number on a page
  bool brief = false;  ///< whether the short form shows it
  Value value;
  std::shared_ptr<const Node> shown;  ///< what a page shows of it where it is part of another one
  std::shared_ptr<const void> owner;  ///< the record, where nobody else keeps it

  bool empty() const { return value.index() == 0; }
};

/// A value of one or more lines.
Node text(std::vector<std::string> lines, Json json, Tone tone = Tone::plain);
Node text(std::string line, Json json, Tone tone = Tone::plain);

/// A truth value, which the library keeps as the octet that was read.
Node boolean(uint32_t value);

/// A small INTEGER: a decimal number, where describe() has the digits of its octets.
Node number(const Integer *integer);

/// The same node, of which a page shows `other` where it is part of another one.
Node shown_as(Node node, Node other);

/// The same node, which keeps its record.
template <class T>
Node owning(Node node, Owned<T> record) {
  node.owner = std::shared_ptr<const T>(std::move(record));
  return node;
}

/// Adds a node to the open section of a page, with what is inside it indented below.
void add_node(Page &page, std::string key, const Node &node, const View &view, size_t indent = 0);

/// The lines of a node that has no inside; nothing for a record or a list of records.
std::optional<std::vector<std::string>> lines_of(const Node &node, const View &view);

/// A page under a heading.
std::string page_of(const Node &node, const std::string &heading, const std::string &where,
                    const View &view);

/// The heading and a line for each field that is marked as brief; where none is, for the first few.
std::string short_form_of(const Node &node, const std::string &heading, const View &view);

Json json_of(const Node &node);

/// Puts the fields of a record into an object. What has no fields, or one whose name is taken,
/// becomes the member "value".
void put_members(Json &object, const Node &node);

}  // namespace tool

#endif
