#include "automation/String.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace zelUtilities {

namespace {

constexpr char32_t replacement = 0xFFFD;

bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

// Decodes the sequence at `at` and moves past it; an ill-formed one is one replacement per byte.
char32_t decodeUtf8(std::string_view utf8, std::size_t& at) {
  const auto lead = static_cast<unsigned char>(utf8[at++]);
  if (lead < 0x80) return lead;
  int following = 0;
  char32_t code = 0;
  char32_t smallest = 0;
  if ((lead & 0xE0) == 0xC0) {
    following = 1, code = lead & 0x1FU, smallest = 0x80;
  } else if ((lead & 0xF0) == 0xE0) {
    following = 2, code = lead & 0x0FU, smallest = 0x800;
  } else if ((lead & 0xF8) == 0xF0) {
    following = 3, code = lead & 0x07U, smallest = 0x10000;
  } else {
    return replacement;
  }
  std::size_t next = at;
  for (int i = 0; i < following; ++i, ++next) {
    if (next >= utf8.size() || !isContinuation(utf8[next])) return replacement;
    code = (code << 6) | (static_cast<unsigned char>(utf8[next]) & 0x3FU);
  }
  if (code < smallest || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000)) return replacement;
  at = next;
  return code;
}

void appendUtf8(std::string& out, char32_t code) {
  const auto put = [&out](char32_t byte) { out.push_back(static_cast<char>(byte)); };
  if (code < 0x80) return put(code);
  if (code < 0x800) {
    put(0xC0 | (code >> 6));
  } else {
    if (code < 0x10000) {
      put(0xE0 | (code >> 12));
    } else {
      put(0xF0 | (code >> 18));
      put(0x80 | ((code >> 12) & 0x3F));
    }
    put(0x80 | ((code >> 6) & 0x3F));
  }
  put(0x80 | (code & 0x3F));
}

}  // namespace

String fromUtf8(std::string_view utf8) {
  const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
  auto at = static_cast<std::size_t>(std::find_if_not(utf8.begin(), utf8.end(), isAscii) - utf8.begin());
  String out(utf8.begin(), utf8.begin() + at);
  out.reserve(utf8.size());
  while (at < utf8.size()) {
    const char32_t code = decodeUtf8(utf8, at);
    if (code < 0x10000) {
      out.push_back(static_cast<char16_t>(code));
    } else {
      out.push_back(static_cast<char16_t>(0xD7C0 + (code >> 10)));
      out.push_back(static_cast<char16_t>(0xDC00 + (code & 0x3FF)));
    }
  }
  return out;
}

std::string toUtf8(StringView text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t code = text[i];
    if (code >= 0xD800 && code < 0xE000) {
      const bool paired =
          code < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000;
      code = paired ? ((code - 0xD7C0) << 10) + (text[++i] - 0xDC00U) : replacement;
    }
    appendUtf8(out, code);
  }
  return out;
}

StringView trimBlanks(StringView text) {
  const std::size_t first = text.find_first_not_of(u' ');
  if (first == StringView::npos) return {};
  return text.substr(first, text.find_last_not_of(u' ') - first + 1);
}

String decimalText(long long value) {
  char digits[24];
  const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
  return String(digits, end);
}

}  // namespace zelUtilities
