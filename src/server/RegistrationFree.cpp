#include "server/RegistrationFree.h"

#include "foundation/LibraryVersion.h"
#include "server/PublishedNames.h"

namespace zelUtilities {

namespace {

std::string braced(const Uuid& uuid) { return "{" + uuidText(uuid) + "}"; }

std::string attribute(std::string_view name, std::string_view value) {
  std::string text = " ";
  text.append(name) += "=\"";
  for (const char unit : value) {
    if (unit == '&') {
      text += "&amp;";
    } else if (unit == '<') {
      text += "&lt;";
    } else if (unit == '"') {
      text += "&quot;";
    } else {
      text += unit;
    }
  }
  return text + "\"";
}

std::string fullVersion() { return publishedVersion() + "." + std::to_string(versionRevision) + ".0"; }

std::string classElement(const ClassInfo& info) {
  return "    <comClass" + attribute("clsid", braced(classUuid(info))) +
         attribute("progid", programmaticId(info)) + attribute("description", toUtf8(info.help())) +
         attribute("tlbid", braced(libraryUuid())) + " threadingModel=\"Apartment\"/>\n";
}

std::string interfaceElement(const Uuid& id, const std::string& name) {
  return "  <comInterfaceExternalProxyStub" + attribute("iid", braced(id)) + attribute("name", name) +
         attribute("tlbid", braced(libraryUuid())) + attribute("proxyStubClsid32", dispatchMarshaller) +
         "/>\n";
}

}  // namespace

std::string registrationFreeManifest(const ClassRegistry& registry) {
  std::string text =
      "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
      "<assembly xmlns=\"urn:schemas-microsoft-com:asm.v1\" manifestVersion=\"1.0\">\n"
      "  <assemblyIdentity type=\"win32\"" +
      attribute("name", publishedLibrary()) + attribute("version", fullVersion()) +
      " processorArchitecture=\"@architecture@\"/>\n  <file" +
      attribute("name", publishedLibrary() + ".dll") + ">\n";
  for (const ClassInfo* info : registry.classes())
    if (isPublishedCreatable(*info)) text += classElement(*info);
  text += "    <typelib" + attribute("tlbid", braced(libraryUuid())) +
          attribute("version", publishedVersion()) + " helpdir=\"\"/>\n  </file>\n";
  for (const ClassInfo* info : registry.classes()) {
    text += interfaceElement(callInterfaceUuid(*info), callInterfaceName(*info));
    if (!info->events().empty())
      text += interfaceElement(eventInterfaceUuid(*info), eventInterfaceName(*info));
  }
  return text + "</assembly>\n";
}

}  // namespace zelUtilities
