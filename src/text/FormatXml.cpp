#include "text/FormatXml.h"

#include <cstdint>
#include <limits>

#include "automation/Error.h"
#include "foundation/Handled.h"
#include "text/TextSearch.h"

namespace zelUtilities::mXML {

namespace {

constexpr StringView lineEnd = u"\r\n";
constexpr std::size_t indent = 4;  // blanks a level

String withoutBlanksBesideTags(StringView text) {
  String kept;
  kept.reserve(text.size());
  for (const char16_t unit : text) {
    if (unit == u' ' && !kept.empty() && kept.back() == u'>') continue;
    if (unit == u'<') kept.resize(kept.find_last_not_of(u' ') + 1);
    kept += unit;
  }
  return kept;
}

void requireShort(std::size_t position) {
  if (position > std::size_t{std::numeric_limits<std::int16_t>::max()}) throw Error(ErrorNumber::Overflow);
}

class LineByTag {
 public:
  explicit LineByTag(StringView text) : text_(text) {}

  String complete() {
    for (std::size_t tag = text_.find(u'<'); tag != StringView::npos; tag = text_.find(u'<', done_))
      if (!take(tag)) break;
    return out_.append(text_.substr(done_));
  }

 private:
  bool isAt(std::size_t place, char16_t unit) const { return place < text_.size() && text_[place] == unit; }

  // False where the tag has no end.
  bool take(std::size_t tag) {
    requireShort(out_.size() + (tag - done_) + 1);
    const bool closing = isAt(tag + 1, u'/');
    if (closing) leaveLevel();
    const bool behindText = tag > done_;
    copyTo(tag);
    if (!closing || !behindText) out_.append(level_ * indent, u' ');
    requireShort(out_.size() + 1);
    if (!closing) ++level_;
    const std::size_t end = text_.find(u'>', tag);
    if (end == StringView::npos) return false;
    copyTo(end + 1);
    requireShort(out_.size());
    if (text_[end - 1] == u'/') leaveLevel();
    out_ += lineEnd;
    return true;
  }
  void copyTo(std::size_t end) {
    out_.append(text_, done_, end - done_);
    done_ = end;
  }
  void leaveLevel() {
    if (level_ > 0) --level_;
  }

  StringView text_;
  std::size_t done_ = 0;  // of the text
  std::size_t level_ = 0;
  String out_;
};

}  // namespace

String FormatXML(StringView sXML) {
  return chained(u"mXML.FormatXML", [sXML] {
    return LineByTag(withoutBlanksBesideTags(replaceEach(sXML, lineEnd, {}))).complete();
  });
}

}  // namespace zelUtilities::mXML
