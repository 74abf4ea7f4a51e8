#include "globalization/ControlTexts.h"

#include "automation/CaseFolding.h"
#include "automation/Conversions.h"
#include "automation/Error.h"
#include "automation/ItemWalk.h"
#include "automation/LateProperty.h"
#include "platform/Objects.h"

namespace zelUtilities {

namespace {

// A step that fails is passed over: most controls lack most of the properties.
template <class Step>
void tryTo(const Step& step) {
  try {
    step();
  } catch (...) {
    return;
  }
}

template <class Body>
void forEachItem(const Ref<Object>& collection, const Body& body) {
  const Ref<Enumerator> items = itemsOf(collection);
  for (Variant item; items->next(item);)
    if (const Ref<Object> object = objectIn(item)) body(*object);
}

class ControlTexts {
 public:
  ControlTexts(zelGlobalization& table, StringView section, Object& control)
      : table_(table), section_(section), control_(control), name_(toText(property(control, u"Name"))) {}

  void translate() {
    if (!table_.HasTranslation(section_, name_)) return;
    translateProperty(control_, {}, u"Caption");
    translateToolTip(control_, {});
    translateProperty(control_, {}, u"prefix");
    if (const Ref<zelNodeList> list = nodeList()) return translateColumns(*list);
    translateItemsByType();
  }

 private:
  // The property is the use that its text is kept under.
  void translateProperty(Object& owner, StringView part, StringView use) {
    tryTo([&] { put(owner, part, use, property(owner, use)); });
  }
  void translateToolTip(Object& owner, StringView part) {
    tryTo([&] {
      const Variant text = property(owner, u"ToolTipText");
      if (!toText(text).empty()) put(owner, part, u"ToolTipText", text);
    });
  }
  void put(Object& owner, StringView part, StringView use, const Variant& text) {
    Variant translated[] = {table_.Translate(section_, name_, part, use, text)};
    owner.Invoke(use, InvokeKind::Put, translated);
  }

  Ref<zelNodeList> nodeList() {
    Ref<zelNodeList> list;
    tryTo([&] { list = objectCast<zelNodeList>(objectProperty(control_, u"NodeList").get()); });
    return list;
  }
  void translateColumns(const zelNodeList& list) {
    list.Columns()->forEach([&](zelNodeListColumn& column) {
      tryTo([&] {
        column.setName(table_.Translate(section_, name_, column.Key(), u"Caption", column.Name()));
      });
    });
  }

  void translateItemsByType() {
    const String type = className(control_);
    const auto is = [&](StringView name) { return equalFolded(type, name); };
    if (is(u"TabStrip") || is(u"SSTab")) return translateItems(u"Tabs", u"Caption");
    if (is(u"Toolbar")) return translateItems(u"Buttons", u"Caption");
    if (is(u"ListView")) return translateItems(u"ColumnHeaders", u"Text");
  }
  void translateItems(StringView collection, StringView use) {
    tryTo([&] {
      forEachItem(objectProperty(control_, collection),
                  [&](Object& item) { tryTo([&] { translateItem(item, use); }); });
    });
  }
  void translateItem(Object& item, StringView use) {
    const String key = toText(property(item, u"Key"));
    translateProperty(item, key, use);
    if (use == u"Caption") translateToolTip(item, key);
  }

  zelGlobalization& table_;
  StringView section_;
  Object& control_;
  String name_;
};

}  // namespace

void translateControls(zelGlobalization& table, StringView section, const Ref<Object>& controls) {
  forEachItem(controls,
              [&](Object& control) { tryTo([&] { ControlTexts(table, section, control).translate(); }); });
}

}  // namespace zelUtilities
