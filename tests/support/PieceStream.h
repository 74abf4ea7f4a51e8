// PieceStream: an object with a method Read that gives a document in pieces.
//
//   xml().parse(make<PieceStream>(pieces), handler);        // then Empty for ever
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "automation/ArrayData.h"
#include "automation/Error.h"
#include "automation/Object.h"
#include "automation/Variant.h"

namespace zelUtilities {

class PieceStream : public Object {
 public:
  using Source = std::function<Variant()>;

  explicit PieceStream(Source source) : source_(std::move(source)) {}

  // The pieces of so many units or bytes.
  static Ref<PieceStream> of(StringView text, std::size_t size) {
    return make<PieceStream>([text = String(text), size, at = std::size_t{0}]() mutable -> Variant {
      const Variant piece = at < text.size() ? Variant(text.substr(at, size)) : Variant();
      at += size;
      return piece;
    });
  }
  static Ref<PieceStream> of(std::string_view bytes, std::size_t size) {
    return make<PieceStream>([bytes = std::string(bytes), size, at = std::size_t{0}]() mutable -> Variant {
      const Variant piece = at < bytes.size() ? bytesOf(std::string_view(bytes).substr(at, size)) : Variant();
      at += size;
      return piece;
    });
  }
  static Variant bytesOf(std::string_view bytes) {
    return ArrayData::ofBytes({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  }

  Variant Invoke(StringView name, InvokeKind, std::span<Variant>) override {
    if (name != u"Read") throw Error(ErrorNumber::ObjectDoesNotSupport);
    return source_();
  }

 private:
  Source source_;
};

}  // namespace zelUtilities
