// Error: the one exception of the library, with number, source and description.
//
//   throw Error(5, u"zelStringCat.Find", errorText(5));
//
// Small numbers are the automation run time's own (see ErrorNumber); numbers that the library
// defines are objectErrorBase plus a small code.
#pragma once

#include <cstdint>
#include <exception>
#include <string>

#include "automation/String.h"

namespace zelUtilities {

// The automation run time's error numbers that the library raises.
namespace ErrorNumber {
inline constexpr std::int32_t InvalidProcedureCall = 5;
inline constexpr std::int32_t Overflow = 6;
inline constexpr std::int32_t OutOfMemory = 7;
inline constexpr std::int32_t SubscriptOutOfRange = 9;
inline constexpr std::int32_t ArrayIsFixed = 10;
inline constexpr std::int32_t DivisionByZero = 11;
inline constexpr std::int32_t TypeMismatch = 13;
inline constexpr std::int32_t InternalError = 51;
inline constexpr std::int32_t BadFileName = 52;
inline constexpr std::int32_t FileNotFound = 53;
inline constexpr std::int32_t FileAlreadyOpen = 55;
inline constexpr std::int32_t DeviceIO = 57;
inline constexpr std::int32_t FileAlreadyExists = 58;
inline constexpr std::int32_t DiskFull = 61;
inline constexpr std::int32_t InputPastEnd = 62;
inline constexpr std::int32_t PermissionDenied = 70;
inline constexpr std::int32_t DifferentDrive = 74;
inline constexpr std::int32_t PathFileAccess = 75;
inline constexpr std::int32_t PathNotFound = 76;
inline constexpr std::int32_t ObjectNotSet = 91;
inline constexpr std::int32_t InvalidUseOfNull = 94;
inline constexpr std::int32_t CannotCreateObject = 429;
inline constexpr std::int32_t ObjectDoesNotSupport = 438;
inline constexpr std::int32_t NamedArgumentNotFound = 448;
inline constexpr std::int32_t ArgumentNotOptional = 449;
inline constexpr std::int32_t WrongNumberOfArguments = 450;
inline constexpr std::int32_t DuplicateKey = 457;
}  // namespace ErrorNumber

// Base of the numbers that the library defines itself (0x80040000).
inline constexpr std::int32_t objectErrorBase = -2147221504;

// The run time's own description of a small number; a generic one for any other.
StringView errorText(std::int32_t number);

class Error : public std::exception {
 public:
  Error(std::int32_t number, StringView source, StringView description);
  // With the run time's own description and no source.
  explicit Error(std::int32_t number);

  std::int32_t number() const { return number_; }
  const String& source() const { return source_; }
  const String& description() const { return description_; }
  // The same failure reported under another source.
  Error withSource(StringView source) const { return {number_, source, description_}; }
  // The description as UTF-8, for those who only know std::exception.
  const char* what() const noexcept override { return what_.c_str(); }

 private:
  std::int32_t number_;
  String source_;
  String description_;
  std::string what_;
};

// Turns whatever is being handled into an Error: an Error as it is, std::bad_alloc as 7,
// std::length_error as 6, any other std::exception as 51 with its text, anything else as 51.
// Call it inside a catch block only.
Error currentError();

// 16-bit and 32-bit arithmetic that raises 6 where the result does not fit.
std::int16_t checkedShort(std::int64_t value);
std::int32_t checkedLong(std::int64_t value);

}  // namespace zelUtilities
