// A folder's contents as one line of text, to make and to compare.
//
//   makeTree(folder, "a.txt=old:r Sub\\ Sub\\b.txt");
//   EXPECT_EQ(treeIn(folder), "a.txt=old:r Sub\\ Sub\\b.txt");
//
// An entry is its path below the folder, a folder ends in "\". Behind a file stand "=" and its contents
// unless they are "x", and ":" with r, h and s if it is read-only, hidden, a system file. In the order of the
// names.
#pragma once

#include <algorithm>
#include <sstream>
#include <string>

#include "platform/Files.h"

namespace zelUtilities {

inline constexpr std::string_view attributeLetters = "rhs";  // of the bits 1, 2, 4

inline void makeTree(const String& folder, const std::string& entries) {
  std::istringstream words(entries);
  for (std::string word; words >> word;) {
    const std::size_t colon = std::min(word.find(':'), word.size()), equals = std::min(word.find('='), colon);
    const String path = folder + u"\\" + fromUtf8(word.substr(0, equals));
    if (path.back() == u'\\') {
      files().createFolder(path);
      continue;
    }
    files().replaceWhole(path, equals < colon ? word.substr(equals + 1, colon - equals - 1) : "x");
    std::uint32_t attributes = FileAttribute::Normal;
    while (word.size() > colon + 1) {
      attributes |= 1U << attributeLetters.find(word.back());
      word.pop_back();
    }
    if (attributes != FileAttribute::Normal) files().setAttributes(path, attributes);
  }
}

inline std::string treeIn(const String& folder, const std::string& prefix = {}) {
  std::string text;
  for (const FileEntry& entry : files().findAll(
           folder + u"\\*", FileAttribute::Hidden | FileAttribute::System | FileAttribute::Folder)) {
    const String path = folder + u"\\" + entry.name;
    const std::string name = prefix + toUtf8(entry.name) + (entry.isFolder ? "\\" : "");
    text += " " + name;
    if (entry.isFolder) {
      const std::string inside = treeIn(path, name);
      text += inside.empty() ? "" : " " + inside;
      continue;
    }
    const std::string contents = files().readWhole(path);
    if (contents != "x") text += "=" + contents;
    if (const std::uint32_t bits = files().attributes(path) & 7; bits != 0) {
      text += ':';
      for (std::size_t i = 0; i < 3; ++i)
        if ((bits >> i & 1) != 0) text += attributeLetters[i];
    }
  }
  return text.empty() ? text : text.substr(1);
}

}  // namespace zelUtilities
