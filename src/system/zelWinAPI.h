// zelWinAPI: what the operating system knows of itself, its clock and its user, as texts.
//
//   zel_WinAPIGetGUID()            "6B29FC40-CA47-1067-B31D-00DD010662DA"
//   zel_WinAPIGetLocalTime()       "03/07/2007 14:05:09.042"
//   zel_WinAPIGetWinVersion()      "Windows XP (version 5.1 build 2600) (Service Pack 2)"
//
// Failures are logged under "zelWinAPI." and the operation's name and leave "". Any thread may call them.
#pragma once

#include <cstdint>

#include "automation/ClassInfo.h"
#include "automation/String.h"

namespace zelUtilities {

// The system's own numbers.
enum ZEL_Computer_Name_Format : std::int32_t {
  ComputerNameNetBIOS = 0,
  ComputerNameDnsHostname = 1,
  ComputerNameDnsDomain = 2,
  ComputerNameDnsFullyQualified = 3,
  ComputerNamePhysicalNetBIOS = 4,
  ComputerNamePhysicalDnsHostname = 5,
  ComputerNamePhysicalDnsDomain = 6,
  ComputerNamePhysicalDnsFullyQualified = 7
};

template <>
const EnumInfo& enumInfo<ZEL_Computer_Name_Format>();

// A new identifier: 32 capital hexadecimal digits in groups of 8, 4, 4, 4 and 12, divided by hyphens.
String zel_WinAPIGetGUID();

// Suspends the calling thread; a negative time is none.
void zel_Sleep(std::int32_t lMilliSeconds);

// Local and universal time as "mm/dd/yyyy hh:mm:ss.mmm", in every locale.
String zel_WinAPIGetLocalTime();
String zel_WinAPIGetSystemTime();

// The computer's name of that kind; "" where it has none or there is no such kind.
String zel_WinAPIComputerNameEX(ZEL_Computer_Name_Format eComputerNameFormat = ComputerNameNetBIOS);
// The NetBIOS name.
String zel_WinAPIComputerName();

// Name, numbers and service pack of the system. Systems newer than the names known here, and others, have
// none: the text begins with " (version " then.
String zel_WinAPIGetWinVersion();

// Who is logged on; "" where the system does not say.
String zel_WinAPIGetUserID();

namespace zelWinAPI {
const ClassInfo& describeClass();
}

}  // namespace zelUtilities
