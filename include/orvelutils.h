/**
 * @file orvelutils.h
 * An ordered list of element pointers.
 *
 * The list does not know the type of its elements. Whoever appends an element hands it over;
 * List_free() gives every element to the destructor of its type. A list is used from one thread at
 * a time. Counts and indexes are signed 32-bit numbers, indexes run from 0.
 */
#ifndef ORVELUTILS_H
#define ORVELUTILS_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** An ordered list of element pointers; opaque. */
typedef struct List List;

#ifdef __cplusplus
}

/*
 * The functions that a list is given for its elements: any pointer to a function of the right
 * shape converts, whatever the element type, so no cast is needed at the call. Each type is one
 * function pointer and nothing else, and is passed as one.
 */

/** A destructor `void f(Element *)`, which must accept a null pointer; or null. */
struct List_destructor {
  void (*function)(void *);
  List_destructor(decltype(nullptr)) noexcept : function(nullptr) {}
  template <class Element>
  List_destructor(void (*f)(Element *)) noexcept
      : function(reinterpret_cast<void (*)(void *)>(f)) {}
};

/** A copy function `Element *f(const Element *)`, which gives a null pointer on failure. */
struct List_cloner {
  void *(*function)(const void *);
  List_cloner(decltype(nullptr)) noexcept : function(nullptr) {}
  template <class Element>
  List_cloner(Element *(*f)(const Element *)) noexcept
      : function(reinterpret_cast<void *(*)(const void *)>(f)) {}
};

/** A comparison `int32_t f(const Element *, const Element *)`, which gives 0 for equal elements. */
struct List_comparison {
  int32_t (*function)(const void *, const void *);
  List_comparison(decltype(nullptr)) noexcept : function(nullptr) {}
  template <class Element>
  List_comparison(int32_t (*f)(const Element *, const Element *)) noexcept
      : function(reinterpret_cast<int32_t (*)(const void *, const void *)>(f)) {}
};

extern "C" {
#else
/*
 * The functions that a list is given for its elements. The types leave the parameters open, so that
 * a function of any element type can be handed over without a cast.
 */
#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wstrict-prototypes"
#endif

/** A destructor `void f(Element *)`, which must accept a null pointer; or null. */
typedef void (*List_destructor)();
/** A comparison `int32_t f(const Element *, const Element *)`, which gives 0 for equal elements. */
typedef int32_t (*List_comparison)();
#endif

/**
 * Gives a new empty list, or NULL when memory is exhausted. The caller owns it and releases it with
 * List_free().
 *
 * @param reserved 0; the value has no effect.
 */
List *List_new(int32_t reserved);

/**
 * Gives 1 when `element` has become the last element of `list`, which from then on owns it, and 0
 * when memory is exhausted or `list` is NULL; the element then stays with the caller and the list
 * is as before.
 *
 * @param reserved 0; the value has no effect.
 */
int32_t List_append(List *list, void *element, int32_t reserved);

/** Gives the number of elements; 0 for a NULL list. */
int32_t List_len(const List *list);

/**
 * Gives the element at `index`, which stays with the list; NULL when `list` is NULL or has no such
 * index.
 */
void *List_get(const List *list, int32_t index);

/**
 * Gives the index of the first element for which `cmp` with `element` gives 0; -1 when there is
 * none, or `list` is NULL.
 */
int32_t List_contains(const List *list, const void *element, List_comparison cmp);

/**
 * Gives a new list with a copy of each element in the same order, or NULL. The caller owns it. When
 * `clone` gives NULL or memory is exhausted, the copies made so far go through `destructor`, and
 * the result is NULL, as it is for a NULL list.
 */
#ifdef __cplusplus
List *List_clone(const List *list, List_cloner clone, List_destructor destructor);
#else
/* No prototype in C, which has no type for a function that returns a pointer to any element. */
List *List_clone(/* const List *list, Element *(*clone)(const Element *), List_destructor */);
#endif

/**
 * Releases the list, after giving each element in order to `destructor`. With a NULL destructor the
 * elements are left alone. A NULL list is ignored.
 */
void List_free(List *list, List_destructor destructor);

#ifdef __cplusplus
}
#elif defined(__clang__)
#pragma clang diagnostic pop
#endif

#endif
