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
  zelSchema schema, unrelated;
  for (zelSchema* each : {&schema, &unrelated}) {
    EXPECT_FALSE(each->StartSchema(u"DS"));  // sic
    EXPECT_TRUE(each->StartTable(u"T") && each->AddColumn(u"C", ZEL_CellType_String) && each->EndTable());
  }
  EXPECT_TRUE(schema.StartRelationships() && schema.EndRelationships());
  const std::string content =
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
      "      </xs:choice>\n";
  EXPECT_EQ(lines(schema.EndSchema()), content + "    </xs:complexType>\n  </xs:element>\n</xs:schema>\n");
  EXPECT_EQ(lines(unrelated.EndSchema()), content) << "without relationships only the choice is closed";
}

TEST(Schema, GivesEachKindOfColumnItsType) {
  const std::pair<int, std::string> types[] = {{1, "int"},    {2, "int"},      {3, "int"},    {4, "double"},
                                               {5, "double"}, {7, "dateTime"}, {8, "string"}, {11, "boolean"},
                                               {12, ""},      {0, ""},         {99, ""}};
  zelSchema schema;
  std::string expected;
  for (const auto& [kind, type] : types) {
    schema.AddColumn(u"a<b", static_cast<ZEL_Utilities_CellTypes>(kind));
    expected += "<xs:element name='a&lt;b' type='xs:" + type + "' minOccurs='0'/>\n";
  }
  EXPECT_EQ(lines(schema.EndSchema()), expected);
}

TEST(Schema, ARelationshipHasOneKeyOrTwo) {
  zelSchema schema;
  EXPECT_TRUE(schema.AddRelationship(u"Order", u"ID", u"Line") &&
              schema.AddRelationship(u"Order", u"ID", u"Note", u"OrderID"));
  const auto relationship = [](const std::string& child, const std::string& key) {
    return "<xs:annotation>\n  <xs:appinfo>\n    <msdata:Relationship name='OrderTo" + child +
           "' msdata:parent='Order' msdata:child='" + child + "' msdata:parentkey='ID' msdata:childkey='" +
           key + "'/>\n  </xs:appinfo>\n</xs:annotation>\n";
  };
  EXPECT_EQ(lines(schema.EndSchema()), relationship("Line", "ID") + relationship("Note", "OrderID"));
}

}  // namespace
}  // namespace zelUtilities
