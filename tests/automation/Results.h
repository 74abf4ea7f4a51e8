// Many values through one function, beside one literal.
//
//   EXPECT_EQ(results(toLong, 2.5, true, u"2.5|x"), "2|-1|2|error 13");
#pragma once

#include <sstream>
#include <vector>

#include "automation/Error.h"
#include "automation/Variant.h"

namespace zelUtilities {

// The texts that "|" divides.
inline std::vector<StringView> partsOf(StringView texts) {
  std::vector<StringView> parts;
  std::size_t end;
  while ((end = texts.find(u'|')) != StringView::npos) {
    parts.push_back(texts.substr(0, end));
    texts.remove_prefix(end + 1);
  }
  parts.push_back(texts);
  return parts;
}

// What the function makes of the values, divided by "|"; of one that it refuses it is the error. A text holds
// several values, divided by "|" too.
template <class Function, class... Values>
std::string results(const Function& function, const Values&... values) {
  std::ostringstream all;
  all.precision(17);
  for (const Variant& value : {Variant(values)...}) {
    for (const StringView text : partsOf(value.isString() ? value.text() : u"")) {
      try {
        const auto result = function(value.isString() ? text : value);
        if constexpr (std::is_same_v<decltype(result), const String>)
          all << "|" << toUtf8(result);
        else
          all << "|" << +result;
      } catch (const Error& error) {
        all << "|error " << error.number();
      }
    }
  }
  return all.str().substr(1);
}

}  // namespace zelUtilities
