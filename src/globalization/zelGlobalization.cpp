#include "globalization/zelGlobalization.h"

#include "automation/Binder.h"
#include "files/mFiles.h"
#include "foundation/Handled.h"
#include "globalization/ControlTexts.h"
#include "globalization/TranslationFile.h"
#include "platform/Locale.h"

namespace zelUtilities {

namespace {

using Level = TranslationFile::Level;

template <class... Fields>
String joined(StringView first, const Fields&... fields) {
  String key;
  key.reserve(first.size() + (... + (fields.size() + 1)));
  key += first;
  ((key += u'|', key += fields), ...);
  return key;
}

// Nothing came where something must have come; why has been logged where it failed.
template <class T>
T& required(T* object) {
  return object ? *object : throw Error(ErrorNumber::ObjectNotSet);
}

// Writing what the code page lacks would lose it for good.
void requireCarried(const String& xml) {
  if (widen(narrow(xml)) != xml)
    throw Error(objectErrorBase + 1, u"zelTranslates.Save",
                u"The code page of the file has not all the characters of the texts.");
}

}  // namespace

// --- Languages ---

bool zelGlobalization::SelectLanguage(StringView sLanguageKey) {
  selectedLanguage_ = Languages()->Item(sLanguageKey);
  return static_cast<bool>(selectedLanguage_);
}

Ref<zelNodeListColumn> zelGlobalization::AddLanguage(const String& sKey, const String& sName) {
  if (table_->Count() != 0) return {};
  zelNodeListColumns::Definition language;
  language.sKey = sKey;
  language.sName = sName;
  language.eCellType = ZEL_CellType_String;
  language.bEditable = true;
  return table_->CreateColumn(language);
}

// --- Looking up ---

zelNode* zelGlobalization::find(StringView section, StringView control) const {
  return table_->find(joined(section, control));
}

bool zelGlobalization::HasTranslation(StringView sSection, StringView sControl) {
  bool found = false;
  handled(u"zelTranslates.HasTranslation", [&] {
    if (!find(sSection, sControl) && createIfMissing_) addControl(sSection, sControl);
    found = find(sSection, sControl) != nullptr;
  });
  return found;
}

String zelGlobalization::Translate(StringView sSection, StringView sControl, StringView sPart,
                                   StringView sUse, const Variant& vDefault) {
  String text;
  handled(u"zelTranslates.Translate", [&] {
    text = vDefault.isMissing() ? String(sPart.empty() ? sControl : sPart) : toText(vDefault);
    if (const zelNode* use = table_->find(joined(sSection, sControl, sPart, sUse))) {
      text = textOf(*use);
    } else if (createIfMissing_) {
      add(sSection, sControl, sPart, sUse, text);
    }
  });
  return text;
}

String zelGlobalization::textOf(const zelNode& use) const {
  if (!selectedLanguage_) return use.Text();
  return toText(required(use.findCell(selectedLanguage_->Key())).Value());
}

void zelGlobalization::addControl(StringView section, StringView control) {
  table_->Create({}, section, section);
  table_->Create(section, joined(section, control), control);
}

void zelGlobalization::add(StringView section, StringView control, StringView part, StringView use,
                           StringView text) {
  addControl(section, control);
  const String partKey = joined(section, control, part);
  table_->Create(joined(section, control), partKey, part);
  const Ref<zelNode> added = table_->Create(partKey, joined(partKey, use), text);
  const StringView elsewhere = text.empty() ? u"" : u"Missing";
  for (std::uint32_t i = 1; i < required(added.get()).cellCount(); ++i) added->cell(i).setValue(elsewhere);
}

void zelGlobalization::TranslateControls(StringView sSection, const Ref<Object>& oControls) {
  handled(u"zelTranslates.TranslateControls", [&] { translateControls(*this, sSection, oControls); });
}

// --- Files ---

bool zelGlobalization::Load(const String& sFilename) {
  bool loaded = false;
  handled(u"zelTranslates.Load", [&] {
    const auto file = readTranslationFile(sFilename);
    if (!file) return;
    for (const TranslationFile::Language& language : file->languages)
      AddLanguage(language.key, language.name);
    merge(*file);
    loaded = true;
  });
  return loaded;
}

void zelGlobalization::merge(const TranslationFile& file) {
  String keys[static_cast<int>(Level::Text)];  // of the nodes that what follows belongs to
  Ref<zelNode> node;
  for (const TranslationFile::Entry& entry : file.entries) {
    if (entry.level == Level::Text) {
      setText(required(node.get()), entry.key, entry.text);
      continue;
    }
    String& key = keys[static_cast<int>(entry.level)];
    const bool isUse = entry.level == Level::Use;
    if (entry.level == Level::Section) {
      key = entry.key;
      node = table_->Create({}, key, entry.key);
    } else {
      const String& parent = *(&key - 1);
      key = joined(parent, entry.key);
      // The text of a use is that of its first language, which has not come yet.
      node = table_->Create(parent, key, isUse ? StringView() : StringView(entry.key));
    }
  }
}

void zelGlobalization::setText(zelNode& use, const String& language, const String& text) {
  if (zelCell* cell = use.findCell(language)) return cell->setValue(text);
  handled(u"zelTranslates.Load", [&] {
    throw Error(ErrorNumber::SubscriptOutOfRange, {}, u"There is no language \"" + language + u"\".");
  });
}

bool zelGlobalization::Save(const String& sFilename) {
  bool saved = false;
  handled(u"zelTranslates.Save", [&] {
    const String xml = translationXML(*table_);
    requireCarried(xml);
    mFiles::PutFileContentsFromString(xml, sFilename, ZEL_ErrorMode_Raise);
    saved = true;
  });
  return saved;
}

String zelGlobalization::ExportXML() const {
  String xml;
  handled(u"zelTranslates.ExportXML", [&] { xml = translationXML(*table_); });
  return xml;
}

const ClassInfo& zelGlobalization::describeClass() {
  using T = zelGlobalization;
  static const ClassInfo info =
      describe<T>("zelGlobalization", "The texts of an application's forms in several languages.")
          .creatable()
          .property("Languages", &T::Languages, "The languages, each a column of the table.")
          .property("SelectedLanguage", &T::SelectedLanguage, "The language that Translate reads.")
          .property("CreateIfMissing", &T::CreateIfMissing, &T::setCreateIfMissing,
                    "Whether lookups add what they do not find.")
          .method("SelectLanguage", &T::SelectLanguage, {"sLanguageKey"},
                  "Selects a language; False, and none is selected, when it is unknown.")
          .method("AddLanguage", &T::AddLanguage, {"sKey", "sName"},
                  "Adds a language; nothing when the key is taken or there are texts already.")
          .method("HasTranslation", &T::HasTranslation, {"sSection", "sControl"},
                  "Whether a section has a control.")
          .method("TranslateControls", &T::TranslateControls, {"sSection", "oControls"},
                  "Translates the texts of all controls in a collection.")
          .method(
              "Translate", &T::Translate,
              {"sSection", "sControl", arg("sPart") = u"", arg("sUse") = u"Caption", optional("vDefault")},
              "The text in the selected language, or the default.")
          .method("Load", &T::Load, {"sFilename"}, "Adds the languages and texts of an XML file.")
          .method("Save", &T::Save, {"sFilename"}, "Writes the table to an XML file.")
          .method("ExportXML", &T::ExportXML, "The table as XML text.");
  return info;
}

}  // namespace zelUtilities
