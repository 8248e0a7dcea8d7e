// Tests the list: order, growth, search, copies, and who releases an element.
#include <gtest/gtest.h>
#include <orvelutils.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace list_test {

namespace {

/// An element that counts its releases. It stays until the program ends, so that a second release
/// is counted, too.
struct Element {
  int number;
  int releases;
};

std::vector<std::unique_ptr<Element>> elements;
std::vector<int> released;  // the numbers, in order of release; -1 for a null pointer
int copies_allowed = 0;     // once it is 0, `clone` returns NULL

Element *make(int number) {
  elements.push_back(std::make_unique<Element>(Element{number, 0}));
  return elements.back().get();
}

void release(Element *element) {
  released.push_back(element != nullptr ? element->number : -1);
  if (element != nullptr) ++element->releases;
}

Element *clone(const Element *element) {
  return copies_allowed-- > 0 ? make(element->number) : nullptr;
}

int32_t compare(const Element *a, const Element *b) { return a->number == b->number ? 0 : 1; }

class ListTest : public testing::Test {
 protected:
  void SetUp() override {
    elements.clear();
    released.clear();
    copies_allowed = INT32_MAX;
  }
};

List *make_list(const std::vector<int> &numbers) {
  List *list = List_new(0);
  for (const int number : numbers) EXPECT_NE(0, List_append(list, make(number), 0));
  return list;
}

const Element *get(const List *list, int32_t index) {
  return static_cast<const Element *>(List_get(list, index));
}

std::vector<int> numbers_of(const List *list) {
  std::vector<int> numbers;
  for (int32_t i = 0; i < List_len(list); ++i) numbers.push_back(get(list, i)->number);
  return numbers;
}

std::vector<int> count_up_to(int count) {
  std::vector<int> numbers;
  for (int i = 0; i < count; ++i) numbers.push_back(i);
  return numbers;
}

using ListNew = ListTest;
using ListAppend = ListTest;
using ListGet = ListTest;
using ListContains = ListTest;
using ListClone = ListTest;
using ListFree = ListTest;

TEST_F(ListNew, IsEmpty) {
  List *list = List_new(0);
  ASSERT_NE(nullptr, list);
  EXPECT_EQ(0, List_len(list));
  EXPECT_EQ(nullptr, List_get(list, 0));
  List_free(list, release);
  EXPECT_TRUE(released.empty());
}

TEST_F(ListNew, IgnoresTheReservedNumbers) {
  for (const int32_t reserved : {0, 1, -1, 1000, INT32_MAX, INT32_MIN}) {
    List *list = List_new(reserved);
    ASSERT_NE(nullptr, list) << reserved;
    EXPECT_EQ(0, List_len(list));
    Element *a = make(1);
    Element *b = make(2);
    EXPECT_EQ(1, List_append(list, a, reserved));
    EXPECT_EQ(1, List_append(list, b, reserved));
    EXPECT_EQ(a, List_get(list, 0));
    EXPECT_EQ(b, List_get(list, 1));
    List_free(list, release);
  }
}

TEST_F(ListAppend, PutsEachElementLastAndKeepsThePointer) {
  List *list = List_new(0);
  Element *const first = make(1);
  Element *const second = make(2);
  EXPECT_EQ(1, List_append(list, first, 0));
  EXPECT_EQ(1, List_len(list));
  EXPECT_EQ(1, List_append(list, second, 0));
  EXPECT_EQ(2, List_len(list));
  EXPECT_EQ(1, List_append(list, first, 0)) << "the same pointer again";
  EXPECT_EQ(3, List_len(list));
  EXPECT_EQ(first, List_get(list, 0));
  EXPECT_EQ(second, List_get(list, 1));
  EXPECT_EQ(first, List_get(list, 2));
  List_free(list, nullptr);
}

TEST_F(ListAppend, TakesANullElement) {
  List *list = make_list({1});
  EXPECT_EQ(1, List_append(list, nullptr, 0));
  EXPECT_EQ(1, List_append(list, make(3), 0));
  EXPECT_EQ(3, List_len(list));
  EXPECT_EQ(nullptr, List_get(list, 1));
  EXPECT_EQ(3, get(list, 2)->number);
  List_free(list, release);
  EXPECT_EQ((std::vector<int>{1, -1, 3}), released);
}

TEST_F(ListAppend, FailsWithoutAList) {
  Element *const element = make(1);
  EXPECT_EQ(0, List_append(nullptr, element, 0));
  EXPECT_EQ(0, element->releases);
}

TEST_F(ListAppend, GrowsToThousandsOfElementsAndKeepsEach) {
  const std::vector<int> numbers = count_up_to(10000);
  List *list = List_new(0);
  for (const int number : numbers) {
    ASSERT_EQ(1, List_append(list, make(number), 0));
    ASSERT_EQ(number + 1, List_len(list));
    ASSERT_EQ(0, get(list, 0)->number);
    ASSERT_EQ(number, get(list, number)->number);
  }
  EXPECT_EQ(numbers, numbers_of(list));
  List_free(list, release);
  EXPECT_EQ(numbers, released);
}

TEST_F(ListAppend, KeepsEveryElementAtEverySmallSize) {
  for (int size = 0; size <= 100; ++size) {
    const std::vector<int> numbers = count_up_to(size);
    List *list = make_list(numbers);
    EXPECT_EQ(numbers, numbers_of(list));
    released.clear();
    List_free(list, release);
    EXPECT_EQ(numbers, released);
  }
}

TEST_F(ListGet, GivesNullOutsideTheList) {
  for (const int size : {0, 1, 5, 100}) {
    List *list = make_list(count_up_to(size));
    for (const int32_t index : {-1, -2, size, size + 1, INT32_MAX, INT32_MIN}) {
      EXPECT_EQ(nullptr, List_get(list, index)) << index << " of " << size;
    }
    List_free(list, release);
  }
}

TEST_F(ListGet, LeavesTheElementInTheList) {
  List *list = make_list({1, 2});
  EXPECT_EQ(List_get(list, 1), List_get(list, 1));
  EXPECT_EQ(2, List_len(list));
  List_free(list, release);
}

TEST_F(ListGet, GivesNothingWithoutAList) {
  EXPECT_EQ(0, List_len(nullptr));
  EXPECT_EQ(nullptr, List_get(nullptr, 0));
  EXPECT_EQ(nullptr, List_get(nullptr, -1));
}

TEST_F(ListContains, GivesTheIndexOfTheFirstEqualElement) {
  List *list = make_list({5, 7, 9, 7});
  const struct {
    int number;
    int32_t index;
  } rows[] = {{5, 0}, {7, 1}, {9, 2}};
  for (const auto &row : rows) {
    const Element wanted{row.number, 0};
    EXPECT_EQ(row.index, List_contains(list, &wanted, compare));
  }
  List_free(list, release);
}

TEST_F(ListContains, GivesMinusOneWhereNoElementIsEqual) {
  const Element wanted{6, 0};
  List *list = make_list({5, 7, 9, 7});
  EXPECT_EQ(-1, List_contains(list, &wanted, compare));
  List_free(list, release);
}

TEST_F(ListContains, GivesMinusOneForAnEmptyListAndForNone) {
  const Element wanted{6, 0};
  List *list = List_new(0);
  EXPECT_EQ(-1, List_contains(list, &wanted, compare));
  List_free(list, nullptr);
  EXPECT_EQ(-1, List_contains(nullptr, &wanted, compare));
}

TEST_F(ListContains, FindsTheLastOfThousands) {
  List *list = make_list(count_up_to(3000));
  const Element wanted{2999, 0};
  EXPECT_EQ(2999, List_contains(list, &wanted, compare));
  List_free(list, release);
}

int32_t negative_unless_equal(const Element *a, const Element *b) {
  return a->number == b->number ? 0 : -1;
}

TEST_F(ListContains, TakesOnlyZeroForEqual) {
  List *list = make_list({1, 2});
  const Element wanted{2, 0};
  EXPECT_EQ(1, List_contains(list, &wanted, negative_unless_equal));
  List_free(list, release);
}

TEST_F(ListClone, CopiesEachElementInOrder) {
  List *list = make_list({3, 1, 2});
  List *copy = List_clone(list, clone, release);
  ASSERT_NE(nullptr, copy);
  EXPECT_NE(list, copy);
  EXPECT_EQ((std::vector<int>{3, 1, 2}), numbers_of(copy));
  for (int32_t i = 0; i < 3; ++i) EXPECT_NE(List_get(list, i), List_get(copy, i));
  EXPECT_TRUE(released.empty());

  List_free(list, release);
  EXPECT_EQ((std::vector<int>{3, 1, 2}), numbers_of(copy)) << "independent of its source";
  EXPECT_EQ(1, List_append(copy, make(4), 0));
  EXPECT_EQ((std::vector<int>{3, 1, 2, 4}), numbers_of(copy));
  List_free(copy, release);
  for (const auto &element : elements) EXPECT_EQ(1, element->releases);
}

TEST_F(ListClone, OfAnEmptyListIsANewEmptyList) {
  List *list = List_new(0);
  List *copy = List_clone(list, clone, release);
  ASSERT_NE(nullptr, copy);
  EXPECT_NE(list, copy);
  EXPECT_EQ(0, List_len(copy));
  List_free(copy, release);
  List_free(list, release);
}

TEST_F(ListClone, OfNoListIsNone) { EXPECT_EQ(nullptr, List_clone(nullptr, clone, release)); }

TEST_F(ListClone, ThatFailsAtTheThirdElementReleasesTheTwoCopies) {
  List *list = make_list({1, 2, 3, 4});
  copies_allowed = 2;
  EXPECT_EQ(nullptr, List_clone(list, clone, release));
  ASSERT_EQ(6U, elements.size());
  for (size_t i = 0; i < 4; ++i) EXPECT_EQ(0, elements[i]->releases) << "the source is untouched";
  EXPECT_EQ(1, elements[4]->releases);
  EXPECT_EQ(1, elements[5]->releases);
  EXPECT_EQ(-1, copies_allowed) << "no element behind the third is copied";
  EXPECT_EQ((std::vector<int>{1, 2, 3, 4}), numbers_of(list));
  List_free(list, release);
}

TEST_F(ListClone, ThatFailsAtTheFirstElementReleasesNoElement) {
  List *list = make_list({1, 2});
  copies_allowed = 0;
  EXPECT_EQ(nullptr, List_clone(list, clone, release));
  EXPECT_EQ(2U, elements.size());
  for (const auto &element : elements) EXPECT_EQ(0, element->releases);
  List_free(list, release);
}

TEST_F(ListClone, CopiesThousandsOfElements) {
  const std::vector<int> numbers = count_up_to(5000);
  List *list = make_list(numbers);
  List *copy = List_clone(list, clone, release);
  EXPECT_EQ(numbers, numbers_of(copy));
  List_free(copy, release);
  List_free(list, release);
  for (const auto &element : elements) ASSERT_EQ(1, element->releases);
}

TEST_F(ListFree, GivesEachElementToTheDestructorInOrder) {
  List_free(make_list({4, 5, 6}), release);
  EXPECT_EQ((std::vector<int>{4, 5, 6}), released);
}

TEST_F(ListFree, WithoutADestructorLeavesTheElementsAlone) {
  for (const int size : {0, 1, 3, 200}) List_free(make_list(count_up_to(size)), nullptr);
  for (const auto &element : elements) EXPECT_EQ(0, element->releases);
}

TEST_F(ListFree, IgnoresNoList) {
  List_free(nullptr, release);
  List_free(nullptr, nullptr);
  EXPECT_TRUE(released.empty());
}

void release_inner(List *list) { List_free(list, release); }

TEST_F(ListFree, ReleasesListsInsideAList) {
  List *outer = List_new(0);
  EXPECT_EQ(1, List_append(outer, make_list({1, 2}), 0));
  EXPECT_EQ(1, List_append(outer, List_new(0), 0));
  EXPECT_EQ(1, List_append(outer, make_list({3}), 0));
  List_free(outer, release_inner);
  EXPECT_EQ((std::vector<int>{1, 2, 3}), released);
}

TEST_F(ListFree, OfAnOuterListAloneFollowsThatOfTheInnerOnes) {
  List *outer = List_new(0);
  EXPECT_EQ(1, List_append(outer, make_list({1}), 0));
  EXPECT_EQ(1, List_append(outer, make_list({2}), 0));
  for (int32_t i = 0; i < List_len(outer); ++i) {
    List_free(static_cast<List *>(List_get(outer, i)), release);
  }
  List_free(outer, nullptr);
  EXPECT_EQ((std::vector<int>{1, 2}), released);
}

List *clone_inner(const List *list) { return List_clone(list, clone, release); }

TEST_F(ListClone, CopiesListsInsideAList) {
  List *outer = List_new(0);
  EXPECT_EQ(1, List_append(outer, make_list({1, 2}), 0));
  EXPECT_EQ(1, List_append(outer, make_list({3}), 0));
  List *copy = List_clone(outer, clone_inner, release_inner);
  ASSERT_EQ(2, List_len(copy));
  EXPECT_EQ((std::vector<int>{1, 2}), numbers_of(static_cast<List *>(List_get(copy, 0))));
  EXPECT_EQ((std::vector<int>{3}), numbers_of(static_cast<List *>(List_get(copy, 1))));

  copies_allowed = 2;
  EXPECT_EQ(nullptr, List_clone(outer, clone_inner, release_inner));
  List_free(copy, release_inner);
  List_free(outer, release_inner);
  for (const auto &element : elements) EXPECT_EQ(1, element->releases);
}

}  // namespace

}  // namespace list_test
