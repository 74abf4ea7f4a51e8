// zelCellButtons: a set of cell buttons in order, each under its key.
//
//   auto buttons = make<zelCellButtons>();
//   buttons->Create();                                 // the usual "..." button, opened with F2
//   column->setCellButtons(buttons);
#pragma once

#include "datalist/KeyedObjects.h"
#include "datalist/zelCellButton.h"

namespace zelUtilities {

class zelCellButtons : public Object {
 public:
  static constexpr std::int16_t f2Key = 113;

  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  // The button under a key (any letter case) or at a position from 1; nothing when there is none.
  Ref<zelCellButton> Item(const Variant& vKey) const { return buttons_.item(vKey); }
  std::int32_t Count() const { return buttons_.count(); }
  Ref<Enumerator> NewEnum() const { return buttons_.newEnum(); }
  void Clear() { buttons_.clear(); }

  // Makes and adds a button; nothing when the key is taken. Failures are logged under
  // "zelCellButtons.Create".
  Ref<zelCellButton> Create(const String& sKey = u"...", const String& sImage = u"Default",
                            ZEL_Utilities_ColumnAlignments eAlignment = ZEL_ColumnAlignment_Right,
                            const String& sToolTipText = {}, const String& sToolTipTitle = {},
                            std::int16_t iShortCutKeyCode = f2Key, std::int16_t iShortCutKeyState = 0);
  // False when there is no such button.
  bool Remove(const Variant& vKey) { return buttons_.remove(vKey); }
  // Adds under the button's key; False when the key is taken or there is no button.
  bool Add(const Ref<zelCellButton>& rhs);

 private:
  KeyedObjects<zelCellButton> buttons_;
};

}  // namespace zelUtilities
