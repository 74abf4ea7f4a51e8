// Service: how a question to the operating system is answered, and how a test answers it instead.
//
//   Registry& registry();                        the service in force
//   MemoryRegistry memory;
//   Replaced<Registry> replaced(memory);         until the end of this scope
//
// A service is an abstract struct with a static system(), the operating system's own answer. What is in
// force counts for the whole process: replace a service while no other thread uses it.
#pragma once

#include <atomic>

namespace zelUtilities {

template <class S>
struct Service {
  static S& inForce() {
    S* substitute = substitute_.load(std::memory_order_acquire);
    return substitute ? *substitute : S::system();
  }
  // Puts a substitute in force until further notice; nothing puts the system's own back. The substitute
  // must outlive its use. Returns what was there before.
  static S* replace(S* substitute) { return substitute_.exchange(substitute, std::memory_order_acq_rel); }

 private:
  static inline std::atomic<S*> substitute_ = nullptr;
};

// Puts a substitute in force for as long as this lives.
template <class S>
class Replaced {
 public:
  explicit Replaced(S& substitute) : before_(Service<S>::replace(&substitute)) {}
  ~Replaced() { Service<S>::replace(before_); }
  Replaced(const Replaced&) = delete;
  Replaced& operator=(const Replaced&) = delete;

 private:
  S* before_;
};

}  // namespace zelUtilities
