// Temporary names and well-known folders.
#include "automation/Conversions.h"
#include "automation/Error.h"
#include "files/zelFiles.h"
#include "foundation/Handled.h"
#include "foundation/RegistryVariant.h"
#include "platform/Files.h"

namespace zelUtilities {

namespace {

constexpr StringView currentVersion = u"Software\\Microsoft\\Windows\\CurrentVersion";
constexpr StringView shellFolders = u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";
constexpr std::size_t systemsExtension = 3;  // characters, without the dot

String registeredFolder(StringView source, RegistryHandle root, StringView key, StringView name,
                        StringView fallback) {
  String folder;
  handled(source, [&] { folder = toText(readRegistryValue(root, key, name, fallback)); });
  return folder;
}

}  // namespace

String zel_GetTempDir() {
  String folder = files().temporaryFolder();
  if (folder.ends_with(u'\\')) folder.pop_back();
  return folder;
}

String zel_GetTempFile(StringView sPrefix) {
  const String folder = zel_GetTempDir();
  String name;
  const StringView start = sPrefix.substr(0, 3);                      // the system uses no more
  if (start.find_first_of(u"\\/:") != StringView::npos) return name;  // it would lie elsewhere
  try {
    name = files().createTemporary(folder, start);
    files().remove(name);
  } catch (const Error&) {
    // "" where none could be made; one that cannot be deleted stays behind.
  }
  return name;
}

String zel_GetTempFileEx(StringView sPrefix, StringView sExtension) {
  String name = zel_GetTempFile(sPrefix);
  if (name.empty()) return name;
  const std::size_t cut = systemsExtension + sExtension.find(u'.') + 1;  // npos + 1 is 0
  if (cut > name.size()) throw Error(ErrorNumber::InvalidProcedureCall);
  name.resize(name.size() - cut);
  name += sExtension;
  return name;
}

String zel_GetWindowsDir() { return files().windowsFolder(); }

String zel_GetCommonFilesDir() {
  return registeredFolder(u"zelFiles.zel_GetCommonFilesDir", RegistryRoot::LocalMachine, currentVersion,
                          u"CommonFilesDir", u"C:\\Program Files\\Common Files");
}
String zel_GetProgramFilesDir() {
  return registeredFolder(u"zelFiles.zel_GetProgramFilesDir", RegistryRoot::LocalMachine, currentVersion,
                          u"ProgramFilesDir", u"C:\\Program Files");
}
String zel_GetDesktopDir() {
  return registeredFolder(u"zelFiles.zel_GetDesktopDir", RegistryRoot::CurrentUser, shellFolders, u"Desktop",
                          u"C:\\Windows\\Desktop");
}
String zel_GetPersonalDir() {
  return registeredFolder(u"zelFiles.zel_GetPersonalDir", RegistryRoot::CurrentUser, shellFolders,
                          u"Personal", u"My Documents");
}

}  // namespace zelUtilities
