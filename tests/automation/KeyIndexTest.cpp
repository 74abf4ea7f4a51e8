#include "automation/KeyIndex.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace zelUtilities {
namespace {

struct Element {
  String key;
  std::uint32_t hash;
  StringView keyText() const { return key; }
  std::uint32_t keyHash() const { return hash; }
};

// Keys that share a few hashes, those at the ends of the table among them, make long runs that wrap round.
TEST(KeyIndex, FindsWhatIsThereThroughRandomChangesAndCollisions) {
  constexpr std::uint32_t hashes[] = {0, 1, 2, 0x7FFFFFFF, 0xC0000000, 0xFFFFFFFE, 0xFFFFFFFF};
  std::vector<Element> elements;
  for (int i = 0; i < 120; ++i) elements.push_back({u"Key" + decimalText(i), hashes[i % 7] ^ (i % 5 == 0)});
  KeyIndex<Element> index;
  std::map<String, Element*> model;
  std::mt19937 random(4711);
  for (int step = 0; step < 4000; ++step) {
    Element& element = elements[random() % elements.size()];
    if (step % 1500 == 1499) {
      index.clear();
      model.clear();
      index.reserve(static_cast<std::size_t>(step / 1500) + 1);  // for 1, then for 2
    }
    const bool growing = step % 1000 < 500;
    if (model.count(element.key) == 0) {
      if (!growing && random() % 4 != 0) continue;
      index.insert(&element);
      model[element.key] = &element;
    } else if (!growing || random() % 4 == 0) {
      index.erase(&element);
      index.erase(&element);  // one that is not there is nobody's loss
      model.erase(element.key);
    }
    ASSERT_EQ(index.size(), model.size());
    for (Element& each : elements) {
      Element* expected = model.count(each.key) != 0 ? &each : nullptr;
      ASSERT_EQ(index.find(u"kEY" + each.key.substr(3), each.hash), expected) << "step " << step;
    }
  }
}

}  // namespace
}  // namespace zelUtilities
