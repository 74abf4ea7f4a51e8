#include <gtest/gtest.h>

#include "text/zelSchema.h"

namespace zelUtilities {
namespace {

std::string lines(const String& text) {
  std::string lines = toUtf8(text);
  std::erase(lines, '\r');
  return lines;
}

TEST(Schema, DescribesADataSet) {
  zelSchema schema;
  EXPECT_FALSE(schema.StartSchema(u"DS"));  // sic
  EXPECT_TRUE(schema.StartTable(u"T"));
  EXPECT_TRUE(schema.AddColumn(u"C", ZEL_CellType_String));
  EXPECT_TRUE(schema.EndTable());
  EXPECT_TRUE(schema.StartRelationships());
  EXPECT_TRUE(schema.EndRelationships());
  EXPECT_EQ(lines(schema.EndSchema()),
            "<xs:schema id='DS' xmlns:xs='http://www.w3.org/2001/XMLSchema'"
            " xmlns:msdata='urn:schemas-microsoft-com:xml-msdata'>\n"
            "  <xs:element name='DS' msdata:IsDataSet='true'>\n"
            "    <xs:complexType>\n"
            "      <xs:choice maxOccurs='unbounded'>\n"
            "        <xs:element name='T'>\n"
            "          <xs:complexType>\n"
            "            <xs:all>\n"
            "              <xs:element name='C' type='xs:string' minOccurs='0'/>\n"
            "            </xs:all>\n"
            "          </xs:complexType>\n"
            "        </xs:element>\n"
            "      </xs:choice>\n"
            "    </xs:complexType>\n"
            "  </xs:element>\n"
            "</xs:schema>\n");
}

TEST(Schema, GivesEachKindOfColumnItsType) {
  const std::pair<int, std::string> types[] = {{1, "xs:int"},    {2, "xs:int"},      {3, "xs:int"},
                                               {4, "xs:double"}, {5, "xs:double"},   {7, "xs:dateTime"},
                                               {8, "xs:string"}, {11, "xs:boolean"}, {12, "xs:"},
                                               {0, "xs:"},       {99, "xs:"}};
  for (const auto& [kind, type] : types) {
    zelSchema schema;
    schema.AddColumn(u"a<b", static_cast<ZEL_Utilities_CellTypes>(kind));
    EXPECT_EQ(lines(schema.EndSchema()), "<xs:element name='a&lt;b' type='" + type + "' minOccurs='0'/>\n");
  }
}

TEST(Schema, ARelationshipHasOneKeyOrTwo) {
  zelSchema schema;
  EXPECT_TRUE(schema.AddRelationship(u"Order", u"ID", u"Line"));
  EXPECT_TRUE(schema.AddRelationship(u"Order", u"ID", u"Note", u"OrderID"));
  const std::string text = lines(schema.EndSchema());
  for (const char* line : {"<xs:annotation>\n  <xs:appinfo>\n    <msdata:Relationship name='OrderToLine' "
                           "msdata:parent='Order' msdata:child='Line' msdata:parentkey='ID' "
                           "msdata:childkey='ID'/>\n  </xs:appinfo>\n</xs:annotation>\n",
                           "name='OrderToNote' msdata:parent='Order' msdata:child='Note' "
                           "msdata:parentkey='ID' msdata:childkey='OrderID'/>"})
    EXPECT_NE(text.find(line), std::string::npos) << text;
}

TEST(Schema, WithoutRelationshipsOnlyTheChoiceIsClosed) {
  zelSchema schema;
  schema.StartSchema(u"DS");
  EXPECT_TRUE(lines(schema.EndSchema()).ends_with("<xs:choice maxOccurs='unbounded'>\n      </xs:choice>\n"));
}

}  // namespace
}  // namespace zelUtilities
