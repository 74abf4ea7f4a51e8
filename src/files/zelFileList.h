// zelFileList: files in order, each under its path.
//
//   auto list = make<zelFileList>();
//   list->Create(u"C:\\Data\\a.txt", u"to be sent");
//   list->Item(u"c:\\data\\A.TXT")->setSelected(false);
//   list->SelectedCount();                                    // 0
//
// A failure is logged under "zelFileList.<operation>", never raised.
#pragma once

#include "files/KeyedItems.h"
#include "files/zelFile.h"

namespace zelUtilities {

class zelFileList : public Object {
 public:
  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  // The file under a path (any letter case) or at a position from 1; nothing when there is none.
  Ref<zelFile> Item(const Variant& vKey) const { return files_.item(vKey); }
  std::int32_t Count() const { return files_.count(); }
  Ref<Enumerator> NewEnum() const { return files_.newEnum(); }
  bool Remove(const Variant& vKey) { return files_.remove(vKey); }
  void Clear() { files_.clear(); }
  // Adds under the path that the file has now, "" included; False when it is taken or there is no file.
  bool Add(const Ref<zelFile>& oFile) { return files_.add(oFile, &zelFile::FullPath); }
  // Makes and adds a file with the size and date that it has now; nothing when the path is taken.
  Ref<zelFile> Create(const String& sFullPath, const String& sComment = {}, bool bSelected = true);
  // Counted by walking the list.
  std::int32_t SelectedCount() const;

  // Kept for the client.
  const String& URL() const { return url_; }
  void setURL(const String& value) { url_ = value; }

 private:
  KeyedItems<zelFile> files_{u"zelFileList"};
  String url_;
};

}  // namespace zelUtilities
