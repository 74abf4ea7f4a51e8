// What XML nodes answer to paths of members, for tests.
//
//   seen(u"<a><b c='1'/></a>", u"firstChild selectSingleNode{b/@c}.text nextSibling");   // "b|1|Nothing"
//
// Paths are separated by blanks and begin at the node, or at the root element of the text. Braces hold the
// arguments, parted by semicolons: texts, or, behind an @, a path. ={x} writes a property, * gives
// the names of all nodes of a list. An error is "!" and its number.
#pragma once

#include <gtest/gtest.h>

#include "platform/LateBound.h"

namespace zelUtilities {

inline LateBound newDocument() {
  LateBound document = LateBound::create(u"MSXML.DOMDocument");
  document.put(u"async", false);
  return document;
}

inline LateBound documentOf(StringView xml) {
  LateBound document = newDocument();
  EXPECT_TRUE(document.isTrue(u"loadXML", xml)) << toUtf8(xml);
  return document;
}

inline LateBound rootOf(StringView xml) { return documentOf(xml).object(u"documentElement"); }

namespace xmlPaths {

// Takes off what stands before the first of these outside braces.
inline StringView taken(StringView& text, StringView ends) {
  int depth = 0;
  std::size_t length = 0;
  for (; length < text.size(); ++length) {
    if (depth == 0 && ends.find(text[length]) != StringView::npos) break;
    depth += text[length] == u'{' ? 1 : text[length] == u'}' ? -1 : 0;
  }
  const StringView result = text.substr(0, length);
  text.remove_prefix(std::min(length + 1, text.size()));
  return result;
}

inline Variant valueOf(const LateBound& from, StringView path) {
  Variant value = from.get();
  while (!path.empty()) {
    StringView step = taken(path, u".");
    const LateBound at(value);
    const StringView name = step.substr(0, step.find_first_of(u"={"));
    step.remove_prefix(name.size());
    if (name == u"*") {
      String names;
      for (const LateBound& node : at.items())
        names.append(names.empty() ? u"" : u" ") += node.text(u"nodeName");
      value = names;
      continue;
    }
    std::vector<Variant> arguments;
    const InvokeKind kind = step.starts_with(u'=') ? InvokeKind::Put : InvokeKind::MethodOrGet;
    if (const std::size_t open = step.find(u'{'); open != StringView::npos) {
      StringView texts = step.substr(open + 1, step.size() - open - 2);
      do {
        const StringView text = taken(texts, u";");
        arguments.push_back(text.starts_with(u'@') ? valueOf(from, text.substr(1)) : Variant(text));
      } while (!texts.empty());
    }
    if (at.isNothing()) throw Error(ErrorNumber::ObjectNotSet);
    value = at.get()->Invoke(name, kind, arguments);
  }
  return value;
}

}  // namespace xmlPaths

inline std::string seen(const LateBound& node, StringView paths) {
  std::string answers;
  while (!paths.empty()) {
    try {
      const Variant value = xmlPaths::valueOf(node, xmlPaths::taken(paths, u" "));
      if (value.isObject())
        answers += value.object() ? toUtf8(LateBound(value).text(u"nodeName")) : "Nothing";
      else
        answers += value.isNull() ? "Null" : toUtf8(toText(value));
    } catch (const Error& error) {
      answers += "!" + std::to_string(error.number()) + (error.description().empty() ? " in silence" : "");
    }
    if (!paths.empty()) answers += "|";
  }
  return answers;
}

inline std::string seen(StringView xml, StringView paths) { return seen(rootOf(xml), paths); }

}  // namespace zelUtilities
