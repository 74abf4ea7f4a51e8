#include "automation/ArrayData.h"

#include <cstddef>
#include <limits>

#include "automation/Error.h"

namespace zelUtilities {

namespace {

Variant emptyElement(VariantKind kind) {
  switch (kind) {
    case VariantKind::Integer:
      return std::int16_t{0};
    case VariantKind::Long:
      return std::int32_t{0};
    case VariantKind::Single:
      return 0.0F;
    case VariantKind::Double:
      return 0.0;
    case VariantKind::Currency:
      return Variant::currency(0);
    case VariantKind::Date:
      return Variant::date(0);
    case VariantKind::String:
      return u"";
    case VariantKind::Object:
      return nullptr;
    case VariantKind::Boolean:
      return false;
    case VariantKind::Error:
      return Variant::error(0);
    case VariantKind::Variant:
      return {};
    default:
      throw Error(ErrorNumber::TypeMismatch);
  }
}

std::size_t elementsOf(const std::vector<ArrayBound>& bounds) {
  constexpr std::size_t most = std::numeric_limits<std::ptrdiff_t>::max() / sizeof(Variant);
  std::size_t count = bounds.empty() ? 0 : 1;
  for (const ArrayBound& bound : bounds) {
    if (bound.count != 0 && count > most / bound.count) throw Error(ErrorNumber::OutOfMemory);
    count *= bound.count;
  }
  return count;
}

// One dimension from 0. Raises 6 where its count does not fit.
std::vector<ArrayBound> listOf(std::size_t count) {
  return {{0, static_cast<std::uint32_t>(checkedLong(static_cast<std::int64_t>(count)))}};
}

}  // namespace

Ref<ArrayData> ArrayData::create(VariantKind elementKind, std::vector<ArrayBound> bounds) {
  const std::size_t count = elementsOf(bounds);
  Ref<ArrayData> array(new ArrayData);
  array->elementKind_ = elementKind;
  array->bounds_ = std::move(bounds);
  if (elementKind == VariantKind::Byte) {
    array->bytes_.resize(count);
  } else {
    array->elements_.resize(count, emptyElement(elementKind));
  }
  return array;
}

Ref<ArrayData> ArrayData::ofBytes(std::span<const std::uint8_t> contents) {
  Ref<ArrayData> array(new ArrayData);
  array->elementKind_ = VariantKind::Byte;
  array->bounds_ = listOf(contents.size());
  array->bytes_.assign(contents.begin(), contents.end());
  return array;
}

Ref<ArrayData> ArrayData::ofVariants(std::vector<Variant> elements) {
  Ref<ArrayData> array(new ArrayData);
  array->bounds_ = listOf(elements.size());
  array->elements_ = std::move(elements);
  return array;
}

Ref<ArrayData> ArrayData::clone() const {
  Ref<ArrayData> copy(new ArrayData);
  copy->elementKind_ = elementKind_;
  copy->bounds_ = bounds_;
  copy->bytes_ = bytes_;
  copy->elements_ = elements_;
  return copy;
}

Variant ArrayData::at(std::size_t position) const {
  if (position >= size()) throw Error(ErrorNumber::SubscriptOutOfRange);
  return elementKind_ == VariantKind::Byte ? Variant(bytes_[position]) : elements_[position];
}

void ArrayData::set(std::size_t position, Variant value) {
  if (position >= size()) throw Error(ErrorNumber::SubscriptOutOfRange);
  if (elementKind_ != VariantKind::Variant && value.kind() != elementKind_)
    throw Error(ErrorNumber::TypeMismatch);
  if (elementKind_ == VariantKind::Byte) {
    bytes_[position] = value.byte();
  } else {
    elements_[position] = std::move(value);
  }
}

}  // namespace zelUtilities
