// mFiles: what the library itself asks of files and paths. Clients reach these routines through zelFiles.h.
//
//   String text = mFiles::GetFileContentsAsString(u"C:\\Data\\a.ini", ZEL_ErrorMode_None);
//   mFiles::PutFileContentsFromString(text, u"C:\\Data\\b.ini", ZEL_ErrorMode_Raise);
//   String folder = mFiles::GetFolderName(u"C:\\Data\\a.ini");                    // "C:\Data"
//
// Text is kept in files in the system's ANSI code page, without anything added to it. A hidden or system
// file counts as missing for reading.
//
// A failure to read or write contents is reported as its mode says: by a message box titled "Read Error" or
// "Write Error", by raising the file system's error, by both, or not at all; then the result is empty.
// Nothing is logged. That a file to be read is missing is a failure without a number: its box has no
// description, and raising it raises 5.
//
// Writing replaces a file whole: on any failure the old contents stay.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "automation/String.h"
#include "automation/Variant.h"
#include "files/Enumerations.h"
#include "files/ErrorModes.h"

namespace zelUtilities {
class FileReader;
}

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

// For the library's own use: a visible file to be read piece by piece; nothing on failure.
std::unique_ptr<FileReader> openVisible(StringView sFilename);

// The parts of a path: pure text. Only "\" parts folders, and the last "." in a file's name its extension. A
// separator behind character 32,767 is a failure; failures are logged under "mFiles.<routine>" and give "".
//
// What stands before the last separator; "" without one. "C:\a.txt" gives "C:".
String GetFolderName(StringView fName);
// What stands behind the last separator; the whole text without one.
String GetFileName(StringView fName);
// The file's name without its extension: "a.b.c" gives "a.b", ".profile" gives "".
String GetBaseName(StringView fName);
// In lower case, without the dot; "" without one.
String GetFileExtension(StringView fName);

// What the first entry is that the path matches as a pattern, seeing neither hidden nor system files nor
// folders: a folder counts only when it is named with a separator at its end and holds such a file, and a
// hidden file counts as nothing. Any failure is nothing too.
ZEL_PathTypes TypeOfPath(StringView fName);

// What the thread's shared file-system object says; False where it fails.
bool isFile(StringView path);
bool isFolder(StringView path);

// The routines from here on raise a failure, unlogged, under "mFiles.<routine>::<its own source>", unless
// they say otherwise.
//
// Deletes a folder with all that it holds, read-only or not, and returns False even so. Otherwise deletes
// the files that the pattern finds, read-only ones too, hidden and system files not: True when there was
// one. Links are deleted, not followed. The files of a name without a folder are deleted from the root of
// the current drive, wherever they were found.
bool FileDelete(StringView sFilename);

// False when there is nothing under the old name. What the new name addresses is deleted, except when it is
// the same file; it stays until the other one takes its place, and for good on any failure to do so. A
// folder, or what a folder replaces, lies aside meanwhile under its name with "~1", where it stays when
// something fails after that. The renamed one is marked for archiving, and read-only when it was that or
// bMarkReadOnly says so. Refuses a new name with wildcards (52), a file's that ends in a separator (76) and
// names of which one lies in the other (75).
bool FileRename(StringView sOldFileName, StringView sNewFileName, bool bMarkReadOnly);

// Bits 1 to 64 and from 32768 on.
std::int32_t GetFileAttr(const Variant& sFilename);

// Bytes; 0 on any failure, such as a missing file or one of 2 GB and more.
std::int32_t GetFileLength(StringView fName);
// Date and time of the last modification as text; "" for a missing file. Raises without a source of its own.
String GetFileDate(StringView fName);

}  // namespace zelUtilities::mFiles
