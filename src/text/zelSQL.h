// zelSQL: the global operations that write literals of SQL, each one a routine of mSQL.
//
//   zel_SQLString(u"O'Brien");           // 'O''Brien'
//   zel_SQLDate(Variant::date(39146));   // #03/05/2007#
//   zel_SQLWhere(u"where a = 1 and ");   // "where a = 1 "
//
// What they do stands in mSQL.h. They keep no state; any thread may call them.
#pragma once

#include "automation/ClassInfo.h"
#include "text/mSQL.h"

namespace zelUtilities {

inline String zel_SQLBoolean(const Variant& vValue) { return mSQL::SQLBoolean(vValue); }
inline String zel_SQLDate(const Variant& vValue) { return mSQL::SQLDate(vValue); }
inline String zel_SQLNumber(const Variant& vValue, bool bUseNull = false) {
  return mSQL::SQLNumber(vValue, bUseNull);
}
inline String zel_SQLString(const Variant& vValue, bool bUseNull = false, bool bTrimString = true,
                            bool bPreserveDupSpaces = true) {
  return mSQL::SQLString(vValue, bUseNull, bTrimString, bPreserveDupSpaces);
}
inline String zel_SQLWhere(StringView sWhere) { return mSQL::SQLWhere(sWhere); }
inline String zel_SQLBinary(StringView sValue) { return mSQL::SQLBinary(sValue); }

namespace zelSQL {
const ClassInfo& describeClass();
}

}  // namespace zelUtilities
