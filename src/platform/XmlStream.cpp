#include "platform/XmlStream.h"

#include <utility>

#include "automation/ArrayData.h"
#include "automation/Error.h"

namespace zelUtilities {

namespace {

// A text stream that is asked for more than there is raises an error for an answer.
Variant readPiece(Object& source, std::int32_t count) {
  Variant arguments[] = {count};
  try {
    return source.Invoke(u"Read", InvokeKind::Method, arguments);
  } catch (const Error& error) {
    if (error.number() == ErrorNumber::InputPastEnd) return {};
    throw;
  }
}

bool isByteArray(const Variant& value) {
  return value.isArray() && value.array().elementKind() == VariantKind::Byte;
}

}  // namespace

bool XmlStream::next(std::int32_t count) {
  piece_ = readPiece(*source_, count);
  if (piece_.isEmpty() || piece_.isNull()) return false;
  if (isText()) return !text().empty();
  if (!isByteArray(piece_)) throw Error(ErrorNumber::TypeMismatch);
  return !bytes().empty();
}

std::span<const std::uint8_t> XmlStream::bytes() const { return std::as_const(piece_.array()).bytes(); }

}  // namespace zelUtilities
