#include "system/zelControls.h"

#include <set>
#include <vector>

#include "automation/Binder.h"
#include "automation/CaseFolding.h"
#include "automation/Conversions.h"
#include "automation/Error.h"
#include "foundation/Handled.h"
#include "platform/Desktop.h"
#include "system/ControlAccess.h"

namespace zelUtilities {

namespace {

constexpr std::int32_t verticalScrollBar = 0x00200000;
constexpr std::int32_t horizontalScrollBar = 0x00100000;

constexpr WindowHandle topmost = -1;
constexpr WindowHandle notTopmost = -2;
constexpr std::uint32_t stackOnly = 19;     // neither size, position nor activation
constexpr std::uint32_t stackAndShow = 83;  // the same, and shown

constexpr std::int32_t windowBackground = -2147483647 - 1 + 5;  // system colours
constexpr std::int32_t buttonFace = -2147483647 - 1 + 15;

constexpr int deepestNesting = 1000;  // containers of containers; more are a circle

WindowHandle windowIn(const Variant& hWndOrForm) {
  if (hWndOrForm.kind() == VariantKind::Long) return hWndOrForm.longInteger();
  return toLong(readProperty(objectIn(hWndOrForm), u"hWnd"));
}

bool showsItsStatus(const Ref<Object>& control) {
  const String type = controlType(control);
  return type == u"TextBox" || type == u"ComboBox" || type == u"ListView" ||
         equalFolded(type, u"FolderTreeView");
}

String foldedName(const Ref<Object>& object) { return foldCase(toText(readProperty(object, u"Name"))); }

// Whether a folded name, of the object or of what contains it up to the form, is a match.
template <class Matches>
bool anyNameUpwards(Ref<Object> object, const Matches& matches) {
  for (int level = 0; level < deepestNesting; ++level) {
    if (matches(foldedName(object))) return true;
    if (isForm(object)) return false;
    object = objectIn(readProperty(object, u"Container"));
  }
  throw Error(ErrorNumber::InvalidProcedureCall, {}, u"The control's containers form a circle.");
}

constexpr StringView inContainerSource = u"zelControls.zel_InContainer";
constexpr StringView enableFrameSource = u"zelControls.zel_EnableFrame";

// Enables or disables what lies in a frame. Containers are told by their names, which controls of an array
// share: what lies in any frame of a name is reached with the first one. Each control is set once.
class FrameSwitch {
 public:
  FrameSwitch(std::vector<Ref<Object>> controls, bool enabled)
      : controls_(std::move(controls)), enabled_(enabled) {}

  void everything() {
    for (const Ref<Object>& control : controls_) set(control, isFrame(control));
  }

  void within(const Ref<Object>& frame) {
    if (isFrame(frame)) writeProperty(frame, u"Enabled", enabled_);
    names_.insert(foldedName(frame));
    while (setReached()) {
    }
  }

 private:
  // One walk over the controls that are still to be reached. True when further names turned up.
  bool setReached() {
    const std::size_t namesBefore = names_.size();
    for (Ref<Object>& control : controls_) {
      if (!control) continue;
      const bool frame = isFrame(control);
      if (!isReached(control, frame)) continue;
      if (set(control, frame) && frame) names_.insert(foldedName(control));
      control = nullptr;
    }
    return names_.size() != namesBefore;
  }

  // A frame is not reached by its own name: whoever named it has set it, or means another one of an array.
  bool isReached(const Ref<Object>& control, bool frame) const {
    bool reached = false;
    handled(inContainerSource, [&] {
      const String own = frame ? foldedName(control) : String();
      reached = anyNameUpwards(
          control, [&](const String& name) { return (!frame || name != own) && names_.contains(name); });
    });
    return reached;
  }

  bool set(const Ref<Object>& control, bool frame) const {
    bool done = false;
    handled(enableFrameSource, [&] {
      if (frame) {
        writeProperty(control, u"Enabled", enabled_);
      } else {
        zel_SetControlStatus(control, enabled_);
      }
      done = true;
    });
    return done;
  }

  std::vector<Ref<Object>> controls_;  // nothing where one was set
  bool enabled_;
  std::set<String> names_;  // folded
};

// The first position whose item matches. It is a 16-bit number: the step beyond the last one overflows.
template <class Matches>
std::int16_t findItem(const Ref<Object>& cbo, const Matches& matches) {
  const std::int32_t count = toLong(readProperty(cbo, u"ListCount"));
  for (std::int16_t i = 0; i < count; i = checkedShort(i + 1))
    if (matches(i)) return i;
  return -1;
}

}  // namespace

bool zel_HasVerticalScroll(std::int32_t hWnd) {
  return (desktop().windowStyle(hWnd) & verticalScrollBar) != 0;
}

bool zel_HasHorizontalScroll(std::int32_t hWnd) {
  return (desktop().windowStyle(hWnd) & horizontalScrollBar) != 0;
}

void zel_SetAlwaysOnTopMode(const Variant& hWndOrForm, bool OnTop) {
  desktop().stackWindow(windowIn(hWndOrForm), OnTop ? topmost : notTopmost, stackOnly);
}

// Sic: the system reads the second window as the one to come before, and so puts the first one right behind
// it. Clients have arranged their windows with that.
void zel_SetAlwaysAbove(const Variant& hWndOrForm, std::int32_t hParentWnd) {
  desktop().stackWindow(windowIn(hWndOrForm), hParentWnd, stackAndShow);
}

float zel_AlignButton(const Ref<Object>& button, float right, float bottom, float Width, float height,
                      float bottomMargin, float rightMargin) {
  const float left = right - Width - rightMargin;
  const float top = bottom - height - bottomMargin;
  callMethod(button, u"Move", {left, top, Width, height});
  return toSingle(readProperty(button, u"Left"));
}

void zel_EnableFrame(const Ref<Object>& oParent, const Ref<Object>& oFrameObj, bool bEnabled) {
  handled(enableFrameSource, [&] {
    const Ref<Object> list = isForm(oParent) ? objectIn(readProperty(oParent, u"Controls")) : oParent;
    FrameSwitch frameSwitch(controlsIn(list), bEnabled);
    if (oFrameObj) {
      frameSwitch.within(oFrameObj);
    } else {
      frameSwitch.everything();
    }
  });
}

void zel_SetControlStatus(const Ref<Object>& ctl, bool status) {
  tryWriteProperty(ctl, u"Enabled", status);
  if (showsItsStatus(ctl)) tryWriteProperty(ctl, u"BackColor", status ? windowBackground : buttonFace);
}

bool zel_InContainer(const Ref<Object>& obj, const Ref<Object>& cnt) {
  bool inside = false;
  handled(inContainerSource, [&] {
    if (!cnt) {
      inside = true;
      return;
    }
    const String wanted = foldedName(cnt);
    inside = anyNameUpwards(obj, [&](const String& name) { return name == wanted; });
  });
  return inside;
}

std::int16_t zel_FindItem(const Ref<Object>& cbo, const String& sItem) {
  return findItem(
      cbo, [&](std::int16_t i) { return equalFolded(toText(readProperty(cbo, u"List", {i})), sItem); });
}

std::int16_t zel_FindItemData(const Ref<Object>& cbo, std::int32_t lItem) {
  return findItem(cbo, [&](std::int16_t i) { return toLong(readProperty(cbo, u"ItemData", {i})) == lItem; });
}

const ClassInfo& zelControls::describeClass() {
  static const ClassInfo info =
      describeFunctions("zelControls",
                        "A set of functions to manipulate controls on a form as well as report information "
                        "about the controls.")
          .function("zel_HasVerticalScroll", &zel_HasVerticalScroll, {"hWnd"},
                    "Whether a window has a vertical scroll bar.")
          .function("zel_HasHorizontalScroll", &zel_HasHorizontalScroll, {"hWnd"},
                    "Whether a window has a horizontal scroll bar.")
          .function("zel_SetAlwaysOnTopMode", &zel_SetAlwaysOnTopMode,
                    {reference("hWndOrForm"), arg("OnTop") = true},
                    "Keeps a window above all others, or no longer.")
          .function("zel_SetAlwaysAbove", &zel_SetAlwaysAbove, {reference("hWndOrForm"), "hParentWnd"},
                    "Shows a window next to another one in the stacking order.")
          .function("zel_AlignButton", &zel_AlignButton,
                    {"button", "right", "bottom", arg("Width") = 1080.0F, arg("height") = 315.0F,
                     arg("bottomMargin") = 120.0F, arg("rightMargin") = 120.0F},
                    "Moves a button to the lower right corner of an area and gives its left edge.")
          .function("zel_EnableFrame", &zel_EnableFrame, {"oParent", "oFrameObj", "bEnabled"},
                    "Enables or disables a frame with all controls in it.")
          .function("zel_SetControlStatus", &zel_SetControlStatus, {"ctl", "status"},
                    "Enables or disables a control and colours it accordingly.")
          .function("zel_InContainer", &zel_InContainer, {"obj", "cnt"},
                    "Whether a control lies within a container.")
          .function("zel_FindItem", &zel_FindItem, {"cbo", "sItem"},
                    "The position of a text in a combo box, or -1.")
          .function("zel_FindItemData", &zel_FindItemData, {"cbo", "lItem"},
                    "The position of an item's number in a combo box, or -1.");
  return info;
}

}  // namespace zelUtilities
