#include "datalist/zelCellButtons.h"

#include "automation/Binder.h"
#include "foundation/Handled.h"

namespace zelUtilities {

Ref<zelCellButton> zelCellButtons::Create(const String& sKey, const String& sImage,
                                          ZEL_Utilities_ColumnAlignments eAlignment,
                                          const String& sToolTipText, const String& sToolTipTitle,
                                          std::int16_t iShortCutKeyCode, std::int16_t iShortCutKeyState) {
  Ref<zelCellButton> added;
  handled(u"zelCellButtons.Create", [&] {
    const auto button = make<zelCellButton>();
    button->setKey(sKey);
    button->setImage(sImage);
    button->setAlignment(eAlignment);
    button->setToolTipText(sToolTipText);
    button->setToolTipTitle(sToolTipTitle);
    button->setShortCutKeyCode(iShortCutKeyCode);
    button->setShortCutKeyState(iShortCutKeyState);
    if (Add(button)) added = button;
  });
  return added;
}

bool zelCellButtons::Add(const Ref<zelCellButton>& rhs) { return rhs && buttons_.add(rhs, rhs->Key()); }

const ClassInfo& zelCellButtons::describeClass() {
  using T = zelCellButtons;
  static const ClassInfo info =
      describe<T>("zelCellButtons", "A set of cell buttons.")
          .creatable()
          .item("Item", &T::Item, {"vKey"}, "The button under a key or at a position, or nothing.")
          .property("Count", &T::Count, "The number of buttons.")
          .enumerator(&T::NewEnum)
          .method("Clear", &T::Clear, "Removes all buttons.")
          .method("Create", &T::Create,
                  {arg("sKey") = u"...", arg("sImage") = u"Default",
                   arg("eAlignment") = ZEL_ColumnAlignment_Right, optional("sToolTipText"),
                   optional("sToolTipTitle"), arg("iShortCutKeyCode") = T::f2Key,
                   arg("iShortCutKeyState") = std::int16_t{0}},
                  "Adds a new button; nothing when the key is taken.")
          .method("Remove", &T::Remove, {"vKey"}, "Removes a button; False when there is none.")
          .method("Add", &T::Add, {"rhs"}, "Adds a button under its key; False when the key is taken.");
  return info;
}

}  // namespace zelUtilities
