// XmlSaxNames: the names in a document as UTF-16. The parser keeps each name once, so a name is known by
// where it lies, and is converted once.
#pragma once

#include <array>
#include <unordered_map>

#include "platform/Xml.h"

namespace zelUtilities {

class XmlSaxNames {
 public:
  // The texts are the parser's, and may be nothing but for the local name. What is given is good until the
  // next prune.
  XmlName name(const unsigned char* localName, const unsigned char* prefix, const unsigned char* uri);
  // The declaration of a prefix, or of the default name space.
  XmlName declaration(const unsigned char* prefix);
  // Forgets what would be too much, in a document of ever new names.
  void prune();

 private:
  struct Key {
    const unsigned char* localName;
    const unsigned char* prefix;

    bool operator==(const Key&) const = default;
  };
  struct Hash {
    std::size_t operator()(const Key& key) const;
  };
  struct Name {
    Key key;
    String qualified;
    std::size_t localStart;
  };

  const Name& find(const Key& key);
  StringView address(const unsigned char* uri);

  static constexpr std::size_t recentNames = 256;

  std::unordered_map<Key, Name, Hash> names_;
  std::array<const Name*, recentNames> recent_{};  // by hash
  std::unordered_map<const unsigned char*, String> addresses_;
  const unsigned char* lastUri_ = nullptr;
  StringView lastAddress_;
};

}  // namespace zelUtilities
