#include "files/zelFile.h"

#include <cmath>

#include "automation/Binder.h"
#include "files/mFiles.h"
#include "platform/Files.h"

namespace zelUtilities {

void zelFile::setFullPath(const String& value) {
  fullPath_ = value;
  size_ = 0;
  try {
    const FileDetails details = files().details(fullPath_);
    if (!details.isFolder) fileDate_ = details.modified;
    size_ = checkedLong(static_cast<std::int64_t>(details.length));
  } catch (const Error&) {
    // The path counts as it is, also where there is no such file.
  }
}

String zelFile::Name() const { return name_.empty() ? mFiles::GetFileName(fullPath_) : name_; }
String zelFile::Folder() const { return mFiles::GetFolderName(fullPath_); }
String zelFile::Extension() const { return mFiles::GetFileExtension(fullPath_); }

String zelFile::SizeAsString() const {
  const double rounded = SizeKB() < 1 ? 1 : std::nearbyint(SizeKB());  // halves to even
  return decimalText(static_cast<long long>(rounded)) + u" KB";
}

const ClassInfo& zelFile::describeClass() {
  using T = zelFile;
  static const ClassInfo info =
      describe<T>("zelFile", "A file in a list of files.")
          .creatable()
          .property("FullPath", &T::FullPath, &T::setFullPath, "The path; writing it reads size and date.")
          .property("Name", &T::Name, &T::setName, "The name shown; the file's own while empty.")
          .property("Folder", &T::Folder, "The folder in the path.")
          .property("Extension", &T::Extension, "The extension, in lower case and without its dot.")
          .property("Size", &T::Size, &T::setSize, "The size in bytes.")
          .property("SizeKB", &T::SizeKB, "The size in kilobytes.")
          .property("SizeAsString", &T::SizeAsString, "The size as text, at least \"1 KB\".")
          .property("FileDate", &T::FileDate, &T::setFileDate, "When the file was last modified.")
          .property("Comment", &T::Comment, &T::setComment, "A comment.")
          .property("Selected", &T::Selected, &T::setSelected, "Whether the file is selected.")
          .property("DeleteAfterUse", &T::DeleteAfterUse, &T::setDeleteAfterUse,
                    "Whether the client is to delete the file.")
          .property("DSOURL", &T::DSOURL, &T::setDSOURL, "A free text.")
          .property("POPServer", &T::POPServer, &T::setPOPServer, "A mail server.")
          .property("POPPort", &T::POPPort, &T::setPOPPort, "The port of the mail server.")
          .property("POPAccount", &T::POPAccount, &T::setPOPAccount, "An account on the mail server.")
          .property("POPPassword", &T::POPPassword, &T::setPOPPassword, "The password, stored unchanged.")
          .property("From", &T::From, &T::setFrom, "A sender.")
          .property("ReplyTo", &T::ReplyTo, &T::setReplyTo, "Where answers go.")
          .property("Tag", &T::Tag, &T::setTag, "Any value.");
  return info;
}

}  // namespace zelUtilities
