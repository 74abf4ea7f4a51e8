#include "platform/linux/CommandLine.h"

#include <algorithm>

namespace zelUtilities {

namespace {

constexpr StringView blanks = u" \t";
constexpr std::size_t longestSpacedName =
    260;  // units, as on Windows; so that a long line is not tried at every blank

class ArgumentReader {
 public:
  explicit ArgumentReader(StringView text) : rest_(text) {}

  bool atEnd() {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(blanks), rest_.size()));
    return rest_.empty();
  }

  String next() {
    String argument;
    bool quoted = false;
    while (!rest_.empty() && (quoted || blanks.find(rest_[0]) == StringView::npos)) {
      const std::size_t backslashes = std::min(rest_.find_first_not_of(u'\\'), rest_.size());
      rest_.remove_prefix(backslashes);
      if (!rest_.starts_with(u'"')) {
        argument.append(backslashes, u'\\');
        if (backslashes == 0) argument += take();
        continue;
      }
      argument.append(backslashes / 2, u'\\');
      take();
      if (backslashes % 2 == 1) {
        argument += u'"';
      } else if (quoted && rest_.starts_with(u'"')) {
        argument += take();
      } else {
        quoted = !quoted;
      }
    }
    return argument;
  }

 private:
  char16_t take() {
    const char16_t unit = rest_[0];
    rest_.remove_prefix(1);
    return unit;
  }

  StringView rest_;
};

}  // namespace

std::vector<ProgramName> programNames(StringView line) {
  if (line.starts_with(u'"')) {
    const std::size_t end = std::min(line.find(u'"', 1), line.size());
    return {{line.substr(1, end - 1), line.substr(std::min(end + 1, line.size()))}};
  }
  std::vector<ProgramName> names;
  for (std::size_t end = 0; end != StringView::npos;) {
    const std::size_t from = std::min(line.find_first_not_of(blanks, end), line.size());
    end = line.find_first_of(blanks, from);
    if (!names.empty() && std::min(end, line.size()) > longestSpacedName) break;
    names.push_back({line.substr(0, end), end == StringView::npos ? StringView() : line.substr(end)});
  }
  return names;
}

std::vector<String> argumentsIn(StringView text) {
  std::vector<String> arguments;
  ArgumentReader reader(text);
  while (!reader.atEnd()) arguments.push_back(reader.next());
  return arguments;
}

}  // namespace zelUtilities
