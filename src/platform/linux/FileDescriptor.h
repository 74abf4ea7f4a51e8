// FileDescriptor: an open file of the system, closed at the end. Failures raise.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace zelUtilities {

class FileDescriptor {
 public:
  // With the flags and rights of the system's own open.
  FileDescriptor(const std::string& path, int flags, unsigned mode = 0666);
  ~FileDescriptor();
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;

  int number() const { return number_; }
  std::uint64_t length() const;
  void write(std::string_view contents) const;
  // Fills the buffer; returns fewer bytes at the end of the file.
  std::size_t read(std::span<char> buffer) const;
  // At most this many bytes; fewer at the end of the file.
  std::string read(std::size_t length) const;
  void toDisk() const;
  // Reports what the system could not write after all.
  void close();

 private:
  int number_;
};

}  // namespace zelUtilities
