// zelFile: one file as an entry of a list: where it is, what was known of it, and what the client notes on
// it.
//
//   auto file = make<zelFile>();
//   file->setFullPath(u"C:\\Data\\a.txt");       // Size and FileDate are those of the file now
//   file->SizeAsString();                         // "1 KB"
//
// It holds data only and never touches the file.
#pragma once

#include "automation/ClassInfo.h"
#include "automation/Date.h"
#include "automation/Object.h"
#include "automation/String.h"
#include "automation/Variant.h"

namespace zelUtilities {

class zelFile : public Object {
 public:
  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  const String& FullPath() const { return fullPath_; }
  // Also reads the file's size and date; those of a missing file are 0 and what it was before.
  void setFullPath(const String& value);
  // What stands for the file's name; the name in the path while none is set.
  String Name() const;
  void setName(const String& value) { name_ = value; }
  // The parts of the path; see mFiles.h.
  String Folder() const;
  String Extension() const;

  std::int32_t Size() const { return size_; }  // bytes
  void setSize(std::int32_t value) { size_ = value; }
  double SizeKB() const { return size_ / 1024.0; }
  // In whole kilobytes, halves to even, and at least 1: "1 KB".
  String SizeAsString() const;
  // Of the last modification, in local time.
  Date FileDate() const { return fileDate_; }
  void setFileDate(Date value) { fileDate_ = value; }

  bool Selected() const { return selected_; }
  void setSelected(bool value) { selected_ = value; }
  // For the client to act upon.
  bool DeleteAfterUse() const { return deleteAfterUse_; }
  void setDeleteAfterUse(bool value) { deleteAfterUse_ = value; }

  // Free texts and values.
  const String& Comment() const { return comment_; }
  void setComment(const String& value) { comment_ = value; }
  const String& DSOURL() const { return dsoUrl_; }
  void setDSOURL(const String& value) { dsoUrl_ = value; }
  const String& POPServer() const { return popServer_; }
  void setPOPServer(const String& value) { popServer_ = value; }
  std::int32_t POPPort() const { return popPort_; }
  void setPOPPort(std::int32_t value) { popPort_ = value; }
  const String& POPAccount() const { return popAccount_; }
  void setPOPAccount(const String& value) { popAccount_ = value; }
  // Kept as it is given.
  const String& POPPassword() const { return popPassword_; }
  void setPOPPassword(const String& value) { popPassword_ = value; }
  const String& From() const { return from_; }
  void setFrom(const String& value) { from_ = value; }
  const String& ReplyTo() const { return replyTo_; }
  void setReplyTo(const String& value) { replyTo_ = value; }
  const Variant& Tag() const { return tag_; }
  void setTag(const Variant& value) { tag_ = value; }

 private:
  String fullPath_;
  String name_;
  std::int32_t size_ = 0;
  Date fileDate_;
  String comment_;
  bool selected_ = true;
  bool deleteAfterUse_ = false;
  String dsoUrl_;
  String popServer_;
  std::int32_t popPort_ = 0;
  String popAccount_;
  String popPassword_;
  String from_;
  String replyTo_;
  Variant tag_;
};

}  // namespace zelUtilities
