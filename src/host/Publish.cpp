#include "host/Publish.h"

#include "server/InterfaceDescription.h"
#include "server/RegistrationFree.h"

namespace zelUtilities::host {

namespace {

// Lines that bring their own ends.
void printText(std::string text, Console& console) {
  if (!text.empty()) text.pop_back();
  console.print(fromUtf8(text));
}

}  // namespace

void printInterfaceDescription(const ClassRegistry& registry, Console& console) {
  printText(interfaceDescription(registry), console);
}

void printManifest(const ClassRegistry& registry, Console& console) {
  printText(registrationFreeManifest(registry), console);
}

}  // namespace zelUtilities::host
