#include "host/Call.h"

#include <algorithm>
#include <optional>

#include "automation/ArrayData.h"
#include "automation/Conversions.h"
#include "automation/Enumerator.h"
#include "automation/Error.h"
#include "host/Describe.h"

namespace zelUtilities::host {

namespace {

constexpr StringView hexadecimalDigits = u"0123456789ABCDEF";

String hexadecimal(std::span<const std::uint8_t> bytes) {
  String text;
  text.reserve(2 * bytes.size());
  for (const std::uint8_t byte : bytes) {
    text += hexadecimalDigits[byte / 16];
    text += hexadecimalDigits[byte % 16];
  }
  return text;
}

std::uint8_t hexadecimalDigit(char16_t unit) {
  const std::size_t value = hexadecimalDigits.find(unit >= u'a' ? static_cast<char16_t>(unit - 32) : unit);
  if (value == StringView::npos) throw Error(ErrorNumber::TypeMismatch);
  return static_cast<std::uint8_t>(value);
}

Variant bytesFrom(StringView text) {
  if (text.size() % 2 != 0) throw Error(ErrorNumber::TypeMismatch);
  std::vector<std::uint8_t> bytes;
  for (std::size_t i = 0; i < text.size(); i += 2)
    bytes.push_back(
        static_cast<std::uint8_t>(16 * hexadecimalDigit(text[i]) + hexadecimalDigit(text[i + 1])));
  return ArrayData::ofBytes(bytes);
}

std::optional<std::int32_t> enumerationValue(const TypeInfo& type, StringView name) {
  if (!type.enumeration) return {};
  for (const EnumInfo::Value& value : type.enumeration()->values)
    if (equalFolded(value.name, name)) return value.value;
  return {};
}

Variant argumentFrom(const TypeInfo& type, const String& text) {
  if (type.array) return bytesFrom(text);
  if (type.kind == VariantKind::Variant) return text;
  if (type.kind == VariantKind::Object && text.empty()) return Ref<Object>();
  if (type.kind == VariantKind::Object) throw Error(ErrorNumber::TypeMismatch);
  if (const auto value = enumerationValue(type, text)) return *value;
  return convertTo(text, type.kind);
}

bool convertArguments(const Member& operation, std::span<const String> texts, std::vector<Variant>& arguments,
                      Console& console) {
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const Parameter& parameter = operation.parameters[i];
    try {
      arguments.push_back(argumentFrom(parameter.type, texts[i]));
    } catch (const Error& error) {
      console.complain(u"\"" + texts[i] + u"\" does not do for " + parameter.name + u" in " +
                       signature(operation) + u": " + error.description());
      return false;
    }
  }
  return true;
}

// Nothing where the object has no enumerator.
Ref<Enumerator> enumeratorOf(Object& object) {
  const ClassInfo* info = object.classInfo();
  const Member* member = info ? info->find(Member::enumeratorId) : nullptr;
  if (!member) return {};
  return objectCast<Enumerator>(invokeMember(object, *member, InvokeKind::Get, {}).object());
}

String arrayText(const ArrayData& array);

String valueText(const Variant& value) {
  if (value.isNull()) return u"Null";
  if (value.isEmpty()) return u"Empty";
  if (value.isArray()) return arrayText(value.array());
  if (value.isObject()) return typeName(value);
  return toText(value);
}

String arrayText(const ArrayData& array) {
  if (array.elementKind() == VariantKind::Byte) return hexadecimal(array.bytes());
  String text;
  for (std::size_t i = 0; i < array.size(); ++i) {
    const Variant element = array.at(i);
    if (i > 0) text += u'\t';
    // An array within an array is only named, so that depth costs no stack.
    text += element.isArray() && element.array().elementKind() != VariantKind::Byte ? typeName(element)
                                                                                    : valueText(element);
  }
  return text;
}

String resultText(const Member& operation, const Variant& result) {
  if (operation.result.enumeration) {
    for (const EnumInfo::Value& value : operation.result.enumeration()->values)
      if (value.value == toLong(result)) return value.name;
  }
  return valueText(result);
}

}  // namespace

void printValue(const Variant& value, Console& console) {
  const Ref<Enumerator> items =
      value.isObject() && value.object() ? enumeratorOf(*value.object()) : Ref<Enumerator>();
  if (!items) return console.print(valueText(value));
  Variant item;
  while (items->next(item)) console.print(valueText(item));
}

void callOperation(const ClassRegistry::GlobalOperation& operation, std::span<const String> arguments,
                   Console& console) {
  const Member& member = *operation.operation;
  const auto required =
      static_cast<std::size_t>(std::count_if(member.parameters.begin(), member.parameters.end(),
                                             [](const Parameter& parameter) { return !parameter.optional; }));
  if (arguments.size() < required || arguments.size() > member.parameters.size())
    return console.complain(u"wrong number of arguments for " + signature(member));

  std::vector<Variant> values;
  if (!convertArguments(member, arguments, values, console)) return;
  const Ref<Object> instance = ClassRegistry::instance(*operation.functionClass);
  const Variant result = invokeMember(*instance, member, InvokeKind::MethodOrGet, values);
  if (member.result.kind == VariantKind::Empty) return;
  if (result.isObject() || !member.result.enumeration) return printValue(result, console);
  console.print(resultText(member, result));
}

}  // namespace zelUtilities::host
