#include "globalization/zelGlobalization.h"

#include <gmock/gmock.h>

#include "automation/Conversions.h"
#include "foundation/ErrorWatch.h"
#include "platform/Files.h"
#include "support/FailingFiles.h"

namespace zelUtilities {
namespace {

constexpr char16_t file[] = u"texts.xml";

class Globalization : public testing::Test {
 protected:
  ~Globalization() override {
    if (files().fileExists(file)) files().remove(file, true);
  }

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
  std::string takeLog() { return std::exchange(log_, {}); }

 private:
  std::string log_;  // "source number description", one a line
  ErrorWatch watch_{[this](const ErrorReport& report) {
    log_ +=
        toUtf8(report.source) + " " + std::to_string(report.number) + " " + toUtf8(report.description) + "\n";
  }};
};

TEST_F(Globalization, LanguagesAreTextColumnsAndComeBeforeTheFirstText) {
  auto texts = table();
  const Ref<zelNodeListColumn> german = texts->Languages()->Item(u"DE");
  EXPECT_EQ(german->Name(), u"German");
  EXPECT_TRUE(german->CellType() == ZEL_CellType_String && german->Width() == 64 && german->Editable());
  EXPECT_FALSE(texts->AddLanguage(u"De", u"again"));
  texts->Translate(u"S", u"C");
  EXPECT_FALSE(texts->AddLanguage(u"fr", u"French"));
  EXPECT_EQ(takeLog(), "");
}

TEST_F(Globalization, WhatIsMissingGivesTheDefault) {
  const auto texts = make<zelGlobalization>();
  EXPECT_EQ(texts->Translate(u"Main", u"cmdOK") + texts->Translate(u"Main", u"bar", u"print"), u"cmdOKprint");
  EXPECT_EQ(texts->Translate(u"Main", u"bar", u"print", u"Caption", 7), u"7");
  EXPECT_EQ(texts->Translate(u"Main", u"bar", u"print", u"Caption", u""), u"");
  EXPECT_FALSE(texts->HasTranslation(u"Main", u"cmdOK"));
  EXPECT_EQ(texts->ExportXML(),
            u"<Globalization>\r\n  <Languages>\r\n  </Languages>\r\n</Globalization>\r\n");
  EXPECT_EQ(texts->Translate(u"Main", u"cmdOK", u"", u"Caption", Variant::null()), u"");
  EXPECT_EQ(takeLog(), "zelTranslates.Translate 94 Invalid use of Null\n");
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
      u"plain", u"it's \"quoted\"", u"a & b < c > d &amp; e",          u"left|right", u"Gr\u00F6\u00DFe",
      u"12.5",  u" at the ends ",   u"5 \u20AC \u2013 \u201Call\u201D"};
  auto saved = table();
  for (const StringView& text : rows)
    saved->Translate(u"S", u"C \">", decimalText(&text - rows), u"Caption", text);
  ASSERT_TRUE(saved->Save(file));
  const auto loaded = make<zelGlobalization>();
  ASSERT_TRUE(loaded->Load(file));
  EXPECT_EQ(loaded->ExportXML(), saved->ExportXML());
  for (const StringView& text : rows)
    EXPECT_EQ(in(u"en", *loaded, u"C \">", decimalText(&text - rows)), toUtf8(text));
  EXPECT_EQ(takeLog(), "");
}

TEST_F(Globalization, WhatTheFileCannotCarryIsRefused) {
  for (const StringView name : {u"it's", u"a & b", u"<", u"Gr\u00F6\u00DFe"}) {
    EXPECT_TRUE(table(name)->Save(file));
    EXPECT_FALSE(make<zelGlobalization>()->Load(file)) << toUtf8(name);
  }
  write("old");
  EXPECT_FALSE(table(u"C", u"\u4E2D")->Save(file));
  EXPECT_THAT(takeLog(), testing::StartsWith("zelTranslates.Save -2147221503 The code page"));
  FailingFiles disk("replaceWhole", ErrorNumber::DiskFull);
  const Replaced<Files> replaced(disk);
  EXPECT_FALSE(table()->Save(file));
  EXPECT_EQ(takeLog(), "zelTranslates.Save 61 Disk full\n");
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
  EXPECT_EQ(takeLog(), "");
}

TEST_F(Globalization, LoadingMergesAndTakesTheTextsOfTheFile) {
  auto texts = table(u"c", u"old");
  write(ofOneUse("<T Language='en'>1</T><T Language='fr'>2</T><T Language='EN'>3</T>"));
  EXPECT_TRUE(texts->Load(file));
  EXPECT_EQ(takeLog(), "zelTranslates.Load 9 There is no language \"fr\".\n");
  EXPECT_EQ(in(u"en", *texts, u"C"), "3");
  EXPECT_EQ(in(u"de", *texts, u"C"), "Missing");
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
      {ofOneUse("<T>x</T>"), "zelTranslates.Load -2147219991 Missing Attribute: Language\n"},
      {"<G><Languages><L Key='en'/></Languages></G>",
       "zelTranslates.Load -2147219991 Missing Attribute: Name\n"}};
  for (const auto& [xml, log] : rows) {
    const auto texts = make<zelGlobalization>();
    write(xml);
    EXPECT_FALSE(texts->Load(file)) << xml;
    EXPECT_EQ(takeLog(), log);
    EXPECT_EQ(texts->ExportXML(), make<zelGlobalization>()->ExportXML());
  }
  EXPECT_FALSE(make<zelGlobalization>()->Load(u"nowhere.xml"));
}

}  // namespace
}  // namespace zelUtilities
