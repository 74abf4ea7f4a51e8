// XmlSaxNames: the names in a document as UTF-16. The parser keeps each name once, so a name is known by
// where it lies, and is converted once.
#pragma once

#include <array>
#include <cstdint>
#include <unordered_map>

#include "platform/Xml.h"

namespace zelUtilities {

class XmlSaxNames {
 public:
  // The texts are the parser's, and may be nothing but for the local name. What is given is good until the
  // next prune.
  XmlName name(const unsigned char* localName, const unsigned char* prefix, const unsigned char* uri) {
    const Name& name = find({localName, prefix});
    const StringView qualified = name.qualified;
    return {uri ? address(uri) : StringView(), qualified.substr(name.localStart), qualified};
  }
  // The declaration of a prefix, or of the default name space.
  XmlName declaration(const unsigned char* prefix);
  // Forgets what would be too much, in a document of ever new names.
  void prune() {
    if (names_.size() > mostNames || addresses_.size() > mostNames) clear();
  }

 private:
  struct Key {
    const unsigned char* localName;
    const unsigned char* prefix;

    bool operator==(const Key&) const = default;
  };
  struct Hash {
    std::size_t operator()(const Key& key) const {
      const auto a = reinterpret_cast<std::uintptr_t>(key.localName);
      const auto b = reinterpret_cast<std::uintptr_t>(key.prefix);
      const std::uint64_t mixed = (a ^ b << 7) * 0x9E3779B97F4A7C15;
      return static_cast<std::size_t>(mixed >> 32);
    }
  };
  struct Name {
    Key key;
    String qualified;
    std::size_t localStart;
  };

  // Asked for each tag and attribute, so what was asked for lately is found in line.
  const Name& find(const Key& key) {
    const Name*& recent = recent_[Hash()(key) % recentNames];
    if (!recent || !(recent->key == key)) recent = &convert(key);
    return *recent;
  }
  const Name& convert(const Key& key);
  StringView address(const unsigned char* uri);
  void clear();

  static constexpr std::size_t mostNames = 16384;
  static constexpr std::size_t recentNames = 256;

  std::unordered_map<Key, Name, Hash> names_;
  std::array<const Name*, recentNames> recent_{};  // by hash
  std::unordered_map<const unsigned char*, String> addresses_;
  const unsigned char* lastUri_ = nullptr;
  StringView lastAddress_;
};

}  // namespace zelUtilities
