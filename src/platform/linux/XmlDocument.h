// XmlDocument: the stand-in for "MSXML.DOMDocument" and its versions up to 3.0, over libxml2.
//
// It has what the library and its clients use of that class, with its defaults: texts of nothing but white
// space are dropped, nothing is validated, nodes are selected by patterns (see XmlDocumentPattern.h). It
// reads what it is told to and no more; limits are in XmlDocumentParser.h. Failures that the original reports
// by a result code are Errors with that code as their number.
//
// Left out: nodes of another document are not taken over (import them as XML text), dropped white space
// does not come back as indentation in XML text, and declarations of name spaces stand before the other
// attributes of their element.
#pragma once

#include <cstdint>

#include "platform/linux/XmlDocumentNode.h"
#include "platform/linux/XmlDocumentParser.h"

namespace zelUtilities {

class XmlParseError;

class XmlDocument : public XmlNode {
 public:
  XmlDocument();

  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  // False where there is no such file or its text is not well-formed; then the document is empty and
  // parseError says why. Earlier nodes live on for those who hold them. A relative path counts from the
  // current folder.
  bool load(const String& xmlSource);
  bool loadXML(const String& bstrXML);
  // Writes the file whole or not at all, in the declared encoding, else in UTF-8. Raises as Files does.
  void save(const String& destination);
  Ref<XmlParseError> parseError() const;

  Ref<XmlNode> documentElement() const;
  Ref<XmlNode> createElement(const String& tagName);
  Ref<XmlNode> createTextNode(const String& data);

  // Loading is done when load returns, whatever is asked for.
  bool async() const { return async_; }
  void setAsync(bool async) { async_ = async; }
  // For the next load, and for the text of nodes at once.
  bool preserveWhiteSpace() const { return preserveWhiteSpace_; }
  void setPreserveWhiteSpace(bool preserve) { preserveWhiteSpace_ = preserve; }
  // Kept, and without effect.
  bool validateOnParse() const { return validateOnParse_; }
  void setValidateOnParse(bool validate) { validateOnParse_ = validate; }
  bool resolveExternals() const { return resolveExternals_; }
  void setResolveExternals(bool resolve) { resolveExternals_ = resolve; }

 protected:
  Ref<XmlDocument> document() const override;

 private:
  explicit XmlDocument(const std::shared_ptr<XmlTree>& tree);
  bool take(ParsedXml parsed);

  XmlFault fault_;
  String source_;  // the file that was asked for
  bool async_ = true;
  bool preserveWhiteSpace_ = false;
  bool validateOnParse_ = true;
  bool resolveExternals_ = true;
};

// Why the last loading of a document failed; a code of 0 where it did not.
class XmlParseError : public Object {
 public:
  XmlParseError(XmlFault fault, String url) : fault_(std::move(fault)), url_(std::move(url)) {}

  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  std::int32_t errorCode() const { return fault_.code; }
  String reason() const { return fault_.reason; }
  String srcText() const { return fault_.sourceText; }
  String url() const { return url_; }
  std::int32_t line() const { return fault_.line; }
  std::int32_t linepos() const { return fault_.linePosition; }
  std::int32_t filepos() const { return fault_.filePosition; }

 private:
  XmlFault fault_;
  String url_;
};

// Lets the document's names be found.
void registerXmlDocument();

}  // namespace zelUtilities
