#include "system/zelWinAPI.h"

#include <chrono>
#include <cmath>
#include <thread>

#include "automation/Binder.h"
#include "automation/Calendar.h"
#include "automation/Format.h"
#include "foundation/Handled.h"
#include "platform/Clock.h"
#include "platform/Machine.h"

namespace zelUtilities {

namespace {

// A part of an identifier as two digits for each of its bytes.
String hexadecimal(std::uint32_t value, int bytes) {
  String digits;
  for (int shift = bytes * 8 - 4; shift >= 0; shift -= 4) digits += u"0123456789ABCDEF"[value >> shift & 0xF];
  return digits;
}

String guidText(const Guid& guid) {
  String digits = hexadecimal(guid.data1, 4) + hexadecimal(guid.data2, 2) + hexadecimal(guid.data3, 2);
  for (const std::uint8_t byte : guid.data4) digits += hexadecimal(byte, 1);
  return format(digits, u"@@@@@@@@-@@@@-@@@@-@@@@-@@@@@@@@@@@@");
}

// To the millisecond, which a date's own moment would round away.
String formatTime(Date time) {
  constexpr double millisecondsPerDay = 86400000;
  String text;
  handled(u"zelWinAPI.FormatTime", [&] {
    const auto total = static_cast<std::int64_t>(std::llround(time.days * millisecondsPerDay));
    const auto milliseconds = static_cast<std::int32_t>(total % 1000);
    const Moment moment = momentOf(static_cast<double>(total - milliseconds) / millisecondsPerDay);
    text = format(moment.month, u"00") + u"/" + format(moment.day, u"00") + u"/" +
           format(moment.year, u"0000") + u" " + format(moment.hour, u"00") + u":" +
           format(moment.minute, u"00") + u":" + format(moment.second, u"00") + u"." +
           format(milliseconds, u"000");
  });
  return text;
}

constexpr std::uint32_t any = 0xFFFFFFFF;

struct KnownSystem {
  std::uint32_t platform;
  std::uint32_t major;
  std::uint32_t minor;
  StringView name;

  bool is(const SystemVersion& version) const {
    return version.platform == platform && (major == any || version.major == major) &&
           (minor == any || version.minor == minor);
  }
};

constexpr KnownSystem knownSystems[] = {{0, any, any, u"Win32s"},    {1, any, 0, u"Windows 95"},
                                        {1, any, 10, u"Windows 98"}, {1, any, 90, u"Windows ME"},
                                        {2, 4, any, u"Windows NT"},  {2, 5, 0, u"Windows 2000"},
                                        {2, 5, 1, u"Windows XP"},    {2, 5, 2, u"Windows Server 2003"}};

StringView systemName(const SystemVersion& version) {
  for (const KnownSystem& known : knownSystems)
    if (known.is(version)) return known.name;
  return {};
}

String versionText(const SystemVersion& version) {
  String text(systemName(version));
  text += u" (version " + decimalText(version.major) + u"." + decimalText(version.minor) + u" build " +
          decimalText(version.build & 0xFFFF) + u")";
  const std::size_t end = version.servicePack.find(u'\0');
  if (end != String::npos && end > 0) text += u" (" + version.servicePack.substr(0, end) + u")";
  return text;
}

}  // namespace

template <>
const EnumInfo& enumInfo<ZEL_Computer_Name_Format>() {
  static const EnumInfo info{
      u"ZEL_Computer_Name_Format",
      {{u"ComputerNameNetBIOS", ComputerNameNetBIOS},
       {u"ComputerNameDnsHostname", ComputerNameDnsHostname},
       {u"ComputerNameDnsDomain", ComputerNameDnsDomain},
       {u"ComputerNameDnsFullyQualified", ComputerNameDnsFullyQualified},
       {u"ComputerNamePhysicalNetBIOS", ComputerNamePhysicalNetBIOS},
       {u"ComputerNamePhysicalDnsHostname", ComputerNamePhysicalDnsHostname},
       {u"ComputerNamePhysicalDnsDomain", ComputerNamePhysicalDnsDomain},
       {u"ComputerNamePhysicalDnsFullyQualified", ComputerNamePhysicalDnsFullyQualified}}};
  return info;
}

String zel_WinAPIGetGUID() {
  String guid;
  handled(u"zelWinAPI.zel_WinAPIGetGUID", [&] { guid = guidText(machine().newGuid()); });
  return guid;
}

void zel_Sleep(std::int32_t lMilliSeconds) {
  handled(u"zelWinAPI.zel_Sleep",
          [&] { std::this_thread::sleep_for(std::chrono::milliseconds(lMilliSeconds)); });
}

String zel_WinAPIGetLocalTime() {
  String time;
  handled(u"zelWinAPI.zel_WinAPIGetLocalTime", [&] { time = formatTime(now()); });
  return time;
}

String zel_WinAPIGetSystemTime() {
  String time;
  handled(u"zelWinAPI.zel_WinAPIGetSystemTime", [&] { time = formatTime(universalNow()); });
  return time;
}

String zel_WinAPIComputerNameEX(ZEL_Computer_Name_Format eComputerNameFormat) {
  String name;
  handled(u"zelWinAPI.zel_WinAPIComputerNameEX", [&] { name = machine().computerName(eComputerNameFormat); });
  return name;
}

String zel_WinAPIComputerName() { return zel_WinAPIComputerNameEX(ComputerNameNetBIOS); }

String zel_WinAPIGetWinVersion() {
  String text;
  handled(u"zelWinAPI.zel_WinAPIGetWinVersion", [&] {
    const std::optional<SystemVersion> version = machine().systemVersion();
    text = version ? versionText(*version) : u"Unknown Windows Version";
  });
  return text;
}

String zel_WinAPIGetUserID() {
  String name;
  handled(u"zelWinAPI.zel_WinAPIGetUserID", [&] { name = machine().userName(); });
  return name;
}

const ClassInfo& zelWinAPI::describeClass() {
  static const ClassInfo info =
      describeFunctions("zelWinAPI", "Functions that ask the operating system.")
          .function("zel_WinAPIGetGUID", &zel_WinAPIGetGUID, "A new GUID, without braces.")
          .function("zel_Sleep", &zel_Sleep, {"lMilliSeconds"}, "Suspends the calling thread.")
          .function("zel_WinAPIGetLocalTime", &zel_WinAPIGetLocalTime, "The local time with milliseconds.")
          .function("zel_WinAPIGetSystemTime", &zel_WinAPIGetSystemTime, "The UTC time with milliseconds.")
          .function("zel_WinAPIComputerName", &zel_WinAPIComputerName, "The computer's NetBIOS name.")
          .function("zel_WinAPIComputerNameEX", &zel_WinAPIComputerNameEX,
                    {(arg("eComputerNameFormat") = ComputerNameNetBIOS).asReference()},
                    "The computer's name in one of its formats.")
          .function("zel_WinAPIGetWinVersion", &zel_WinAPIGetWinVersion, "Name and version of the system.")
          .function("zel_WinAPIGetUserID", &zel_WinAPIGetUserID, "The name of the user who is logged on.");
  return info;
}

}  // namespace zelUtilities
