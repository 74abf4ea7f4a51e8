#include "server/Registration.h"

#include <vector>

#include "automation/CaseFolding.h"
#include "library/Library.h"
#include "platform/windows/WideText.h"
#include "server/ServerLife.h"
#include "server/SystemGuid.h"

namespace zelUtilities {

namespace {

constexpr bool is64Bit = sizeof(void*) == 8;
constexpr StringView platformKey = is64Bit ? u"win64" : u"win32";
constexpr REGSAM otherView = is64Bit ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;

// A value below the classes' root; without a name it is the key's own.
struct Entry {
  String key;
  String name;
  String value;
};

String classKey(const ClassInfo& info) { return u"CLSID\\" + guidText(classUuid(info)); }
String nameKey(const ClassInfo& info) { return fromUtf8(programmaticId(info)); }
String interfaceKey(const Uuid& id) { return u"Interface\\" + guidText(id); }
String libraryKey() { return u"TypeLib\\" + guidText(libraryUuid()); }
String versionKey() { return libraryKey() + u"\\" + fromUtf8(publishedVersion()); }
String languageKey() { return versionKey() + u"\\0"; }

void addClass(std::vector<Entry>& entries, const ClassInfo& info, const String& path) {
  const String key = classKey(info);
  entries.push_back({nameKey(info), {}, info.help()});
  entries.push_back({nameKey(info) + u"\\CLSID", {}, guidText(classUuid(info))});
  entries.push_back({key, {}, info.help()});
  entries.push_back({key + u"\\InprocServer32", {}, path});
  entries.push_back({key + u"\\InprocServer32", u"ThreadingModel", u"Apartment"});
  entries.push_back({key + u"\\ProgID", {}, nameKey(info)});
  entries.push_back({key + u"\\TypeLib", {}, guidText(libraryUuid())});
  entries.push_back({key + u"\\Version", {}, fromUtf8(publishedVersion())});
}

void addInterface(std::vector<Entry>& entries, const Uuid& id, const std::string& name) {
  const String key = interfaceKey(id);
  entries.push_back({key, {}, fromUtf8(name)});
  entries.push_back({key + u"\\ProxyStubClsid32", {}, fromUtf8(dispatchMarshaller)});
  entries.push_back({key + u"\\TypeLib", {}, guidText(libraryUuid())});
  entries.push_back({key + u"\\TypeLib", u"Version", fromUtf8(publishedVersion())});
}

void addTypeLibrary(std::vector<Entry>& entries, const String& path) {
  entries.push_back({versionKey(), {}, fromUtf8(publishedLibraryHelp())});
  entries.push_back({versionKey() + u"\\FLAGS", {}, u"0"});
  entries.push_back({versionKey() + u"\\HELPDIR", {}, path.substr(0, path.rfind(u'\\'))});
  entries.push_back({languageKey() + u"\\" + String(platformKey), {}, path});
}

std::vector<Entry> entriesFor(const String& path) {
  std::vector<Entry> entries;
  for (const ClassInfo* info : library().classes()) {
    if (isPublishedCreatable(*info)) addClass(entries, *info, path);
    addInterface(entries, callInterfaceUuid(*info), callInterfaceName(*info));
    if (!info->events().empty()) addInterface(entries, eventInterfaceUuid(*info), eventInterfaceName(*info));
  }
  addTypeLibrary(entries, path);
  return entries;
}

// The classes' root in one of the registry's halves.
class ClassesRoot {
 public:
  explicit ClassesRoot(RegistrationScope scope)
      : scope_(scope), hive_(scope == RegistrationScope::User ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE) {}

  LSTATUS write(const Entry& entry) const {
    HKEY key = nullptr;
    LSTATUS status =
        RegCreateKeyExW(hive_, wide(path(entry.key)), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key, nullptr);
    if (status != ERROR_SUCCESS) return status;
    status = RegSetValueExW(key, entry.name.empty() ? nullptr : wide(entry.name), 0, REG_SZ,
                            reinterpret_cast<const BYTE*>(entry.value.c_str()),
                            static_cast<DWORD>((entry.value.size() + 1) * sizeof(char16_t)));
    RegCloseKey(key);
    return status;
  }

  // The key's own text; empty where there is none.
  String read(StringView key) const {
    String text(32768, u'\0');
    auto bytes = static_cast<DWORD>(text.size() * sizeof(char16_t));
    if (RegGetValueW(hive_, wide(path(key)), nullptr, RRF_RT_REG_SZ, nullptr, text.data(), &bytes) !=
        ERROR_SUCCESS)
      return {};
    return text.substr(0, text.find(u'\0'));
  }

  bool exists(StringView key, REGSAM view = 0) const {
    HKEY opened = nullptr;
    if (RegOpenKeyExW(hive_, wide(path(key)), 0, KEY_QUERY_VALUE | view, &opened) != ERROR_SUCCESS)
      return false;
    RegCloseKey(opened);
    return true;
  }

  LSTATUS removeTree(StringView key) const {
    const LSTATUS status = RegDeleteTreeW(hive_, wide(path(key)));
    return status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status;
  }

  // Where nothing lies below it; values of its own do not count.
  void removeUnlessParent(StringView key) const {
    if (countOf(key, true) == 0) removeTree(key);
  }

  // A key that registering may have made and that others share.
  void removeIfEmpty(StringView key) const {
    if (scope_ == RegistrationScope::User && countOf(key, true) == 0 && countOf(key, false) == 0)
      removeTree(key);
  }

 private:
  static String path(StringView key) { return u"Software\\Classes\\" + String(key); }

  // How many keys or values lie in a key; -1 where it does not exist.
  int countOf(StringView key, bool keys) const {
    HKEY opened = nullptr;
    if (RegOpenKeyExW(hive_, wide(path(key)), 0, KEY_QUERY_VALUE, &opened) != ERROR_SUCCESS) return -1;
    DWORD subkeys = 0;
    DWORD values = 0;
    RegQueryInfoKeyW(opened, nullptr, nullptr, nullptr, &subkeys, nullptr, nullptr, &values, nullptr, nullptr,
                     nullptr, nullptr);
    RegCloseKey(opened);
    return static_cast<int>(keys ? subkeys : values);
  }

  RegistrationScope scope_;
  HKEY hive_;
};

// Whether the class is registered from another folder whose library is still there.
bool belongsToAnother(const ClassesRoot& root, const ClassInfo& info, StringView ownPath) {
  const String registered = root.read(classKey(info) + u"\\InprocServer32");
  return !registered.empty() && !equalFolded(registered, ownPath) &&
         GetFileAttributesW(wide(registered)) != INVALID_FILE_ATTRIBUTES;
}

LSTATUS removeClass(const ClassesRoot& root, const ClassInfo& info) {
  const LSTATUS status = root.removeTree(classKey(info));
  // Names are shared by both views of the class store.
  if (status != ERROR_SUCCESS || root.exists(classKey(info), otherView)) return status;
  return root.removeTree(nameKey(info));
}

LSTATUS removeInterfaces(const ClassesRoot& root, const ClassInfo& info) {
  const LSTATUS status = root.removeTree(interfaceKey(callInterfaceUuid(info)));
  const LSTATUS eventStatus = root.removeTree(interfaceKey(eventInterfaceUuid(info)));
  return status != ERROR_SUCCESS ? status : eventStatus;
}

LSTATUS removeTypeLibrary(const ClassesRoot& root) {
  const LSTATUS status = root.removeTree(languageKey() + u"\\" + String(platformKey));
  root.removeUnlessParent(languageKey());
  if (!root.exists(languageKey())) root.removeTree(versionKey());
  root.removeUnlessParent(libraryKey());
  return status;
}

HRESULT removeAll(const ClassesRoot& root) {
  LSTATUS failure = ERROR_SUCCESS;
  const auto note = [&](LSTATUS status) {
    if (failure == ERROR_SUCCESS) failure = status;
  };
  for (const ClassInfo* info : library().classes()) {
    if (isPublishedCreatable(*info)) note(removeClass(root, *info));
    note(removeInterfaces(root, *info));
  }
  note(removeTypeLibrary(root));
  for (const StringView parent : {u"CLSID", u"Interface", u"TypeLib"}) root.removeIfEmpty(parent);
  return HRESULT_FROM_WIN32(failure);
}

}  // namespace

HRESULT registerServer(RegistrationScope scope) {
  const ClassesRoot root(scope);
  for (const Entry& entry : entriesFor(ServerLife::modulePath())) {
    const LSTATUS status = root.write(entry);
    if (status == ERROR_SUCCESS) continue;
    removeAll(root);
    return HRESULT_FROM_WIN32(status);
  }
  return S_OK;
}

HRESULT unregisterServer(RegistrationScope scope) {
  const ClassesRoot root(scope);
  const String path = ServerLife::modulePath();
  for (const ClassInfo* info : library().classes())
    if (isPublishedCreatable(*info) && belongsToAnother(root, *info, path)) return S_OK;
  return removeAll(root);
}

}  // namespace zelUtilities
