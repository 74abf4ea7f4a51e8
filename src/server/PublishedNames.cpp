#include "server/PublishedNames.h"

#include <algorithm>

#include "foundation/LibraryVersion.h"
#include "server/Sha1.h"

namespace zelUtilities {

namespace {

// Never to change: with it every identifier would.
constexpr Uuid nameSpace = {
    {0xC6, 0x1D, 0x2B, 0x77, 0x3E, 0x0A, 0x4F, 0x58, 0x9B, 0x64, 0xD2, 0x90, 0x5C, 0x8F, 0x17, 0xA3}};

std::string qualified(const std::string& name) { return publishedLibrary() + "." + name; }

}  // namespace

std::string uuidText(const Uuid& uuid) {
  static constexpr char digits[] = "0123456789abcdef";
  std::string text;
  for (std::size_t i = 0; i < uuid.bytes.size(); ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
    text += digits[uuid.bytes[i] >> 4];
    text += digits[uuid.bytes[i] & 15];
  }
  return text;
}

Uuid nameUuid(const Uuid& space, std::string_view name) {
  std::string bytes(space.bytes.begin(), space.bytes.end());
  const std::array<std::uint8_t, 20> digest = sha1(bytes.append(name));
  Uuid uuid;
  std::copy_n(digest.begin(), uuid.bytes.size(), uuid.bytes.begin());
  uuid.bytes[6] = static_cast<std::uint8_t>((uuid.bytes[6] & 0x0F) | 0x50);  // version 5
  uuid.bytes[8] = static_cast<std::uint8_t>((uuid.bytes[8] & 0x3F) | 0x80);
  return uuid;
}

Uuid publishedUuid(std::string_view qualifiedName) { return nameUuid(nameSpace, qualifiedName); }

std::string publishedLibrary() { return toUtf8(libraryName); }
std::string publishedVersion() { return std::to_string(versionMajor) + "." + std::to_string(versionMinor); }
std::string publishedLibraryHelp() { return "Zelora Utility Functions (V" + publishedVersion() + ")"; }

std::string programmaticId(const ClassInfo& info) { return qualified(toUtf8(info.name())); }
std::string callInterfaceName(const ClassInfo& info) { return "_" + toUtf8(info.name()); }
std::string eventInterfaceName(const ClassInfo& info) { return callInterfaceName(info) + "Events"; }

bool isPublishedCreatable(const ClassInfo& info) { return info.isCreatable() || info.isGlobal(); }

Uuid libraryUuid() { return publishedUuid(publishedLibrary()); }
Uuid classUuid(const ClassInfo& info) { return publishedUuid(programmaticId(info)); }
Uuid callInterfaceUuid(const ClassInfo& info) { return publishedUuid(qualified(callInterfaceName(info))); }
Uuid eventInterfaceUuid(const ClassInfo& info) { return publishedUuid(qualified(eventInterfaceName(info))); }
Uuid enumerationUuid(const EnumInfo& info) { return publishedUuid(qualified(toUtf8(info.name))); }

}  // namespace zelUtilities
