#include "text/zelSchema.h"

#include "automation/Binder.h"
#include "foundation/Handled.h"

namespace zelUtilities {

namespace {

StringView schemaType(ZEL_Utilities_CellTypes type) {
  switch (type) {
    case ZEL_CellType_Byte:
    case ZEL_CellType_Short:
    case ZEL_CellType_Long:
      return u"xs:int";
    case ZEL_CellType_Single:
    case ZEL_CellType_Double:
      return u"xs:double";
    case ZEL_CellType_Date:
      return u"xs:dateTime";
    case ZEL_CellType_String:
      return u"xs:string";
    case ZEL_CellType_Boolean:
      return u"xs:boolean";
    default:
      return u"xs:";
  }
}

// Whether the steps were done; a failure is logged.
template <class Steps>
bool done(StringView source, Steps steps) {
  bool result = false;
  handled(source, [&] {
    steps();
    result = true;
  });
  return result;
}

}  // namespace

bool zelSchema::StartSchema(StringView sName) {
  handled(u"zelSchema.StartSchema", [&] {
    text_.StartElement(u"xs:schema");
    text_.AddAttribute(u"id", sName);
    text_.AddAttribute(u"xmlns:xs", u"http://www.w3.org/2001/XMLSchema");
    text_.AddAttribute(u"xmlns:msdata", u"urn:schemas-microsoft-com:xml-msdata");
    text_.FinishElement(true);
    text_.StartElement(u"xs:element");
    text_.AddAttribute(u"name", sName);
    text_.AddAttribute(u"msdata:IsDataSet", u"true");
    text_.FinishElement(true);
    text_.OpenElement(u"xs:complexType");
    text_.OpenElement(u"xs:choice", u"maxOccurs='unbounded'");
  });
  return false;  // clients have never been told anything else
}

bool zelSchema::StartTable(StringView sTableName) {
  return done(u"zelSchema.StartTable", [&] {
    text_.OpenElement(u"xs:element", String(u"name='").append(sTableName).append(u"'"));
    text_.OpenElement(u"xs:complexType");
    text_.OpenElement(u"xs:all");
  });
}

bool zelSchema::AddColumn(StringView sName, ZEL_Utilities_CellTypes eColumnType) {
  return done(u"zelSchema.AddColumn", [&] {
    text_.StartElement(u"xs:element");
    text_.AddAttribute(u"name", sName);
    text_.AddAttribute(u"type", schemaType(eColumnType));
    text_.AddAttribute(u"minOccurs", u"0");
    text_.FinishElement(false);
  });
}

bool zelSchema::EndTable() {
  return done(u"zelSchema.EndTable", [&] { close(3); });
}

bool zelSchema::StartRelationships() {
  return done(u"zelSchema.StartRelationships", [&] { close(3); });
}

bool zelSchema::AddRelationship(StringView sParentTable, StringView sParentKey, StringView sChildTable,
                                StringView sChildKey) {
  return done(u"zelSchema.AddRelationship", [&] {
    text_.OpenElement(u"xs:annotation");
    text_.OpenElement(u"xs:appinfo");
    text_.StartElement(u"msdata:Relationship");
    text_.AddAttribute(u"name", String(sParentTable).append(u"To").append(sChildTable));
    text_.AddAttribute(u"msdata:parent", sParentTable);
    text_.AddAttribute(u"msdata:child", sChildTable);
    text_.AddAttribute(u"msdata:parentkey", sParentKey);
    text_.AddAttribute(u"msdata:childkey", sChildKey.empty() ? sParentKey : sChildKey);
    text_.FinishElement(false);
    close(2);
  });
}

bool zelSchema::EndRelationships() { return true; }

String zelSchema::EndSchema() {
  String text;
  handled(u"zelSchema.EndSchema", [&] {
    close(1);
    text = text_.Complete();
  });
  return text;
}

void zelSchema::close(int elements) {
  for (int i = 0; i < elements; ++i) text_.CloseElement();
}

const ClassInfo& zelSchema::describeClass() {
  using T = zelSchema;
  static const ClassInfo info =
      describe<T>("zelSchema", "Writes the XML schema of a data set.")
          .creatable()
          .method("StartSchema", &T::StartSchema, {"sName"}, "Begins the schema; always False.")
          .method("StartTable", &T::StartTable, {"sTableName"}, "Begins a table.")
          .method("AddColumn", &T::AddColumn, {"sName", "eColumnType"}, "Adds a column to the table.")
          .method("EndTable", &T::EndTable, "Ends the table.")
          .method("StartRelationships", &T::StartRelationships,
                  "Ends the tables; needed even without relationships.")
          .method("AddRelationship", &T::AddRelationship,
                  {"sParentTable", "sParentKey", "sChildTable", arg("sChildKey") = u""},
                  "Says which rows belong to which other table's.")
          .method("EndRelationships", &T::EndRelationships, "Ends the relationships.")
          .method("EndSchema", &T::EndSchema, "The whole schema.");
  return info;
}

}  // namespace zelUtilities
