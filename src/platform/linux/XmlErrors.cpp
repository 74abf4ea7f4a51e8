#include "platform/linux/XmlErrors.h"

#include <libxml/parser.h>

#include <algorithm>
#include <iterator>
#include <string_view>

#include "platform/linux/XmlDocumentTree.h"

namespace zelUtilities {

namespace {

struct Code {
  int theirs;
  std::uint32_t ours;
};
constexpr Code codes[] = {
    {XML_ERR_DOCUMENT_EMPTY, 0xC00CE558},         {XML_ERR_DOCUMENT_END, 0xC00CE556},
    {XML_ERR_INVALID_CHAR, 0xC00CE508},           {XML_ERR_INVALID_CHARREF, 0xC00CE508},
    {XML_ERR_INVALID_ENCODING, 0xC00CE508},       {XML_ERR_UNDECLARED_ENTITY, 0xC00CE00D},
    {XML_WAR_UNDECLARED_ENTITY, 0xC00CE00D},      {XML_ERR_ENTITYREF_SEMICOL_MISSING, 0xC00CE50D},
    {XML_ERR_LT_IN_ATTRIBUTE, 0xC00CE506},        {XML_ERR_ATTRIBUTE_NOT_STARTED, 0xC00CE502},
    {XML_ERR_ATTRIBUTE_NOT_FINISHED, 0xC00CE55D}, {XML_ERR_ATTRIBUTE_WITHOUT_VALUE, 0xC00CE501},
    {XML_ERR_ATTRIBUTE_REDEFINED, 0xC00CE554},    {XML_ERR_COMMENT_NOT_FINISHED, 0xC00CE55E},
    {XML_ERR_CDATA_NOT_FINISHED, 0xC00CE561},     {XML_ERR_SPACE_REQUIRED, 0xC00CE509},
    {XML_ERR_NAME_REQUIRED, 0xC00CE504},          {XML_ERR_GT_REQUIRED, 0xC00CE50A},
    {XML_ERR_TAG_NAME_MISMATCH, 0xC00CE56D},      {XML_ERR_TAG_NOT_FINISHED, 0xC00CE553},
    {XML_NS_ERR_UNDEFINED_NAMESPACE, 0xC00CE01D},
};

}  // namespace

std::int32_t xmlErrorNumber(int theirs) {
  const auto* found = std::find_if(std::begin(codes), std::end(codes),
                                   [&](const Code& code) { return code.theirs == theirs; });
  return found == std::end(codes) ? XmlErrorNumber::Failed : static_cast<std::int32_t>(found->ours);
}

String xmlErrorSentence(const char* message) {
  std::string_view text = message ? message : "The document cannot be read.";
  while (!text.empty() && text.back() == '\n') text.remove_suffix(1);
  return fromUtf8(text);
}

}  // namespace zelUtilities
