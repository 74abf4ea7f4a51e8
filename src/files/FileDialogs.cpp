#include "files/FileDialogs.h"

#include "automation/ArrayData.h"
#include "foundation/Handled.h"
#include "platform/Dialogs.h"

namespace zelUtilities {

namespace {

FileQuestion question(const Ref<zelFileFilters>& filters, const String& folder, const String& title,
                      const String& extension, std::int32_t filterIndex) {
  FileQuestion asked;
  asked.title = title;
  asked.folder = folder;
  asked.kind = filterIndex;
  asked.extension = extension.starts_with(u'.') ? extension.substr(1) : extension;
  for (std::int32_t i = 1; filters && i <= filters->Count(); ++i) {
    const Ref<zelFileFilter> filter = filters->Item(i);
    asked.kinds.push_back({filter->Name(), filter->Filter()});
  }
  return asked;
}

}  // namespace

Variant zel_GetOpenFilename(const Ref<zelFileFilters>& oFilters, const String& sInitialFolder,
                            const String& sTitle, const String& sDefaultExtension, std::int32_t lFilterIndex,
                            bool bMultiSelect) {
  Variant chosen = u"";
  handled(u"zelFiles.zel_GetOpenFilename", [&] {
    FileQuestion asked = question(oFilters, sInitialFolder, sTitle, sDefaultExtension, lFilterIndex);
    asked.several = bMultiSelect;
    const std::vector<String> paths = dialogs().openFiles(asked);
    if (paths.empty()) return;
    if (bMultiSelect) {
      chosen = ArrayData::ofVariants({paths.begin(), paths.end()});
    } else {
      chosen = paths[0];
    }
  });
  return chosen;
}

String zel_GetSaveAsFilename(const Ref<zelFileFilters>& oFilters, const String& sInitialFolder,
                             const String& sTitle, const String& sDefaultExtension, std::int32_t lFilterIndex,
                             const String& sFilename) {
  String chosen;
  handled(u"zelFiles.zel_GetSaveAsFilename", [&] {
    FileQuestion asked = question(oFilters, sInitialFolder, sTitle, sDefaultExtension, lFilterIndex);
    asked.name = sFilename;
    chosen = dialogs().saveFile(asked);
  });
  return chosen;
}

String zel_SelectFolder(const String& sTitle, const String& sInitialFolder) {
  String chosen;
  handled(u"zelFiles.zel_SelectFolder", [&] { chosen = dialogs().selectFolder(sTitle, sInitialFolder); });
  return chosen;
}

}  // namespace zelUtilities
