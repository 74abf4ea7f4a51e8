#include "foundation/RegistryVariant.h"

#include <span>

#include "automation/ArrayData.h"
#include "platform/Locale.h"

namespace zelUtilities {

namespace {

// Bytes that are not stored count as 0.
std::int32_t doubleWord(std::string_view data) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < 4 && i < data.size(); ++i)
    number |= static_cast<std::uint32_t>(static_cast<unsigned char>(data[i])) << (8 * i);
  return static_cast<std::int32_t>(number);
}

Variant byteArray(std::string_view data) {
  return ArrayData::ofBytes(std::span(reinterpret_cast<const std::uint8_t*>(data.data()), data.size()));
}

}  // namespace

bool readRegistryData(const RegistryValue& value, Variant& result) {
  switch (value.type) {
    case RegistryType::Text:
    case RegistryType::ExpandableText:
    case RegistryType::MultiText:
      result = widen(value.text());
      return true;
    case RegistryType::Binary:
      result = byteArray(value.data);
      return true;
    case RegistryType::DWord:
      result = doubleWord(value.data);
      return true;
    default:
      return false;
  }
}

Variant readRegistryValue(RegistryHandle root, StringView key, StringView name, const Variant& fallback) {
  RegistryKey opened;
  if (opened.open(root, key, RegistryAccess::Read) != RegistryResult::Success) return fallback;
  RegistryValue value;
  if (registry().queryValue(opened.handle(), name, value) != RegistryResult::Success) return fallback;
  Variant result = fallback;
  readRegistryData(value, result);
  return result;
}

}  // namespace zelUtilities
