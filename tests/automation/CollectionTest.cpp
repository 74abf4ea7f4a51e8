#include "automation/Collection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>

#include "automation/Conversions.h"
#include "automation/FailingMemory.h"
#include "automation/Raised.h"
#include "automation/Results.h"

namespace zelUtilities {
namespace {

// An item that does something as it ends.
struct Last : Object {
  explicit Last(std::function<void()> action) : atEnd(std::move(action)) {}
  ~Last() override { atEnd(); }
  std::function<void()> atEnd;
};

Ref<Collection> numbered(std::int32_t count) {
  auto numbers = make<Collection>();
  for (std::int32_t i = 1; i <= count; ++i) numbers->Add(i, u"k" + decimalText(i));
  return numbers;
}

TEST(Collection, AnswersByPositionAndByKeyInAnyCase) {
  const auto items = make<Collection>();
  items->Add(u"Arial", u"Font");
  items->Add(u"no key");
  items->Add(u"empty", u"");
  EXPECT_EQ(raised([&] { items->Add(1, u"fonT"); }), 457);
  EXPECT_EQ(raised([&] { items->Add(1, 5); }), 13);
  EXPECT_EQ(raised([&] { items->Remove(4); }), 9);
  EXPECT_EQ(items->Count(), 3);
  // A text is a key, never a position.
  const auto item = [&](const Variant& key) { return toText(items->Item(key)); };
  EXPECT_EQ(results(item, u"FONT||2", 2.4, 0, 4, Variant::date(1)),
            "Arial|empty|error 5|no key|error 9|error 9|error 13");
}

// A collection beside a plain list of its items, which are numbers that grow: the next item of an enumerator
// is the first one above its last.
struct RandomChanges : testing::TestWithParam<const char*> {
  int below(std::size_t limit) { return static_cast<int>(random() % limit); }
  static String keyOf(int item) { return u"Key " + decimalText(item); }

  void add(int item) {
    items->Add(item, keyOf(item));
    plain.push_back(item);
  }
  void remove(int place) {
    items->Remove(below(2) == 0 ? Variant(keyOf(plain[place])) : Variant(place + 1));
    ASSERT_EQ(items->find(keyOf(plain[place])), nullptr);
    plain.erase(plain.begin() + place);
  }
  void walk() {
    while (walks.size() < 6) walks.emplace_back(items->NewEnum(), 0);
    const auto copied = walks[below(6)];
    walks[below(6)] = {copied.first->clone(), copied.second};
    for (auto& [walk, last] : walks) {
      if (below(50) == 0) walk->reset(), last = 0;
      if (below(2) == 0) continue;
      const auto next = std::upper_bound(plain.begin(), plain.end(), last);
      Variant item;
      ASSERT_EQ(walk->next(item), next != plain.end());
      if (next == plain.end()) continue;
      ASSERT_EQ(item.longInteger(), *next);
      last = *next;
    }
  }

  std::mt19937 random;
  Ref<Collection> items = make<Collection>();
  std::vector<int> plain;
  std::vector<std::pair<Ref<Enumerator>, int>> walks;  // with its last item
};

TEST_P(RandomChanges, LeaveOrderKeysAndEnumeratorsRight) {
  const std::string from = GetParam();
  for (int step = 1; step < 6000 && !HasFatalFailure(); ++step) {
    const int count = items->Count();
    if (step % 1300 == 0)
      items->Clear(), plain.clear();
    else if (count == 0 || below(10) < (step % 600 < 330 ? 7 : 2))
      add(step);
    else
      remove(from == "front" ? 0 : from == "back" ? count - 1 : below(count));
    ASSERT_EQ(items->Count(), plain.size());
    if (step % 3 == 0) walk();
    if (step % 5 != 0 || plain.empty()) continue;
    const int place = below(plain.size());
    ASSERT_EQ(items->at(place + 1)->longInteger(), plain[place]);
    ASSERT_EQ(items->find(keyOf(plain[place])), items->at(place + 1));
  }
  items = nullptr;  // the enumerators keep it
  walk();
}
INSTANTIATE_TEST_SUITE_P(Collection, RandomChanges, testing::Values("front", "back", "anywhere"));

TEST(Collection, ItemsMayCallBackAsTheyEndAndEndTheirCollection) {
  auto items = numbered(3);
  int ended = 0;
  const auto callBack = [&, self = items.get()] {
    ++ended;
    Variant first;
    self->NewEnum()->next(first);
    if (self->find(u"k1")) self->Remove(u"k1");
    self->Clear();
  };
  items->Add(make<Last>(callBack), u"x");
  items->Add(make<Last>(callBack));
  items->Remove(u"x");
  EXPECT_EQ(ended, 2);
  EXPECT_EQ(items->Count(), 0);
  EXPECT_TRUE(items->tryAdd(1, u"k2"));
  items->Add(make<Last>(callBack));
  items = nullptr;
  EXPECT_EQ(ended, 3);
  for (const bool clears : {false, true}) {
    items = numbered(100);
    items->Add(make<Last>([&] { items = nullptr; }), u"x");
    items->Add(u"after it");
    const FailingMemory failing(clears ? 0 : -1);  // clearing needs no memory
    clears ? items->Clear() : items->Remove(u"x");
    EXPECT_FALSE(items);
  }
}

TEST(Collection, AnAdditionThatFindsNoMemoryChangesNothing) {
  const Variant item = u"an item that is too long to lie inside";
  for (std::int32_t size = 0; size < 40; ++size) {
    for (long allowed = 0, added = 0; !added; ++allowed) {
      const auto items = numbered(size + 1);
      if (size > 2) items->Remove(2), items->at(2);  // which makes the list count its gaps
      const std::int32_t count = items->Count();
      const Variant key = u"a key of some length";
      try {
        const FailingMemory failing(allowed);
        added = items->tryAdd(item, key.text());
      } catch (const std::bad_alloc&) {
      }
      ASSERT_EQ(items->Count(), count + added);
      ASSERT_EQ(items->find(key.text()), added ? items->at(count + 1) : nullptr);
      ASSERT_EQ(items->at(count)->longInteger(), size + 1);
      ASSERT_EQ(items->tryAdd(item, key.text()), !added);
    }
  }
}

// What an index of keys is asked for.
struct Element {
  String key;
  std::uint32_t hash;
  bool indexed = false;
  StringView keyText() const { return key; }
  std::uint32_t keyHash() const { return hash; }
};

// Keys that share a few hashes, those at the ends of the table among them, make long runs that wrap round.
TEST(KeyIndex, FindsWhatIsThereThroughRandomChangesAndCollisions) {
  constexpr std::uint32_t hashes[] = {0, 1, 2, 0x7FFFFFFF, 0xC0000000, 0xFFFFFFFE, 0xFFFFFFFF};
  std::vector<Element> elements;
  for (int i = 0; i < 120; ++i) elements.push_back({u"Key" + decimalText(i), hashes[i % 7] ^ (i % 5 == 0)});
  KeyIndex<Element> index;
  std::mt19937 random(4711);
  for (int step = 0; step < 4000; ++step) {
    Element& element = elements[random() % elements.size()];
    const bool growing = step % 1000 < 500, rarely = random() % 4 == 0;
    if (step % 1500 == 1499) {
      index.clear();
      for (Element& each : elements) each.indexed = false;
      index.reserve(static_cast<std::size_t>(step / 1500) + 1);  // for 1, then for 2
    } else if (element.indexed != (growing != rarely)) {
      element.indexed ? index.erase(&element) : index.insert(&element);
      element.indexed = !element.indexed;
    } else if (!element.indexed) {
      index.erase(&element);  // one that is not there is nobody's loss
    }
    std::size_t count = 0;
    for (Element& each : elements) {
      count += each.indexed;
      ASSERT_EQ(index.find(u"kEY" + each.key.substr(3), each.hash), each.indexed ? &each : nullptr) << step;
    }
    ASSERT_EQ(index.size(), count);
  }
}

}  // namespace
}  // namespace zelUtilities
