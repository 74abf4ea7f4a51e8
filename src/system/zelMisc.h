// zelMisc: what fits nowhere else: the larger of two values, arrays, header values of e-mail messages,
// running a program.
//
//   if (!zel_ShellAndWait(u"\"C:\\Program Files\\Acme\\convert.exe\" /quiet \"a b.txt\"")) ...
//
// They keep no state. Failures are logged under "zelMisc." and the operation's name; the result is then "",
// Empty or False.
#pragma once

#include <cstdint>

#include "automation/ArrayData.h"
#include "automation/ClassInfo.h"

namespace zelUtilities {

// The larger or smaller of two values as Variants compare (see Comparison.h), as it was passed; the first
// where they are equal or not to be ordered (Null). Empty for values that do not compare.
Variant zel_MaxValue(const Variant& vValue1, const Variant& vValue2);
Variant zel_MinValue(const Variant& vValue1, const Variant& vValue2);

// The elements in an array's first dimension; 0 for anything else and for an array without dimensions.
std::int32_t zel_ArrayCount(const Variant& vArray);

// Lets the first array grow by the elements of the second, each multiplied by the factor. It keeps its lower
// bound; without dimensions it starts at 0. Arrays of more dimensions than one log 9, a product or a count
// that is too large logs 6; nothing is appended then. Logged under "zelMisc.AppendArray".
void zel_AppendArray(DoubleArray& daDst, const DoubleArray& daSrc, double dFactor = 1.0);

// The present for an e-mail message: "Wed, 7 Mar 2007 14:05:09 -0500", in the words of the user's locale. The
// offset is hours times 100 without a plus, as readers of these messages know it: "0100" is one hour east,
// "0550" five and a half.
String zel_GetEmailMessageDate();

// An identifier for a message: local time to the millisecond and this machine's full name,
// "<20070307140509042@host.example.com>".
String zel_GetEmailMessageID();

// Runs a program with its arguments, as a command line names them, in a normal window and waits for its end;
// what the system sends to the calling thread's windows is handled meanwhile. True when it was started and
// has ended, however it did; False, and logged, when it does not start.
bool zel_ShellAndWait(StringView sEXEFullPath);

namespace zelMisc {
const ClassInfo& describeClass();
}

}  // namespace zelUtilities
