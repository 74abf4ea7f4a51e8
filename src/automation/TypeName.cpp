#include "automation/ArrayData.h"
#include "automation/ClassInfo.h"
#include "automation/Conversions.h"

namespace zelUtilities {

StringView kindName(VariantKind kind) {
  switch (kind) {
    case VariantKind::Empty:
      return u"Empty";
    case VariantKind::Null:
      return u"Null";
    case VariantKind::Integer:
      return u"Integer";
    case VariantKind::Long:
      return u"Long";
    case VariantKind::Single:
      return u"Single";
    case VariantKind::Double:
      return u"Double";
    case VariantKind::Currency:
      return u"Currency";
    case VariantKind::Date:
      return u"Date";
    case VariantKind::String:
      return u"String";
    case VariantKind::Error:
      return u"Error";
    case VariantKind::Boolean:
      return u"Boolean";
    case VariantKind::Byte:
      return u"Byte";
    case VariantKind::Variant:
      return u"Variant";
    default:
      return u"Object";
  }
}

String typeName(const Variant& value) {
  if (value.isArray()) return String(kindName(value.array().elementKind())) + u"()";
  if (!value.isObject()) return String(kindName(value.kind()));
  if (!value.object()) return u"Nothing";
  const ClassInfo* info = value.object()->classInfo();
  return info ? info->name() : u"Object";
}

}  // namespace zelUtilities
