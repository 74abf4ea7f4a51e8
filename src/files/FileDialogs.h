// FileDialogs: the operations of zelFiles that ask the user for files and folders.
//
//   auto filters = make<zelFileFilters>();
//   filters->Create(u"txt", u"*.txt;*.log", u"Texts");
//   Variant answer = zel_GetOpenFilename(filters, u"C:\\Data", u"Open a text");
//
// The dialogs are the system's own, modal, above the calling thread's active window. Every path is a whole
// Windows path. A dialog that cannot be shown is logged under "zelFiles.<operation>" and counts as
// cancelled.
#pragma once

#include "files/zelFileFilters.h"

namespace zelUtilities {

// The path of a file that exists; "" when the user cancels. With bMultiSelect an array of paths, from 0, of
// one path too, but "" still when the user cancels.
//   oFilters           nothing or none: all files are shown
//   sInitialFolder     the folder to begin in, where it exists; "" leaves that to the system
//   sTitle             "" is the system's own
//   sDefaultExtension  for names typed without one, with or without its dot
//   lFilterIndex       the filter to begin with, from 1
Variant zel_GetOpenFilename(const Ref<zelFileFilters>& oFilters = {}, const String& sInitialFolder = {},
                            const String& sTitle = {}, const String& sDefaultExtension = {},
                            std::int32_t lFilterIndex = 1, bool bMultiSelect = false);

// The path of a file to write; "" when the user cancels. Nothing is written; the user has agreed to replace a
// file that exists. sFilename is suggested; it may be a whole path, which then goes before sInitialFolder.
String zel_GetSaveAsFilename(const Ref<zelFileFilters>& oFilters = {}, const String& sInitialFolder = {},
                             const String& sTitle = {}, const String& sDefaultExtension = {},
                             std::int32_t lFilterIndex = 1, const String& sFilename = {});

// The path of a folder; "" when the user cancels.
String zel_SelectFolder(const String& sTitle = {}, const String& sInitialFolder = {});

}  // namespace zelUtilities
