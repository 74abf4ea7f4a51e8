// ScratchFolder: the current folder is one of the test's own while it lives, so that files by short names
// leave nothing behind.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace zelUtilities {

class ScratchFolder {
 public:
  ScratchFolder() {
    std::filesystem::create_directories(folder_);
    std::filesystem::current_path(folder_);
  }
  ~ScratchFolder() {
    std::filesystem::current_path(before_);
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

 private:
  const std::filesystem::path before_ = std::filesystem::current_path();
  const std::filesystem::path folder_ =
      std::filesystem::temp_directory_path() /
      ("zel-scratch-" + std::to_string(reinterpret_cast<std::uintptr_t>(this)));
};

}  // namespace zelUtilities
