// ArrayData: the elements of an array Variant, with bounds and element kind kept.
//
//   Ref<ArrayData> bytes = ArrayData::ofBytes(contents);      // one dimension, lower bound 0
//   std::span<const std::uint8_t> view = bytes->bytes();
//
// An array inside a Variant is a value: whoever changes one that it did not make, clones it first.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "automation/Variant.h"

namespace zelUtilities {

struct ArrayBound {
  std::int32_t lower = 0;
  std::uint32_t count = 0;
};

class ArrayData {
 public:
  // An array of empty elements. The element kind may be any but Empty, Null and Array. Without
  // dimensions it is an undimensioned array. Raises 7 for more elements than memory can hold.
  static Ref<ArrayData> create(VariantKind elementKind, std::vector<ArrayBound> bounds);
  static Ref<ArrayData> ofBytes(std::span<const std::uint8_t> contents);
  static Ref<ArrayData> ofVariants(std::vector<Variant> elements);

  Ref<ArrayData> clone() const;

  VariantKind elementKind() const { return elementKind_; }
  const std::vector<ArrayBound>& bounds() const { return bounds_; }
  std::size_t size() const { return elementKind_ == VariantKind::Byte ? bytes_.size() : elements_.size(); }

  // Elements in storage order (the first dimension varies fastest), counted from 0.
  Variant at(std::size_t position) const;
  // The value must be of the element kind (any kind for an array of variants).
  void set(std::size_t position, Variant value);

  // Only where the element kind is Byte.
  std::span<const std::uint8_t> bytes() const { return bytes_; }
  std::span<std::uint8_t> bytes() { return bytes_; }

  void retain() const { ++references_; }
  void release() const {
    if (--references_ == 0) delete this;
  }

 private:
  ArrayData() = default;

  mutable std::uint32_t references_ = 0;
  VariantKind elementKind_ = VariantKind::Variant;
  std::vector<ArrayBound> bounds_;
  std::vector<std::uint8_t> bytes_;
  std::vector<Variant> elements_;
};

// An array parameter whose elements are all of one kind; holds nothing where the array has no dimensions yet.
template <VariantKind elementKind>
struct TypedArray {
  Ref<ArrayData> data;
};

using DoubleArray = TypedArray<VariantKind::Double>;

}  // namespace zelUtilities
