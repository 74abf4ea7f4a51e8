#include "server/PublishedNames.h"

#include <gtest/gtest.h>

namespace zelUtilities {
namespace {

// With one block, with one that is just full, with one byte more, and with many.
TEST(PublishedNames, NameUuidIsVersionFive) {
  const Uuid domains = {
      {0x6B, 0xA7, 0xB8, 0x10, 0x9D, 0xAD, 0x11, 0xD1, 0x80, 0xB4, 0x00, 0xC0, 0x4F, 0xD4, 0x30, 0xC8}};
  const std::pair<std::string, std::string> cases[] = {
      {"python.org", "886313e1-3b8a-5372-9b90-0c9aee199e5d"},
      {std::string(39, 'x'), "2f80c0d1-1c62-579f-8d68-e61ad5592c9b"},
      {std::string(40, 'x'), "e56fd57a-7633-5e1d-8f80-70e05ac413e5"},
      {std::string(1'000'000, 'x'), "ee0ae04d-e58e-5818-9e08-0afd3f1512e8"}};
  for (const auto& [name, uuid] : cases) EXPECT_EQ(uuidText(nameUuid(domains, name)), uuid);
}

// Clients have compiled these in; a change would cut them off.
TEST(PublishedNames, IdentifiersNeverChange) {
  EXPECT_EQ(uuidText(libraryUuid()), "b7c537ee-3068-5237-9ec6-c74c18ef95ca");
  EXPECT_EQ(uuidText(publishedUuid("zelUtilities.zelNodeList")), "026b940e-88db-5011-99b1-32771d576452");
}

}  // namespace
}  // namespace zelUtilities
