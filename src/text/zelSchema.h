// zelSchema: writes the XML schema of a data set: its tables with their columns, and which table's rows
// belong to which other table's.
//
//   zelSchema schema;
//   schema.StartSchema(u"Shop");
//   schema.StartTable(u"Order");
//   schema.AddColumn(u"ID", ZEL_CellType_Long);
//   schema.EndTable();
//   schema.StartRelationships();              // always, since it ends the part with the tables
//   schema.AddRelationship(u"Order", u"ID", u"Line", u"OrderID");
//   schema.EndRelationships();
//   String xsd = schema.EndSchema();
//
// The order of the calls is the caller's duty. Failures are logged under "zelSchema.<operation>"; the
// operation then returns False, EndSchema "".
#pragma once

#include "automation/Object.h"
#include "automation/String.h"
#include "text/CellTypes.h"
#include "text/zelStringCat.h"

namespace zelUtilities {

class zelSchema final : public Object {
 public:
  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  // Always False, though the beginning is written.
  bool StartSchema(StringView sName);

  // The name of a table is written as given; names of columns are escaped.
  bool StartTable(StringView sTableName);
  // Byte, Short and Long are "xs:int", Single and Double "xs:double", Date "xs:dateTime", String "xs:string",
  // Boolean "xs:boolean"; any other kind is "xs:", which is no type.
  bool AddColumn(StringView sName, ZEL_Utilities_CellTypes eColumnType);
  bool EndTable();

  bool StartRelationships();
  // Rows of the child belong to the row of the parent whose key they hold. Without sChildKey the key has the
  // same name in both. The relationship is named "<parent>To<child>".
  bool AddRelationship(StringView sParentTable, StringView sParentKey, StringView sChildTable,
                       StringView sChildKey = {});
  bool EndRelationships();

  // The whole schema, lines ended by CR LF.
  String EndSchema();

 private:
  void close(int elements);

  zelStringCat text_;
};

}  // namespace zelUtilities
