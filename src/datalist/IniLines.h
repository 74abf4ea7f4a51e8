// IniLines: the lines of a settings file, from the file's bytes to what a line says.
//
//   IniLinePieces pieces(*file);                    // whole lines, a few thousand bytes at a time
//   IniLines lines(widen(pieces.next()));
//   for (StringView line; lines.next(line);) ... iniEntryOf(trimBlanks(line)) ...
//
// Only CR LF ends a line, and nothing after the last end is no line.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "automation/String.h"

namespace zelUtilities {

class FileReader;

class IniLines {
 public:
  // The text must outlive the lines.
  explicit IniLines(StringView text) : rest_(text) {}

  bool next(StringView& line);

 private:
  StringView rest_;
};

// What a line that is neither blank nor a section's stands for.
struct IniEntry {
  StringView keyPart;  // what follows the section's key in the node's key
  StringView text;
  StringView data;
};

IniEntry iniEntryOf(StringView trimmedLine);

// The lines of a file, some ten thousand bytes at a time, so that a large file is never in memory as a whole.
class IniLinePieces {
 public:
  explicit IniLinePieces(FileReader& file);

  // Whole lines, up to the end of the file; empty after that. Valid until the next call. A line's end is the
  // same two bytes in every code page.
  std::string_view next();

 private:
  // Behind the last whole line, or 0.
  std::size_t endOfLines(std::size_t from) const;

  FileReader& file_;
  std::vector<char> buffer_;
  std::size_t held_ = 0;
  std::size_t given_ = 0;  // of them, from the front
};

// How many lines a file of so many bytes probably has, by those in its first piece and a few more; fewer
// where they are very short, since such lines may well repeat each other.
std::size_t expectedIniLines(std::string_view piece, std::uint64_t fileLength);

}  // namespace zelUtilities
