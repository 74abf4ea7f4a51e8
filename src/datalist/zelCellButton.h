// zelCellButton: one button that a grid draws inside a cell. The library only stores the settings.
#pragma once

#include "automation/ClassInfo.h"
#include "datalist/Enumerations.h"

namespace zelUtilities {

class zelCellButton : public Object {
 public:
  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  // The key counts when the button is added to a set; writing it later does not move the button.
  const String& Key() const { return key_; }
  void setKey(const String& value) { key_ = value; }
  // Key of an image in the client's image list.
  const String& Image() const { return image_; }
  void setImage(const String& value) { image_ = value; }
  ZEL_Utilities_ColumnAlignments Alignment() const { return alignment_; }
  void setAlignment(ZEL_Utilities_ColumnAlignments value) { alignment_ = value; }
  const String& ToolTipText() const { return toolTipText_; }
  void setToolTipText(const String& value) { toolTipText_ = value; }
  const String& ToolTipTitle() const { return toolTipTitle_; }
  void setToolTipTitle(const String& value) { toolTipTitle_ = value; }
  // A virtual-key code, and the shift-state mask that must accompany it.
  std::int16_t ShortCutKeyCode() const { return shortCutKeyCode_; }
  void setShortCutKeyCode(std::int16_t value) { shortCutKeyCode_ = value; }
  std::int16_t ShortCutKeyState() const { return shortCutKeyState_; }
  void setShortCutKeyState(std::int16_t value) { shortCutKeyState_ = value; }

 private:
  String key_;
  String image_;
  ZEL_Utilities_ColumnAlignments alignment_ = ZEL_ColumnAlignment_Left;
  String toolTipText_;
  String toolTipTitle_;
  std::int16_t shortCutKeyCode_ = 0;
  std::int16_t shortCutKeyState_ = 0;
};

}  // namespace zelUtilities
