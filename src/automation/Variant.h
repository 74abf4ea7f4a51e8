// Variant: a value that may be of several kinds, as automation clients pass them.
//
//   Variant width = std::int32_t{12};
//   Variant name = u"Paths";
//   if (vTag.isMissing()) ...                       // an optional argument that was left out
//
// Copying is cheap: texts of up to eleven units lie inside the value, longer ones and arrays are
// shared and never change once shared. Conversions between kinds are in Conversions.h,
// comparison in Comparison.h, formatting in Format.h.
#pragma once

#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

#include "automation/Object.h"
#include "automation/String.h"
#include "automation/UnitWords.h"

namespace zelUtilities {

class ArrayData;

// The numbers are those of the Automation variant types.
enum class VariantKind : std::uint8_t {
  Empty = 0,
  Null = 1,
  Integer = 2,  // 16 bits, signed
  Long = 3,     // 32 bits, signed
  Single = 4,
  Double = 5,
  Currency = 6,  // 64 bits, signed, in ten-thousandths
  Date = 7,      // days since 1899-12-30 as a double
  String = 8,
  Object = 9,  // may hold nothing
  Error = 10,  // an automation code
  Boolean = 11,
  Variant = 12,  // only as the element kind of an array
  Byte = 17,
  Array = 32,
};

class Variant {
 public:
  static constexpr std::int32_t missingCode = -2147352572;  // 0x80020004

  Variant() noexcept { setKind(VariantKind::Empty); }
  Variant(bool value) noexcept { store(VariantKind::Boolean, value); }
  Variant(std::uint8_t value) noexcept { store(VariantKind::Byte, value); }
  Variant(std::int16_t value) noexcept { store(VariantKind::Integer, value); }
  Variant(std::int32_t value) noexcept { store(VariantKind::Long, value); }
  Variant(float value) noexcept { store(VariantKind::Single, value); }
  Variant(double value) noexcept { store(VariantKind::Double, value); }
  Variant(StringView text) { storeText(text); }
  Variant(const String& text) { storeText(text); }
  Variant(const char16_t* text) { storeText(text); }
  Variant(Object* object) noexcept;  // may be nothing
  template <class T>
  requires std::is_base_of_v<Object, T> Variant(const Ref<T>& object)
  noexcept : Variant(static_cast<Object*>(object.get())) {}
  Variant(std::nullptr_t) noexcept : Variant(static_cast<Object*>(nullptr)) {}
  Variant(Ref<ArrayData> array) noexcept;  // Empty where it holds nothing
  // No silent conversion from other pointers or wider integers.
  template <class T>
  requires(std::is_pointer_v<T> && !std::is_convertible_v<T, Object*> &&
           !std::is_convertible_v<T, const char16_t*>) Variant(T)
  = delete;

  static Variant null() noexcept { return Variant(VariantKind::Null, 0); }
  static Variant missing() noexcept { return error(missingCode); }
  static Variant error(std::int32_t code) noexcept { return Variant(VariantKind::Error, code); }
  static Variant date(double days) noexcept {
    Variant value;
    value.store(VariantKind::Date, days);
    return value;
  }
  static Variant currency(std::int64_t tenThousandths) noexcept {
    Variant value;
    value.store(VariantKind::Currency, tenThousandths);
    return value;
  }

  Variant(const Variant& other) noexcept {
    std::memcpy(bytes_, other.bytes_, sizeof bytes_);
    if (isShared()) retainShared();
  }
  Variant(Variant&& other) noexcept {
    std::memcpy(bytes_, other.bytes_, sizeof bytes_);
    other.setKind(VariantKind::Empty);
  }
  Variant& operator=(const Variant& other) noexcept {
    Variant copy(other);
    swap(copy);
    return *this;
  }
  Variant& operator=(Variant&& other) noexcept {
    swap(other);
    return *this;
  }
  ~Variant() {
    if (isShared()) releaseShared();
  }
  void swap(Variant& other) noexcept {
    unsigned char kept[sizeof bytes_];
    std::memcpy(kept, bytes_, sizeof kept);
    std::memcpy(bytes_, other.bytes_, sizeof kept);
    std::memcpy(other.bytes_, kept, sizeof kept);
  }

  VariantKind kind() const noexcept { return static_cast<VariantKind>(bytes_[0]); }
  bool isEmpty() const noexcept { return kind() == VariantKind::Empty; }
  bool isNull() const noexcept { return kind() == VariantKind::Null; }
  bool isString() const noexcept { return kind() == VariantKind::String; }
  bool isObject() const noexcept { return kind() == VariantKind::Object; }
  bool isError() const noexcept { return kind() == VariantKind::Error; }
  bool isBoolean() const noexcept { return kind() == VariantKind::Boolean; }
  bool isArray() const noexcept { return kind() == VariantKind::Array; }
  // An optional argument that was left out.
  bool isMissing() const noexcept { return isError() && errorCode() == missingCode; }

  // The value as stored; the kind must be the one named. For conversions see Conversions.h.
  bool boolean() const noexcept { return load<bool>(); }
  std::uint8_t byte() const noexcept { return load<std::uint8_t>(); }
  std::int16_t integer() const noexcept { return load<std::int16_t>(); }
  std::int32_t longInteger() const noexcept { return load<std::int32_t>(); }
  std::int32_t errorCode() const noexcept { return load<std::int32_t>(); }
  float single() const noexcept { return load<float>(); }
  double doubleValue() const noexcept { return load<double>(); }
  double dateValue() const noexcept { return load<double>(); }
  std::int64_t currencyValue() const noexcept { return load<std::int64_t>(); }
  Object* object() const noexcept { return load<Object*>(); }
  // Valid until this value changes or ends.
  StringView text() const noexcept {
    if (bytes_[1] != longText) return {reinterpret_cast<const char16_t*>(bytes_ + 2), bytes_[1]};
    return sharedText();
  }
  ArrayData& array() const noexcept { return *load<ArrayData*>(); }
  Ref<ArrayData> arrayRef() const noexcept;

 private:
  static constexpr unsigned char longText = 0xFF;
  static constexpr std::size_t inlineUnits = 11;

  Variant(VariantKind kind, std::int32_t code) noexcept { store(kind, code); }

  void setKind(VariantKind kind) noexcept {
    bytes_[0] = static_cast<unsigned char>(kind);
    bytes_[1] = 0;
  }
  template <class T>
  void store(VariantKind kind, T value) noexcept {
    setKind(kind);
    std::memcpy(bytes_ + 8, &value, sizeof value);
  }
  template <class T>
  T load() const noexcept {
    T value;
    std::memcpy(&value, bytes_ + 8, sizeof value);
    return value;
  }
  void storeText(StringView text) {
    setKind(VariantKind::String);
    if (text.size() > inlineUnits) return storeLongText(text);
    bytes_[1] = static_cast<unsigned char>(text.size());
    copyUnits(bytes_ + 2, text);
  }
  bool isShared() const noexcept {
    return bytes_[1] == longText || kind() == VariantKind::Object || kind() == VariantKind::Array;
  }
  void storeLongText(StringView text);
  StringView sharedText() const noexcept;
  void retainShared() const noexcept;
  void releaseShared() noexcept;

  // [0] kind, [1] units of an inline text or longText, [2..23] inline text, [8..15] any other value.
  alignas(8) unsigned char bytes_[24];
};

static_assert(sizeof(Variant) == 24);

}  // namespace zelUtilities
