#include "automation/SlotList.h"

#include <gtest/gtest.h>

#include <list>
#include <memory>
#include <random>

namespace zelUtilities {
namespace {

struct Element {
  int id;  // in the order of appending
  std::uint32_t slot = 0;
};
using List = SlotList<Element, &Element::slot>;

// A list beside a plain one. The next element of a cursor is the first one younger than its last.
class Checked {
 public:
  explicit Checked(std::uint32_t seed) : random_(seed) {}

  std::size_t below(std::size_t limit) { return random_() % limit; }
  std::size_t size() const { return model_.size(); }
  void append() {
    model_.push_back(std::make_unique<Element>(Element{++lastId_}));
    list_.append(model_.back().get());
  }
  void remove(std::size_t position) {
    list_.remove(model_[position].get());
    model_.erase(model_.begin() + static_cast<std::ptrdiff_t>(position));
  }
  void clear() { list_.clear(), model_.clear(); }
  void stepCursors() {
    const auto any = [this] {
      return std::next(cursors_.begin(), static_cast<std::ptrdiff_t>(below(cursors_.size())));
    };
    if (cursors_.size() < 6) cursors_.emplace_back(List::Cursor(list_), 0);
    cursors_.push_back(*any());
    cursors_.erase(any());
    for (auto& [cursor, lastId] : cursors_) {
      if (below(50) == 0) cursor.reset(), lastId = 0;
      if (below(2) == 0) continue;
      const auto younger = [last = lastId](const auto& element) { return element->id > last; };
      const auto next = std::find_if(model_.begin(), model_.end(), younger);
      ASSERT_EQ(cursor.next(), next == model_.end() ? nullptr : next->get());
      if (next != model_.end()) lastId = (*next)->id;
    }
  }
  void check() {
    ASSERT_EQ(list_.size(), model_.size());
    for (int probe = 0; probe < 3 && !model_.empty(); ++probe) {
      const std::size_t position = below(model_.size());
      ASSERT_EQ(list_.at(position), model_[position].get()) << "position " << position;
    }
    std::uint32_t slot = list_.startSlot();
    for (const auto& element : model_) ASSERT_EQ(list_.nextFrom(slot), element.get());
    ASSERT_EQ(list_.nextFrom(slot), nullptr);
  }

 private:
  std::mt19937 random_;
  int lastId_ = 0;
  List list_;
  std::vector<std::unique_ptr<Element>> model_;
  std::list<std::pair<List::Cursor, int>> cursors_;  // with the id of its last element
};

enum From { Front, Back, Anywhere };
class SlotListTest : public testing::TestWithParam<From> {};

TEST_P(SlotListTest, KeepsOrderAndCursorsWhileElementsAreRemoved) {
  Checked list(GetParam() + 1U);
  for (int step = 0; step < 6000 && !HasFatalFailure(); ++step) {
    const bool growing = step % 600 < 330;
    const std::size_t last = list.size() - 1;
    if (list.size() == 0 || list.below(10) < (growing ? 7U : 2U))
      list.append();
    else
      list.remove(GetParam() == Front ? 0 : GetParam() == Back ? last : list.below(last + 1));
    if (step % 1700 == 1699) list.clear();
    if (step % 3 == 0) list.stepCursors();
    if (step % 5 == 0) list.check();
  }
}
INSTANTIATE_TEST_SUITE_P(Removed, SlotListTest, testing::Values(Front, Back, Anywhere));

}  // namespace
}  // namespace zelUtilities
