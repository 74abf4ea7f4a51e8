#include "globalization/zelGlobalization.h"

#include "automation/Collection.h"
#include "platform/Files.h"
#include "support/FailingFiles.h"
#include "support/TestControl.h"
#include "support/Testing.h"

namespace zelUtilities {
namespace {

constexpr char16_t file[] = u"texts.xml";

class Globalization : public testing::Test {
 protected:
  static void write(const std::string& xml) { files().replaceWhole(file, xml); }
  // A file of one use, "S|C||Caption", in the language "en".
  static std::string ofOneUse(const std::string& texts) {
    return "<G><Languages><Language Key='en' Name=''/></Languages><Section Key='S'><Translations>"
           "<Control Key='C'><Part Key=''><Use Key='Caption'>" +
           texts + "</Use></Part></Control></Translations></Section></G>";
  }
  // With two languages and, where given, this text or the name itself for S|name||Caption.
  static Ref<zelGlobalization> table(StringView name = {}, const Variant& text = Variant::missing()) {
    auto texts = make<zelGlobalization>();
    texts->AddLanguage(u"en", u"English");
    texts->AddLanguage(u"de", u"German");
    texts->setCreateIfMissing(true);
    if (!name.empty()) texts->Translate(u"S", name, u"", u"Caption", text);
    return texts;
  }
  // A text in a language; "-" where there is none.
  static std::string in(StringView language, zelGlobalization& texts, StringView control,
                        StringView part = {}) {
    texts.SelectLanguage(language);
    texts.setCreateIfMissing(false);
    return toUtf8(texts.Translate(u"S", control, part, u"Caption", u"-"));
  }
  // The table's XML without its lines.
  static std::string exported(const zelGlobalization& texts) {
    std::string xml = toUtf8(texts.ExportXML());
    for (std::size_t at = 0; (at = xml.find("\r\n", at)) != std::string::npos;)
      xml.erase(at, xml.find_first_not_of(' ', at + 2) - at);
    return xml;
  }

  Reports reports{"zelTranslates.", Reports::Description};

 private:
  ScratchFolder folder_;
};

TEST_F(Globalization, LanguagesAreTextColumnsAndComeBeforeTheFirstText) {
  auto texts = table();
  EXPECT_EQ(propertiesOf(*texts->Languages()->Item(u"DE"), u"Name CellType Width Editable"),
            "German|8|64|True");
  EXPECT_FALSE(texts->AddLanguage(u"De", u"again"));
  texts->Translate(u"S", u"C");
  EXPECT_FALSE(texts->AddLanguage(u"fr", u"French"));
}

TEST_F(Globalization, WhatIsMissingGivesTheDefault) {
  const auto texts = make<zelGlobalization>();
  EXPECT_EQ(spelled({texts->Translate(u"M", u"cmdOK"), texts->Translate(u"M", u"bar", u"print"),
                     texts->Translate(u"M", u"bar", u"print", u"Caption", 7),
                     texts->Translate(u"M", u"bar", u"print", u"Caption", u""),
                     texts->HasTranslation(u"M", u"cmdOK")}),
            "cmdOK|print|7||False");
  EXPECT_EQ(texts->ExportXML(),
            u"<Globalization>\r\n  <Languages>\r\n  </Languages>\r\n</Globalization>\r\n");
  EXPECT_EQ(texts->Translate(u"M", u"cmdOK", u"", u"Caption", Variant::null()), u"");
  EXPECT_EQ(reports.taken(), "Translate|94|Invalid use of Null ");
}

TEST_F(Globalization, CreateIfMissingAddsWhatIsAskedFor) {
  auto texts = table();
  EXPECT_EQ(texts->Translate(u"S", u"ok", u"p"), u"p");
  EXPECT_EQ(texts->Translate(u"S", u"none", u"", u"Caption", u""), u"");
  EXPECT_TRUE(texts->HasTranslation(u"s", u"lbl"));
  EXPECT_EQ(texts->Translate(u"S", u"OK", u"P", u"caption", u"later"), u"p");  // without a language
  EXPECT_EQ(
      exported(*texts),
      "<Globalization><Languages><Language Key='en' Name='English' /><Language Key='de' Name='German' />"
      "</Languages><Section Key='S'><Translations>"
      "<Control Key='ok'><Part Key='p'><Use Key='Caption'><Translate Language='en'>p</Translate>"
      "<Translate Language='de'>Missing</Translate></Use></Part></Control>"
      "<Control Key='none'><Part Key=''><Use Key='Caption'><Translate Language='en' />"
      "<Translate Language='de' /></Use></Part></Control>"
      "<Control Key='lbl'></Control></Translations></Section></Globalization>");
}

TEST_F(Globalization, WhatIsSavedIsLoadedAgain) {
  const StringView rows[] = {
      u"plain", u"it's \"quoted\"", u"a & b < c > d &amp; e",           u"left|right", u"Gr\u00F6\u00DFe",
      u"12.5",  u" at the ends ",   u"5 \u20AC \u2013 \u201Call\u201D", u"  ",         u" < "};
  auto saved = table();
  for (const StringView& text : rows)
    saved->Translate(u"S", u"C \">", decimalText(&text - rows), u"Caption", text);
  ASSERT_TRUE(saved->Save(file));
  const auto loaded = make<zelGlobalization>();
  ASSERT_TRUE(loaded->Load(file));
  EXPECT_EQ(loaded->ExportXML(), saved->ExportXML());
  for (const StringView& text : rows)
    EXPECT_EQ(in(u"en", *loaded, u"C \">", decimalText(&text - rows)), toUtf8(text));
}

TEST_F(Globalization, WhatTheFileCannotCarryIsRefused) {
  for (const StringView name : {u"it's", u"a & b", u"<", u"Gr\u00F6\u00DFe"}) {
    EXPECT_TRUE(table(name)->Save(file));
    EXPECT_FALSE(make<zelGlobalization>()->Load(file)) << toUtf8(name);
  }
  write("old");
  EXPECT_FALSE(table(u"C", u"\u4E2D")->Save(file));
  EXPECT_THAT(reports.taken(), StartsWith("Save|-2147221503|The code page"));
  FailingFiles disk("replaceWhole", ErrorNumber::DiskFull);
  const Replaced<Files> replaced(disk);
  EXPECT_FALSE(table()->Save(file));
  EXPECT_EQ(reports.taken(), "Save|61|Disk full ");
  EXPECT_EQ(files().readWhole(file), "old");
}

TEST_F(Globalization, ElementsCountByTheirPlaceBelowTranslations) {
  write(
      "<?xml version='1.0' encoding='UTF-8'?><!-- by hand --><Texts>"
      "<Section Key='S'><Notes><x/></Notes><Translations><a Key='C'><!-- --><b Key='p'><c Key='Caption'>"
      "<d Language='en'>\xE2\x82\xAC <![CDATA[<1>]]></d><e "
      "Language='DE'/></c></b></a></Translations></Section>"
      "<Languages><x Key='en' Name=''/><y Key='de' Name=''/><z Key='EN' Name='again'/></Languages>"
      "<Languages><x Key='fr' Name='French'/></Languages></Texts>");
  const auto texts = make<zelGlobalization>();
  EXPECT_TRUE(texts->Load(file));
  EXPECT_EQ(texts->Languages()->Count(), 2);
  EXPECT_EQ(in(u"en", *texts, u"C", u"p"), "\u20AC <1>");
  EXPECT_EQ(in(u"de", *texts, u"C", u"p"), "");
}

TEST_F(Globalization, LoadingMergesAndTakesTheTextsOfTheFile) {
  auto texts = table(u"c", u"old");
  write(ofOneUse("<T Language='en'>1</T><T Language='fr'>2</T><T Language='EN'>3</T>"));
  EXPECT_TRUE(texts->Load(file));
  EXPECT_EQ(reports.taken(), "Load|9|There is no language \"fr\". ");
  EXPECT_EQ(in(u"en", *texts, u"C") + in(u"de", *texts, u"C"), "3Missing");
  EXPECT_THAT(exported(*texts), testing::HasSubstr("<Control Key='c'>"));  // the node that was there
  const auto first = make<zelGlobalization>();
  write(ofOneUse(""));
  EXPECT_TRUE(first->Load(file));
  EXPECT_EQ(first->Translate(u"S", u"C"), u"");
}

TEST_F(Globalization, AFileThatDoesNotReadChangesNothing) {
  const std::pair<std::string, std::string> rows[] = {
      {"no XML", ""},
      {ofOneUse("<T Language='en'>x</T>") + "<", ""},
      {ofOneUse("<T>x</T>"), "Load|-2147219991|Missing Attribute: Language "},
      {"<G><Languages><L Key='en'/></Languages></G>", "Load|-2147219991|Missing Attribute: Name "}};
  for (const auto& [xml, log] : rows) {
    const auto texts = make<zelGlobalization>();
    write(xml);
    EXPECT_FALSE(texts->Load(file)) << xml;
    EXPECT_EQ(reports.taken(), log);
    EXPECT_EQ(texts->ExportXML(), make<zelGlobalization>()->ExportXML());
  }
  EXPECT_FALSE(make<zelGlobalization>()->Load(u"nowhere.xml"));
}

struct FixedControl : TestControl {
  using TestControl::TestControl;
  Variant Invoke(StringView name, InvokeKind kind, std::span<Variant> arguments) override {
    if (kind == InvokeKind::Put) throw Error(ErrorNumber::PermissionDenied);
    return TestControl::Invoke(name, kind, arguments);
  }
};

class ControlTexts : public Globalization {
 protected:
  // Texts of the section F that are "<part|use>", for controls, parts and uses.
  static Ref<zelGlobalization> knowing(std::initializer_list<std::array<StringView, 3>> names) {
    auto texts = make<zelGlobalization>();
    texts->setCreateIfMissing(true);
    for (const auto& [name, part, use] : names)
      texts->Translate(u"F", name, part, use, u"<" + String(part) + u"|" + String(use) + u">");
    texts->setCreateIfMissing(false);
    return texts;
  }
  static Ref<Collection> collection(std::initializer_list<Ref<Object>> items) {
    auto all = make<Collection>();
    for (const Ref<Object>& item : items) all->Add(item);
    return all;
  }
};

TEST_F(ControlTexts, PropertiesThatAControlHasAreTranslated) {
  auto texts = knowing({{u"ok", u"", u"Caption"},
                        {u"ok", u"", u"ToolTipText"},
                        {u"ok", u"", u"prefix"},
                        {u"box", u"", u"ToolTipText"}});
  const auto ok =
      control(u"Label", {{u"Name", u"ok"}, {u"Caption", u""}, {u"ToolTipText", u"tip"}, {u"prefix", u"p"}});
  const auto box = control(u"TextBox", {{u"Name", u"BOX"}, {u"ToolTipText", u""}, {u"Text", u"typed"}});
  const auto unknown = control(u"Label", {{u"Name", u"unknown"}, {u"Caption", u"stays"}});
  const auto nameless = control(u"Label", {{u"Caption", u"stays"}});
  const auto fixed =
      make<FixedControl>(u"Label", TestControl::Properties{{u"Name", u"ok"}, {u"Caption", u"stays"}});
  texts->TranslateControls(u"F", collection({nameless, fixed, ok, {}, unknown, box}));
  EXPECT_EQ(propertiesOf(*ok, u"Caption ToolTipText prefix"), "<|Caption>|<|ToolTipText>|<|prefix>");
  EXPECT_EQ(propertiesOf(*box, u"ToolTipText Text"), "|typed");  // an empty tool tip stays empty
  for (const auto& same : {unknown, nameless, Ref<TestControl>(fixed)})
    EXPECT_EQ(same->text(u"Caption"), "stays");
}

TEST_F(ControlTexts, ItemsAreTranslatedByTheControlsClass) {
  constexpr auto labelled = "<k|Caption>|<k|ToolTipText>|text", asIs = "caption|tip|text";
  const std::tuple<StringView, String, const char*> rows[] = {
      {u"TabStrip", u"Tabs", labelled},   {u"SSTAB", u"Tabs", labelled},
      {u"Toolbar", u"Buttons", labelled}, {u"ListView", u"ColumnHeaders", "caption|tip|<k|Text>"},
      {u"ListView", u"Tabs", asIs},       {u"TreeView", u"Tabs", asIs}};
  auto texts = knowing({{u"c", u"k", u"Caption"}, {u"c", u"k", u"ToolTipText"}, {u"c", u"k", u"Text"}});
  for (const auto& [type, items, expected] : rows) {
    const auto item = control(
        u"Item", {{u"Key", u"k"}, {u"Caption", u"caption"}, {u"ToolTipText", u"tip"}, {u"Text", u"text"}});
    const auto silent = control(u"Item", {{u"Key", u"k"}, {u"ToolTipText", u""}});
    const auto counted =
        control(u"Items",
                {{u"Count", 3}, {u"Item", ArrayData::ofVariants({{}, control(u"Item", {}), silent, item})}});
    texts->TranslateControls(u"F", collection({control(type, {{u"Name", u"c"}, {items, counted}})}));
    EXPECT_EQ(propertiesOf(*item, u"Caption ToolTipText Text"), expected) << toUtf8(type);
    EXPECT_EQ(silent->text(u"ToolTipText"), "");
  }
}

TEST_F(ControlTexts, OfANodeListTheColumnsAreNamed) {
  auto texts = knowing({{u"grid", u"A", u"Caption"}, {u"grid", u"k", u"Caption"}});
  const auto list = make<zelNodeList>();
  zelNodeListColumns::Definition column;
  column.sKey = u"a";
  list->CreateColumn(column);
  const auto tab = control(u"Tab", {{u"Key", u"k"}, {u"Caption", u"old"}});
  for (const Variant& nodeList : {Variant(list), Variant(u"no list")}) {
    EXPECT_EQ(tab->text(u"Caption"), "old");
    const auto grid =
        control(u"TabStrip", {{u"Name", u"grid"}, {u"NodeList", nodeList}, {u"Tabs", collection({tab})}});
    texts->TranslateControls(u"F", collection({grid}));
  }
  EXPECT_EQ(list->Columns()->Item(1)->Name(), u"<A|Caption>");
  EXPECT_EQ(tab->text(u"Caption"), "<k|Caption>");
}

TEST_F(ControlTexts, WhatIsNoCollectionIsLogged) {
  make<zelGlobalization>()->TranslateControls(u"F", {});
  make<zelGlobalization>()->TranslateControls(u"F", control(u"Label", {}));
  EXPECT_THAT(reports.taken(),
              StartsWith("TranslateControls|91|Object variable not set TranslateControls|438|"));
}

}  // namespace
}  // namespace zelUtilities
