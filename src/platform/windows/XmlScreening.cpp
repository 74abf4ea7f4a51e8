#include "platform/windows/XmlScreening.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <deque>
#include <map>
#include <vector>

namespace zelUtilities {

namespace {

constexpr StringView blanks = u" \t\r\n";
constexpr StringView quotes = u"\"'";

// What an entity stands for: the text of all its declarations, and what the references in it stand for.
struct Entity {
  std::uint64_t size = 0;
  std::vector<StringView> references;
  std::size_t added = 0;  // of the references, to the size
  bool isExternal = false;
  bool isOpen = false;  // its references are being added
};

// Behind the next such text; the end where there is none.
std::size_t behind(StringView text, StringView end, std::size_t at) {
  const std::size_t found = text.find(end, at);
  return found == StringView::npos ? text.size() : found + end.size();
}

std::size_t behindBlanks(StringView text, std::size_t at) {
  return std::min(text.find_first_not_of(blanks, at), text.size());
}

// Behind what stands at a place as one piece that is of no interest; the place itself for anything else.
std::size_t behindOther(StringView text, std::size_t at) {
  const StringView rest = text.substr(at);
  if (rest.starts_with(u"<!--")) return behind(text, u"-->", at + 4);
  if (rest.starts_with(u"<![CDATA[")) return behind(text, u"]]>", at);
  if (rest.starts_with(u"<?")) return behind(text, u"?>", at);
  return at;
}

// The literal whose opening quote stands at a place, without its quotes.
StringView literalAt(StringView text, std::size_t at) {
  return text.substr(at + 1, text.find(text[at], at + 1) - at - 1);
}

// "&name" or "%name" at a place; "" where there is no reference.
StringView referenceAt(StringView text, std::size_t at) {
  const std::size_t end = text.find_first_of(u"; \t\r\n<>&%\"'", at + 1);
  const bool isReference = end != StringView::npos && text[end] == u';' && end > at + 1;
  return isReference && text[at + 1] != u'#' ? text.substr(at, end - at) : StringView();
}

template <class Take>
void eachReference(StringView text, const Take& take) {
  for (std::size_t at = text.find_first_of(u"&%"); at != StringView::npos;
       at = text.find_first_of(u"&%", at + 1)) {
    if (const StringView reference = referenceAt(text, at); !reference.empty()) take(reference);
  }
}

// The number behind "&#", as far as it is one of ASCII's; else 0.
char16_t characterOf(StringView number) {
  const bool isHexadecimal = number.starts_with(u'x');
  unsigned value = 0;
  for (const char16_t digit : number.substr(isHexadecimal ? 1 : 0)) {
    const unsigned letter = (digit | 32U) - u'a' + 10;
    value = value * (isHexadecimal ? 16 : 10) + (digit <= u'9' ? digit - u'0' : letter);
    if (value > 127) return 0;
  }
  return static_cast<char16_t>(value);
}

// A literal with the characters that it gives by number, as a declaration takes it; a reference may arise.
String decoded(StringView literal) {
  String text;
  while (!literal.empty()) {
    const std::size_t at = std::min(literal.find(u"&#"), literal.size());
    text += literal.substr(0, at);
    literal.remove_prefix(at);
    if (literal.empty()) break;
    const std::size_t end = std::min(literal.find(u';'), literal.size());
    const char16_t character = characterOf(literal.substr(2, end - std::min<std::size_t>(end, 2)));
    text += character ? StringView(&character, 1) : literal.substr(0, end + 1);
    literal.remove_prefix(std::min(end + 1, literal.size()));
  }
  return text;
}

class Entities {
 public:
  explicit Entities(std::size_t documentSize) : most_(10 * (std::uint64_t{documentSize} + 10'000)) {
    for (const StringView name : {u"&amp", u"&lt", u"&gt", u"&quot", u"&apos"})
      entities_[String(name)].size = 1;
  }

  // Reads the declarations between the brackets of a document type; returns where they end.
  std::size_t declare(StringView subset) {
    const std::size_t end = read(subset);
    // What a parameter entity stands for may declare more.
    while (!parameterTexts_.empty() && fault_.empty()) {
      const StringView text = parameterTexts_.back();
      parameterTexts_.pop_back();
      count(text.size());
      read(text);
    }
    for (const StringView reference : usedInType_) use(reference);
    return end;
  }
  void use(StringView reference) {
    if (fault_.empty()) count(sizeOf(reference));
  }
  const String& fault() const { return fault_; }

 private:
  void count(std::uint64_t size) {
    used_ += size;
    if (used_ > most_ && fault_.empty()) fault_ = u"The document's entities stand for too much.";
  }
  std::size_t read(StringView subset);
  std::size_t readDeclaration(StringView subset, std::size_t at);
  void declareEntity(StringView declaration);
  std::uint64_t sizeOf(StringView reference);
  Entity* find(StringView reference);

  std::uint64_t most_;
  std::uint64_t used_ = 0;
  String fault_;
  std::map<String, Entity, std::less<>> entities_;  // by their references
  std::deque<String> texts_;                        // that are not in the document so
  std::vector<StringView> parameterTexts_;
  std::vector<StringView> usedInType_;
};

std::size_t Entities::read(StringView subset) {
  std::size_t at = 0;
  while (at < subset.size() && subset[at] != u']') {
    const std::size_t next = behindOther(subset, at);
    if (next == at && subset[at] == u'<') {
      at = readDeclaration(subset, at);
      continue;
    }
    if (subset[at] == u'%')
      if (const StringView reference = referenceAt(subset, at); !reference.empty())
        usedInType_.push_back(reference);
    at = std::max(next, at + 1);
  }
  return at;
}

// Returns where the declaration ends. The values that it gives to attributes count as used once.
std::size_t Entities::readDeclaration(StringView subset, std::size_t at) {
  const bool givesValues = subset.substr(at).starts_with(u"<!ATTLIST");
  const std::size_t start = at;
  while (at < subset.size() && subset[at] != u'>') {
    if (quotes.find(subset[at]) == StringView::npos) {
      ++at;
      continue;
    }
    const StringView literal = literalAt(subset, at);
    if (givesValues) eachReference(literal, [this](StringView used) { usedInType_.push_back(used); });
    at = std::min(at + literal.size() + 2, subset.size());
  }
  if (subset.substr(start).starts_with(u"<!ENTITY")) declareEntity(subset.substr(start, at - start));
  return at;
}

void Entities::declareEntity(StringView declaration) {
  std::size_t at = behindBlanks(declaration, 8);
  const bool isParameter = declaration.substr(at).starts_with(u'%');
  if (isParameter) at = behindBlanks(declaration, at + 1);
  const std::size_t nameEnd = std::min(declaration.find_first_of(blanks, at), declaration.size());
  String name(isParameter ? u"%" : u"&");
  Entity& entity = entities_[name.append(declaration.substr(at, nameEnd - at))];
  at = behindBlanks(declaration, nameEnd);
  if (at == declaration.size()) return;
  if (quotes.find(declaration[at]) == StringView::npos) {
    entity.isExternal = true;
    return;
  }
  StringView value = literalAt(declaration, at);
  if (value.find(u"&#") != StringView::npos) value = texts_.emplace_back(decoded(value));
  // The references are counted, too, so that nothing is made of many that stand for nothing.
  entity.size += value.size();
  eachReference(value, [&](StringView reference) { entity.references.push_back(reference); });
  if (isParameter) parameterTexts_.push_back(value);
}

// Nothing, and a fault, for what must not be used.
Entity* Entities::find(StringView reference) {
  const auto found = entities_.find(reference);
  if (found == entities_.end()) {
    fault_ = u"Entity '" + String(reference.substr(1)) + u"' not defined";
  } else if (found->second.isExternal) {
    fault_ = u"External entities are not read.";
  } else if (found->second.isOpen) {
    fault_ = u"Detected an entity reference loop";
  }
  return fault_.empty() ? &found->second : nullptr;
}

std::uint64_t Entities::sizeOf(StringView reference) {
  Entity* const used = find(reference);
  std::vector<Entity*> path = {used};
  while (!path.empty() && path.back()) {
    Entity& entity = *path.back();
    entity.isOpen = entity.added < entity.references.size();
    if (!entity.isOpen) {
      path.pop_back();
      continue;
    }
    Entity* const next = find(entity.references[entity.added]);
    if (next && next->added == next->references.size()) {
      entity.size = std::min(entity.size + next->size, most_ + 1);
      ++entity.added;
    } else {
      path.push_back(next);
    }
  }
  return used && fault_.empty() ? used->size : 0;
}

// Where the document type starts; the end where there is none.
std::size_t documentTypeIn(StringView document) {
  std::size_t at = document.starts_with(u'\uFEFF') ? 1 : 0;
  for (std::size_t next = at;; at = next) {
    next = behindBlanks(document, behindOther(document, at));
    if (next == at) break;
  }
  return document.substr(at).starts_with(u"<!DOCTYPE") ? at : document.size();
}

bool isBigEndian(std::string_view document) {
  using namespace std::string_view_literals;
  return document.starts_with("\xFE\xFF"sv) || document.starts_with("\0<"sv);
}
bool isUtf16(std::string_view document) {
  using namespace std::string_view_literals;
  return isBigEndian(document) || document.starts_with("\xFF\xFE"sv) || document.starts_with("<\0"sv);
}

String fromUtf16(std::string_view document) {
  String text(document.size() / 2, u'\0');
  std::memcpy(text.data(), document.data(), 2 * text.size());
  if (isBigEndian(document))
    for (char16_t& unit : text) unit = static_cast<char16_t>(unit << 8 | unit >> 8);
  return text;
}

// The system's parsers stop at one of these behind the root element, and are content.
bool holdsNoCharacter(StringView text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    const bool isPair = (unit & 0xFC00) == 0xD800 && i + 1 < text.size() && (text[i + 1] & 0xFC00) == 0xDC00;
    if (unit == 0 || ((unit & 0xF800) == 0xD800 && !isPair)) return true;
    i += isPair ? 1 : 0;
  }
  return false;
}

String refusalOfEntities(StringView document) {
  std::size_t at = documentTypeIn(document);
  if (at == document.size()) return {};
  Entities entities(document.size());
  while (at < document.size() && document[at] != u'[' && document[at] != u'>')
    at += quotes.find(document[at]) == StringView::npos ? 1 : literalAt(document, at).size() + 2;
  if (at < document.size() && document[at] == u'[') at += 1 + entities.declare(document.substr(at + 1));
  while ((at = document.find_first_of(u"&<", at)) < document.size() && entities.fault().empty()) {
    if (document[at] == u'&')
      if (const StringView reference = referenceAt(document, at); !reference.empty()) entities.use(reference);
    at = std::max(behindOther(document, at), at + 1);
  }
  return entities.fault();
}

}  // namespace

String refusalOfXml(StringView document) {
  return holdsNoCharacter(document) ? u"The document holds what is no character."
                                    : refusalOfEntities(document);
}

String refusalOfXml(std::string_view document) {
  if (isUtf16(document)) return refusalOfEntities(fromUtf16(document));
  if (document.find("<!DOCTYPE") == std::string_view::npos) return {};
  if (document.starts_with("\xEF\xBB\xBF")) document.remove_prefix(3);
  String text;  // a unit for each byte does to find what is ASCII's
  text.reserve(document.size());
  for (const char byte : document) text += static_cast<unsigned char>(byte);
  return refusalOfEntities(text);
}

}  // namespace zelUtilities
