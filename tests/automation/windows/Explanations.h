// Why our outcomes differ from the system's where they do. The system at hand is Wine 8's; where it is at
// fault, we keep to what Windows and the clients' language do.
#pragma once

#include <vector>

#include "automation/windows/Differences.h"

namespace zelUtilities::oracle {

std::vector<Explanation> explainNumberConversions();
std::vector<Explanation> explainNumberTexts();
std::vector<Explanation> explainDateTexts();
std::vector<Explanation> explainComparisons();
std::vector<Explanation> explainNumberFormats();
std::vector<Explanation> explainDateFormats();
std::vector<Explanation> explainTextFormats();

}  // namespace zelUtilities::oracle
