#include "host/Ini.h"

#include <algorithm>

#include "automation/Conversions.h"
#include "automation/ItemWalk.h"
#include "foundation/bas_Main.h"
#include "host/LateCall.h"
#include "platform/Files.h"
#include "platform/Locale.h"

namespace zelUtilities::host {

namespace {

constexpr std::int32_t raiseErrors = 2;  // the error mode of reading a file

// Calls body(item) with each item of a collection.
template <class Body>
void forEach(Object& collection, const Body& body) {
  const Ref<Enumerator> items = itemsOf(&collection);
  Variant item;
  while (items->next(item)) body(objectIn(item));
}

String dataOf(Object& node) {
  const Variant cells = call(node, u"Cells");
  const Variant cell = call(objectIn(cells), u"Item", u"Data");
  return toText(call(objectIn(cell), u"Value"));
}

// A settings file in a node list.
class IniFile {
 public:
  // Raises, with a description for the user, what keeps the file from being read.
  IniFile(const ClassRegistry& registry, const String& file)
      : registry_(registry), file_(file), list_(create(registry, u"zelNodeList")) {
    text_ = readText();
    call(*list_, u"InitializeAsINI");
    const bool loaded = toBoolean(call(*list_, u"LoadFromINI", file_));
    if (!loaded && !text_.empty()) throw Error(ErrorNumber::PathFileAccess, {}, file_ + u" cannot be read");
  }

  Object& list() { return *list_; }

  // The node of an entry; nothing where there is none.
  Ref<Object> find(const IniEntry& entry) {
    const Variant found = call(*list_, u"Item", u"[" + entry.section + u"]" + entry.name);
    if (!found.isObject() || !found.object()) return {};
    // Section lines and lines without "=" have keys of the same make.
    const String name = toText(call(*found.object(), u"Text"));
    return equalFolded(trimBlanks(name), trimBlanks(entry.name)) ? Ref<Object>(found.object())
                                                                 : Ref<Object>();
  }

  // Whether the list, and so what is saved from it, has every byte of the file.
  bool holdsEveryByte() const { return files().readWhole(file_) == narrow(text_); }

  // Whether every line of the file has a node of its own: repeated sections, names and comments share one,
  // and saving the list would drop all but one of them.
  bool holdsEveryLine() {
    constexpr StringView lineEnd = u"\r\n";
    std::int64_t lines = 0;
    for (std::size_t at = 0; at < text_.size(); ++lines) {
      const std::size_t end = text_.find(lineEnd, at);
      at = end == String::npos ? text_.size() : end + lineEnd.size();
    }
    return toLong(call(*list_, u"Count")) == lines + 1;  // and the section before the first header
  }

 private:
  String readText() {
    const auto reading = registry_.findOperation(u"zel_GetFileContentsAsStringEx");
    if (!reading) throw Error(ErrorNumber::CannotCreateObject, {}, u"the class zelFiles is missing");
    if (const Ref<Object> files = FSO(); files && !toBoolean(call(*files, u"FileExists", file_)))
      throw Error(ErrorNumber::FileNotFound, {}, u"there is no file " + file_);
    try {
      return toText(call(*ClassRegistry::instance(*reading->functionClass), reading->operation->name, file_,
                         raiseErrors));
    } catch (const Error& error) {
      throw Error(error.number(), {}, file_ + u" cannot be read: " + error.description());
    }
  }

  const ClassRegistry& registry_;
  String file_;
  Ref<Object> list_;
  String text_;
};

String entryText(const IniEntry& entry) {
  return u"\"" + entry.name + u"\" in the section [" + entry.section + u"]";
}

bool hasLineEnd(StringView text) { return text.find_first_of(u"\r\n") != StringView::npos; }

// Why saving the file with this new value would lose something; "" when it would not.
String reasonAgainst(IniFile& ini, Object& node, const String& value) {
  if (hasLineEnd(value)) return u"a value cannot hold a line end";
  if (widen(narrow(value)) != value) return u"the value has characters that the file's code page has not";
  if (hasLineEnd(dataOf(node))) return u"its lines do not end in CR LF";
  if (!ini.holdsEveryByte()) return u"it has bytes that are no text in the code page";
  if (!ini.holdsEveryLine())
    return u"it repeats sections, names or comments, of which saving would keep but one";
  return {};
}

StringView withoutEndBlanks(StringView text) {
  const std::size_t last = text.find_last_not_of(u' ');
  return text.substr(0, last == StringView::npos ? 0 : last + 1);
}

}  // namespace

void listIni(const ClassRegistry& registry, const String& file, Console& console) {
  IniFile ini(registry, file);
  const Variant roots = call(ini.list(), u"RootNodes");
  forEach(objectIn(roots), [&](Object& section) {
    if (toText(call(section, u"Key")) != u"[]") console.print(toText(call(section, u"Text")));
    const Variant entries = call(section, u"Nodes");
    forEach(objectIn(entries), [&](Object& entry) {
      const String name = toText(call(entry, u"Text"));
      if (!name.empty()) console.print(name + u"=" + dataOf(entry));
    });
  });
}

void getIni(const ClassRegistry& registry, const String& file, const IniEntry& entry, Console& console) {
  IniFile ini(registry, file);
  if (!ini.find(entry)) return console.complain(file + u" has no " + entryText(entry));
  console.print(toText(call(ini.list(), u"ReadINIValue", entry.section, entry.name, u"")));
}

void setIni(const ClassRegistry& registry, const String& file, const IniEntry& entry, const String& value,
            Console& console) {
  IniFile ini(registry, file);
  const Ref<Object> node = ini.find(entry);
  if (!node) return console.complain(file + u" has no " + entryText(entry) + u"; nothing is changed");
  if (const String reason = reasonAgainst(ini, *node, value); !reason.empty())
    return console.complain(file + u" is left as it is: " + reason);
  if (!toBoolean(call(ini.list(), u"UpdateINIValue", entry.section, entry.name, value)))
    return console.complain(file + u" is left as it is: the value cannot be changed");
  call(ini.list(), u"SaveAsINI", file);
  // Saving tells of a failure by a message box alone, so the file is asked. Blanks at a line's end are not
  // kept.
  IniFile saved(registry, file);
  const String now = toText(call(saved.list(), u"ReadINIValue", entry.section, entry.name, u""));
  if (now != withoutEndBlanks(value)) console.complain(file + u" could not be written");
}

}  // namespace zelUtilities::host
