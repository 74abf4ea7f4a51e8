// Several values as one text, to be compared with one literal.
//
//   EXPECT_EQ(spelled({list->Count(), node->Key(), node->Parent()}), "5|a|Nothing");
//   setProperties(*column, u"Width Visible", {10, false});
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

// Writes as many properties.
inline void setProperties(Object& object, StringView names, std::initializer_list<Variant> values) {
  std::istringstream words(toUtf8(names));
  for (Variant value : values) {
    std::string name;
    words >> name;
    object.Invoke(fromUtf8(name), InvokeKind::Put, {&value, 1});
  }
}

}  // namespace zelUtilities
