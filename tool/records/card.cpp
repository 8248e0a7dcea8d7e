// The objects of a smart card: a tree in a format of its own, and two flat records.
#include <array>

#include "records/type.h"
#include "text/characters.h"

namespace tool {

namespace {

enum class Role : uint8_t { leaf, container, attribute_holder };

/// Returns what the identifier of an object says that it holds.
Role role_of(const GDOObject *object) {
  if (object->id == 0x20) return Role::attribute_holder;
  return (object->id >= 0x10 && object->id <= 0x14) || object->id == 0x21 ? Role::container
                                                                          : Role::leaf;
}

const char *name_of(Role role) {
  static constexpr std::array<const char *, 3> names{"leaf", "container", "attribute holder"};
  return names[static_cast<size_t>(role)];
}

/// Returns the digits of an identifier of `size` octets, the most significant octet first.
template <size_t size>
std::string identifier(const GDOObject *object) {
  std::array<uint8_t, size> octets{};
  for (size_t i = 0; i < size; ++i)
    octets[size - 1 - i] = static_cast<uint8_t>(object->id >> (8 * i));
  return hex(octets);
}

std::string object_identifier(const GDOObject *object) { return identifier<1>(object); }
std::string attribute_identifier(const GDOObject *attribute) { return identifier<4>(attribute); }

/// Returns what a container or an attribute holder holds: "2 objects".
std::string count_text(const List *children, const char *kind) {
  return counted(static_cast<size_t>(List_len(children)), kind);
}

const char *kind_of_children(const GDOObject *object, bool sets) {
  if (role_of(object) == Role::attribute_holder) return "attribute";
  return sets ? "set" : "object";
}

/// Returns the number of objects and attributes below an object of a plain place.
size_t count_below(const GDOObject *object) {
  size_t count = 0;
  std::vector<const GDOObject *> open{object};
  while (!open.empty()) {
    const auto children = elements<GDOObject>(open.back()->children);
    open.pop_back();
    open.insert(open.end(), children.begin(), children.end());
    count += children.size();
  }
  return count;
}

// ---- The tree -----------------------------------------------------------------------------------

/// An object, an attribute or a set, with the lines after it and the branches below it.
struct Branch {
  std::string key;
  std::vector<std::string> lines;
  std::vector<Branch> below{};
};

std::vector<std::string> value_lines(const OctetString *value, const View &view) {
  if (value == nullptr) return {"none"};
  return lines_of(octets_with_text(value, view), view).value_or(std::vector<std::string>());
}

Branch branch_of(const GDOObject *object, bool sets, const View &view);

std::vector<Branch> branches_of(const List *objects, const View &view) {
  std::vector<Branch> branches;
  for (const auto *object : elements<GDOObject>(objects))
    branches.push_back(branch_of(object, false, view));
  return branches;
}

std::vector<Branch> branches_below(const GDOObject *object, bool sets, const View &view) {
  std::vector<Branch> branches;
  if (role_of(object) == Role::attribute_holder) {
    for (const auto *attribute : elements<GDOObject>(object->children))
      branches.push_back({attribute_identifier(attribute), value_lines(attribute->value, view)});
  } else if (sets) {
    for (const auto *set : elements<List>(object->children))
      branches.push_back({"set", {count_text(set, "object")}, branches_of(set, view)});
  } else if (view.too_deep()) {
    const size_t count = count_below(object);
    if (count != 0) branches.push_back({"...", {std::to_string(count) + " more below"}});
  } else {
    branches = branches_of(object->children, view);
  }
  return branches;
}

Branch branch_of(const GDOObject *object, bool sets, const View &view) {
  const Role role = role_of(object);
  Branch branch{object_identifier(object), {name_of(role)}};
  if (role != Role::leaf) {
    branch.lines.front() += ", " + count_text(object->children, kind_of_children(object, sets));
    branch.below = branches_below(object, sets, view.inside());
    return branch;
  }
  auto lines = value_lines(object->value, view);
  if (lines.size() == 1)
    branch.lines.front() += ", " + lines.front();
  else
    branch.lines.insert(branch.lines.end(), lines.begin(), lines.end());
  return branch;
}

/// Draws a branch, with `corner` in front of its first row and `line` in front of all others.
void draw(Page &page, const Branch &branch, const std::string &corner, const std::string &line) {
  page.row(corner + branch.key, branch.lines.front());
  const std::string beside = branch.below.empty() ? line : line + "│";
  for (size_t i = 1; i < branch.lines.size(); ++i) page.row(beside, branch.lines[i]);
  for (size_t i = 0; i < branch.below.size(); ++i) {
    const bool last = i + 1 == branch.below.size();
    draw(page, branch.below[i], line + (last ? "└─ " : "├─ "), line + (last ? "   " : "│  "));
  }
}

void draw_root(Page &page, const std::string &name, const GDOObject *object, bool sets,
               const View &view) {
  if (object == nullptr) return;
  Branch branch = branch_of(object, sets, view);
  if (!name.empty()) branch.key.insert(0, name + " ");
  draw(page, branch, "", "");
}

/// An object of a card, and whether its place is one for nested sets.
struct Place {
  const char *name;
  const GDOObject *object;
  bool sets;
};

std::array<Place, 5> places(const GDO *gdo) {
  return {{{"root", gdo->root, false},
           {"set1", gdo->set1, true},
           {"set2", gdo->set2, true},
           {"set3", gdo->set3, true},
           {"set4", gdo->set4, true}}};
}

std::string gdo_page(const void *record, const std::string &where, const View &view) {
  Page page(view);
  page.section("GDO", where);
  for (const Place &place : places(static_cast<const GDO *>(record)))
    draw_root(page, place.name, place.object, place.sets, view);
  return page.text();
}

template <bool sets>
std::string object_page(const void *record, const std::string &where, const View &view) {
  Page page(view);
  page.section("GDOObject", where);
  draw_root(page, "", static_cast<const GDOObject *>(record), sets, view);
  return page.text();
}

// ---- The same as fields -------------------------------------------------------------------------

Node identifier_node(const std::string &digits) { return text(digits, digits); }

Node attribute_node(const GDOObject *attribute, const View &view) {
  return Description(view)
      .field("id", identifier_node(attribute_identifier(attribute)))
      .field("value", attribute->value)
      .node();
}

Node set_node(const List *set, const View &view) { return list_of("GDOObjectSetOf", set, view); }

Node object_node(const GDOObject *object, bool sets, const View &view) {
  const Role role = role_of(object);
  const View inside = view.inside();
  Description fields(view);
  fields.field("id", identifier_node(object_identifier(object)))
      .field("role", text(name_of(role), name_of(role)));
  std::string summary = object_identifier(object) + ", " + name_of(role);
  if (role == Role::leaf) {
    fields.field("value", object->value);
    if (const auto inner = text_in(octets(object->value))) fields.hidden("text", *inner);
  } else if (role == Role::attribute_holder) {
    fields.field("children", list_of<GDOObject>(object->children, attribute_node, inside));
  } else if (sets) {
    fields.field("children", list_of<List>(object->children, set_node, inside));
  } else if (inside.too_deep() && List_len(object->children) != 0) {
    const size_t count = count_below(object);
    fields.field("omitted", text(std::to_string(count) + " more below", count));
  } else {
    fields.field("children", set_node(object->children, inside));
  }
  if (role != Role::leaf)
    summary += ", " + count_text(object->children, kind_of_children(object, sets));
  return shown_as(fields.node(), text(std::move(summary), nullptr));
}

}  // namespace

// GDOObject ::= SEQUENCE { id, its value, its SET of objects or its SET of attributes }
Node describe(const GDOObject *object, const View &view) {
  return object_node(object, false, view);
}

// GDO ::= SEQUENCE { root, set1, set2, set3, set4 OPTIONAL }
Node describe(const GDO *gdo, const View &view) {
  Description fields(view);
  for (const Place &place : places(gdo))
    if (place.object != nullptr)
      fields.field(place.name, object_node(place.object, place.sets, view)).brief();
  return fields.node();
}

namespace {

Node describe_object_of_sets(const GDOObject *object, const View &view) {
  return object_node(object, true, view);
}

}  // namespace

std::vector<Type> card_types() {
  return {
      {.syntax = "GDO",
       .about = "the objects of a smart card",
       .stands_alone = true,
       .by_hand = as<GDO>,
       .own_page = gdo_page},
      {.syntax = "GDOObjectSetOf",
       .about = "an object of a smart card, with objects below it",
       .by_hand = as<GDOObject>,
       .own_page = object_page<false>},
      {.syntax = "GDOObjectSetOfSetOf",
       .about = "the same with sets of objects below it",
       .name = "gdo-object-of-sets",
       .by_hand = as<describe_object_of_sets>,
       .own_page = object_page<true>},
      {.syntax = "CardInfo", .about = "six octet strings of a smart card", .stands_alone = true},
      {.syntax = "PublicKeyMAC",
       .about = "two octet strings of a smart card",
       .stands_alone = true},
  };
}

}  // namespace tool
