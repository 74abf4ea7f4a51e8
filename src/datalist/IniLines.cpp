#include "datalist/IniLines.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <span>

#include "platform/Files.h"

namespace zelUtilities {

namespace {

constexpr StringView lineEnd = u"\r\n";

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

}  // namespace

bool IniLines::next(StringView& line) {
  if (rest_.empty()) return false;
  std::size_t end = findUnit(rest_, u'\r');
  while (end != StringView::npos && rest_.substr(end, lineEnd.size()) != lineEnd)
    end = findUnit(rest_, u'\r', end + 1);
  line = rest_.substr(0, end);
  rest_.remove_prefix(end == StringView::npos ? rest_.size() : end + lineEnd.size());
  return true;
}

IniEntry iniEntryOf(StringView trimmedLine) {
  const std::size_t equals = findUnit(trimmedLine, u'=');
  if (equals == StringView::npos) return {trimmedLine, {}, trimmedLine};
  const StringView name = trimmedLine.substr(0, equals);
  return {trimBlanks(name), name, trimmedLine.substr(equals + 1)};
}

IniLinePieces::IniLinePieces(FileReader& file) : file_(file), buffer_(32 * 1024) {}

std::string_view IniLinePieces::next() {
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

std::size_t IniLinePieces::endOfLines(std::size_t from) const {
  const std::size_t end = std::string_view(&buffer_[from], held_ - from).rfind("\r\n");
  return end == std::string_view::npos ? 0 : from + end + lineEnd.size();
}

std::size_t expectedIniLines(std::string_view piece, std::uint64_t fileLength) {
  constexpr std::uint64_t shortLine = 12;  // bytes
  const auto lines = static_cast<std::uint64_t>(std::count(piece.begin(), piece.end(), '\n')) + 1;
  const std::uint64_t expected = fileLength / piece.size() * lines;
  return static_cast<std::size_t>(std::min(expected + expected / 16 + lines, fileLength / shortLine));
}

}  // namespace zelUtilities
