#include "server/ServerLife.h"

#include <atomic>

namespace zelUtilities::ServerLife {

namespace {

std::atomic<long> reasonsToStay = 0;
HMODULE ownModule = nullptr;

}  // namespace

void add() { ++reasonsToStay; }
void remove() { --reasonsToStay; }
bool canUnload() { return reasonsToStay == 0; }

void setModule(HMODULE module) { ownModule = module; }
HMODULE module() { return ownModule; }

}  // namespace zelUtilities::ServerLife
