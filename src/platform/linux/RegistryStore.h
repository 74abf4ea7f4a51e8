// RegistryStore: one file of the registry, a tree of keys with typed values.
//
// Names are compared folded. Keys have numbers that are never used again, so that a number outlives its key
// harmlessly. Every change is a transaction of its own; several processes may use one file at once, and one
// that is killed leaves the file as it was before or after its last change. A file that is damaged, or is
// something else, is left alone: everything answers Corrupt.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Registry.h"
#include "platform/linux/Database.h"

namespace zelUtilities {

class RegistryStore {
 public:
  // A path of names from the store's top, and where it may not be deleted, which is what a root is.
  using RootPaths = std::vector<StringView>;

  // The roots are created with the file, in this order, with the keys above them.
  RegistryStore(std::string path, RootPaths roots) : path_(std::move(path)), roots_(std::move(roots)) {}

  const std::string& path() const { return path_; }
  // Releases the file; the next question opens it again.
  void close() { database_.close(); }

  // Where a walk through an enumeration has come to, so that the next step need not start at its front.
  struct Place {
    std::int64_t version = -1;
    std::uint32_t index = 0;
    std::string folded;    // of the subkey there
    std::int64_t row = 0;  // of the value there
  };

  // A path from the store's top (0) or from a key.
  RegistryCode find(std::int64_t from, StringView path, std::int64_t& key);
  RegistryCode findOrCreate(std::int64_t from, StringView path, std::int64_t& key, bool& existed);
  RegistryCode deleteKey(std::int64_t from, StringView path);
  // Refuses a store that cannot be written to.
  RegistryCode requireWritable();

  RegistryCode query(std::int64_t key, StringView name, RegistryValue& value);
  RegistryCode set(std::int64_t key, StringView name, std::uint32_t type, std::string_view data);
  RegistryCode deleteValue(std::int64_t key, StringView name);
  RegistryCode enumKey(std::int64_t key, std::uint32_t index, Place& place, String& name);
  RegistryCode enumValue(std::int64_t key, std::uint32_t index, Place& place, RegistryValue& value);

 private:
  RegistryCode ensureOpen();
  RegistryCode open();
  RegistryCode createTables();
  RegistryCode useWriteAheadLog();
  RegistryCode child(std::int64_t parent, StringView name, std::int64_t& key);
  RegistryCode addChild(std::int64_t parent, StringView name, std::int64_t& key);
  RegistryCode requireKey(std::int64_t key);
  RegistryCode missing(std::int64_t key);
  RegistryCode walk(std::int64_t from, StringView path, bool creating, std::int64_t& key, bool& existed);

  std::string path_;
  RootPaths roots_;
  Database database_;
};

}  // namespace zelUtilities
