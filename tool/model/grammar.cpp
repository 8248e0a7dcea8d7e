#include "model/grammar.h"

#include <algorithm>

#include "model/ber.h"
#include "model/view.h"

namespace tool {

namespace {

using std::literals::operator""sv;

/// A value whose type an identifier says that stands further away, or that pki_Type_defined_by()
/// has no row for.
struct Defined {
  std::string_view field;
  std::string_view identifier;  ///< its content octets, or the first of them where `arc`
  const char *type;
  bool in_string = false;     ///< whether an OCTET STRING is around the value where ANY may be
  bool arc = false;           ///< whether all identifiers below count
  std::string_view around{};  ///< the type around the record; any where it is empty
};

#define PKCS "\x2A\x86\x48\x86\xF7\x0D\x01"
constexpr auto rsa_encryption = PKCS "\x01\x01"sv;
constexpr auto data = PKCS "\x07\x01"sv;
constexpr auto extension_request = PKCS "\x09\x0E"sv;
constexpr auto x509_certificate = PKCS "\x09\x16\x01"sv;
constexpr auto x509_crl = PKCS "\x09\x17\x01"sv;
#undef PKCS
constexpr auto ec_public_key = "\x2A\x86\x48\xCE\x3D\x02\x01"sv;
constexpr auto ecdsa_signatures = "\x2A\x86\x48\xCE\x3D\x04"sv;
constexpr auto ocsp_basic = "\x2B\x06\x01\x05\x05\x07\x30\x01\x01"sv;

constexpr bool in_a_string = true;
constexpr bool arc = true;

constexpr Defined rows[] = {
    {"subjectPublicKey", rsa_encryption, "pki_RSAPublicKey"},
    {"privateKey", rsa_encryption, "pki_RSAPrivateKey"},
    {"privateKey", ec_public_key, "pki_ECPrivateKey"},
    {"signatureValue", ecdsa_signatures, "pki_ECDSA_Sig_Value", false, arc},
    {"signature", ecdsa_signatures, "pki_ECDSA_Sig_Value", false, arc},
    {"response", ocsp_basic, "pki_BasicOCSPResponse"},
    {"values", extension_request, "pki_Extensions"},
    {"certValue", x509_certificate, "pki_Certificate", in_a_string},
    {"crlValue", x509_crl, "pki_CertificateRevocationList", in_a_string},
    {"content", data, "pki_AuthenticatedSafe", in_a_string, false, "PFX"},
    {"content", data, "pki_SafeContents", in_a_string, false, "AuthenticatedSafe"},
};

bool has(Octets identifier, const Defined &row) {
  const std::string_view octets = text_of(identifier);
  return row.arc ? octets.starts_with(row.identifier) : octets == row.identifier;
}

const pki_Type *type_defined_by(Octets identifier) {
  const auto record = ber::record_of(identifier);
  return record == nullptr ? nullptr : pki_Type_defined_by(record.get());
}

bool is_list(pki_Kind kind) {
  return kind == PKI_SEQUENCE_OF || kind == PKI_SET_OF || kind == PKI_NAME;
}

bool is_any(pki_Kind kind) { return kind == PKI_ANY || kind == PKI_TYPED_CONTENT; }

/// Whether an optional field may begin with the identifier octet.
bool may_begin(const pki_Field &field, uint8_t identifier) {
  if (field.found_by == 0 || field.presence == PKI_ANYTHING_LEFT ||
      field.presence == PKI_ANY_ELEMENT || identifier == field.found_by)
    return true;
  if (field.presence == PKI_EITHER_FORM) return identifier == (field.found_by | tag::constructed);
  if (field.tagging != PKI_UNTAGGED || pki_Type_kind(field.type) != PKI_CHOICE) return false;
  pki_Field alternative;
  for (uint32_t i = 0; pki_Type_field(field.type, i, &alternative) != 0; ++i)
    if (identifier == alternative.found_by) return true;
  return false;
}

/// Fills in the type of a value under a tag.
void set_type(Place &place, const pki_Type *type, pki_Tagging tagging) {
  place.type = type;
  place.wraps = tagging == PKI_EXPLICIT;
}

/// Takes the alternative of a CHOICE that begins with this identifier octet, unless a tag is around
/// the CHOICE.
void choose(Place &place, uint8_t identifier) {
  while (place.type != nullptr && !place.wraps && pki_Type_kind(place.type) == PKI_CHOICE) {
    const pki_Type *const choice = place.type;
    place.type = nullptr;
    pki_Field alternative;
    for (uint32_t i = 0; pki_Type_field(choice, i, &alternative) != 0; ++i) {
      if ((alternative.kind & tag::number_bits) != (identifier & tag::number_bits)) continue;
      place.alternative = alternative.name;
      set_type(place, alternative.type, alternative.tagging);
      break;
    }
  }
}

/// Adds the steps to a place to a path, as pki_explain() has them.
void append(std::string &path, const Place &place) {
  const auto add = [&path](std::string_view name) {
    if (!path.empty() && !name.empty()) path += '.';
    path += name;
  };
  if (place.index) path += "[" + std::to_string(*place.index) + "]";
  add(place.field);
  add(place.alternative);
}

}  // namespace

Grammar::Grammar(const pki_Type *type) {
  if (type == nullptr || pki_Type_kind(type) == PKI_ANY) return;
  frames_.push_back({.level = 0, .kind = Kind::value, .type = type, .whole = true});
}

bool Grammar::knows(size_t level) const {
  return !frames_.empty() && frames_.back().level == level;
}

Place Grammar::next(size_t level, uint8_t identifier) {
  if (!knows(level)) return {};
  Frame &frame = frames_.back();
  Place place;
  std::string_view field = frame.field;
  if (frame.kind == Kind::fields) {
    place = next_field(frame, identifier);
    field = place.field;
  } else if (frame.kind == Kind::list || frame.next == 0) {
    place.known = true;
    place.type = frame.type;
    place.fills = frame.kind == Kind::value && frame.whole;
    if (place.fills) place.begins = frame.type;
    if (frame.kind == Kind::list) place.index = frame.next;
    ++frame.next;
  }
  choose(place, identifier);
  define(frame, field, place);
  choose(place, identifier);
  return place;
}

/// Finds the field that comes next. What is optional is passed over where it begins otherwise.
Place Grammar::next_field(Frame &frame, uint8_t identifier) {
  Place place;
  pki_Field field;
  while (pki_Type_field(frame.type, static_cast<uint32_t>(frame.next), &field) != 0) {
    ++frame.next;
    if (field.presence != PKI_ALWAYS && !may_begin(field, identifier)) continue;
    place.known = true;
    place.field = field.name;
    set_type(place, field.type, field.tagging);
    break;
  }
  return place;
}

/// Fills in what an identifier says of the value of a field.
void Grammar::define(const Frame &frame, std::string_view field, Place &place) const {
  if (place.type == nullptr || place.wraps || defined_ > deepest) return;
  const pki_Kind kind = pki_Type_kind(place.type);
  const bool any = is_any(kind);
  if (!any && kind != PKI_OCTET_STRING && kind != PKI_BIT_STRING) return;
  for (const Defined &row : rows) {
    if (row.field != field || (!has(frame.identifier, row) && !has(frame.inner, row)) ||
        (!row.around.empty() && around() != row.around))
      continue;
    const bool in_string = !any || row.in_string;
    (in_string ? place.content : place.type) = pki_Type_find(row.type);
    if (!in_string) place.begins = place.type;
    return;
  }
  const bool in_string = field == "extnValue" || field == "eContent";
  const pki_Type *const type = any || in_string ? type_defined_by(frame.identifier) : nullptr;
  if (type == nullptr) return;
  (any ? place.type : place.content) = type;
  if (any) place.begins = place.type;
}

/// Returns the name of the type around the innermost record, empty for the outermost record.
std::string_view Grammar::around() const {
  size_t i = frames_.size();
  while (i > 0 && frames_[i - 1].kind != Kind::fields) --i;
  const pki_Type *const type = i > 1 ? frames_[i - 2].of : nullptr;
  return type == nullptr ? "" : pki_Type_name(type);
}

void Grammar::note_identifier(size_t level, Octets content) {
  if (!knows(level)) return;
  Frame &frame = frames_.back();
  if (frame.kind == Kind::fields && frame.identifier.empty()) frame.identifier = content;
}

void Grammar::open(size_t level, const Place &place) {
  if (place.type == nullptr) return;
  const pki_Kind kind = pki_Type_kind(place.type);
  const Frame &outer = frames_.back();
  Frame frame{.level = level,
              .type = place.type,
              .of = place.type,
              .field = place.field.empty() ? outer.field : place.field,
              .identifier = outer.identifier,
              .inner = outer.inner,
              .defines = place.begins != nullptr};
  if (place.wraps) {
    frame.kind = Kind::value;
  } else if (is_list(kind)) {
    frame.kind = Kind::list;
    frame.type = pki_Type_element(place.type);
  } else if (kind == PKI_SEQUENCE) {
    frame.kind = Kind::fields;
    frame.identifier = {};
    frame.inner = {};
  } else {
    return;
  }
  push(frame, place);
}

void Grammar::open_string(size_t level, const Place &place) {
  if (place.content == nullptr) return;
  push({.level = level,
        .kind = Kind::value,
        .type = place.content,
        .of = place.content,
        .whole = true,
        .defines = true},
       place);
}

void Grammar::push(Frame frame, const Place &place) {
  frame.path_length = path_.size();
  append(path_, place);
  if (frame.defines) ++defined_;
  frames_.push_back(frame);
}

void Grammar::close(size_t level) {
  if (!knows(level)) return;
  const Frame frame = frames_.back();
  frames_.pop_back();
  path_.resize(frame.path_length);
  if (frame.defines) --defined_;
  if (frame.kind == Kind::fields && !frames_.empty() && frames_.back().kind == Kind::fields)
    frames_.back().inner = frame.identifier;
}

std::string Grammar::path(const Place &place) const {
  std::string path = path_;
  append(path, place);
  return path;
}

}  // namespace tool
