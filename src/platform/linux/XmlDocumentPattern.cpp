#include "platform/linux/XmlDocumentPattern.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace zelUtilities {

namespace {

struct Spelling {
  std::string_view pattern;
  std::string_view xpath;
};
constexpr Spelling operators[] = {{"$and$", " and "}, {"$or$", " or "}, {"&&", " and "}, {"||", " or "},
                                  {"$eq$", "="},      {"$ne$", "!="},   {"$lt$", "<"},   {"$le$", "<="},
                                  {"$gt$", ">"},      {"$ge$", ">="}};
constexpr Spelling functions[] = {{"index()", "(position()-1)"},
                                  {"end()", "(position()=last())"},
                                  {"textnode()", "text()"},
                                  {"pi()", "processing-instruction()"}};

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isNameStart(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || (c & 0x80) != 0;
}
bool isNamePart(char c) { return isNameStart(c) || isDigit(c) || c == '-' || c == '.'; }

class Translator {
 public:
  explicit Translator(std::string_view pattern) : rest_(pattern) {}

  std::string translated() {
    while (!rest_.empty()) {
      if (rest_[0] == '"' || rest_[0] == '\'') {
        literal();
      } else if (replaced(functions) || replaced(operators) || position()) {
        continue;
      } else if (isNameStart(rest_[0])) {
        name();
      } else if (isDigit(rest_[0])) {
        copy(lengthWhile(rest_, isDigit));
      } else {
        copy(1);
      }
    }
    return std::move(out_);
  }

 private:
  template <class Is>
  static std::size_t lengthWhile(std::string_view text, Is is) {
    return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), is) - text.begin());
  }
  std::string_view take(std::size_t length) {
    const std::string_view taken = rest_.substr(0, length);
    rest_.remove_prefix(taken.size());
    return taken;
  }
  void copy(std::size_t length) { out_.append(take(length)); }

  template <std::size_t N>
  bool replaced(const Spelling (&spellings)[N]) {
    const auto* found =
        std::find_if(std::begin(spellings), std::end(spellings),
                     [&](const Spelling& spelling) { return rest_.starts_with(spelling.pattern); });
    if (found == std::end(spellings)) return false;
    take(found->pattern.size());
    out_.append(found->xpath);
    return true;
  }

  void literal() {
    const std::size_t end = rest_.find(rest_[0], 1);
    copy(end == std::string_view::npos ? rest_.size() : end + 1);
  }

  // [n], and nothing else in the brackets.
  bool position() {
    const auto isBlank = [](char c) { return c == ' '; };
    if (rest_[0] != '[') return false;
    const std::size_t start = 1 + lengthWhile(rest_.substr(1), isBlank);
    const std::size_t digits = lengthWhile(rest_.substr(start), isDigit);
    const std::size_t end = start + digits + lengthWhile(rest_.substr(start + digits), isBlank);
    long number = 0;
    const char* const first = rest_.data() + start;
    if (std::from_chars(first, first + digits, number).ec != std::errc() ||
        !rest_.substr(end).starts_with(']'))
      return false;
    out_.append("[").append(std::to_string(number)).append("+1]");
    take(end + 1);
    return true;
  }

  void name() {
    const std::size_t prefix = lengthWhile(rest_, isNamePart);
    const std::string_view behind = rest_.substr(prefix);
    if (!behind.starts_with(':') || behind.starts_with("::")) return copy(prefix);
    const std::size_t local = lengthWhile(behind.substr(1), isNamePart);
    if (local > 0) {
      out_.append("*[name()='").append(take(prefix + 1 + local)).append("']");
    } else if (behind.starts_with(":*")) {
      out_.append("*[starts-with(name(),'").append(take(prefix + 1)).append("')]");
      take(1);
    } else {
      copy(prefix + 1);
    }
  }

  std::string_view rest_;
  std::string out_;
};

}  // namespace

std::string xpathOf(std::string_view pattern) { return Translator(pattern).translated(); }

}  // namespace zelUtilities
