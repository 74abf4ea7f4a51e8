// mFiles: whole files, read and written in one call. Clients reach these routines through zelFiles.h.
//
//   String text = mFiles::GetFileContentsAsString(u"C:\\Data\\a.ini", ZEL_ErrorMode_None);
//   mFiles::PutFileContentsFromString(text, u"C:\\Data\\b.ini", ZEL_ErrorMode_Raise);
//
// Text is kept in files in the system's ANSI code page, without anything added to it. A hidden or system
// file counts as missing for reading.
//
// A failure is reported as its mode says: by a message box titled "Read Error" or "Write Error", by
// raising the file system's error, by both, or not at all; then the result is empty. Nothing is
// logged. That a file to be read is missing is a failure without a number: its box has no description, and
// raising it raises 5.
//
// Writing replaces a file whole: on any failure the old contents stay.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "automation/String.h"
#include "automation/Variant.h"
#include "files/ErrorModes.h"

namespace zelUtilities::mFiles {

// An array of bytes with lower bound 0; "" for an empty file; Null on failure.
Variant GetFileContents(StringView sFilename, ZEL_ErrorModes eErrMode);

// "" on failure.
String GetFileContentsAsString(StringView sFilename, ZEL_ErrorModes eErrMode);

// Over a hidden or system file the bytes are written in place from the first one on; what the file holds
// behind them stays.
void PutFileContents(std::span<const std::uint8_t> cContents, StringView sFilename, ZEL_ErrorModes eErrMode);

// What the code page cannot carry is written as its nearest character or "?".
void PutFileContentsFromString(StringView sContents, StringView sFilename, ZEL_ErrorModes eErrMode);

// Rewrites a file that has bare line feeds, so that every line ends in CR LF, under the new name or in
// place; empty lines at its beginning and the line end behind its last line are left out. A lone CR ends
// a line too. Returns 1; or 0, with nothing written, for a file without bare line feeds; or on failure
// the error's number, 53 for a missing file. Raises 6 where that number needs more than 16 bits.
std::int16_t RewriteFileLFtoCRLF(StringView sPath, StringView sNewPath = {});

// For the library's own use: the bytes as they are; none on failure.
std::string readBytes(StringView sFilename, ZEL_ErrorModes eErrMode);

}  // namespace zelUtilities::mFiles
