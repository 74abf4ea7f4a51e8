#include "system/zelApp.h"

#include <optional>
#include <utility>
#include <vector>

#include "automation/Binder.h"
#include "automation/Conversions.h"
#include "automation/Error.h"
#include "foundation/Handled.h"
#include "platform/Desktop.h"
#include "system/ControlAccess.h"
#include "system/FormPlacement.h"
#include "system/zelRegistry.h"

namespace zelUtilities {

namespace {

enum WindowState : std::int32_t { Normal = 0, Minimised = 1, Maximised = 2 };

constexpr const char16_t* bounds[] = {u"Left", u"Top", u"Width", u"Height"};
constexpr std::int32_t settingError = 1001;

// What is kept of one form.
class FormSettings {
 public:
  FormSettings(StringView operation, const String& application, const Ref<Object>& form, const String& name)
      : operation_(operation) {
    const String section = name.empty() ? toText(readProperty(form, u"Name")) : name;
    if (application.empty() || section.empty())
      throw Error(ErrorNumber::InvalidProcedureCall, {}, u"An application and a form need names.");
    key_ = u"Software\\VB and VBA Program Settings\\" + application + u"\\" + section;
  }

  void create() const { zel_CreateRegistryKey(HKEY_CURRENT_USER, key_); }

  void put(const String& name, std::int32_t value) const {
    if (!zel_SetRegistryValue(HKEY_CURRENT_USER, key_, name, decimalText(value)))
      throw Error(settingError, {}, u"Unable to write the form's settings");
  }

  // Nothing where the value is missing; where it lies outside or is no number at all, the log has it.
  std::optional<std::int32_t> get(const String& name, std::int32_t least, std::int32_t most) const {
    const Variant kept = zel_GetRegistryValue(HKEY_CURRENT_USER, key_, name);
    if (kept.isEmpty()) return {};
    try {
      const std::int32_t number = toLong(kept);
      if (number < least || number > most) throw Error(ErrorNumber::Overflow);
      return number;
    } catch (...) {
      logCurrent(operation_, key_ + u"\\" + name + (kept.isString() ? u" = " + toText(kept) : u""));
      return {};
    }
  }

 private:
  StringView operation_;
  String key_;
};

constexpr std::int32_t lowest = -2147483647 - 1;
constexpr std::int32_t highest = 2147483647;

std::int32_t windowState(const Ref<Object>& form) {
  Variant state;
  return tryReadProperty(form, u"WindowState", state) ? toLong(state) : Normal;
}

// The property in which a splitter moves.
StringView wayOf(const Ref<Object>& splitter) {
  const bool isUpright =
      toDouble(readProperty(splitter, u"Height")) > toDouble(readProperty(splitter, u"Width"));
  return isUpright ? u"Left" : u"Top";
}

// Bounds in the order of their names. Those that were not kept are the form's own.
class KeptBounds {
 public:
  KeptBounds(const FormSettings& settings, const Ref<Object>& form) : form_(form) {
    for (std::size_t i = 0; i < 4; ++i) {
      const std::optional<std::int32_t> kept = settings.get(bounds[i], i < 2 ? lowest : 1, highest);
      any_ = any_ || kept;
      isKept_[i] = kept.has_value();
      values_[i] = kept ? *kept : 0;
    }
  }

  bool any() const { return any_; }

  void apply(double unitsPerPixel) {
    for (std::size_t i = 0; i < 4; ++i)
      if (!isKept_[i]) values_[i] = toDouble(readProperty(form_, bounds[i]));
    const FormBounds kept{values_[0], values_[1], values_[2], values_[3]};
    const TwipsPerPixel units =
        unitsPerPixel > 0 ? TwipsPerPixel{unitsPerPixel, unitsPerPixel} : desktop().twipsPerPixel();
    const FormBounds reachable = withinReach(kept, desktop().workAreas(), units);
    putIf(isKept_[2], u"Width", kept.width);
    putIf(isKept_[3], u"Height", kept.height);
    putIf(isKept_[0] || reachable.left != kept.left, u"Left", reachable.left);
    putIf(isKept_[1] || reachable.top != kept.top, u"Top", reachable.top);
  }

 private:
  void putIf(bool changes, StringView name, double value) {
    if (changes) writeProperty(form_, name, static_cast<float>(value));
  }

  const Ref<Object>& form_;
  bool any_ = false;
  bool isKept_[4] = {};
  double values_[4] = {};
};

}  // namespace

bool zel_SaveFormState(const String& sAppName, const Ref<Object>& oForm, const Ref<Object>& oSplitter,
                       const String& sFormName) {
  constexpr StringView source = u"zelApp.zel_SaveFormState";
  bool saved = false;
  handled(source, [&] {
    const FormSettings settings(source, sAppName, oForm, sFormName);
    // All is read before anything is written, so that a failing property leaves what was kept.
    const std::int32_t state = windowState(oForm);
    std::vector<std::pair<String, std::int32_t>> values = {{u"WindowState", state}};
    if (state == Normal)
      for (const char16_t* name : bounds) values.emplace_back(name, toLong(readProperty(oForm, name)));
    if (oSplitter && state != Minimised)
      values.emplace_back(u"Splitter", toLong(readProperty(oSplitter, wayOf(oSplitter))));
    settings.create();
    for (const auto& [name, value] : values) settings.put(name, value);
    saved = true;
  });
  return saved;
}

bool zel_RestoreFormState(const String& sAppName, const Ref<Object>& oForm, const Ref<Object>& oSplitter,
                          const String& sFormName, double dUnitsPerPixel) {
  constexpr StringView source = u"zelApp.zel_RestoreFormState";
  bool restored = false;
  handled(source, [&] {
    const FormSettings settings(source, sAppName, oForm, sFormName);
    const auto state = settings.get(u"WindowState", Normal, Maximised);
    KeptBounds kept(settings, oForm);
    // Only a normal form can be moved.
    if ((state || kept.any()) && windowState(oForm) != Normal)
      writeProperty(oForm, u"WindowState", std::int16_t{Normal});
    if (kept.any()) kept.apply(dUnitsPerPixel);
    const auto splitter = oSplitter ? settings.get(u"Splitter", lowest, highest) : std::nullopt;
    if (splitter) writeProperty(oSplitter, wayOf(oSplitter), static_cast<float>(*splitter));
    if (state == Maximised) writeProperty(oForm, u"WindowState", std::int16_t{Maximised});
    restored = state || kept.any() || splitter;
  });
  return restored;
}

const ClassInfo& zelApp::describeClass() {
  static const ClassInfo info =
      describeFunctions("zelApp", "Functions that keep the state of an application's forms.")
          .function("zel_SaveFormState", &zel_SaveFormState,
                    {"sAppName", "oForm", optional("oSplitter"), arg("sFormName") = u""},
                    "Keeps a form's position, size, window state and splitter for the user.")
          .function("zel_RestoreFormState", &zel_RestoreFormState,
                    {"sAppName", "oForm", optional("oSplitter"), arg("sFormName") = u"",
                     arg("dUnitsPerPixel") = 0.0},
                    "Gives a form the position, size, window state and splitter that were kept.");
  return info;
}

}  // namespace zelUtilities
