#include "datalist/zelCellButton.h"

#include "automation/Binder.h"

namespace zelUtilities {

const ClassInfo& zelCellButton::describeClass() {
  using T = zelCellButton;
  static const ClassInfo info =
      describe<T>("zelCellButton", "A button inside a cell.")
          .property("Key", &T::Key, &T::setKey, "The key under which a set keeps the button.")
          .property("Image", &T::Image, &T::setImage,
                    "The key of the button's image in the client's image list.")
          .property("Alignment", &T::Alignment, &T::setAlignment, "Where in the cell the button stands.")
          .property("ToolTipText", &T::ToolTipText, &T::setToolTipText, "The button's tool tip.")
          .property("ToolTipTitle", &T::ToolTipTitle, &T::setToolTipTitle, "The tool tip's title.")
          .property("ShortCutKeyCode", &T::ShortCutKeyCode, &T::setShortCutKeyCode,
                    "The virtual-key code that presses the button.")
          .property("ShortCutKeyState", &T::ShortCutKeyState, &T::setShortCutKeyState,
                    "The shift-state mask that must accompany the key.");
  return info;
}

}  // namespace zelUtilities
