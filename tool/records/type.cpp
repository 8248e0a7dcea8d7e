#include "records/type.h"

#include <algorithm>

namespace tool {

namespace {

// A new family is one line here and in type.h, and a file of its own.
constexpr std::span<const Type> (*families[])() = {
    certificate_types, crl_types,      request_types, ocsp_types,      key_types,
    message_types,     exchange_types, card_types,    extension_types, universal_types};

}  // namespace

std::string Type::show(const void *record, const std::string &where, const View &view) const {
  if (page != nullptr) return page(record, where, view);
  return page_of(describe(record, view), std::string(heading), where, view);
}

std::string Type::show_short(const void *record, const View &view) const {
  if (short_form != nullptr) return short_form(record, view);
  return short_form_of(describe(record, view), std::string(heading), view);
}

std::vector<const Type *> types() {
  std::vector<const Type *> all;
  for (const auto family : families)
    for (const Type &type : family()) all.push_back(&type);
  return all;
}

const Type *type_named(std::string_view name) {
  const auto all = types();
  const auto found = std::ranges::find(all, name, &Type::name);
  return found == all.end() ? nullptr : *found;
}

Bytes Record::encode() const {
  return encoded([this](uint8_t **pp) { return type_->encode(pp, record_.get()); });
}

std::optional<Fault> refusal(const Type &type, Octets octets) {
  auto fault = type.syntax == nullptr ? std::nullopt : syntax_fault(octets, *type.syntax);
  if (!fault && type.explain != nullptr) fault = type.explain(octets);
  return fault;
}

}  // namespace tool
