// ComObject: what every COM object of the server shares: its count, and its part in keeping the library
// loaded.
#pragma once

#include <windows.h>

#include <objbase.h>
#include <oleauto.h>

#include <atomic>
#include <utility>

#include "server/ServerLife.h"

namespace zelUtilities {

// The system's interfaces have no virtual destructor; nobody deletes through them.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// Counted from 1: whoever makes one hands its reference on.
template <class... Interfaces>
class ComObject : public Interfaces... {
 public:
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = drop();
    if (left == 0) delete this;
    return left;
  }

  ComObject(const ComObject&) = delete;
  ComObject& operator=(const ComObject&) = delete;

 protected:
  ComObject() { ServerLife::add(); }
  virtual ~ComObject() { ServerLife::remove(); }

  // For those who end in their own way.
  ULONG drop() { return --references_; }

  // Ends a QueryInterface: the interface with a reference of its own, or none.
  template <class Interface>
  HRESULT answer(Interface* found, void** out) {
    *out = found;
    if (!found) return E_NOINTERFACE;
    found->AddRef();
    return S_OK;
  }

 private:
  std::atomic<ULONG> references_ = 1;
};

#pragma GCC diagnostic pop

// A counted reference to somebody's COM object.
template <class Interface>
class ComRef {
 public:
  ComRef() = default;
  explicit ComRef(Interface* object) : object_(object) {
    if (object_) object_->AddRef();
  }
  ComRef(const ComRef& other) : ComRef(other.object_) {}
  ComRef(ComRef&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ComRef& operator=(ComRef other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~ComRef() {
    if (object_) object_->Release();
  }

  Interface* get() const { return object_; }
  Interface* operator->() const { return object_; }
  Interface& operator*() const { return *object_; }
  explicit operator bool() const { return object_ != nullptr; }

  // Where a system call puts a reference; what was held is let go.
  Interface** receive() {
    *this = ComRef();
    return &object_;
  }
  void** receiveAny() { return reinterpret_cast<void**>(receive()); }
  Interface* detach() { return std::exchange(object_, nullptr); }

 private:
  Interface* object_ = nullptr;
};

}  // namespace zelUtilities
