// zelControls: "A set of functions to manipulate controls on a form as well as report information about the
// controls."
//
//   zel_AlignButton(button, 6000, 4000);          // 1080 by 315, 120 from the right and bottom edges
//   zel_EnableFrame(form, frame, false);          // the frame with all that lies in it
//   std::int16_t at = zel_FindItem(cbo, u"alpha");
//
// Forms and controls are any objects with the properties named below; windows are the system's numbers for
// them. A failing property raises to the caller unless said otherwise. No state is kept.
#pragma once

#include <cstdint>

#include "automation/ClassInfo.h"
#include "automation/Object.h"
#include "automation/String.h"
#include "automation/Variant.h"

namespace zelUtilities {

// Whether the window's style has a scroll bar; False for a missing window.
bool zel_HasVerticalScroll(std::int32_t hWnd);
bool zel_HasHorizontalScroll(std::int32_t hWnd);

// hWndOrForm is a window (a 32-bit integer), or a form or control with a property hWnd. Size and position
// stay, and the window is not activated. What the system answers is ignored.
void zel_SetAlwaysOnTopMode(const Variant& hWndOrForm, bool OnTop = true);
// Shows the window too, next to hParentWnd in the stacking order.
void zel_SetAlwaysAbove(const Variant& hWndOrForm, std::int32_t hParentWnd);

// Moves a button (its Move) so that its right and bottom margins lie within the edges given, and gives its
// Left as it reads afterwards.
float zel_AlignButton(const Ref<Object>& button, float right, float bottom, float Width = 1080,
                      float height = 315, float bottomMargin = 120, float rightMargin = 120);

// Enables or disables the controls that lie in a frame or other container, nested ones included, and the
// frame itself; with nothing for the frame, every control. oParent is the form, or a list of controls. Frames
// only get Enabled, other controls zel_SetControlStatus. A failure is logged, never raised.
void zel_EnableFrame(const Ref<Object>& oParent, const Ref<Object>& oFrameObj, bool bEnabled);

// Sets Enabled and, for text boxes, combo boxes, folder trees and list views, the matching background colour
// (&H80000005 or &H8000000F). What the control cannot do is left out.
void zel_SetControlStatus(const Ref<Object>& ctl, bool status);

// Whether obj or one of its containers up to the form has the Name of cnt, in any letter case; True where cnt
// is nothing. A failure is logged and gives False.
bool zel_InContainer(const Ref<Object>& obj, const Ref<Object>& cnt);

// The first position, from 0, of a text in any letter case (List) or of a number (ItemData) in a combo box;
// -1 when there is none. Raises 6 where a match would lie beyond 32767.
std::int16_t zel_FindItem(const Ref<Object>& cbo, const String& sItem);
std::int16_t zel_FindItemData(const Ref<Object>& cbo, std::int32_t lItem);

namespace zelControls {
const ClassInfo& describeClass();
}

}  // namespace zelUtilities
