#include "platform/linux/XmlSaxNames.h"

#include <string_view>

namespace zelUtilities {

namespace {

constexpr std::size_t mostNames = 16384;

String textOf(const unsigned char* utf8) { return fromUtf8(reinterpret_cast<const char*>(utf8)); }

}  // namespace

std::size_t XmlSaxNames::Hash::operator()(const Key& key) const {
  const auto a = reinterpret_cast<std::uintptr_t>(key.localName);
  const auto b = reinterpret_cast<std::uintptr_t>(key.prefix);
  const std::uint64_t mixed = (a ^ b << 7) * 0x9E3779B97F4A7C15;
  return static_cast<std::size_t>(mixed >> 32);
}

XmlName XmlSaxNames::name(const unsigned char* localName, const unsigned char* prefix,
                          const unsigned char* uri) {
  const Name& name = find({localName, prefix});
  const StringView qualified = name.qualified;
  return {address(uri), qualified.substr(name.localStart), qualified};
}

XmlName XmlSaxNames::declaration(const unsigned char* prefix) {
  static constexpr unsigned char xmlns[] = "xmlns";
  const Name& name = prefix ? find({prefix, xmlns}) : find({xmlns, nullptr});
  return {{}, {}, name.qualified};
}

const XmlSaxNames::Name& XmlSaxNames::find(const Key& key) {
  const Name*& recent = recent_[Hash()(key) % recentNames];
  if (recent && recent->key == key) return *recent;
  auto found = names_.find(key);
  if (found == names_.end()) {
    String qualified = key.prefix ? textOf(key.prefix).append(u":") : String();
    const std::size_t localStart = qualified.size();
    qualified.append(textOf(key.localName));
    found = names_.emplace(key, Name{key, std::move(qualified), localStart}).first;
  }
  recent = &found->second;
  return *recent;
}

StringView XmlSaxNames::address(const unsigned char* uri) {
  if (!uri) return {};
  if (uri != lastUri_) {
    auto found = addresses_.find(uri);
    if (found == addresses_.end()) found = addresses_.emplace(uri, textOf(uri)).first;
    lastUri_ = uri;
    lastAddress_ = found->second;
  }
  return lastAddress_;
}

void XmlSaxNames::prune() {
  if (names_.size() <= mostNames && addresses_.size() <= mostNames) return;
  names_.clear();
  recent_ = {};
  addresses_.clear();
  lastUri_ = nullptr;
}

}  // namespace zelUtilities
