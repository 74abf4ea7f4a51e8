// The INI operations of zelNodeList.
#include "automation/Conversions.h"
#include "automation/Error.h"
#include "datalist/zelNodeList.h"
#include "files/mFiles.h"
#include "foundation/Handled.h"
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

// The lines of a text; only CR LF ends one, and nothing after the last end is no line.
class Lines {
 public:
  explicit Lines(StringView text) : rest_(text) {}

  bool next(StringView& line) {
    if (rest_.empty()) return false;
    const std::size_t end = rest_.find(lineEnd);
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
  const std::size_t equals = trimmedLine.find(u'=');
  if (equals == StringView::npos) return {trimmedLine, {}, trimmedLine};
  const StringView name = trimmedLine.substr(0, equals);
  return {trimBlanks(name), name, trimmedLine.substr(equals + 1)};
}

}  // namespace

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
    const String text = mFiles::GetFileContentsAsString(sFilename, ZEL_ErrorMode_None);
    if (text.empty()) return;
    loadLines(text);
    loaded = true;
  });
  return loaded;
}

void zelNodeList::loadLines(StringView text) {
  String section(defaultSection);
  String key;  // one buffer for all lines
  const auto addEntry = [&](const Entry& entry) {
    key.assign(section).append(entry.keyPart);
    const Ref<zelNode> node = createNode({section, key, entry.text});
    dataOf(*node).setValue(entry.data);
  };
  createNode({{}, defaultSection, u"[Default]"});
  long long blankLines = 0;
  Lines lines(text);
  for (StringView line; lines.next(line);) {
    line = trimBlanks(line);
    if (line.empty()) {
      addEntry({u"K" + decimalText(blankLines++), {}, {}});
    } else if (line.front() == u'[') {
      createNode({{}, line, line});
      section = line;
    } else {
      addEntry(entryOf(line));
    }
  }
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
