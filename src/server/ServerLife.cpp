#include "server/ServerLife.h"

#include <atomic>

#include "platform/windows/WideText.h"

namespace zelUtilities::ServerLife {

namespace {

std::atomic<long> reasonsToStay = 0;
HMODULE ownModule = nullptr;

}  // namespace

void add() { ++reasonsToStay; }
void remove() { --reasonsToStay; }
bool canUnload() { return reasonsToStay == 0; }

void setModule(HMODULE module) { ownModule = module; }

String modulePath() {
  String path(MAX_PATH, u'\0');
  DWORD length = GetModuleFileNameW(ownModule, wideBuffer(path), static_cast<DWORD>(path.size()));
  while (length == path.size()) {  // it did not fit
    path.resize(2 * path.size());
    length = GetModuleFileNameW(ownModule, wideBuffer(path), static_cast<DWORD>(path.size()));
  }
  path.resize(length);
  return path;
}

}  // namespace zelUtilities::ServerLife
