// ContentInfo, whose content is of the type that its identifier says, and may be a message again.
#include "core/record.h"
#include "core/stack.h"
#include "pkcs/pkcs.h"

using namespace asn1;

namespace {
constexpr const char *unit = "pkcs7";
}

Content *asn1_Content_new() { return new_record<Content>(); }
void asn1_Content_free(Content *pElement) { std::free(pElement); }

ContentInfo *asn1_ContentInfo_new() {
  auto *info = new_record<ContentInfo>();
  if (info == nullptr) return nullptr;
  info->content = asn1_Content_new();
  if (info->content != nullptr) return info;
  asn1_ContentInfo_free(info);  // which ends the process, as for every record without a type
  return nullptr;
}

void asn1_ContentInfo_free(ContentInfo *pElement) {
  if (pElement == nullptr) return;
  const Type &type = content_type(*pElement);
  require(pElement->content != nullptr, unit, __func__, "content != NULL");
  release(pElement->content->value, type);
  asn1_ObjId_free(pElement->contentType);
  asn1_Content_free(pElement->content);
  std::free(pElement);
}

ContentInfo *asn1_ContentInfo_clone(const ContentInfo *pElement) {
  if (pElement == nullptr || !stack_for_nested()) return nullptr;
  ContentInfo *const copy = asn1_ContentInfo_new();
  if (copy == nullptr) return nullptr;
  if (clone_member(&copy->contentType, &pElement->contentType, ObjIdType) &&
      (pElement->content == nullptr ||
       clone_member(&copy->content->value, &pElement->content->value, content_type(*pElement)))) {
    return copy;
  }
  asn1_ContentInfo_free(copy);
  return nullptr;
}

namespace {

/// The [0] around the content may have an indefinite length of its own, and a level of its own in
/// the trace: its opening line stands at the raised depth, its closing line one level above. A
/// depth that wraps to 0 stays 0: the message is not closed then, either.
bool read_content(ContentReader *in, ContentInfo *info, uint32_t *depth) {
  constexpr uint8_t wrapper = tag::context | tag::constructed;
  if (in->peek() != wrapper) return true;
  *depth = child_depth(*depth);
  Header header;
  if (!in->read_header(0, wrapper, Forms::indefinite, &header, *depth)) return false;
  ContentReader content = in->content(header);
  void *value = nullptr;
  const bool complete = read(content, &value, *depth, content_type(*info));
  info->content->value = value;
  if (!complete || (header.indefinite && !content.read_outer_eoc())) return false;
  in->move_to(content.position());
  if (*depth != 0) trace_close(--*depth);
  return true;
}

}  // namespace

// An input that has no well-formed identifier where the type should be ends the process, because
// the record that is then released has no type.
const uint8_t *asn1_ContentInfo_d(const uint8_t *z, const uint8_t *end, uint32_t impl_tag,
                                  ContentInfo **ppElement, uint32_t depth) {
  if (ppElement == nullptr) return nullptr;
  *ppElement = nullptr;
  const ReadingNested nested;
  if (!nested.fits()) return nullptr;
  Reader in(z, end);
  Header header;
  if (!in.read_header(impl_tag, tag::sequence, Forms::indefinite, &header, depth)) return nullptr;
  ContentInfo *const info = asn1_ContentInfo_new();
  *ppElement = info;
  if (info == nullptr) return nullptr;
  uint32_t inner_depth = child_depth(depth);
  ContentReader content = in.content(header);
  const bool complete = read(content, &info->contentType, inner_depth, ObjIdType) &&
                        read_content(&content, info, &inner_depth) &&
                        (!header.indefinite || content.read_outer_eoc());
  if (!complete) {
    asn1_ContentInfo_free(info);
    *ppElement = nullptr;
    return nullptr;
  }
  if (inner_depth != 0) trace_close(inner_depth - 1);
  return content.position();
}
