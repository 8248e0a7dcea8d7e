// What a record holds: the one description that its page, its short form and its JSON are made
// from. A description borrows from its record. The elements of a list are described
// one by one, when they are needed.
#ifndef ORVELASN1_TOOL_MODEL_NODE_H
#define ORVELASN1_TOOL_MODEL_NODE_H

#include <concepts>
#include <functional>
#include <variant>

#include "model/brief.h"
#include "model/page.h"
#include "model/view.h"
#include "text/json.h"

namespace tool {

struct Node {
  /// A value that is complete in itself.
  struct Text {
    std::vector<std::string> lines;  ///< for people; none where the view wants JSON alone
    Json json;
    Tone tone = Tone::plain;
  };
  /// The fields of a record, each with its name.
  using Fields = std::vector<Node>;
  /// The elements of a list.
  struct Items {
    size_t count = 0;
    std::function<Node(size_t)> at;
    /// Returns the octets of an element, where these are at hand and say all of it; null elsewhere.
    std::function<Octets(size_t)> octets{};
  };
  /// Nothing for a field that is not there, or one of the others.
  using Value = std::variant<std::monostate, Text, Octets, const ObjId *, Fields, Items>;

  std::string name;    ///< of a field, or what a page shows in place of the number of an element
  bool brief = false;  ///< whether the short form shows it
  Value value;
  std::shared_ptr<const Node> shown;  ///< what a page shows in its place inside another node
  std::shared_ptr<const void> owner;  ///< what it borrows from, where nothing else keeps that

  bool empty() const { return value.index() == 0; }

  /// Keeps something that the node borrows from, beside what it keeps already.
  void keep(std::shared_ptr<const void> source);
};

/// Returns a value of one or more lines.
Node text(std::vector<std::string> lines, Json json, Tone tone = Tone::plain);
Node text(std::string line, Json json, Tone tone = Tone::plain);

/// Returns a value without lines.
Node text(Json json);

/// Returns a value whose lines `lines` makes, which is called where the view wants lines.
template <std::invocable Lines>
Node text(const View &view, Lines lines, Json json, Tone tone = Tone::plain) {
  return view.lines ? text(lines(), std::move(json), tone) : text(std::move(json));
}

/// Returns a truth value, which the library keeps as the octet that was read.
Node boolean(uint32_t value);

/// Returns a small INTEGER: a decimal number, where describe() has the digits of its octets.
Node number(const Integer *integer);

/// Returns the node. A page shows `other` in its place inside another node.
Node shown_as(Node node, Node other);

/// The same with what `other` returns, which is called where the view wants lines.
template <std::invocable Other>
Node shown_as(const View &view, Node node, Other other) {
  return view.lines ? shown_as(std::move(node), other()) : node;
}

/// Returns the node. A page shows nothing in its place.
Node hidden(Node node);

/// Returns the node, which now keeps its record.
template <class T>
Node owning(Node node, Owned<T> record) {
  node.keep(std::shared_ptr<const T>(std::move(record)));
  return node;
}

/// Adds a node to the open section of a page, and below it, indented, what is inside it.
void add_node(Page &page, std::string key, const Node &node, const View &view, size_t indent = 0);

/// Returns the lines of a node, at least one; nothing for a record or a list of records.
std::optional<std::vector<std::string>> lines_of(const Node &node, const View &view);

/// Returns a page under a heading.
std::string page_of(const Node &node, const std::string &heading, const std::string &where,
                    const View &view);

/// Returns the short form: the heading, and each field that is marked as brief, or the first few
/// fields where no field is marked.
Brief short_form_of(const Node &node, const std::string &heading, const View &view);

/// Appends the JSON of a node to a text.
void append_json(std::string &out, const Node &node);
Json json_of(const Node &node);

/// Appends the fields of a record as further members of an object that is being written and has
/// some keys. A node that has no fields, or one whose name is taken, becomes the member "value".
void append_members(std::string &out, std::span<const std::string_view> taken, const Node &node);

}  // namespace tool

#endif
