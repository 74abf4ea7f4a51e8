#include "globalization/TranslationFile.h"

#include <algorithm>

#include "automation/Conversions.h"
#include "automation/LateProperty.h"
#include "platform/Files.h"
#include "platform/Locale.h"
#include "text/mXMLDocument.h"
#include "text/zelStringCat.h"

namespace zelUtilities {

namespace {

using Level = TranslationFile::Level;

constexpr std::int32_t elementType = 1;  // of an XML node

// --- Reading ---

template <class Body>
void forEachElement(Object& parent, const Body& body) {
  for (Ref<Object> child = objectProperty(parent, u"firstChild"); child;
       child = objectProperty(*child, u"nextSibling"))
    if (toLong(property(*child, u"nodeType")) == elementType) body(child);
}

bool isNamed(const Ref<Object>& element, StringView name) {
  return toText(property(*element, u"nodeName")) == name;
}

String attributeOf(const Ref<Object>& element, StringView name) {
  return toText(mXML::ValueFromAttribute(name, element));
}

// Whether the file is as Save writes it, in which case its references to characters are numbers of the code
// page and not of Unicode (see mXML::ToXML). Any other way of writing has bytes beyond ASCII.
bool refersToCodePage(const String& filename) {
  try {
    const std::string bytes = files().readWhole(filename);
    return std::none_of(bytes.begin(), bytes.end(), [](char byte) { return (byte & 0x80) != 0; });
  } catch (const Error&) {
    return false;  // an address that only the parser can read
  }
}

class TranslationReader {
 public:
  explicit TranslationReader(bool refersToCodePage) : refersToCodePage_(refersToCodePage) {}

  void readDocument(Object& root) {
    bool hasLanguages = false;
    forEachElement(root, [&](const Ref<Object>& element) {
      if (isNamed(element, u"Section")) {
        readSection(element);
      } else if (!hasLanguages && isNamed(element, u"Languages")) {
        hasLanguages = true;
        readLanguages(*element);
      }
    });
  }
  TranslationFile& result() { return result_; }

 private:
  void readLanguages(Object& languages) {
    forEachElement(languages, [&](const Ref<Object>& language) {
      result_.languages.push_back({attributeOf(language, u"Key"), attributeOf(language, u"Name")});
    });
  }

  void readSection(const Ref<Object>& section) {
    add(Level::Section, section);
    if (const Ref<Object> translations = mXML::SearchForChild(u"Translations", section))
      readBelow(Level::Control, *translations);
  }

  // The elements' names do not matter here, only where they stand.
  void readBelow(Level level, Object& parent) {
    forEachElement(parent, [&](const Ref<Object>& element) {
      if (level == Level::Text) return addText(element);
      add(level, element);
      readBelow(static_cast<Level>(static_cast<int>(level) + 1), *element);
    });
  }

  void add(Level level, const Ref<Object>& element) {
    result_.entries.push_back({level, attributeOf(element, u"Key"), {}});
  }

  void addText(const Ref<Object>& element) {
    const Variant text = property(*element, u"nodeTypedValue");
    result_.entries.push_back(
        {Level::Text, attributeOf(element, u"Language"), text.isNull() ? String() : decoded(toText(text))});
  }

  String decoded(String text) const {
    if (!refersToCodePage_) return text;
    for (char16_t& unit : text) {
      if (unit < 0x80 || unit > 0xFF) continue;
      const char byte = static_cast<char>(unit);
      if (const String character = widen({&byte, 1}); character.size() == 1) unit = character[0];
    }
    return text;
  }

  bool refersToCodePage_;
  TranslationFile result_;
};

// --- Writing ---

StringView fieldOf(StringView key, int field) {
  for (; field > 0; --field) key.remove_prefix(key.find(u'|') + 1);
  return key.substr(0, key.find(u'|'));
}

String attributeText(StringView name, StringView value) {
  return String(name).append(u"='").append(value).append(u"'");
}

template <class Body>
void forEachNode(const zelNodes* nodes, const Body& body) {
  if (!nodes) return;
  std::uint32_t slot = nodes->startSlot();
  while (const zelNode* node = nodes->nextFrom(slot)) body(*node);
}

void writeLanguages(const zelNodeListColumns& languages, zelStringCat& out) {
  out.OpenElement(u"Languages");
  languages.forEach([&](const zelNodeListColumn& language) {
    out.AddElement(u"Language", {},
                   attributeText(u"Key", language.Key()) + u" " + attributeText(u"Name", language.Name()));
  });
  out.CloseElement();
}

void writeTexts(const zelNode& use, zelStringCat& out) {
  for (std::uint32_t i = 0; i < use.cellCount(); ++i)
    out.AddElement(u"Translate", toText(use.cell(i).Value()),
                   attributeText(u"Language", use.layout().key(i)));
}

// The element's level is the number of the field of its key that tells it from its neighbours.
void writeBelow(const zelNode& parent, int level, zelStringCat& out) {
  constexpr StringView names[] = {{}, u"Control", u"Part", u"Use"};
  if (level > 3) return writeTexts(parent, out);
  forEachNode(parent.childrenIfAny(), [&](const zelNode& node) {
    out.OpenElement(names[level], attributeText(u"Key", fieldOf(node.Key(), level)));
    writeBelow(node, level + 1, out);
    out.CloseElement();
  });
}

void writeSection(const zelNode& section, zelStringCat& out) {
  out.OpenElement(u"Section", attributeText(u"Key", section.Key()));
  out.OpenElement(u"Translations");
  writeBelow(section, 1, out);
  out.CloseElement();
  out.CloseElement();
}

}  // namespace

std::unique_ptr<TranslationFile> readTranslationFile(const String& sFilename) {
  const Ref<Object> document = mXML::LoadXMLDocument(sFilename, true, false, true);
  const Ref<Object> root = document ? objectProperty(*document, u"documentElement") : nullptr;
  if (!root) return {};
  TranslationReader reader(refersToCodePage(sFilename));
  reader.readDocument(*root);
  return std::make_unique<TranslationFile>(std::move(reader.result()));
}

String translationXML(const zelNodeList& table) {
  const auto out = make<zelStringCat>();
  out->OpenElement(u"Globalization");
  writeLanguages(*table.Columns(), *out);
  forEachNode(table.RootNodes().get(), [&](const zelNode& section) { writeSection(section, *out); });
  out->CloseElement();
  return out->Complete();
}

}  // namespace zelUtilities
