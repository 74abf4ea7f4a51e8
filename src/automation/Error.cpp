#include "automation/Error.h"

#include <limits>
#include <new>
#include <stdexcept>

namespace zelUtilities {

StringView errorText(std::int32_t number) {
  switch (number) {
    case ErrorNumber::InvalidProcedureCall:
      return u"Invalid procedure call or argument";
    case ErrorNumber::Overflow:
      return u"Overflow";
    case ErrorNumber::OutOfMemory:
      return u"Out of memory";
    case ErrorNumber::SubscriptOutOfRange:
      return u"Subscript out of range";
    case ErrorNumber::ArrayIsFixed:
      return u"This array is fixed or temporarily locked";
    case ErrorNumber::DivisionByZero:
      return u"Division by zero";
    case ErrorNumber::TypeMismatch:
      return u"Type mismatch";
    case ErrorNumber::InternalError:
      return u"Internal error";
    case ErrorNumber::BadFileName:
      return u"Bad file name or number";
    case ErrorNumber::FileNotFound:
      return u"File not found";
    case ErrorNumber::FileAlreadyOpen:
      return u"File already open";
    case ErrorNumber::DeviceIO:
      return u"Device I/O error";
    case ErrorNumber::FileAlreadyExists:
      return u"File already exists";
    case ErrorNumber::DiskFull:
      return u"Disk full";
    case ErrorNumber::InputPastEnd:
      return u"Input past end of file";
    case ErrorNumber::PermissionDenied:
      return u"Permission denied";
    case ErrorNumber::DifferentDrive:
      return u"Can't rename with different drive";
    case ErrorNumber::PathFileAccess:
      return u"Path/File access error";
    case ErrorNumber::PathNotFound:
      return u"Path not found";
    case ErrorNumber::ObjectNotSet:
      return u"Object variable not set";
    case ErrorNumber::InvalidUseOfNull:
      return u"Invalid use of Null";
    case ErrorNumber::CannotCreateObject:
      return u"The object cannot be created";
    case ErrorNumber::ObjectDoesNotSupport:
      return u"The object doesn't support this property or method";
    case ErrorNumber::NamedArgumentNotFound:
      return u"Named argument not found";
    case ErrorNumber::ArgumentNotOptional:
      return u"Argument not optional";
    case ErrorNumber::WrongNumberOfArguments:
      return u"Wrong number of arguments or invalid assignment";
    case ErrorNumber::DuplicateKey:
      return u"This key is already associated with an element of this collection";
    default:
      return u"Application-defined or object-defined error";
  }
}

Error::Error(std::int32_t number, StringView source, StringView description)
    : number_(number), source_(source), description_(description), what_(toUtf8(description)) {}

Error::Error(std::int32_t number) : Error(number, {}, errorText(number)) {}

Error currentError() {
  try {
    throw;
  } catch (const Error& error) {
    return error;
  } catch (const std::bad_alloc&) {
    return Error(ErrorNumber::OutOfMemory);
  } catch (const std::length_error&) {
    return Error(ErrorNumber::Overflow);
  } catch (const std::exception& failure) {
    return {ErrorNumber::InternalError, {}, fromUtf8(failure.what())};
  } catch (...) {
    return Error(ErrorNumber::InternalError);
  }
}

std::int16_t checkedShort(std::int64_t value) {
  if (value < std::numeric_limits<std::int16_t>::min() || value > std::numeric_limits<std::int16_t>::max())
    throw Error(ErrorNumber::Overflow);
  return static_cast<std::int16_t>(value);
}

std::int32_t checkedLong(std::int64_t value) {
  if (value < std::numeric_limits<std::int32_t>::min() || value > std::numeric_limits<std::int32_t>::max())
    throw Error(ErrorNumber::Overflow);
  return static_cast<std::int32_t>(value);
}

}  // namespace zelUtilities
