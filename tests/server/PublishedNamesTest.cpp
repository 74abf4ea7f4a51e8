#include "server/PublishedNames.h"

#include <gtest/gtest.h>

#include "server/Sha1.h"

namespace zelUtilities {
namespace {

std::string hexadecimal(const std::array<std::uint8_t, 20>& digest) {
  static constexpr char digits[] = "0123456789abcdef";
  std::string text;
  for (const std::uint8_t byte : digest) {
    text += digits[byte >> 4];
    text += digits[byte & 15];
  }
  return text;
}

TEST(Sha1, GivesThePublishedDigests) {
  EXPECT_EQ(hexadecimal(sha1("")), "da39a3ee5e6b4b0d3255bfef95601890afd80709");
  EXPECT_EQ(hexadecimal(sha1("abc")), "a9993e364706816aba3e25717850c26c9cd0d89d");
  EXPECT_EQ(hexadecimal(sha1("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq")),
            "84983e441c3bd26ebaae4aa1f95129e5e54670f1");
  EXPECT_EQ(hexadecimal(sha1(std::string(1000000, 'a'))), "34aa973cd4c4daa4f61eeb2bdbad27316534016f");
}

TEST(PublishedNames, NameUuidIsVersionFive) {
  const Uuid domains = {
      {0x6B, 0xA7, 0xB8, 0x10, 0x9D, 0xAD, 0x11, 0xD1, 0x80, 0xB4, 0x00, 0xC0, 0x4F, 0xD4, 0x30, 0xC8}};
  EXPECT_EQ(uuidText(nameUuid(domains, "python.org")), "886313e1-3b8a-5372-9b90-0c9aee199e5d");
}

// Clients have compiled these in; a change would cut them off.
TEST(PublishedNames, IdentifiersNeverChange) {
  EXPECT_EQ(uuidText(libraryUuid()), "b7c537ee-3068-5237-9ec6-c74c18ef95ca");
  EXPECT_EQ(uuidText(publishedUuid("zelUtilities.zelNodeList")), "026b940e-88db-5011-99b1-32771d576452");
}

}  // namespace
}  // namespace zelUtilities
