// Several values as one text, to be compared with one literal.
//
//   EXPECT_EQ(spelled({list->Count(), node->Key(), node->Parent()}), "5|a|Nothing");
//   put(*column, {{u"Width", 10}, {u"Visible", false}});
//   EXPECT_EQ(propertiesOf(*column, u"Width Visible"), "10|False");
//
// What is no text, number or the like is told by the name of its kind: "Empty", "Null", "zelNode", "Byte()".
#pragma once

#include <sstream>
#include <string>

#include "automation/Conversions.h"

namespace zelUtilities {

inline std::string spelled(std::initializer_list<Variant> values) {
  std::string text;
  for (const Variant& value : values) {
    const bool isNamed = value.isEmpty() || value.isNull() || value.isObject() || value.isArray();
    text += (&value == values.begin() ? "" : "|") + toUtf8(isNamed ? typeName(value) : toText(value));
  }
  return text;
}

// The properties so named, read as a script reads them.
inline std::string propertiesOf(Object& object, StringView names) {
  std::istringstream words(toUtf8(names));
  std::string text;
  for (std::string name; words >> name;)
    text += "|" + spelled({object.Invoke(fromUtf8(name), InvokeKind::Get, {})});
  return text.substr(1);
}

inline void put(Object& object, std::initializer_list<std::pair<StringView, Variant>> properties) {
  for (auto [name, value] : properties) object.Invoke(name, InvokeKind::Put, {&value, 1});
}

}  // namespace zelUtilities
