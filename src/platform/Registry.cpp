#include "platform/Registry.h"

#include <utility>

#include "platform/Locale.h"

namespace zelUtilities {

namespace {

std::size_t terminatorSize(std::uint32_t type) {
  if (type == RegistryType::Text || type == RegistryType::ExpandableText) return 1;
  return type == RegistryType::MultiText ? 2 : 0;
}

std::size_t closingNuls(std::string_view data, std::size_t atMost) {
  std::size_t count = 0;
  while (count < atMost && count < data.size() && data[data.size() - 1 - count] == '\0') ++count;
  return count;
}

}  // namespace

std::string_view RegistryValue::text() const {
  return std::string_view(data).substr(0, data.size() - closingNuls(data, terminatorSize(type)));
}

std::string withTerminator(std::uint32_t type, std::string data) {
  const std::size_t wanted = terminatorSize(type);
  if (!data.empty()) data.append(wanted - closingNuls(data, wanted), '\0');
  return data;
}

String narrowName(StringView name) { return widen(narrow(name.substr(0, name.find(u'\0')))); }

RegistryCode RegistryKey::open(RegistryHandle root, StringView path, RegistryAccess access) {
  close();
  Registry& asked = registry();
  const RegistryCode code = asked.openKey(root, path, access, handle_);
  owner_ = code == RegistryResult::Success ? &asked : nullptr;
  return code;
}

RegistryCode RegistryKey::create(RegistryHandle root, StringView path, bool& existed) {
  close();
  Registry& asked = registry();
  const RegistryCode code = asked.createKey(root, path, handle_, existed);
  owner_ = code == RegistryResult::Success ? &asked : nullptr;
  return code;
}

void RegistryKey::close() {
  if (Registry* owner = std::exchange(owner_, nullptr)) owner->closeKey(handle_);
  handle_ = 0;
}

}  // namespace zelUtilities
