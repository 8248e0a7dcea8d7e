#include "types.h"

#include <algorithm>

#include "certificate_view.h"
#include "text.h"

namespace tool {

namespace {

/// The functions of one family under the names of Type.
template <class T, auto decode_function, auto encode_function, auto free_function, class View_>
constexpr Type type(std::string_view name, std::span<const std::string_view> labels) {
  return {
      .name = name,
      .labels = labels,
      .decode =
          [](const uint8_t *z, const uint8_t *end, void **record, uint32_t depth) {
            T *made = nullptr;
            const uint8_t *const next = decode_function(z, end, 0, &made, depth);
            *record = next == nullptr ? nullptr : made;
            return next;
          },
      .encode =
          [](uint8_t **pp, const void *record) {
            return encode_function(pp, static_cast<const T *>(record));
          },
      .release = [](void *record) { free_function(static_cast<T *>(record)); },
      .forget_encodings = [](void *record) { View_::forget_encodings(static_cast<T *>(record)); },
      .show =
          [](const void *record, const std::string &where, const View &view) {
            return View_::show(static_cast<const T *>(record), where, view);
          },
      .show_short =
          [](const void *record, const View &view) {
            return View_::show_short(static_cast<const T *>(record), view);
          },
      .put_json =
          [](Json &object, const void *record, const View &view) {
            View_::put_json(object, static_cast<const T *>(record), view);
          },
      .explain = View_::explain,
  };
}

constexpr std::string_view certificate_labels[] = {"CERTIFICATE", "X509 CERTIFICATE"};

// A new type is one row here and one view of its own, such as CertificateView.
constexpr Type type_table[] = {
    type<Certificate, asn1_Certificate_d, asn1_Certificate_e, asn1_Certificate_free,
         CertificateView>("certificate", certificate_labels),
};

Fault unknown_label(const std::string &label) {
  std::string known;
  for (const Type &type : type_table)
    for (const std::string_view one : type.labels)
      known += (known.empty() ? "" : ", ") + std::string(one);
  return {std::nullopt,
          "a PEM block of " + printable(label) + ", which is not among those read: " + known};
}

/// The most telling explanation of a refusal: the one that goes furthest into the octets.
Fault explain(Octets octets, const std::vector<const Type *> &refused_by) {
  Fault best{std::nullopt, ""};
  for (const Type *const type : refused_by) {
    const auto fault = type->explain(octets);
    if (fault && (best.text.empty() || fault->offset.value_or(0) > best.offset.value_or(0)))
      best = *fault;
  }
  if (best.text.empty())
    best.text = "the decoder refuses it, for a reason that its outline does not show";
  return best;
}

}  // namespace

std::span<const Type> types() { return type_table; }

const Type *type_named(std::string_view name) {
  const auto *const found = std::ranges::find(type_table, name, &Type::name);
  return found == std::end(type_table) ? nullptr : found;
}

std::vector<std::string> type_names() {
  std::vector<std::string> names;
  for (const Type &type : type_table) names.emplace_back(type.name);
  return names;
}

Bytes Record::encode() const {
  return encoded([this](uint8_t **pp) { return type_->encode(pp, record_.get()); });
}

std::vector<const Type *> candidates(const Element &element, const Type *wanted) {
  std::vector<const Type *> found;
  for (const Type &type : type_table) {
    const bool by_label =
        std::ranges::find(type.labels, std::string_view(element.label)) != type.labels.end();
    const bool by_wish = element.label.empty() && (wanted == nullptr || wanted == &type);
    if (by_label || by_wish) found.push_back(&type);
  }
  return found;
}

Decoding decode(const Element &element, const Type *wanted) {
  if (element.fault && element.octets.empty()) return {std::nullopt, element.fault};
  const auto tried = candidates(element, wanted);
  if (tried.empty()) return {std::nullopt, unknown_label(element.label)};
  if (element.fault) return {std::nullopt, element.fault};
  const uint8_t *const start = element.octets.data();
  const uint8_t *const end = start + element.octets.size();
  for (const Type *const type : tried) {
    void *made = nullptr;
    const uint8_t *const next = type->decode(start, end, &made, 0);
    if (next == nullptr) continue;
    Decoding decoding{Record(*type, made), std::nullopt};
    if (next != end)
      decoding.fault = Fault{static_cast<size_t>(next - start),
                             std::to_string(end - next) + " octets behind the " +
                                 std::string(type->name) + " that the decoder leaves alone"};
    return decoding;
  }
  return {std::nullopt, explain(element.octets, tried)};
}

}  // namespace tool
