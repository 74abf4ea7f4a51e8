// What the schema writer writes, in the eyes of a schema processor.
#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/xmlschemas.h>

#include <memory>

#include "text/zelSchema.h"

namespace zelUtilities {
namespace {

TEST(SchemaLinux, IsLoadedByASchemaProcessorThatThenChecksDataByIt) {
  zelSchema schema;
  schema.StartSchema(u"Shop");
  for (const StringView table : {u"Order", u"Line", u"Note"}) {
    schema.StartTable(table);
    schema.AddColumn(u"ID", ZEL_CellType_Long);
    for (const int kind : {1, 2, 4, 5, 7, 8, 11})
      schema.AddColumn(u"C" + decimalText(kind), static_cast<ZEL_Utilities_CellTypes>(kind));
    schema.EndTable();
  }
  schema.StartRelationships();
  schema.AddRelationship(u"Order", u"ID", u"Line", u"C2");
  schema.AddRelationship(u"Order", u"ID", u"Note");
  schema.EndRelationships();
  const std::string text = toUtf8(schema.EndSchema());

  const std::unique_ptr<xmlSchemaParserCtxt, decltype(&xmlSchemaFreeParserCtxt)> reader(
      xmlSchemaNewMemParserCtxt(text.data(), static_cast<int>(text.size())), xmlSchemaFreeParserCtxt);
  const std::unique_ptr<xmlSchema, decltype(&xmlSchemaFree)> loaded(xmlSchemaParse(reader.get()),
                                                                    xmlSchemaFree);
  ASSERT_TRUE(loaded) << text;
  const std::unique_ptr<xmlSchemaValidCtxt, decltype(&xmlSchemaFreeValidCtxt)> checker(
      xmlSchemaNewValidCtxt(loaded.get()), xmlSchemaFreeValidCtxt);
  xmlSchemaSetValidStructuredErrors(
      checker.get(), [](void*, xmlError*) {}, nullptr);
  const auto isValid = [&](const std::string& data) {
    const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> document(
        xmlParseMemory(data.data(), static_cast<int>(data.size())), xmlFreeDoc);
    return xmlSchemaValidateDoc(checker.get(), document.get()) == 0;
  };
  EXPECT_TRUE(
      isValid("<Shop><Line><C2>1</C2><C7>2024-05-06T07:08:09</C7></Line><Order><ID>1</ID></Order></Shop>"));
  EXPECT_FALSE(isValid("<Shop><Order><ID>one</ID></Order></Shop>"));
  EXPECT_FALSE(isValid("<Shop><Other/></Shop>"));
}

}  // namespace
}  // namespace zelUtilities
