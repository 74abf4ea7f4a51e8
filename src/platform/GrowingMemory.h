// GrowingMemory: the memory of one buffer that grows again and again, up to gigabytes.
//
//   GrowingMemory memory;
//   memory.resize(1 << 20);
//   char* bytes = static_cast<char*>(memory.data());      // until the next resize
//
// A large buffer grows without being copied where the system can move its pages. Whether they are large ones
// is left to the system: asking for them made a first touch many times dearer on virtual machines.
// Memory that was never written costs address space only.
#pragma once

#include <cstddef>

namespace zelUtilities {

class GrowingMemory {
 public:
  GrowingMemory() = default;
  GrowingMemory(const GrowingMemory&) = delete;
  GrowingMemory& operator=(const GrowingMemory&) = delete;
  ~GrowingMemory() { clear(); }

  void* data() const { return data_; }
  std::size_t size() const { return size_; }  // bytes; at least what was last asked for

  // Grows to at least that many bytes; what the buffer held stays. False, and nothing changes, where the
  // system has not that much. A smaller size than the present one changes nothing.
  bool grow(std::size_t bytes) noexcept;
  void clear() noexcept;

 private:
  void* data_ = nullptr;
  std::size_t size_ = 0;
};

}  // namespace zelUtilities
