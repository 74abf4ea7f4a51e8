// The INI operations of zelNodeList.
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <memory_resource>
#include <span>
#include <string_view>
#include <utility>

#include "automation/Conversions.h"
#include "automation/Error.h"
#include "datalist/IniLines.h"
#include "datalist/zelNodeList.h"
#include "files/mFiles.h"
#include "foundation/Handled.h"
#include "platform/Files.h"
#include "platform/Locale.h"
#include "text/zelStringCat.h"

namespace zelUtilities {

namespace {

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

}  // namespace

// Makes the nodes of INI lines, a few lines at a time, so that their index entries are on the way from memory
// together; each takes as long as making a node.
class zelNodeList::IniReader {
 public:
  explicit IniReader(zelNodeList& list) : list_(list) {}

  // False for an empty file, of which nothing is made, and for one that cannot be read to its end, of which
  // nothing stays.
  bool read(FileReader& file) {
    IniLinePieces pieces(file);
    std::string_view piece = nextOf(pieces);
    if (piece.empty()) return false;
    list_.allNodes_.reserve(expectedIniLines(piece, file.length()));
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
  std::string_view nextOf(IniLinePieces& pieces) {
    try {
      return pieces.next();
    } catch (...) {
      hasFailed_ = true;
      return {};
    }
  }

  void readLines(const String& text) {
    IniLines lines(text);
    for (StringView line; lines.next(line);) {
      line = trimBlanks(line);
      if (line.empty()) {
        add({u"K" + decimalText(blankLines_++), {}, {}});
      } else if (line.front() == u'[') {
        createWaiting();
        section_ = list_.createNode({{}, line, line})->Key();  // as it was first written
      } else {
        add(iniEntryOf(line));
      }
    }
    createWaiting();  // while the text is there
  }

  void add(const IniEntry& entry) {
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
