// The INI operations of zelNodeList.
#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <memory_resource>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/Conversions.h"
#include "automation/Error.h"
#include "datalist/zelNodeList.h"
#include "files/mFiles.h"
#include "foundation/Handled.h"
#include "platform/Files.h"
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

// The data of one entry after the other: where they lie is looked up again only where a node has other
// columns than the one before.
class DataCells {
 public:
  zelCell& of(const zelNode& node) {
    if (&node.layout() != layout_.get()) {
      layout_ = Ref<const CellLayout>(&node.layout());
      position_ = node.positionOf(dataOf(node));
    }
    return node.cell(position_);
  }

 private:
  Ref<const CellLayout> layout_;
  std::uint32_t position_ = 0;
};

void writeEntry(zelStringCat& out, const zelNode& entry, DataCells& data) {
  const AsText name(entry.requiredDefaultCell().Value());
  if (!StringView(name).empty()) {
    out.Concatenate(name);
    out.Concatenate(u"=");
  }
  out.ConcatenateCRLF(AsText(data.of(entry).Value()));
}

// The position of a unit from the given one on, or npos. Looks at eight units at once: finding the ends of
// lines and names one unit at a time would take a good part of loading a file.
std::size_t findUnit(StringView text, char16_t unit, std::size_t at = 0) {
  using Eight [[gnu::vector_size(16)]] = std::uint16_t;
  const Eight wanted = Eight{} + static_cast<std::uint16_t>(unit);
  for (; at + 8 <= text.size(); at += 8) {
    Eight units;
    std::memcpy(&units, text.data() + at, sizeof units);
    const auto found = std::bit_cast<std::array<std::uint64_t, 2>>(units == wanted);
    if (found[0] != 0) return at + static_cast<std::size_t>(std::countr_zero(found[0])) / 16;
    if (found[1] != 0) return at + 4 + static_cast<std::size_t>(std::countr_zero(found[1])) / 16;
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

// The lines of a file, some ten thousand bytes at a time, so that a large file is never in memory as a whole.
class LinePieces {
 public:
  explicit LinePieces(FileReader& file) : file_(file), buffer_(32 * 1024) {}

  // Whole lines, up to the end of the file; empty after that. A line's end is the same two bytes in every
  // code page.
  std::string_view next() {
    held_ -= given_;
    std::memmove(buffer_.data(), buffer_.data() + given_, held_);
    given_ = 0;
    std::size_t searched = 0;
    do {
      if (held_ == buffer_.size()) buffer_.resize(2 * held_);
      const std::span<char> room = std::span(buffer_).subspan(held_);
      const std::size_t count = file_.read(room);
      held_ += count;
      given_ = count < room.size() ? held_ : endOfLines(searched);
      searched = held_ - 1;  // a line's end may lie half in this piece
    } while (given_ == 0 && held_ == buffer_.size());
    return {buffer_.data(), given_};
  }

 private:
  // Behind the last whole line, or 0.
  std::size_t endOfLines(std::size_t from) const {
    const std::size_t end = std::string_view(&buffer_[from], held_ - from).rfind("\r\n");
    return end == std::string_view::npos ? 0 : from + end + lineEnd.size();
  }

  FileReader& file_;
  std::vector<char> buffer_;
  std::size_t held_ = 0;
  std::size_t given_ = 0;  // of them, from the front
};

// How many lines a file probably has, by those in its first piece and a few more; fewer where they are very
// short, since such lines may well repeat each other.
std::size_t expectedLines(std::string_view piece, std::uint64_t fileLength) {
  constexpr std::uint64_t shortLine = 12;  // bytes
  const auto lines = static_cast<std::uint64_t>(std::count(piece.begin(), piece.end(), '\n')) + 1;
  const std::uint64_t expected = fileLength / piece.size() * lines;
  return static_cast<std::size_t>(std::min(expected + expected / 16 + lines, fileLength / shortLine));
}

}  // namespace

// Makes the nodes of INI lines, a few lines at a time, so that their index entries are on the way from memory
// together; each takes as long as making a node.
class zelNodeList::IniReader {
 public:
  explicit IniReader(zelNodeList& list) : list_(list) {}

  // False for an empty file, of which nothing is made, and for one that cannot be read to its end, of which
  // nothing stays.
  bool read(FileReader& file) {
    LinePieces pieces(file);
    std::string_view piece = nextOf(pieces);
    if (piece.empty()) return false;
    list_.allNodes_.reserve(expectedLines(piece, file.length()));
    list_.createNode({{}, defaultSection, u"[Default]"});
    for (; !piece.empty(); piece = nextOf(pieces)) readLines(widen(piece));
    if (hasFailed_) list_.Clear();
    return !hasFailed_;
  }

 private:
  struct Line {
    String key;
    std::uint32_t hash = 0;
    StringView text;
    StringView data;
  };

  // A failure to read is as silent as one to open the file.
  std::string_view nextOf(LinePieces& pieces) {
    try {
      return pieces.next();
    } catch (...) {
      hasFailed_ = true;
      return {};
    }
  }

  void readLines(const String& text) {
    Lines lines(text);
    for (StringView line; lines.next(line);) {
      line = trimBlanks(line);
      if (line.empty()) {
        add({u"K" + decimalText(blankLines_++), {}, {}});
      } else if (line.front() == u'[') {
        createWaiting();
        section_ = list_.createNode({{}, line, line})->Key();  // as it was first written
      } else {
        add(entryOf(line));
      }
    }
    createWaiting();  // while the text is there
  }

  void add(const Entry& entry) {
    Line& line = lines_[waiting_++];
    line.key.assign(section_).append(entry.keyPart);
    line.hash = foldedHash(line.key);
    line.text = entry.text;
    line.data = entry.data;
    list_.allNodes_.prefetch(line.hash);
    if (waiting_ == lines_.size()) createWaiting();
  }

  void createWaiting() {
    for (const Line& line : std::span(lines_).first(std::exchange(waiting_, 0))) {
      const Ref<zelNode> node = list_.createNode({section_, line.key, line.text}, line.hash);
      data_.of(*node).setValue(line.data);
    }
  }

  zelNodeList& list_;
  DataCells data_;
  String section_{defaultSection};
  std::array<Line, 16> lines_;
  std::size_t waiting_ = 0;
  long long blankLines_ = 0;
  bool hasFailed_ = false;
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
    const std::unique_ptr<FileReader> file = mFiles::openVisible(sFilename);
    if (!file) return;
    loaded = IniReader(*this).read(*file);
  });
  return loaded;
}

bool zelNodeList::SaveAsINI(const String& sFilename) const {
  const Ref<const zelNodeList> self(this);
  bool saved = false;
  handled(u"zelNodeList.SaveAsINI", [&] {
    const auto out = make<zelStringCat>();
    DataCells data;
    std::uint32_t rootSlot = rootNodes_->startSlot();
    while (const zelNode* section = rootNodes_->nextFrom(rootSlot)) {
      if (section->Key() != defaultSection) out->ConcatenateCRLF(section->Text());
      const zelNodes* entries = section->childrenIfAny();
      if (!entries) continue;
      std::uint32_t slot = entries->startSlot();
      while (const zelNode* entry = entries->nextFrom(slot)) writeEntry(*out, *entry, data);
    }
    mFiles::PutFileContentsFromString(out->text(), sFilename, ZEL_ErrorMode_Show);
    saved = true;
  });
  return saved;
}

zelNode* zelNodeList::findEntry(StringView sSection, StringView sValue) const {
  // Most keys need no memory but this.
  std::array<std::byte, 512> room;
  std::pmr::monotonic_buffer_resource memory(room.data(), room.size());
  std::pmr::u16string key(&memory);
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
