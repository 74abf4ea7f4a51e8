#include "globalization/zelGlobalization.h"

#include <gmock/gmock.h>

#include "automation/Conversions.h"
#include "foundation/ErrorWatch.h"
#include "platform/Files.h"
#include "platform/Locale.h"
#include "support/FailingFiles.h"

namespace zelUtilities {
namespace {

using testing::HasSubstr;

constexpr StringView file = u"texts.xml";

class Globalization : public testing::Test {
 protected:
  ~Globalization() override {
    if (files().fileExists(file)) files().remove(file, true);
  }

  static void write(const std::string& xml) { files().replaceWhole(file, xml); }
  // A file of one use in the language "en", "'" standing for what surrounds it.
  static std::string inUse(const std::string& texts) {
    return "<G><Languages><Language Key='en' Name=''/></Languages><Section Key='S'><Translations>"
           "<Control Key='C'><Part Key=''><Use Key='Caption'>" +
           texts + "</Use></Part></Control></Translations></Section></G>";
  }
  static Ref<zelGlobalization> table() {
    auto texts = make<zelGlobalization>();
    texts->AddLanguage(u"en", u"English");
    texts->AddLanguage(u"de", u"German");
    texts->setCreateIfMissing(true);
    return texts;
  }
  std::string takeLog() { return std::exchange(log_, {}); }

 private:
  std::string log_;  // "source number description", one a line
  ErrorWatch watch_{[this](const ErrorReport& report) {
    log_ +=
        toUtf8(report.source) + " " + std::to_string(report.number) + " " + toUtf8(report.description) + "\n";
  }};
};

std::string in(zelGlobalization& texts, StringView language, StringView control, StringView part = {}) {
  texts.SelectLanguage(language);
  return toUtf8(texts.Translate(u"S", control, part, u"Caption", u"-"));
}

TEST_F(Globalization, LanguagesAreTextColumnsAndComeBeforeTheFirstText) {
  auto texts = table();
  const Ref<zelNodeListColumn> german = texts->Languages()->Item(u"DE");
  EXPECT_EQ(german->Name(), u"German");
  EXPECT_EQ(german->CellType(), ZEL_CellType_String);
  EXPECT_EQ(german->Width(), 64);
  EXPECT_EQ(german->ColumnMinWidth(), 1440);
  EXPECT_TRUE(german->Editable());
  EXPECT_FALSE(texts->AddLanguage(u"De", u"again"));
  texts->Translate(u"S", u"C");
  EXPECT_FALSE(texts->AddLanguage(u"fr", u"French"));
  EXPECT_EQ(texts->Languages()->Count(), 2);
  EXPECT_EQ(takeLog(), "");
}

TEST_F(Globalization, WhatIsMissingGivesTheDefault) {
  auto texts = table();
  texts->setCreateIfMissing(false);
  EXPECT_EQ(texts->Translate(u"Main", u"cmdOK"), u"cmdOK");
  EXPECT_EQ(texts->Translate(u"Main", u"bar", u"print"), u"print");
  EXPECT_EQ(texts->Translate(u"Main", u"bar", u"print", u"Caption", std::int32_t{7}), u"7");
  EXPECT_EQ(texts->Translate(u"Main", u"bar", u"print", u"Caption", u""), u"");
  EXPECT_FALSE(texts->HasTranslation(u"Main", u"cmdOK"));
  EXPECT_FALSE(texts->SelectLanguage(u"fr"));
  EXPECT_FALSE(texts->SelectedLanguage());
  EXPECT_THAT(toUtf8(texts->ExportXML()), testing::Not(HasSubstr("Section")));
  EXPECT_EQ(texts->Translate(u"Main", u"cmdOK", u"", u"Caption", Variant::null()), u"");
  EXPECT_EQ(takeLog(), "zelTranslates.Translate 94 Invalid use of Null\n");
}

TEST_F(Globalization, CreateIfMissingAddsWhatIsAskedFor) {
  auto texts = table();
  EXPECT_EQ(texts->Translate(u"S", u"cmdOK"), u"cmdOK");
  EXPECT_EQ(texts->Translate(u"S", u"none", u"", u"Caption", u""), u"");
  EXPECT_TRUE(texts->HasTranslation(u"s", u"lbl"));
  EXPECT_EQ(texts->Translate(u"S", u"CMDok", u"", u"caption", u"later"), u"cmdOK");  // by no language
  EXPECT_EQ(in(*texts, u"en", u"cmdOK"), "cmdOK");
  EXPECT_EQ(in(*texts, u"de", u"cmdOK"), "Missing");
  EXPECT_EQ(in(*texts, u"de", u"none"), "");
  EXPECT_EQ(toUtf8(texts->ExportXML()),
            "<Globalization>\r\n"
            "  <Languages>\r\n"
            "    <Language Key='en' Name='English' />\r\n"
            "    <Language Key='de' Name='German' />\r\n"
            "  </Languages>\r\n"
            "  <Section Key='S'>\r\n"
            "    <Translations>\r\n"
            "      <Control Key='cmdOK'>\r\n"
            "        <Part Key=''>\r\n"
            "          <Use Key='Caption'>\r\n"
            "            <Translate Language='en'>cmdOK</Translate>\r\n"
            "            <Translate Language='de'>Missing</Translate>\r\n"
            "          </Use>\r\n"
            "        </Part>\r\n"
            "      </Control>\r\n"
            "      <Control Key='none'>\r\n"
            "        <Part Key=''>\r\n"
            "          <Use Key='Caption'>\r\n"
            "            <Translate Language='en' />\r\n"
            "            <Translate Language='de' />\r\n"
            "          </Use>\r\n"
            "        </Part>\r\n"
            "      </Control>\r\n"
            "      <Control Key='lbl'>\r\n"
            "      </Control>\r\n"
            "    </Translations>\r\n"
            "  </Section>\r\n"
            "</Globalization>\r\n");
  EXPECT_EQ(make<zelGlobalization>()->ExportXML(),
            u"<Globalization>\r\n  <Languages>\r\n  </Languages>\r\n</Globalization>\r\n");
}

TEST_F(Globalization, WhatIsSavedIsLoadedAgain) {
  const StringView rows[] = {
      u"plain", u"it's \"quoted\"", u"a & b < c > d &amp; e",          u"left|right", u"Gr\u00F6\u00DFe",
      u"12.5",  u" at the ends ",   u"5 \u20AC \u2013 \u201Call\u201D"};
  auto saved = table();
  for (const StringView& text : rows)
    saved->Translate(u"S", u"C \">", decimalText(&text - rows), u"Caption", text);
  ASSERT_TRUE(saved->Save(String(file)));
  const auto loaded = make<zelGlobalization>();
  ASSERT_TRUE(loaded->Load(String(file)));
  EXPECT_EQ(loaded->ExportXML(), saved->ExportXML());
  for (const StringView& text : rows)
    EXPECT_EQ(in(*loaded, u"en", u"C \">", decimalText(&text - rows)), toUtf8(text));
  EXPECT_EQ(takeLog(), "");
}

TEST_F(Globalization, WhatTheFileCannotCarryIsRefused) {
  for (const StringView name : {u"it's", u"a & b", u"<", u"Gr\u00F6\u00DFe"}) {
    auto saved = table();
    saved->Translate(u"S", name);
    EXPECT_TRUE(saved->Save(String(file)));
    EXPECT_FALSE(make<zelGlobalization>()->Load(String(file))) << toUtf8(name);
  }
  write("old");
  auto texts = table();
  texts->Translate(u"S", u"C", u"", u"Caption", u"\u4E2D");
  EXPECT_FALSE(texts->Save(String(file)));
  EXPECT_THAT(takeLog(), testing::StartsWith("zelTranslates.Save -2147221503 The code page"));
  EXPECT_EQ(files().readWhole(file), "old");
}

TEST_F(Globalization, AFileThatCannotBeWrittenStaysAndIsLogged) {
  write("old");
  FailingFiles disk("replaceWhole", ErrorNumber::DiskFull);
  const Replaced<Files> replaced(disk);
  EXPECT_FALSE(table()->Save(String(file)));
  EXPECT_EQ(takeLog(), "zelTranslates.Save 61 Disk full\n");
  EXPECT_EQ(files().readWhole(file), "old");
}

TEST_F(Globalization, ElementsCountByTheirPlaceBelowTranslations) {
  write(
      "<?xml version='1.0' encoding='UTF-8'?><!-- by hand --><Texts>"
      "<Section Key='S'><Notes><x/></Notes><Translations><a Key='C'><!-- --><b Key='p'><c Key='Caption'>"
      "<d Language='en'>\xE2\x82\xAC <![CDATA[<1>]]></d><e "
      "Language='DE'/></c></b></a></Translations></Section>"
      "<Languages><x Key='en' Name='English'/><y Key='de' Name='German'/><z Key='EN' "
      "Name='again'/></Languages>"
      "<Languages><x Key='fr' Name='French'/></Languages></Texts>");
  const auto texts = make<zelGlobalization>();
  EXPECT_TRUE(texts->Load(String(file)));
  EXPECT_EQ(texts->Languages()->Count(), 2);
  EXPECT_EQ(in(*texts, u"en", u"C", u"p"), "\u20AC <1>");
  EXPECT_EQ(in(*texts, u"de", u"C", u"p"), "");
  EXPECT_EQ(takeLog(), "");
}

TEST_F(Globalization, LoadingMergesAndTakesTheTextsOfTheFile) {
  auto texts = table();
  texts->Translate(u"s", u"c", u"", u"Caption", u"old");
  write(
      inUse("<Translate Language='en'>1</Translate><Translate Language='fr'>2</Translate>"
            "<Translate Language='EN'>3</Translate>"));
  EXPECT_TRUE(texts->Load(String(file)));
  EXPECT_EQ(takeLog(), "zelTranslates.Load 9 There is no language \"fr\".\n");
  EXPECT_EQ(in(*texts, u"en", u"C"), "3");
  EXPECT_EQ(in(*texts, u"de", u"C"), "Missing");
  EXPECT_THAT(toUtf8(texts->ExportXML()), HasSubstr("<Section Key='s'>"));  // the node that was there
  const auto first = make<zelGlobalization>();
  write(inUse(""));
  EXPECT_TRUE(first->Load(String(file)));
  EXPECT_EQ(first->Translate(u"S", u"C"), u"");
}

TEST_F(Globalization, AFileThatDoesNotReadChangesNothing) {
  const std::pair<std::string, std::string> rows[] = {
      {"", ""},
      {"no XML", ""},
      {inUse("<T Language='en'>x</T>") + "<", ""},
      {inUse("<T>x</T>"), "Missing Attribute: Language"},
      {"<G><Languages><Language Key='en'/></Languages></G>", "Missing Attribute: Name"},
      {"<G><Section Key='S'><Translations><C Key='c'><P/></C></Translations></Section></G>",
       "Missing Attribute: Key"}};
  for (const auto& [xml, reason] : rows) {
    const auto texts = make<zelGlobalization>();
    write(xml);
    EXPECT_FALSE(texts->Load(String(file))) << xml;
    EXPECT_EQ(takeLog(), reason.empty() ? "" : "zelTranslates.Load -2147219991 " + reason + "\n") << xml;
    EXPECT_EQ(texts->ExportXML(), make<zelGlobalization>()->ExportXML());
  }
  EXPECT_FALSE(make<zelGlobalization>()->Load(u"nowhere.xml"));
}

}  // namespace
}  // namespace zelUtilities
