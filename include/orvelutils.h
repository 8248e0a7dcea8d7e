/**
 * @file orvelutils.h
 * An ordered list of element pointers.
 *
 * The list does not know the type of its elements. List_append() hands an element over to the list,
 * and List_free() passes each element to the destructor of its type. A list is used from one thread
 * at a time. Counts and indexes are signed 32-bit numbers; indexes start at 0.
 */
#ifndef ORVELUTILS_H
#define ORVELUTILS_H

#include <stdint.h>

#ifdef __cplusplus
#include <string.h>

extern "C" {
#endif

/** An ordered list of element pointers; opaque. */
typedef struct List List;

/** A destructor `void f(Element *)`, which must accept NULL; or NULL. */
typedef void (*List_destructor_function)(void *);

/** A copy function `Element *f(const Element *)`, which returns NULL on failure. */
typedef void *(*List_cloner_function)(const void *);

/** A comparison `int32_t f(const Element *, const Element *)`, which returns 0 for equal elements.
 */
typedef int32_t (*List_comparison_function)(const void *, const void *);

/**
 * Makes an empty list, which the caller owns and releases with List_free(). Returns NULL when
 * memory is exhausted.
 *
 * @param reserved 0; the value has no effect.
 */
List *List_new(int32_t reserved);

/**
 * Appends `element` to `list`, which owns it from then on. Returns 1, or 0 when memory is exhausted
 * or `list` is NULL. After a failure the caller still owns the element and the list is unchanged.
 *
 * @param reserved 0; the value has no effect.
 */
int32_t List_append(List *list, void *element, int32_t reserved);

/** Returns the number of elements; 0 for a NULL list. */
int32_t List_len(const List *list);

/**
 * Returns the element at `index`, which the list still owns. Returns NULL when `list` is NULL or
 * has no such index.
 */
void *List_get(const List *list, int32_t index);

/**
 * Finds the first element that equals `element`: the first for which `cmp`, called with it and
 * `element`, returns 0. Returns its index, or -1 when no element is equal or `list` is NULL.
 */
int32_t List_contains(const List *list, const void *element, List_comparison_function cmp);

/**
 * Copies the list and each element, in the same order. Returns the copy, which the caller owns, or
 * NULL for a NULL list. When `clone` returns NULL or memory is exhausted, passes the copies made so
 * far to `destructor`, unless that is NULL, and returns NULL.
 */
List *List_clone(const List *list, List_cloner_function clone, List_destructor_function destructor);

/**
 * Passes each element in order to `destructor`, then releases the list. A NULL destructor leaves
 * the elements alone. A NULL list is ignored.
 */
void List_free(List *list, List_destructor_function destructor);

#ifdef __cplusplus
}

/*
 * A pointer to a function of the right shape converts to these classes, whatever the record type,
 * and a call needs no cast. The overloads take them and call the functions above. The constructors
 * copy the pointer, because compilers can warn about a cast between function types.
 */

/** A destructor of any type of element. */
struct List_destructor {
  List_destructor_function function;
  List_destructor(decltype(nullptr)) noexcept : function(nullptr) {}
  template <class Element>
  List_destructor(void (*f)(Element *)) noexcept : function(nullptr) {
    memcpy(&function, &f, sizeof function);
  }
};

/** A copy function of any type of element. */
struct List_cloner {
  List_cloner_function function;
  List_cloner(decltype(nullptr)) noexcept : function(nullptr) {}
  template <class Element>
  List_cloner(Element *(*f)(const Element *)) noexcept : function(nullptr) {
    memcpy(&function, &f, sizeof function);
  }
};

/** A comparison of any type of element. */
struct List_comparison {
  List_comparison_function function;
  List_comparison(decltype(nullptr)) noexcept : function(nullptr) {}
  template <class Element>
  List_comparison(int32_t (*f)(const Element *, const Element *)) noexcept : function(nullptr) {
    memcpy(&function, &f, sizeof function);
  }
};

/* Inlined always, so that no object file has a function of the same name beside the C function. */

[[gnu::always_inline]] inline int32_t List_contains(const List *list, const void *element,
                                                    List_comparison cmp) {
  return List_contains(list, element, cmp.function);
}

[[gnu::always_inline]] inline List *List_clone(const List *list, List_cloner clone,
                                               List_destructor destructor) {
  return List_clone(list, clone.function, destructor.function);
}

[[gnu::always_inline]] inline void List_free(List *list, List_destructor destructor) {
  List_free(list, destructor.function);
}
#else
typedef List_destructor_function List_destructor;
typedef List_cloner_function List_cloner;
typedef List_comparison_function List_comparison;

/*
 * C has no type that takes a pointer to a function of any record. `void (*)()` did until C17, but
 * means `void (*)(void)` since C23, and never took a function that returns a pointer to a record. A
 * transparent union takes the types that it names, and no record type of a caller's own. An
 * ellipsis takes everything and checks nothing. So a function that takes element functions is a
 * macro too, as C17, 7.1.4 allows it to C's own library: the macro converts them and calls the
 * function. No macro has a name of another kind, and C++ has none.
 *
 * A conversion has the name of its type. `_Generic` makes the compiler check a call of `f` that
 * never happens: `f` must take as many arguments, pointers and numbers in the same order, and
 * return the type that is named. In that call List_get() is a pointer to any record, and a NULL `f`
 * is replaced by one of the type itself. The conversion goes through an integer, because compilers
 * can warn about a cast between function types.
 */
#define List_destructor(f) \
  _Generic((1 ? (void)0 \
              : _Generic(1 ? (f) : (void *)0, void *: (List_destructor)0, default: (f))( \
                    List_get(0, 0)), \
            0), \
           int: (List_destructor)(uintptr_t)(1 ? (f) : (void *)0))
#define List_cloner(f) \
  _Generic(1 ? (const void *)List_get(0, 0) \
             : _Generic(1 ? (f) : (void *)0, void *: (List_cloner)0, default: (f))( \
                   List_get(0, 0)), \
           const void *: (List_cloner)(uintptr_t)(1 ? (f) : (void *)0))
#define List_comparison(f) \
  _Generic(_Generic(1 ? (f) : (void *)0, void *: (List_comparison)0, default: (f))( \
               List_get(0, 0), List_get(0, 0)), \
           int32_t: (List_comparison)(uintptr_t)(1 ? (f) : (void *)0))

#define List_contains(list, element, cmp) List_contains(list, element, List_comparison(cmp))
#define List_clone(list, clone, destructor) \
  List_clone(list, List_cloner(clone), List_destructor(destructor))
#define List_free(list, destructor) List_free(list, List_destructor(destructor))
#endif

#endif
