// The INI operations of zelNodeList.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

#include "automation/Conversions.h"
#include "automation/Error.h"
#include "datalist/zelNodeList.h"
#include "files/mFiles.h"
#include "foundation/Handled.h"
#include "platform/Locale.h"
#include "text/zelStringCat.h"

namespace zelUtilities {

namespace {

constexpr StringView lineEnd = u"\r\n";
constexpr StringView defaultSection = u"[]";
constexpr StringView dataColumn = u"Data";

zelNodeListColumns::Definition textColumn(StringView key) {
  zelNodeListColumns::Definition definition;
  definition.sKey = key;
  definition.eCellType = ZEL_CellType_String;
  return definition;
}

zelCell& dataOf(const zelNode& node) {
  zelCell* cell = node.findCell(dataColumn);
  return cell ? *cell : throw Error(ErrorNumber::ObjectNotSet);
}

// A value as text, without copying one that is a text already.
class AsText {
 public:
  explicit AsText(const Variant& value) {
    if (!value.isString()) converted_ = toText(value);
    view_ = value.isString() ? value.text() : StringView(converted_);
  }
  AsText(const AsText&) = delete;
  AsText& operator=(const AsText&) = delete;
  operator StringView() const { return view_; }

 private:
  String converted_;
  StringView view_;
};

void writeEntry(zelStringCat& out, const zelNode& entry) {
  const AsText name(entry.requiredDefaultCell().Value());
  if (!StringView(name).empty()) {
    out.Concatenate(name);
    out.Concatenate(u"=");
  }
  out.ConcatenateCRLF(AsText(dataOf(entry).Value()));
}

// The position of a unit from the given one on, or npos. Looks at four units at once: finding the ends of
// lines and names one unit at a time would take a good part of loading a file.
std::size_t findUnit(StringView text, char16_t unit, std::size_t at = 0) {
  constexpr std::uint64_t lanes = 0x0001000100010001ULL;
  for (; at + 4 <= text.size(); at += 4) {
    std::uint64_t four;
    std::memcpy(&four, text.data() + at, sizeof four);
    four ^= lanes * unit;
    if (((four - lanes) & ~four & (lanes * 0x8000)) != 0) break;
  }
  while (at < text.size() && text[at] != unit) ++at;
  return at < text.size() ? at : StringView::npos;
}

// The lines of a text; only CR LF ends one, and nothing after the last end is no line.
class Lines {
 public:
  explicit Lines(StringView text) : rest_(text) {}

  bool next(StringView& line) {
    if (rest_.empty()) return false;
    std::size_t end = findUnit(rest_, u'\r');
    while (end != StringView::npos && rest_.substr(end, lineEnd.size()) != lineEnd)
      end = findUnit(rest_, u'\r', end + 1);
    line = rest_.substr(0, end);
    rest_.remove_prefix(end == StringView::npos ? rest_.size() : end + lineEnd.size());
    return true;
  }

 private:
  StringView rest_;
};

// A line of a section as the list keeps it.
struct Entry {
  StringView keyPart;  // what follows the section's key in the node's key
  StringView text;
  StringView data;
};

Entry entryOf(StringView trimmedLine) {
  const std::size_t equals = findUnit(trimmedLine, u'=');
  if (equals == StringView::npos) return {trimmedLine, {}, trimmedLine};
  const StringView name = trimmedLine.substr(0, equals);
  return {trimBlanks(name), name, trimmedLine.substr(equals + 1)};
}

// How many lines to make room for; fewer than there are where they are very short, since such lines may
// well repeat each other.
std::size_t expectedLines(std::string_view bytes) {
  constexpr std::size_t shortLine = 12;  // bytes
  std::size_t lines = 1;
  for (std::size_t at = 0; (at = bytes.find('\n', at)) != std::string_view::npos; ++at) ++lines;
  return std::min(lines, bytes.size() / shortLine);
}

// Takes whole lines off the front, some ten thousand bytes of them. A line's end is the same two bytes in
// every code page.
std::string_view takeLines(std::string_view& bytes) {
  constexpr std::size_t enough = 32 * 1024;
  const std::size_t end = bytes.size() > enough ? bytes.find("\r\n", enough) : std::string_view::npos;
  const std::string_view taken = bytes.substr(0, end == std::string_view::npos ? end : end + lineEnd.size());
  bytes.remove_prefix(taken.size());
  return taken;
}

}  // namespace

// Makes the nodes of INI lines. The text is converted piece by piece, so that a large file's is never in
// memory as a whole. And each line waits until the next one's key is known and its index entry on the way
// from memory, which takes as long as making a node.
class zelNodeList::IniReader {
 public:
  explicit IniReader(zelNodeList& list) : list_(list) {}

  void read(std::string_view bytes) {
    list_.createNode({{}, defaultSection, u"[Default]"});
    while (!bytes.empty()) readLines(widen(takeLines(bytes)));
  }

 private:
  struct Line {
    String key;
    std::uint32_t hash = 0;
    StringView text;
    StringView data;
  };

  void readLines(const String& text) {
    Lines lines(text);
    for (StringView line; lines.next(line);) {
      line = trimBlanks(line);
      if (line.empty()) {
        add({u"K" + decimalText(blankLines_++), {}, {}});
      } else if (line.front() == u'[') {
        createWaiting();
        list_.createNode({{}, line, line});
        section_ = line;
      } else {
        add(entryOf(line));
      }
    }
    createWaiting();  // while the text is there
  }

  void add(const Entry& entry) {
    Line& line = waiting_ == &lines_[0] ? lines_[1] : lines_[0];
    line.key.assign(section_).append(entry.keyPart);
    line.hash = foldedHash(line.key);
    line.text = entry.text;
    line.data = entry.data;
    list_.allNodes_.prefetch(line.hash);
    createWaiting();
    waiting_ = &line;
  }

  void createWaiting() {
    if (!waiting_) return;
    const Line& line = *std::exchange(waiting_, nullptr);
    const Ref<zelNode> node = list_.createNode({section_, line.key, line.text}, line.hash);
    dataOf(*node).setValue(line.data);
  }

  zelNodeList& list_;
  String section_{defaultSection};
  std::array<Line, 2> lines_;
  const Line* waiting_ = nullptr;
  long long blankLines_ = 0;
};

void zelNodeList::InitializeAsINI() {
  const Ref<zelNodeList> self(this);
  handled(u"zelNodeList.InitializeINI", [&] {
    Clear();
    ClearColumns();
    CreateColumn(textColumn(u"Value"));
    CreateColumn(textColumn(dataColumn));
  });
}

bool zelNodeList::LoadFromINI(const String& sFilename) {
  const Ref<zelNodeList> self(this);
  bool loaded = false;
  handled(u"zelNodeList.LoadFromINI", [&] {
    InitializeAsINI();
    const std::string bytes = mFiles::readBytes(sFilename, ZEL_ErrorMode_None);
    if (bytes.empty()) return;
    allNodes_.reserve(expectedLines(bytes) + 1);
    IniReader(*this).read(bytes);
    loaded = true;
  });
  return loaded;
}

bool zelNodeList::SaveAsINI(const String& sFilename) const {
  const Ref<const zelNodeList> self(this);
  bool saved = false;
  handled(u"zelNodeList.SaveAsINI", [&] {
    const auto out = make<zelStringCat>();
    std::uint32_t rootSlot = rootNodes_->startSlot();
    while (const zelNode* section = rootNodes_->nextFrom(rootSlot)) {
      if (section->Key() != defaultSection) out->ConcatenateCRLF(section->Text());
      const zelNodes* entries = section->childrenIfAny();
      if (!entries) continue;
      std::uint32_t slot = entries->startSlot();
      while (const zelNode* entry = entries->nextFrom(slot)) writeEntry(*out, *entry);
    }
    mFiles::PutFileContentsFromString(out->Complete(), sFilename, ZEL_ErrorMode_Show);
    saved = true;
  });
  return saved;
}

zelNode* zelNodeList::findEntry(StringView sSection, StringView sValue) const {
  String key;
  key.reserve(sSection.size() + sValue.size() + 2);
  key.append(u"[").append(sSection).append(u"]").append(sValue);
  return find(key);
}

String zelNodeList::ReadINIValue(StringView sSection, StringView sValue, StringView sDefaultData) const {
  String data;
  handled(u"zelNodeList.ReadINIValue", [&] {
    const zelNode* entry = findEntry(sSection, sValue);
    data = entry ? toText(dataOf(*entry).Value()) : String(sDefaultData);
  });
  return data;
}

bool zelNodeList::UpdateINIValue(StringView sSection, StringView sValue, StringView sData) {
  bool updated = false;
  handled(u"zelNodeList.UpdateINIValue", [&] {
    zelNode* entry = findEntry(sSection, sValue);
    if (!entry) return;
    dataOf(*entry).setValue(sData);
    updated = true;
  });
  return updated;
}

bool zelNodeList::CopySection(const Ref<zelNode>& oSrcSection) {
  const Ref<zelNodeList> self(this);
  bool copied = false;
  handled(u"zelNodeList.CopySection", [&] {
    if (!oSrcSection) return;
    const zelNode& source = *oSrcSection;
    createNode({source.ParentKey(), source.Key(), source.Text(), &source.Tag()});
    if (const Ref<zelNodes> entries{source.childrenIfAny()}) {
      zelNodes::Slots::Cursor walk(entries->slots());
      while (const Ref<zelNode> entry{walk.next()}) {
        const Ref<zelNode> copy = createNode({source.Key(), entry->Key(), entry->Text(), &entry->Tag()});
        dataOf(*copy).setValue(dataOf(*entry).Value());
      }
    }
    copied = true;
  });
  return copied;
}

}  // namespace zelUtilities
