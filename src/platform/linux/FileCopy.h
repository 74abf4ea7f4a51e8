// FileCopy: the copy of one file, made beside its place and put there when it is whole.
#pragma once

#include <string>

namespace zelUtilities {

// Native paths; the target is no link. Raises 70 where both are the same file, 75 for what is no plain file,
// 58 for a target that is there unless replacing.
void copyFile(const std::string& from, const std::string& to, bool replacing);

}  // namespace zelUtilities
