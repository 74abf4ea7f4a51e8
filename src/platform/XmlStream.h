// XmlStream: the pieces of a document that an object gives by its method Read, for the implementations of
// Xml.
#pragma once

#include <span>

#include "automation/Object.h"
#include "automation/Variant.h"

namespace zelUtilities {

class XmlStream {
 public:
  explicit XmlStream(Ref<Object> source) : source_(std::move(source)) {}

  // Asks for the next piece; false at the end. Raises what the object raises, and 13 for what is neither
  // bytes nor text.
  bool next(std::int32_t count);

  // What came: one of both, good until the next call.
  bool isText() const { return piece_.isString(); }
  StringView text() const { return piece_.text(); }
  std::span<const std::uint8_t> bytes() const;

 private:
  Ref<Object> source_;
  Variant piece_;
};

}  // namespace zelUtilities
