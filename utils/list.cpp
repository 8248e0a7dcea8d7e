// This library exports the functions of the header. Everything else stays hidden.
#pragma GCC visibility push(default)
#include "orvelutils.h"
#pragma GCC visibility pop

#include <cstdint>
#include <cstdlib>
#include <cstring>

// A short list is one block: it holds its first elements itself. A longer list has a second block
// for them.
struct List {
  static constexpr int32_t inlined = 4;

  void **elements;
  int32_t length;
  int32_t capacity;
  void *first[inlined];
};

namespace {

// The element functions take pointers to records. They are called with pointers to void here,
// because the list does not know the type. All pointers are passed alike on the platforms of this
// library. The language does not promise that, and the function sanitizer would report the calls.
#ifdef __clang__
#define CALLS_ELEMENT_FUNCTIONS __attribute__((no_sanitize("function")))
#else
#define CALLS_ELEMENT_FUNCTIONS
#endif

bool grow(List *list) {
  if (list->capacity > INT32_MAX / 4) return false;
  const int32_t capacity = list->capacity * (list->capacity < 1024 ? 4 : 2);
  const auto count = static_cast<size_t>(capacity);
  const bool in_place = list->elements == list->first;
  auto **elements = static_cast<void **>(
      std::realloc(in_place ? nullptr : list->elements, count * sizeof(void *)));
  if (elements == nullptr) return false;
  if (in_place) std::memcpy(elements, list->first, sizeof list->first);
  list->elements = elements;
  list->capacity = capacity;
  return true;
}

}  // namespace

List *List_new(int32_t) {
  auto *list = static_cast<List *>(std::malloc(sizeof(List)));
  if (list == nullptr) return nullptr;
  list->elements = list->first;
  list->length = 0;
  list->capacity = List::inlined;
  return list;
}

int32_t List_append(List *list, void *element, int32_t) {
  if (list == nullptr) return 0;
  if (list->length == list->capacity && !grow(list)) return 0;
  list->elements[list->length++] = element;
  return 1;
}

int32_t List_len(const List *list) { return list == nullptr ? 0 : list->length; }

void *List_get(const List *list, int32_t index) {
  if (list == nullptr || index < 0 || index >= list->length) return nullptr;
  return list->elements[index];
}

CALLS_ELEMENT_FUNCTIONS
int32_t List_contains(const List *list, const void *element, List_comparison_function cmp) {
  for (int32_t i = 0; i < List_len(list); ++i) {
    if (cmp(list->elements[i], element) == 0) return i;
  }
  return -1;
}

CALLS_ELEMENT_FUNCTIONS
List *List_clone(const List *list, List_cloner_function clone,
                 List_destructor_function destructor) {
  if (list == nullptr) return nullptr;
  List *copy = List_new(0);
  if (copy == nullptr) return nullptr;
  for (int32_t i = 0; i < list->length; ++i) {
    void *element = clone(list->elements[i]);
    if (element == nullptr || List_append(copy, element, 0) == 0) {
      if (element != nullptr && destructor != nullptr) destructor(element);
      List_free(copy, destructor);
      return nullptr;
    }
  }
  return copy;
}

CALLS_ELEMENT_FUNCTIONS
void List_free(List *list, List_destructor_function destructor) {
  if (list == nullptr) return;
  if (destructor != nullptr) {
    for (int32_t i = 0; i < list->length; ++i) destructor(list->elements[i]);
  }
  if (list->elements != list->first) std::free(list->elements);
  std::free(list);
}
