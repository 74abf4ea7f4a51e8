// zelStringCat: builds a long text in one growing buffer, and indented XML on top of it.
//
//   zelStringCat out;
//   out.OpenElement(u"Files");
//   out.AddElement(u"File", u"a&b.txt");    //   <File>a&amp;b.txt</File>
//   out.CloseElement();
//   String xml = out.Complete();
//
// Appending takes time in proportion to what is appended, however long the text is already.
// Values are escaped; tag names and attribute texts are written as given, so a well-formed
// result is the caller's doing. Positions count characters from 1. No argument may point into
// the builder's own text. One builder serves one thread.
//
// A text that would exceed 2^31 - 1 characters raises 6, one that memory does not hold 7; the
// builder then keeps what it had.
#pragma once

#include <cstdint>
#include <cstring>
#include <vector>

#include "automation/Object.h"
#include "automation/String.h"
#include "automation/Variant.h"
#include "platform/GrowingMemory.h"

namespace zelUtilities {

class TextSearch;

class zelStringCat final : public Object {
 public:
  // How Find and Replace compare; any other number raises 5.
  static constexpr std::int32_t binaryCompare = 0;
  static constexpr std::int32_t textCompare = 1;  // without regard to letter case

  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  zelStringCat();

  // Text between the pieces that Concatenate adds; at first "".
  const String& Separator() const { return separator_; }
  void setSeparator(StringView separator);
  // What XML lines start with; at first "". Writing it also sets DtlMargin.
  const String& Margin() const { return margin_; }
  void setMargin(StringView margin);
  // What the next XML line starts with.
  const String& DtlMargin() const { return dtlMargin_; }
  // Characters in use.
  std::int32_t length() const { return static_cast<std::int32_t>(length_); }

  // Empties the builder and closes all elements unwritten. Separator, Margin and the name of an
  // element begun with StartElement stay.
  void Start();
  // The text so far; more may follow.
  String Complete() const { return String(text()); }

  // Appends, after the separator unless it is the first piece since Start; an empty piece is one
  // too. A failure is raised under the source "zelSringCat.Concatenate" alone and not logged here.
  void Concatenate(StringView sSource) {
    try {
      appendPiece(sSource);
    } catch (...) {
      raiseFromConcatenate();
    }
  }
  // Appends the piece and then CR LF as a piece of its own.
  void ConcatenateCRLF(StringView sSource);

  // Replaces matches from position lStart on, lCount of them or all (-1); even with 0, and with any
  // other number below 1, one is replaced. Replacements are not searched again. Nothing equals an empty
  // sFind. Raises 5 for a start below 1; failures are logged and raised under "zelStringCat.Replace".
  void Replace(StringView sFind, StringView sReplace, std::int32_t lStart = 1, std::int32_t lCount = -1,
               std::int32_t eCompareMethod = binaryCompare);
  // Position of the first match at or after lStart; 0 when there is none. Nothing equals an empty
  // sFind. Raises 5 for a start below 1; failures are logged and raised under "zelStringCat.Find".
  std::int32_t Find(StringView sFind, std::int32_t lStart = 1,
                    std::int32_t eCompareMethod = binaryCompare) const;

  // Writes <Tag attributes>value</Tag>, or <Tag attributes /> for an empty value, on a line of its
  // own; nothing for the default value without attributes. A numeric value has its commas written
  // as points.
  void AddElement(StringView sTagname, StringView sValue, StringView sAttributes = {},
                  StringView sDefaultValue = {});
  // Writes <Tag attributes> on a line of its own; what follows is indented by two more blanks.
  void OpenElement(StringView sTagname, StringView sAttributes = {});
  // Writes the end of the innermost open element; nothing when none is open. Failures are logged
  // under "zelStringCat.CloseElement".
  void CloseElement();

  // Begins <Tag ...> for AddAttribute and FinishElement to go on with. Failures of these four are
  // logged under their names (both FinishElement operations as "zelStringCat.FinishElement").
  void StartElement(StringView sTagname);
  // Adds name='value' through Concatenate; nothing where the value is empty or equals the default,
  // or where no element is begun.
  void AddAttribute(StringView sAttributeName, StringView sAttributeValue,
                    const Variant& sAttributeDefault = u"");
  void FinishElement(bool bOpen) { FinishElementEx(bOpen, {}); }
  // Ends the begun element: left open for CloseElement (the value is then not used), or closed
  // with its value, or as <Tag/>. Nothing where no element is begun.
  void FinishElementEx(bool bOpen, StringView sValue);

  // From here on for the library's own use.

  // Appends without separator. Failures are logged and raised under "zelStringCat.ConcatenatePart".
  void ConcatenatePart(StringView text) {
    if (!hasRoomFor(text.size())) return appendGrowing(text);
    append(text);
  }
  // Appends the text with XML's reserved characters escaped.
  void ConcatenateEscaped(StringView text);
  // Ensures capacity for `extra` more characters. Failures are logged and raised under
  // "zelStringCat.CheckBufferSize".
  void CheckBufferSize(std::int32_t extra);
  // The buffer's length in characters: 2048 doubled up to 65536 as needed, from there on the smallest
  // multiple of 65536 that ever was needed since Start. More memory than that may be reserved
  // behind it, so that growing is not copying each time.
  std::int64_t capacity() const;
  // The text in place, until the builder changes.
  StringView text() const { return {buffer_, length_}; }

 private:
  void append(StringView text) {
    copyUnits(buffer_ + length_, text.data(), text.size());
    length_ += text.size();
  }
  // Most pieces are short and copied by moves of a fixed size, two of which overlap. Not inline: a compiler
  // that sees a literal there warns of the moves that are too long for it, though they are not made.
  [[gnu::noinline]] static void copyUnits(char16_t* to, const char16_t* from, std::size_t count);
  // Unless the next piece is the first one.
  void appendSeparator() {
    if (!first_ && !separator_.empty()) ConcatenatePart(separator_);
    first_ = false;
  }
  void appendPiece(StringView piece) {
    appendSeparator();
    ConcatenatePart(piece);
  }
  void concatenateEscapedPiece(StringView piece);
  bool hasRoomFor(std::size_t units) const { return units <= reserved_ - length_; }
  void appendGrowing(StringView text);
  static std::size_t sizeOf(StringView text) { return text.size(); }
  template <std::size_t size>
  static constexpr std::size_t sizeOf(const char16_t (&)[size]) {
    return size - 1;
  }
  template <std::size_t size>
  void append(const char16_t (&literal)[size]) {
    std::memcpy(buffer_ + length_, literal, (size - 1) * sizeof(char16_t));
    length_ += size - 1;
  }
  // Appends all the pieces or, where there is no room for them, nothing.
  template <class... Pieces>
  bool appendWithinRoom(const Pieces&... pieces) {
    if (!hasRoomFor((sizeOf(pieces) + ...))) return false;
    (append(pieces), ...);
    return true;
  }
  // ConcatenatePart for each piece.
  template <class... Pieces>
  void appendParts(const Pieces&... pieces) {
    if (!appendWithinRoom(pieces...)) (ConcatenatePart(pieces), ...);
  }
  [[noreturn]] static void raiseFromConcatenate();
  void reserve(std::int64_t units);
  void replaceFrom(std::size_t first, const TextSearch& search, std::size_t units, StringView replacement,
                   std::size_t limit);
  void writeTag(StringView tagname, StringView attributes);
  void writeValueAndEnd(StringView value, StringView tagname);
  void open(StringView tagname);

  GrowingMemory memory_;
  char16_t* buffer_ = nullptr;   // where the memory lies
  std::size_t length_ = 0;       // characters in use
  std::size_t reserved_ = 0;     // characters that fit into the memory held
  std::int64_t mostNeeded_ = 0;  // characters; behind length_ while the text grows by ConcatenatePart
  bool first_ = true;
  String separator_;
  String margin_;
  String dtlMargin_;
  String pendingTag_;
  // The open elements, innermost last: their names, and where each begins.
  String openNames_;
  std::vector<std::size_t> openStarts_;
};

}  // namespace zelUtilities
