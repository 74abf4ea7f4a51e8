#include "automation/KeyIndex.h"

#include <gtest/gtest.h>

#include <random>

namespace zelUtilities {
namespace {

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
