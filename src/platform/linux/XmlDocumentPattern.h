// The pattern language in which clients of "MSXML.DOMDocument" select nodes, in terms of XPath.
#pragma once

#include <string>
#include <string_view>

namespace zelUtilities {

// The XPath expression for a pattern. They differ in this: positions count from 0 (c[0], index()), end() is
// the last position, names match as they are written, prefix included, whatever address it stands for, and
// "and", "or" and the comparisons have further spellings ($and$, &&, $eq$). What is no pattern is no XPath
// expression afterwards either.
std::string xpathOf(std::string_view pattern);

}  // namespace zelUtilities
