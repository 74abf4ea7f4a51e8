#include "platform/windows/FileDialogs.h"

#include <windows.h>

#include <commdlg.h>
#include <shlobj.h>

#include <algorithm>

#include "automation/Error.h"
#include "platform/windows/SystemLibrary.h"
#include "platform/windows/WideText.h"

namespace zelUtilities::fileDialogs {

namespace {

constexpr std::size_t roomForOne = 32768;        // units; as long as a path may be
constexpr std::size_t roomForSeveral = 1 << 20;  // units
constexpr DWORD bufferTooSmall = FNERR_BUFFERTOOSMALL;

// A text that stands between NULs.
String withoutNuls(StringView text) { return String(text.substr(0, text.find(u'\0'))); }

// "name NUL patterns NUL" for each kind.
String kindList(const std::vector<FileKind>& kinds) {
  String list;
  for (const FileKind& kind : kinds)
    list.append(withoutNuls(kind.name)).append(1, u'\0').append(withoutNuls(kind.patterns)).append(1, u'\0');
  return list;
}

const wchar_t* orNone(const String& text) { return text.empty() ? nullptr : wide(text); }

[[noreturn]] void raiseDialogError(DWORD code) {
  if (code == FNERR_INVALIDFILENAME) throw Error(ErrorNumber::BadFileName);
  throw Error(ErrorNumber::CannotCreateObject, {},
              u"Files cannot be chosen: the dialog failed with the code " +
                  decimalText(static_cast<std::int32_t>(code)) + u".");
}

// The dialog's answer: one path; or a folder and, NUL between them, names in it. A drive's root ends in its
// separator.
std::vector<String> pathsIn(StringView answer) {
  std::vector<String> parts;
  while (!answer.empty() && answer[0] != u'\0') {
    const std::size_t end = std::min(answer.find(u'\0'), answer.size());
    parts.emplace_back(answer.substr(0, end));
    answer.remove_prefix(std::min(end + 1, answer.size()));
  }
  if (parts.size() < 2) return parts;
  const String folder = parts[0].ends_with(u'\\') ? parts[0] : parts[0] + u"\\";
  parts.erase(parts.begin());
  for (String& part : parts) part.insert(0, folder);
  return parts;
}

using Dialog = BOOL(WINAPI*)(OPENFILENAMEW*);

// Shows the dialog with room for the answer. False where that was not room enough.
bool shown(Dialog dialog, OPENFILENAMEW& settings, String& answer, bool& chosen) {
  settings.lpstrFile = wideBuffer(answer);
  settings.nMaxFile = static_cast<DWORD>(answer.size());
  chosen = dialog(&settings) != FALSE;
  if (chosen) return true;
  const auto lastError = systemFunction<DWORD(WINAPI*)()>(u"comdlg32.dll", "CommDlgExtendedError");
  const DWORD code = lastError();
  if (code != 0 && code != bufferTooSmall) raiseDialogError(code);
  return code == 0;
}

std::vector<String> ask(const char* function, const FileQuestion& question, DWORD flags) {
  const auto dialog = systemFunction<Dialog>(u"comdlg32.dll", function);
  if (question.name.size() >= roomForOne || question.name.find(u'\0') != String::npos)
    throw Error(ErrorNumber::BadFileName);
  const String kinds = kindList(question.kinds);
  const String extension = withoutNuls(question.extension);
  OPENFILENAMEW settings{};
  settings.lStructSize = sizeof settings;
  settings.hwndOwner = GetActiveWindow();
  settings.lpstrFilter = orNone(kinds);
  settings.nFilterIndex = static_cast<DWORD>(std::max(question.kind, 1));
  settings.lpstrInitialDir = orNone(question.folder);
  settings.lpstrTitle = orNone(question.title);
  settings.lpstrDefExt = orNone(extension);
  settings.Flags = flags | OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST;
  // The dialog is gone when it tells that its answer had no room; it is shown once more with more room.
  for (std::size_t room = question.several ? roomForSeveral : roomForOne;; room *= 4) {
    String answer = question.name;
    answer.resize(room);
    bool chosen = false;
    if (!shown(dialog, settings, answer, chosen)) continue;
    if (!chosen) return {};
    return question.several ? pathsIn(answer) : std::vector<String>{answer.substr(0, answer.find(u'\0'))};
  }
}

// COM for as long as this lives, where the thread can have it in the way that the folder dialog wants.
class ApartmentThread {
 public:
  ApartmentThread() : result_(OleInitialize(nullptr)) {}
  ~ApartmentThread() {
    if (isOne()) OleUninitialize();
  }
  ApartmentThread(const ApartmentThread&) = delete;
  ApartmentThread& operator=(const ApartmentThread&) = delete;

  bool isOne() const { return result_ >= 0; }

 private:
  HRESULT result_;
};

int CALLBACK selectFirst(HWND dialog, UINT message, LPARAM, LPARAM folder) noexcept {
  if (message == BFFM_INITIALIZED && folder != 0) SendMessageW(dialog, BFFM_SETSELECTIONW, TRUE, folder);
  return 0;
}

}  // namespace

std::vector<String> openFiles(const FileQuestion& question) {
  return ask("GetOpenFileNameW", question, OFN_FILEMUSTEXIST | (question.several ? OFN_ALLOWMULTISELECT : 0));
}

String saveFile(const FileQuestion& question) {
  FileQuestion one = question;
  one.several = false;
  const std::vector<String> paths = ask("GetSaveFileNameW", one, OFN_OVERWRITEPROMPT);
  return paths.empty() ? String() : paths[0];
}

String selectFolder(StringView title, StringView folder) {
  const auto browse = systemFunction<decltype(&SHBrowseForFolderW)>(u"shell32.dll", "SHBrowseForFolderW");
  const auto pathOf = systemFunction<decltype(&SHGetPathFromIDListW)>(u"shell32.dll", "SHGetPathFromIDListW");
  const String shownTitle(title);
  const String first(folder);
  const ApartmentThread apartment;
  String path(MAX_PATH, u'\0');
  BROWSEINFOW settings{};
  settings.hwndOwner = GetActiveWindow();
  settings.pszDisplayName = wideBuffer(path);
  settings.lpszTitle = wide(shownTitle);
  settings.ulFlags = BIF_RETURNONLYFSDIRS | (apartment.isOne() ? BIF_NEWDIALOGSTYLE : 0U);
  settings.lpfn = &selectFirst;
  settings.lParam = reinterpret_cast<LPARAM>(orNone(first));
  const auto chosen = browse(&settings);
  if (!chosen) return {};
  const bool hasPath = pathOf(chosen, wideBuffer(path)) != FALSE;
  CoTaskMemFree(chosen);
  return hasPath ? fromWide(wide(path)) : String();
}

}  // namespace zelUtilities::fileDialogs
