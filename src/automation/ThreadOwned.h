// ThreadOwned: one value per thread, made when the thread first asks and ended with the thread.
//
//   State& state = ThreadOwned<State>::value();
//
// In place of a thread_local object with a destructor: where thread-local memory is emulated, as in
// Windows builds with mingw-w64, a thread gives that memory back before it calls such destructors. Here the
// value lies on the heap, its end is asked for by its own address, and thread-local memory holds a pointer.
#pragma once

#include <cxxabi.h>

#include <memory>
#include <new>

namespace zelUtilities {

template <class T>
class ThreadOwned {
 public:
  // Raises bad_alloc when there is no memory for a thread's first use.
  static T& value() { return value_ ? *value_ : made(); }

 private:
  static T& made() {
    auto made = std::make_unique<T>();
    if (abi::__cxa_thread_atexit(&end, made.get(), &ofThisModule_) != 0) throw std::bad_alloc();
    value_ = made.get();
    return *made.release();
  }
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wattributes"  // called as a destructor is, which it is not
  static void _GLIBCXX_CDTOR_CALLABI end(void* value) {
    value_ = nullptr;  // what ends with the value and asks again gets a new one
    delete static_cast<T*>(value);
  }
#pragma GCC diagnostic pop

  static inline constinit thread_local T* value_ = nullptr;
  static inline char ofThisModule_ = 0;  // lies in the program or library that must stay loaded until then
};

}  // namespace zelUtilities
