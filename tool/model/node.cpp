#include "model/node.h"

#include <algorithm>
#include <utility>

#include "text/characters.h"
#include "text/integers.h"
#include "text/object_identifiers.h"

namespace tool {

namespace {

constexpr size_t octets_a_line = 20;
constexpr size_t items_at_a_glance = 16;

const Node &on_page(const Node &node) { return node.shown == nullptr ? node : *node.shown; }

/// Returns how many elements a page shows. Leaves out none or at least two: the line that says so
/// takes the place of one.
size_t shown_items(size_t count, const View &view) {
  return view.full || count <= items_at_a_glance + 1 ? count : items_at_a_glance;
}

std::string more_text(size_t count) { return "and " + std::to_string(count) + " more"; }

using Lines = std::vector<std::string>;

/// Returns the lines of a list whose elements all have lines. They need no numbers.
std::optional<Lines> lines_of(const Node::Items &items, const View &view) {
  const size_t shown = shown_items(items.count, view);
  Lines lines;
  for (size_t i = 0; i < shown; ++i) {
    const Node item = items.at(i);
    const auto more = item.name.empty() ? lines_of(item, view) : std::nullopt;
    if (!more) return std::nullopt;
    lines.insert(lines.end(), more->begin(), more->end());
  }
  if (shown < items.count) lines.push_back("... " + more_text(items.count - shown));
  if (lines.empty()) lines.emplace_back("(empty)");
  return lines;
}

void add_fields(Page &page, const Node::Fields &fields, const View &view, size_t indent) {
  for (const Node &field : fields) add_node(page, field.name, field, view, indent);
}

void add_items(Page &page, const Node::Items &items, const View &view, size_t indent) {
  const size_t shown = shown_items(items.count, view);
  for (size_t i = 0; i < shown; ++i) {
    const Node item = items.at(i);
    add_node(page, item.name.empty() ? "[" + std::to_string(i) + "]" : item.name, item, view,
             indent);
  }
  if (shown < items.count)
    page.row(std::string(indent, ' ') + "...", more_text(items.count - shown));
}

Tone tone_of(const Node &node) {
  const auto *const value = std::get_if<Node::Text>(&node.value);
  return value == nullptr ? Tone::plain : value->tone;
}

struct BriefLine {
  std::string name;
  std::string text;
  Tone tone;
};

/// Returns the one line of a field in the short form; nothing for a record.
std::optional<BriefLine> brief_line(const Node &field, const View &view) {
  const Node &node = on_page(field);
  if (const auto *const items = std::get_if<Node::Items>(&node.value))
    return BriefLine{field.name, counted(items->count, "element"), Tone::plain};
  const auto lines = lines_of(node, view);
  if (!lines) return std::nullopt;
  return BriefLine{field.name, lines->size() == 1 ? lines->front() : lines->front() + " ...",
                   tone_of(node)};
}

/// Collects the lines of all fields that pass the test, also inside records but not inside lists.
void collect_brief(std::vector<BriefLine> &lines, const Node &node, const View &view,
                   bool (*wanted)(const Node &)) {
  const auto *const fields = std::get_if<Node::Fields>(&node.value);
  if (fields == nullptr) return;
  for (const Node &field : *fields) {
    const auto line = wanted(field) ? brief_line(field, view) : std::nullopt;
    if (line)
      lines.push_back(*line);
    else
      collect_brief(lines, field, view, wanted);
  }
}

/// Appends the fields of a record as the members of an object that is being written.
void append_fields(std::string &out, const Node::Fields &fields) {
  for (const Node &field : fields)
    if (const auto *const oid = std::get_if<const ObjId *>(&field.value)) {
      append_oid(out, field.name, *oid);
    } else if (!field.empty()) {
      append_key(out, field.name);
      append_json(out, field);
    }
}

/// Appends the JSON of the values of nodes.
struct AppendJson {
  std::string &out;

  void operator()(std::monostate) const { out += "null"; }
  void operator()(const Node::Text &value) const { value.json.append_to(out); }
  void operator()(Octets value) const { append_value(out, value); }
  void operator()(const ObjId *value) const { append_quoted(out, dotted(value)); }
  void operator()(const Node::Fields &fields) const {
    out += '{';
    append_fields(out, fields);
    out += '}';
  }
  void operator()(const Node::Items &items) const {
    out += '[';
    for (size_t i = 0; i < items.count; ++i) {
      if (i != 0) out += ',';
      append_json(out, items.at(i));
    }
    out += ']';
  }
};

}  // namespace

void Node::keep(std::shared_ptr<const void> source) {
  using Both = std::pair<std::shared_ptr<const void>, std::shared_ptr<const void>>;
  owner = owner == nullptr ? std::move(source)
                           : std::make_shared<const Both>(std::move(owner), std::move(source));
}

Node text(std::vector<std::string> lines, Json json, Tone tone) {
  Node node;
  node.value = Node::Text{std::move(lines), std::move(json), tone};
  return node;
}

Node text(std::string line, Json json, Tone tone) {
  return text(Lines{std::move(line)}, std::move(json), tone);
}

Node boolean(uint32_t value) { return text(value != 0 ? "TRUE" : "FALSE", value != 0); }

Node number(const Integer *integer) {
  if (integer == nullptr) return {};
  return text(number_text(integer), json_of_number(integer));
}

Node text(Json json) { return text(Lines(), std::move(json)); }

Node shown_as(Node node, Node other) {
  node.shown = std::make_shared<const Node>(std::move(other));
  return node;
}

Node hidden(Node node) { return shown_as(std::move(node), Node()); }

std::optional<std::vector<std::string>> lines_of(const Node &node, const View &view) {
  const Node &here = on_page(node);
  if (const auto *const value = std::get_if<Node::Text>(&here.value))
    return value->lines.empty() ? Lines(1) : value->lines;
  if (const auto *const oid = std::get_if<const ObjId *>(&here.value))
    return Lines{label(*oid, view)};
  if (const auto *const octets = std::get_if<Octets>(&here.value)) {
    const bool fits = !octets->empty() && octets->size() <= octets_a_line;
    return fits ? Lines{hex(*octets)} : dump(*octets, view.full);
  }
  if (const auto *const items = std::get_if<Node::Items>(&here.value))
    return lines_of(*items, view);
  return std::nullopt;
}

void add_node(Page &page, std::string key, const Node &node, const View &view, size_t indent) {
  const Node &here = on_page(node);
  if (here.empty()) return;
  key.insert(0, indent, ' ');
  if (auto lines = lines_of(here, view)) {
    page.row(std::move(key), std::move(*lines), tone_of(here));
  } else if (const auto *const items = std::get_if<Node::Items>(&here.value)) {
    page.row(std::move(key), counted(items->count, "element"));
    add_items(page, *items, view, indent + 2);
  } else if (const auto *const fields = std::get_if<Node::Fields>(&here.value)) {
    page.row(std::move(key), Lines(fields->empty() ? 1 : 0, "(empty)"));
    add_fields(page, *fields, view, indent + 2);
  }
}

std::string page_of(const Node &node, const std::string &heading, const std::string &where,
                    const View &view) {
  Page page(view);
  page.section(heading, where);
  if (const auto *const fields = std::get_if<Node::Fields>(&node.value))
    add_fields(page, *fields, view, 0);
  else if (const auto *const items = std::get_if<Node::Items>(&node.value))
    add_items(page, *items, view, 0);
  else
    add_node(page, "value", node, view);
  return page.text();
}

Brief short_form_of(const Node &node, const std::string &heading, const View &view) {
  constexpr size_t at_most = 4;
  std::vector<BriefLine> lines;
  collect_brief(lines, node, view, [](const Node &field) { return field.brief; });
  if (lines.empty()) {
    collect_brief(lines, node, view, [](const Node &field) { return !on_page(field).empty(); });
    if (lines.size() > at_most) lines.resize(at_most);
  }
  if (lines.empty())
    if (const auto line = brief_line(node, view)) lines.push_back(*line);
  Brief brief;
  brief.state = heading;
  brief.tone = Tone::heading;
  for (const BriefLine &line : lines) {
    brief.details.push_back((line.name.empty() ? "" : line.name + " ") + line.text);
    if (line.tone == Tone::warning || line.tone == Tone::alarm) brief.tone = line.tone;
  }
  if (!brief.details.empty()) {
    brief.title = brief.details.front();
    brief.details.erase(brief.details.begin());
  }
  return brief;
}

void append_json(std::string &out, const Node &node) { std::visit(AppendJson{out}, node.value); }

Json json_of(const Node &node) {
  std::string text;
  append_json(text, node);
  return Json::of_text(std::move(text));
}

void append_members(std::string &out, std::span<const std::string_view> taken, const Node &node) {
  const auto is_free = [taken](std::string_view key) {
    return std::ranges::find(taken, key) == taken.end();
  };
  if (const auto *const oid = std::get_if<const ObjId *>(&node.value))
    return append_oid(out, "value", *oid);
  const auto *const fields = std::get_if<Node::Fields>(&node.value);
  const auto is_added = [&](const Node &field) { return field.empty() || is_free(field.name); };
  if (fields != nullptr && std::ranges::all_of(*fields, is_added))
    return append_fields(out, *fields);
  const std::string json = json_of(node).text();
  if (!json.starts_with('{') || !std::ranges::all_of(keys_of(json), is_free)) {
    append_key(out, "value");
    out += json;
  } else if (json.size() > 2) {
    out += ',';
    out.append(json, 1, json.size() - 2);
  }
}

}  // namespace tool
