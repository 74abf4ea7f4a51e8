#include "automation/Variant.h"

#include <atomic>
#include <limits>
#include <new>
#include <stdexcept>

#include "automation/ArrayData.h"

namespace zelUtilities {

namespace {

// A text too long to lie inside a value. Counted atomically, since default values in class
// descriptions are shared by threads.
struct SharedText {
  std::atomic<std::uint32_t> references;
  std::uint32_t units;

  char16_t* data() { return reinterpret_cast<char16_t*>(this + 1); }
};

}  // namespace

Variant::Variant(Object* object) noexcept {
  store(VariantKind::Object, object);
  if (object) object->retain();
}

Variant::Variant(Ref<ArrayData> array) noexcept : Variant() {
  if (array) store(VariantKind::Array, array.detach());
}

void Variant::storeLongText(StringView text) {
  if (text.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()))
    throw std::length_error("text too long");
  void* memory = ::operator new(sizeof(SharedText) + text.size() * sizeof(char16_t));
  auto* shared = new (memory) SharedText{1, static_cast<std::uint32_t>(text.size())};
  std::memcpy(shared->data(), text.data(), text.size() * sizeof(char16_t));
  store(VariantKind::String, shared);
  bytes_[1] = longText;
}

StringView Variant::sharedText() const noexcept {
  auto* shared = load<SharedText*>();
  return {shared->data(), shared->units};
}

void Variant::retainShared() const noexcept {
  if (kind() == VariantKind::String) {
    load<SharedText*>()->references.fetch_add(1, std::memory_order_relaxed);
  } else if (kind() == VariantKind::Array) {
    load<ArrayData*>()->retain();
  } else if (auto* object = load<Object*>()) {
    object->retain();
  }
}

void Variant::releaseShared() noexcept {
  if (kind() == VariantKind::String) {
    auto* shared = load<SharedText*>();
    if (shared->references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
      shared->~SharedText();
      ::operator delete(shared);
    }
  } else if (kind() == VariantKind::Array) {
    load<ArrayData*>()->release();
  } else if (auto* object = load<Object*>()) {
    object->release();
  }
}

Ref<ArrayData> Variant::arrayRef() const noexcept { return Ref<ArrayData>(load<ArrayData*>()); }

}  // namespace zelUtilities
