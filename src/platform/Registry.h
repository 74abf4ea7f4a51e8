// Registry: typed values under keys, as the library asks for them: roots, paths with backslashes, result
// codes.
//
//   RegistryKey key;
//   RegistryValue value;
//   if (key.open(RegistryRoot::LocalMachine, u"Software\\Zelora\\Common", RegistryAccess::Read) == 0 &&
//       registry().queryValue(key.handle(), u"ErrorLogger", value) == 0)
//     String logger = widen(value.text());
//
// It is the narrow interface: names pass through the ANSI code page (a name is cut at its first NUL), and
// the data of texts are bytes in that code page. Names are found without regard to letter case. An empty
// value name is the key's default value; an empty path is the key itself.
//
// Nothing here raises but for want of memory: every failure is a RegistryCode. Threads may share the service;
// several processes may use one registry at once.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "automation/String.h"
#include "platform/Service.h"

namespace zelUtilities {

// A root or an open key.
using RegistryHandle = std::int32_t;

namespace RegistryRoot {
inline constexpr RegistryHandle ClassesRoot = -2147483647 - 1;  // 0x80000000
inline constexpr RegistryHandle CurrentUser = -2147483647;
inline constexpr RegistryHandle LocalMachine = -2147483646;
inline constexpr RegistryHandle Users = -2147483645;
inline constexpr RegistryHandle PerformanceData = -2147483644;
inline constexpr RegistryHandle CurrentConfig = -2147483643;
inline constexpr RegistryHandle DynData = -2147483642;
}  // namespace RegistryRoot

// 0, or why it failed: the system's own numbers.
using RegistryCode = std::int32_t;

namespace RegistryResult {
inline constexpr RegistryCode Success = 0;
inline constexpr RegistryCode FileNotFound = 2;  // no such key or value
inline constexpr RegistryCode AccessDenied = 5;
inline constexpr RegistryCode InvalidHandle = 6;
inline constexpr RegistryCode OutOfMemory = 14;
inline constexpr RegistryCode SharingViolation = 32;
inline constexpr RegistryCode InvalidParameter = 87;
inline constexpr RegistryCode DiskFull = 112;
inline constexpr RegistryCode Busy = 170;
inline constexpr RegistryCode MoreData = 234;
inline constexpr RegistryCode NoMoreItems = 259;
inline constexpr RegistryCode Corrupt = 1015;
inline constexpr RegistryCode IOFailed = 1016;
inline constexpr RegistryCode KeyDeleted = 1018;
}  // namespace RegistryResult

namespace RegistryType {
inline constexpr std::uint32_t None = 0;
inline constexpr std::uint32_t Text = 1;            // REG_SZ
inline constexpr std::uint32_t ExpandableText = 2;  // REG_EXPAND_SZ
inline constexpr std::uint32_t Binary = 3;
inline constexpr std::uint32_t DWord = 4;
inline constexpr std::uint32_t DWordBigEndian = 5;
inline constexpr std::uint32_t Link = 6;
inline constexpr std::uint32_t MultiText = 7;  // REG_MULTI_SZ
inline constexpr std::uint32_t QWord = 11;
}  // namespace RegistryType

enum class RegistryAccess : std::uint32_t { Read = 0x20019, Write = 0x20006 };

struct RegistryValue {
  String name;
  std::uint32_t type = RegistryType::None;
  // Texts end in a terminator (MultiText in two), whether they were stored with one or not; data of no
  // bytes stay so.
  std::string data;

  // The data of a text without its terminator.
  std::string_view text() const;
};

struct Registry {
  virtual ~Registry() = default;

  // Opens a key below a root or an open key; close it. Access is checked by the operations on the handle.
  virtual RegistryCode openKey(RegistryHandle root, StringView path, RegistryAccess access,
                               RegistryHandle& key) = 0;
  // Creates the key with all keys above it, or opens it where it exists; close it. The handle has no rights.
  virtual RegistryCode createKey(RegistryHandle root, StringView path, RegistryHandle& key,
                                 bool& existed) = 0;
  // Roots and unknown handles are let be.
  virtual void closeKey(RegistryHandle key) = 0;

  virtual RegistryCode queryValue(RegistryHandle key, StringView name, RegistryValue& value) = 0;
  // Creates or replaces. The data of a text need no terminator.
  virtual RegistryCode setValue(RegistryHandle key, StringView name, std::uint32_t type,
                                std::string_view data) = 0;
  virtual RegistryCode deleteValue(RegistryHandle key, StringView name) = 0;

  // Deletes a key with its values. One that has subkeys stays: AccessDenied.
  virtual RegistryCode deleteKey(RegistryHandle root, StringView path) = 0;

  // By position from 0; NoMoreItems behind the last. Positions change with every key and value added or
  // deleted.
  virtual RegistryCode enumKey(RegistryHandle key, std::uint32_t index, String& name) = 0;
  virtual RegistryCode enumValue(RegistryHandle key, std::uint32_t index, RegistryValue& value) = 0;

  static Registry& system();
};

inline Registry& registry() { return Service<Registry>::inForce(); }

// An open key of the registry in force, closed at the end.
class RegistryKey {
 public:
  RegistryKey() = default;
  ~RegistryKey() { close(); }
  RegistryKey(const RegistryKey&) = delete;
  RegistryKey& operator=(const RegistryKey&) = delete;

  RegistryCode open(RegistryHandle root, StringView path, RegistryAccess access);
  RegistryCode create(RegistryHandle root, StringView path, bool& existed);
  void close();

  // 0 while nothing is open.
  RegistryHandle handle() const { return handle_; }

 private:
  Registry* owner_ = nullptr;
  RegistryHandle handle_ = 0;
};

// For implementations: the data as a reader sees it, with its terminator.
std::string withTerminator(std::uint32_t type, std::string data);
// For implementations: a name as the narrow interface carries it.
String narrowName(StringView name);

}  // namespace zelUtilities
