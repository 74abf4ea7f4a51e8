#include "server/SystemGuid.h"

#include <algorithm>

namespace zelUtilities {

GUID systemGuid(const Uuid& uuid) {
  const auto& bytes = uuid.bytes;
  GUID guid{};
  guid.Data1 = DWORD{bytes[0]} << 24 | DWORD{bytes[1]} << 16 | DWORD{bytes[2]} << 8 | bytes[3];
  guid.Data2 = static_cast<WORD>(bytes[4] << 8 | bytes[5]);
  guid.Data3 = static_cast<WORD>(bytes[6] << 8 | bytes[7]);
  std::copy(bytes.begin() + 8, bytes.end(), guid.Data4);
  return guid;
}

String guidText(const Uuid& uuid) {
  String text = u"{" + fromUtf8(uuidText(uuid)) + u"}";
  for (char16_t& unit : text)
    if (unit >= u'a' && unit <= u'f') unit = static_cast<char16_t>(unit - u'a' + u'A');
  return text;
}

}  // namespace zelUtilities
