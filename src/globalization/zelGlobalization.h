// zelGlobalization: an application's texts in several languages, kept in one table and put on its forms.
//
//   auto texts = make<zelGlobalization>();
//   texts->Load(u"texts.xml");
//   texts->SelectLanguage(u"de");
//   texts->Translate(u"Main", u"cmdOK");               // "Anwenden", or "cmdOK" where nothing is known of it
//   texts->TranslateControls(u"Main", controls);       // captions, tool tips, column heads ... of a form
//
// A text is found under four names: section (a form), control, part (an item within the control, often
// empty) and use (the property, "Caption" for example). Names are compared without regard to letter case.
// Languages come before the first text. With CreateIfMissing, what is asked for and not there is added, so
// that an application run once in its own language leaves a table to be translated.
//
// The file:
//
//   <Globalization>
//     <Languages>
//       <Language Key='en' Name='English' />
//     </Languages>
//     <Section Key='Main'>
//       <Translations>
//         <Control Key='cmdOK'>
//           <Part Key=''>
//             <Use Key='Caption'>
//               <Translate Language='en'>Apply</Translate>
//
// Names stand in it as they are: one with an apostrophe, "&", "<" or a letter beyond ASCII makes a file that
// does not load again, and of one with "|" only a piece is written. Numbers are written with a point for the
// decimal comma, and line ends come back as line feeds.
//
// Failures are logged under "zelTranslates.<operation>", and the operation returns what is said below; those
// of Languages, SelectedLanguage, SelectLanguage and AddLanguage reach the caller.
#pragma once

#include "datalist/zelNodeList.h"

namespace zelUtilities {

struct TranslationFile;

class zelGlobalization final : public Object {
 public:
  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  const Ref<zelNodeListColumns>& Languages() const { return table_->Columns(); }
  // The language that Translate reads; nothing at first.
  const Ref<zelNodeListColumn>& SelectedLanguage() const { return selectedLanguage_; }
  // Whether lookups add what they do not find; at first False.
  bool CreateIfMissing() const { return createIfMissing_; }
  void setCreateIfMissing(bool value) { createIfMissing_ = value; }

  // False, with no language selected, for an unknown one.
  bool SelectLanguage(StringView sLanguageKey);
  // Nothing when the key is taken or there are texts already.
  Ref<zelNodeListColumn> AddLanguage(const String& sKey, const String& sName);

  // Whether the section has the control; with CreateIfMissing it has it from then on. False on failure.
  bool HasTranslation(StringView sSection, StringView sControl);
  // The text in the selected language; without one the text that the first language has. What is missing
  // gives the default: vDefault, else the part, else the control. Added by CreateIfMissing, it has the
  // default in the first language and "Missing" (or "" for an empty default) in all others.
  String Translate(StringView sSection, StringView sControl, StringView sPart = {},
                   StringView sUse = u"Caption", const Variant& vDefault = Variant::missing());
  // Translates the controls of a collection that are in the table (or, with CreateIfMissing, put there): see
  // ControlTexts.h. Logs 91 for nothing and 438 for an object that is no collection.
  void TranslateControls(StringView sSection, const Ref<Object>& oControls);

  // Adds the file's languages, where the table has no texts yet, and its texts; known ones take the file's
  // place. A text in an unknown language is logged and left out. False, with nothing changed, when the file
  // is not well-formed or lacks an attribute.
  bool Load(const String& sFilename);
  // False, leaving an earlier file as it was, when the file cannot be written or its code page has not all
  // the characters.
  bool Save(const String& sFilename);
  // "" on failure.
  String ExportXML() const;

 private:
  zelNode* find(StringView section, StringView control) const;
  String textOf(const zelNode& use) const;
  void add(StringView section, StringView control, StringView part, StringView use, StringView text);
  void addControl(StringView section, StringView control);
  void merge(const TranslationFile& file);
  void setText(zelNode& use, const String& language, const String& text);

  Ref<zelNodeList> table_ = make<zelNodeList>();
  Ref<zelNodeListColumn> selectedLanguage_;
  bool createIfMissing_ = false;
};

}  // namespace zelUtilities
