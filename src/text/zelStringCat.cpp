#include "text/zelStringCat.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <string_view>

#include "automation/Binder.h"
#include "automation/Conversions.h"
#include "automation/Error.h"
#include "foundation/Handled.h"
#include "text/TextSearch.h"
#include "text/XmlEscaping.h"
#include "text/mXML.h"

namespace zelUtilities {

// The compiler counts a text with the suffix itself; the length of one without is found anew at each call.
using namespace std::string_view_literals;

namespace {

constexpr StringView lineEnd = u"\r\n";
constexpr char16_t terminator[] = u">\r\n";
constexpr StringView indent = u"  ";

constexpr std::int64_t firstCapacity = 2048;  // characters
constexpr std::int64_t capacityStep = 65536;  // characters
constexpr std::size_t keptByStart = 65536;    // characters of memory that are not worth giving back

std::int64_t capacityFor(std::int64_t needed) {
  std::int64_t capacity = firstCapacity;
  while (capacity < needed && capacity < capacityStep) capacity *= 2;
  if (needed <= capacity) return capacity;
  return (needed + capacityStep - 1) / capacityStep * capacityStep;
}

TextSearch searchFor(StringView pattern, std::int32_t start, std::int32_t compareMethod) {
  if (start < 1) throw Error(ErrorNumber::InvalidProcedureCall);
  if (compareMethod != zelStringCat::binaryCompare && compareMethod != zelStringCat::textCompare)
    throw Error(ErrorNumber::InvalidProcedureCall);
  return TextSearch(pattern, compareMethod == zelStringCat::textCompare ? TextSearch::Letters::AnyCase
                                                                        : TextSearch::Letters::AsWritten);
}

std::size_t countMatches(const TextSearch& search, StringView text, std::size_t first, std::size_t units,
                         std::size_t limit) {
  std::size_t count = 0;
  for (std::size_t at = first; at != StringView::npos && count < limit; ++count)
    at = search.find(text, at + units);
  return count;
}

// Two moves of a fixed size, which may overlap.
template <std::size_t units>
void copyEnds(char16_t* to, const char16_t* from, std::size_t count) {
  char16_t first[units];
  char16_t last[units];
  std::memcpy(first, from, sizeof first);
  std::memcpy(last, from + count - units, sizeof last);
  std::memcpy(to, first, sizeof first);
  std::memcpy(to + count - units, last, sizeof last);
}

// Moves the text to the front of `to` and gives the place behind it.
char16_t* move(char16_t* to, StringView text) {
  if (to != text.data() && !text.empty()) std::memmove(to, text.data(), text.size() * sizeof(char16_t));
  return to + text.size();
}

}  // namespace

zelStringCat::zelStringCat() { Start(); }

void zelStringCat::setSeparator(StringView separator) { separator_ = separator; }

void zelStringCat::setMargin(StringView margin) {
  margin_ = margin;
  dtlMargin_ = margin;
}

void zelStringCat::Start() {
  if (reserved_ > keptByStart) {
    memory_.clear();
    buffer_ = nullptr;
    reserved_ = 0;
  }
  length_ = 0;
  mostNeeded_ = 0;
  first_ = true;
  openNames_.clear();
  openStarts_.clear();
  dtlMargin_ = margin_;
}

// Appending

void zelStringCat::ConcatenateCRLF(StringView sSource) {
  Concatenate(sSource);
  Concatenate(lineEnd);
}

void zelStringCat::concatenateEscapedPiece(StringView piece) {
  try {
    appendSeparator();
    ConcatenateEscaped(piece);
  } catch (...) {
    raiseFromConcatenate();
  }
}

void zelStringCat::raiseFromConcatenate() {
  // Sic, without the first "t": this is the source that clients find in the error.
  throw currentError().withSource(u"zelSringCat.Concatenate");
}

void zelStringCat::copyUnits(char16_t* to, const char16_t* from, std::size_t count) {
  if (count > 16) {
    std::memcpy(to, from, count * sizeof(char16_t));
  } else if (count >= 8) {
    copyEnds<8>(to, from, count);
  } else if (count >= 4) {
    copyEnds<4>(to, from, count);
  } else {
    for (std::size_t i = 0; i < count; ++i) to[i] = from[i];
  }
}

void zelStringCat::appendGrowing(StringView text) {
  handledAndRaised(u"zelStringCat.ConcatenatePart", [&] {
    CheckBufferSize(checkedLong(static_cast<std::int64_t>(text.size())));
    if (hasRoomFor(text.size())) append(text);  // debug mode 2 lets a failed CheckBufferSize return
  });
}

void zelStringCat::ConcatenateEscaped(StringView text) {
  const std::size_t special = plainEnd(text, 0);
  if (special == text.size()) return ConcatenatePart(text);
  const std::size_t before = length_;
  try {
    escapeTo(text, special, [this](StringView piece) { ConcatenatePart(piece); });
  } catch (...) {
    length_ = before;
    throw;
  }
}

void zelStringCat::CheckBufferSize(std::int32_t extra) {
  handledAndRaised(u"zelStringCat.CheckBufferSize", [&] {
    const std::int64_t needed = checkedLong(static_cast<std::int64_t>(length_) + extra);
    if (needed > static_cast<std::int64_t>(reserved_)) reserve(capacityFor(needed));
    mostNeeded_ = std::max(mostNeeded_, needed);
  });
}

std::int64_t zelStringCat::capacity() const {
  return capacityFor(std::max(mostNeeded_, static_cast<std::int64_t>(length_)));
}

void zelStringCat::reserve(std::int64_t units) {
  constexpr std::int64_t most = std::numeric_limits<std::ptrdiff_t>::max() / sizeof(char16_t);
  // Twice as much each time, so that growing by small steps is not copying each time.
  const std::int64_t generous = std::max(units, static_cast<std::int64_t>(reserved_) * 2);
  const auto grow = [this](std::int64_t wanted) {
    return wanted <= most && memory_.grow(static_cast<std::size_t>(wanted) * sizeof(char16_t));
  };
  if (!grow(generous) && !grow(units)) throw std::bad_alloc();
  buffer_ = static_cast<char16_t*>(memory_.data());
  reserved_ = memory_.size() / sizeof(char16_t);
}

// Finding and replacing

std::int32_t zelStringCat::Find(StringView sFind, std::int32_t lStart, std::int32_t eCompareMethod) const {
  std::int32_t position = 0;
  handledAndRaised(u"zelStringCat.Find", [&] {
    const std::size_t at =
        searchFor(sFind, lStart, eCompareMethod).find(text(), static_cast<std::size_t>(lStart) - 1);
    if (at != StringView::npos) position = static_cast<std::int32_t>(at) + 1;
  });
  return position;
}

void zelStringCat::Replace(StringView sFind, StringView sReplace, std::int32_t lStart, std::int32_t lCount,
                           std::int32_t eCompareMethod) {
  handledAndRaised(u"zelStringCat.Replace", [&] {
    const TextSearch search = searchFor(sFind, lStart, eCompareMethod);
    const std::size_t first = search.find(text(), static_cast<std::size_t>(lStart) - 1);
    if (first == StringView::npos) return;
    // The count is looked at after a replacement, so there is always one.
    const std::size_t limit = lCount == -1 ? StringView::npos : static_cast<std::size_t>(std::max(lCount, 1));
    replaceFrom(first, search, sFind.size(), sReplace, limit);
  });
}

// Every character moves once: where the text grows, first all that follows the first match to
// its end's final place, and from there, as where it shrinks, stretch by stretch to the front.
void zelStringCat::replaceFrom(std::size_t first, const TextSearch& search, std::size_t units,
                               StringView replacement, std::size_t limit) {
  std::size_t growth = 0;
  if (replacement.size() > units) {
    const std::size_t matches = countMatches(search, text(), first, units, limit);
    growth = matches * (replacement.size() - units);
    // A growth beyond 32 bits is made to overflow where any other does.
    constexpr std::size_t most = std::numeric_limits<std::int32_t>::max();
    CheckBufferSize(static_cast<std::int32_t>(std::min(growth, most)));
    if (!hasRoomFor(growth)) return;  // debug mode 2 lets a failed CheckBufferSize return
    move(buffer_ + first + growth, text().substr(first));
  }
  const StringView source(buffer_ + growth, length_);  // valid from `first` on
  char16_t* out = buffer_ + first;
  std::size_t done = first;
  for (std::size_t at = first; at != StringView::npos; --limit) {
    out = move(out, source.substr(done, at - done));
    out = move(out, replacement);
    done = at + units;
    at = limit > 1 ? search.find(source, done) : StringView::npos;
  }
  out = move(out, source.substr(done));
  mostNeeded_ = std::max(mostNeeded_, static_cast<std::int64_t>(length_));
  length_ = static_cast<std::size_t>(out - buffer_);
}

// XML

void zelStringCat::AddElement(StringView sTagname, StringView sValue, StringView sAttributes,
                              StringView sDefaultValue) {
  String withPoints;
  if (sValue.find(u',') != StringView::npos && isNumeric(sValue)) {
    withPoints = sValue;
    std::replace(withPoints.begin(), withPoints.end(), u',', u'.');
    sValue = withPoints;
  }
  if (sValue == sDefaultValue && sAttributes.empty()) return;
  writeTag(sTagname, sAttributes);
  if (sValue.empty()) {
    ConcatenatePart(u" /");
  } else {
    writeValueAndEnd(sValue, sTagname);
  }
  ConcatenatePart(terminator);
}

void zelStringCat::OpenElement(StringView sTagname, StringView sAttributes) {
  writeTag(sTagname, sAttributes);
  ConcatenatePart(terminator);
  open(sTagname);
}

void zelStringCat::CloseElement() {
  if (openStarts_.empty()) return;
  const std::size_t start = openStarts_.back();
  openStarts_.pop_back();
  handled(u"zelStringCat.CloseElement"sv, [&] {
    // The last two characters, even where the margin is not blank and these are its own.
    if (dtlMargin_.size() >= indent.size()) dtlMargin_.resize(dtlMargin_.size() - indent.size());
    appendParts(dtlMargin_, u"</", StringView(openNames_).substr(start), terminator);
  });
  openNames_.resize(start);  // whether or not its end could be written
}

void zelStringCat::StartElement(StringView sTagname) {
  handled(u"zelStringCat.StartElement"sv, [&] {
    writeTag(sTagname, {});
    pendingTag_ = sTagname;
  });
}

void zelStringCat::AddAttribute(StringView sAttributeName, StringView sAttributeValue,
                                const Variant& sAttributeDefault) {
  handled(u"zelStringCat.AddAttribute"sv, [&] {
    if (pendingTag_.empty() || sAttributeValue.empty()) return;
    if (mXML::isDefault(sAttributeValue, sAttributeDefault)) return;
    if (separator_.empty() && plainEnd(sAttributeValue, 0) == sAttributeValue.size() &&
        appendWithinRoom(u" ", sAttributeName, u"='", sAttributeValue, u"'")) {
      first_ = false;
      return;
    }
    Concatenate(u" ");
    Concatenate(sAttributeName);
    Concatenate(u"='");
    concatenateEscapedPiece(sAttributeValue);
    Concatenate(u"'");
  });
}

void zelStringCat::FinishElementEx(bool bOpen, StringView sValue) {
  handled(u"zelStringCat.FinishElement"sv, [&] {
    if (pendingTag_.empty()) return;
    if (bOpen) {
      open(pendingTag_);
    } else if (!sValue.empty()) {
      writeValueAndEnd(sValue, pendingTag_);
    } else {
      ConcatenatePart(u"/");
    }
    Concatenate(terminator);
    pendingTag_.clear();
  });
}

void zelStringCat::writeTag(StringView tagname, StringView attributes) {
  appendParts(dtlMargin_, u"<", tagname);
  if (attributes.empty()) return;
  if (attributes.front() != u' ') ConcatenatePart(u" ");
  ConcatenatePart(attributes);
}

void zelStringCat::writeValueAndEnd(StringView value, StringView tagname) {
  ConcatenatePart(u">");
  ConcatenateEscaped(value);
  appendParts(u"</", tagname);
}

void zelStringCat::open(StringView tagname) {
  openStarts_.push_back(openNames_.size());
  openNames_.append(tagname);
  dtlMargin_.insert(0, indent);
}

const ClassInfo& zelStringCat::describeClass() {
  using T = zelStringCat;
  static const ClassInfo info =
      describe<T>("zelStringCat", "String Concatenation Utility")
          .creatable()
          .property("Separator", &T::Separator, &T::setSeparator,
                    "Text between the pieces that Concatenate adds.")
          .property("Margin", &T::Margin, &T::setMargin, "What XML lines start with.")
          .property("DtlMargin", &T::DtlMargin, "What the next XML line starts with.")
          .property("length", &T::length, "Characters in use.")
          .method("Start", &T::Start, "Empties the builder.")
          .method("Complete", &T::Complete, "The text so far.")
          .method("Concatenate", &T::Concatenate, {"sSource"}, "Appends a piece, after the separator.")
          .method("ConcatenateCRLF", &T::ConcatenateCRLF, {"sSource"}, "Appends a piece and a line end.")
          .method("Replace", &T::Replace,
                  {"sFind", "sReplace", arg("lStart") = 1, arg("lCount") = -1,
                   arg("eCompareMethod") = binaryCompare},
                  "Replaces matches from a position on.")
          .method("Find", &T::Find, {"sFind", arg("lStart") = 1, arg("eCompareMethod") = binaryCompare},
                  "Position of the first match at or after a position, or 0.")
          .method("AddElement", &T::AddElement,
                  {"sTagname", "sValue", arg("sAttributes") = u"", arg("sDefaultValue") = u""},
                  "Writes an XML element with its value.")
          .method("OpenElement", &T::OpenElement, {"sTagname", arg("sAttributes") = u""},
                  "Writes the beginning of an XML element.")
          .method("CloseElement", &T::CloseElement, "Writes the end of the innermost open XML element.")
          .method("StartElement", &T::StartElement, {"sTagname"},
                  "Begins an XML element that takes attributes.")
          .method("AddAttribute", &T::AddAttribute,
                  {"sAttributeName", "sAttributeValue", arg("sAttributeDefault") = u""},
                  "Adds an attribute to the element begun.")
          .method("FinishElement", &T::FinishElement, {"bOpen"}, "Ends the element begun, or leaves it open.")
          .method("FinishElementEx", &T::FinishElementEx, {"bOpen", "sValue"},
                  "Ends the element begun with a value, or leaves it open.");
  return info;
}

}  // namespace zelUtilities
