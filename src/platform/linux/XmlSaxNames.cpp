#include "platform/linux/XmlSaxNames.h"

#include <string>
#include <utility>

namespace zelUtilities {

namespace {

String textOf(const unsigned char* utf8) { return fromUtf8(reinterpret_cast<const char*>(utf8)); }

}  // namespace

XmlName XmlSaxNames::declaration(const unsigned char* prefix) {
  static constexpr unsigned char xmlns[] = "xmlns";
  const Name& name = prefix ? find({prefix, xmlns}) : find({xmlns, nullptr});
  return {{}, {}, name.qualified};
}

const XmlSaxNames::Name& XmlSaxNames::convert(const Key& key) {
  auto found = names_.find(key);
  if (found == names_.end()) {
    String qualified = key.prefix ? textOf(key.prefix).append(u":") : String();
    const std::size_t localStart = qualified.size();
    qualified.append(textOf(key.localName));
    found = names_.emplace(key, Name{key, std::move(qualified), localStart}).first;
  }
  return found->second;
}

StringView XmlSaxNames::address(const unsigned char* uri) {
  if (uri != lastUri_) {
    auto found = addresses_.find(uri);
    if (found == addresses_.end()) found = addresses_.emplace(uri, textOf(uri)).first;
    lastUri_ = uri;
    lastAddress_ = found->second;
  }
  return lastAddress_;
}

void XmlSaxNames::clear() {
  names_.clear();
  recent_ = {};
  addresses_.clear();
  lastUri_ = nullptr;
}

}  // namespace zelUtilities
