#include "files/zelFileList.h"

#include "automation/Binder.h"

namespace zelUtilities {

Ref<zelFile> zelFileList::Create(const String& sFullPath, const String& sComment, bool bSelected) {
  Ref<zelFile> added;
  files_.logged(u".Create", [&] {
    const auto file = make<zelFile>();
    file->setFullPath(sFullPath);
    file->setComment(sComment);
    file->setSelected(bSelected);
    if (Add(file)) added = file;
  });
  return added;
}

std::int32_t zelFileList::SelectedCount() const {
  std::int32_t count = 0;
  const Ref<Enumerator> walk = NewEnum();
  for (Variant item; walk->next(item);)
    if (static_cast<const zelFile&>(*item.object()).Selected()) ++count;
  return count;
}

const ClassInfo& zelFileList::describeClass() {
  using T = zelFileList;
  static const ClassInfo info =
      describe<T>("zelFileList", "A list of files.")
          .creatable()
          .item("Item", &T::Item, {"vKey"}, "The file under a path or at a position, or nothing.")
          .enumerator(&T::NewEnum)
          .property("Count", &T::Count, "The number of files.")
          .property("URL", &T::URL, &T::setURL, "A text kept for the client.")
          .method("SelectedCount", &T::SelectedCount, "The number of selected files.")
          .method("Remove", &T::Remove, {"vKey"}, "Removes a file from the list; False when there is none.")
          .method("Clear", &T::Clear, "Removes all files from the list.")
          .method("Add", &T::Add, {reference("oFile")},
                  "Adds a file under its path; False when the path is taken.")
          .method("Create", &T::Create, {"sFullPath", arg("sComment") = u"", arg("bSelected") = true},
                  "Adds a new file; nothing when the path is taken.");
  return info;
}

}  // namespace zelUtilities
