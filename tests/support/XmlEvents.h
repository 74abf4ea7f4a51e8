// XmlEvents: what a reader of XML says of a document, as one text: <name a=v>, what stands between, </name>,
// and
// "!" for an error. Names of a name space are {address}local|qualified.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "automation/Error.h"
#include "platform/Xml.h"

namespace zelUtilities {

class XmlEvents : public XmlHandler {
 public:
  virtual ~XmlEvents() = default;

  static std::string of(const Variant& source) {
    XmlEvents events;
    try {
      xml().parse(source, events);
      EXPECT_EQ(events.errors, 0);
    } catch (const Error& error) {
      EXPECT_EQ(events.errors, 1) << error.what();
      EXPECT_EQ(error.what(), events.message);
      EXPECT_NE(events.message, "");
    }
    return events.text;
  }

  void startDocument() override { text.clear(); }
  void startElement(const XmlName& name, XmlAttributes& attributes) override {
    text += "<" + shown(name);
    for (std::size_t i = 0; i < attributes.count(); ++i) {
      const auto [attribute, value] = attributes.at(i);
      text += " " + shown(attribute) + "=" + toUtf8(value);
    }
    text += ">";
  }
  void characters(StringView characters) override { text += toUtf8(characters); }
  void endElement(const XmlName& name) override { text += "</" + toUtf8(name.qualifiedName) + ">"; }
  void fatalError(std::int32_t errorLine, std::int32_t errorColumn, StringView why) override {
    text += "!";
    ++errors;
    line = errorLine;
    column = errorColumn;
    message = toUtf8(why);
  }

  std::string text = "?";  // no document yet
  int errors = 0;
  std::int32_t line = -1;
  std::int32_t column = -1;
  std::string message;

 private:
  static std::string shown(const XmlName& name) {
    const std::string qualified = toUtf8(name.qualifiedName);
    if (name.namespaceUri.empty() && name.localName == name.qualifiedName) return qualified;
    return "{" + toUtf8(name.namespaceUri) + "}" + toUtf8(name.localName) + "|" + qualified;
  }
};

}  // namespace zelUtilities
