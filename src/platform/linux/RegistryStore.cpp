#include "platform/linux/RegistryStore.h"

#include <algorithm>
#include <chrono>
#include <thread>

#include "automation/CaseFolding.h"

namespace zelUtilities {

namespace {

constexpr std::size_t longestKeyName = 255;
constexpr std::size_t longestValueName = 16383;
constexpr std::int64_t shape = 1;  // of the tables, as the file's user_version says it

constexpr const char* tables =
    "CREATE TABLE keys ("
    " id INTEGER PRIMARY KEY AUTOINCREMENT, parent INTEGER NOT NULL, name TEXT NOT NULL, folded TEXT NOT "
    "NULL,"
    " UNIQUE (parent, folded));"
    "CREATE TABLE entries ("
    " id INTEGER PRIMARY KEY, key INTEGER NOT NULL, name TEXT NOT NULL, folded TEXT NOT NULL,"
    " type INTEGER NOT NULL, data BLOB NOT NULL, UNIQUE (key, folded));"
    "CREATE INDEX entries_in_order ON entries (key);"
    "PRAGMA user_version = 1";

std::string folded(StringView name) { return toUtf8(foldCase(name)); }

// Takes the next name off a path; "" at its end. Repeated and closing separators count for nothing.
StringView takeName(StringView& path) {
  path.remove_prefix(std::min(path.find_first_not_of(u'\\'), path.size()));
  const StringView name = path.substr(0, path.find(u'\\'));
  path.remove_prefix(name.size());
  return name;
}

RegistryValue valueIn(const Statement& row) {
  RegistryValue value;
  value.name = fromUtf8(row.text(0));
  value.type = static_cast<std::uint32_t>(row.integer(1));
  value.data = withTerminator(value.type, row.bytes(2));
  return value;
}

}  // namespace

RegistryCode RegistryStore::ensureOpen() {
  if (database_.isOpen() && !database_.hasMoved()) return RegistryResult::Success;
  const RegistryCode code = open();
  if (code != RegistryResult::Success) database_.close();
  return code;
}

RegistryCode RegistryStore::open() {
  RegistryCode code = database_.open(path_);
  if (code != RegistryResult::Success) return code;
  std::int64_t found = 0;
  code = database_.ask("PRAGMA user_version", found);
  if (code == RegistryResult::Success && found == 0) {
    code = createTables();
  } else if (code == RegistryResult::Success && found != shape) {
    code = RegistryResult::Corrupt;
  }
  if (code != RegistryResult::Success || database_.isReadOnly()) return code;
  database_.execute("PRAGMA synchronous = NORMAL");
  return useWriteAheadLog();
}

RegistryCode RegistryStore::createTables() {
  if (database_.isReadOnly()) return RegistryResult::AccessDenied;
  Transaction transaction(database_);
  RegistryCode code = transaction.code();
  std::int64_t found = 0;
  std::int64_t count = 0;
  if (code == RegistryResult::Success) code = database_.ask("PRAGMA user_version", found);
  if (code == RegistryResult::Success) code = database_.ask("SELECT count(*) FROM sqlite_schema", count);
  if (code != RegistryResult::Success || found == shape) return code;  // another process was faster
  if (count != 0) return RegistryResult::Corrupt;                      // somebody else's file
  code = database_.execute(tables);
  for (const StringView root : roots_) {
    std::int64_t key = 0;
    bool existed = false;
    if (code == RegistryResult::Success) code = walk(0, root, true, key, existed);
  }
  return code == RegistryResult::Success ? transaction.commit() : code;
}

// So that readers and a writer do not wait for each other, and a change need not wait for the disk. Switching
// to it takes the file for oneself, for which the system does not wait by itself.
RegistryCode RegistryStore::useWriteAheadLog() {
  RegistryCode code = RegistryResult::Busy;
  for (int attempt = 0; attempt < 500 && code == RegistryResult::Busy; ++attempt) {
    if (attempt > 0) std::this_thread::sleep_for(std::chrono::milliseconds(10));
    code = database_.execute("PRAGMA journal_mode = WAL");
  }
  return code;
}

RegistryCode RegistryStore::child(std::int64_t parent, StringView name, std::int64_t& key) {
  if (name.size() > longestKeyName) return RegistryResult::InvalidParameter;
  Statement find = database_.prepare("SELECT id FROM keys WHERE parent = ?1 AND folded = ?2");
  const RegistryCode code = find.bind(1, parent).bind(2, folded(name)).step();
  if (code == RegistryResult::Success) return RegistryResult::FileNotFound;
  if (code != Statement::Row) return code;
  key = find.integer(0);
  return RegistryResult::Success;
}

RegistryCode RegistryStore::addChild(std::int64_t parent, StringView name, std::int64_t& key) {
  Statement add = database_.prepare("INSERT INTO keys (parent, name, folded) VALUES (?1, ?2, ?3)");
  const RegistryCode code = add.bind(1, parent).bind(2, toUtf8(name)).bind(3, folded(name)).run();
  return code == RegistryResult::Success ? child(parent, name, key) : code;
}

RegistryCode RegistryStore::walk(std::int64_t from, StringView path, bool creating, std::int64_t& key,
                                 bool& existed) {
  existed = true;
  key = from;
  for (StringView name = takeName(path); !name.empty(); name = takeName(path)) {
    const std::int64_t parent = key;
    RegistryCode code = child(parent, name, key);
    if (code == RegistryResult::FileNotFound && creating) {
      existed = false;
      code = addChild(parent, name, key);
    }
    if (code != RegistryResult::Success) return code;
  }
  return RegistryResult::Success;
}

RegistryCode RegistryStore::find(std::int64_t from, StringView path, std::int64_t& key) {
  RegistryCode code = ensureOpen();
  if (code == RegistryResult::Success) code = requireKey(from);
  bool existed = false;
  return code == RegistryResult::Success ? walk(from, path, false, key, existed) : code;
}

RegistryCode RegistryStore::findOrCreate(std::int64_t from, StringView path, std::int64_t& key,
                                         bool& existed) {
  existed = true;
  RegistryCode code = find(from, path, key);
  if (code != RegistryResult::FileNotFound) return code;
  Transaction transaction(database_);
  code = transaction.code();
  if (code == RegistryResult::Success) code = requireKey(from);
  if (code == RegistryResult::Success) code = walk(from, path, true, key, existed);
  return code == RegistryResult::Success ? transaction.commit() : code;
}

RegistryCode RegistryStore::deleteKey(std::int64_t from, StringView path) {
  RegistryCode code = ensureOpen();
  if (code != RegistryResult::Success) return code;
  Transaction transaction(database_);
  std::int64_t key = 0;
  code = transaction.code();
  if (code == RegistryResult::Success) code = find(from, path, key);
  if (code != RegistryResult::Success) return code;
  for (const StringView root : roots_) {
    std::int64_t rootKey = 0;
    if (find(0, root, rootKey) == RegistryResult::Success && rootKey == key)
      return RegistryResult::AccessDenied;
  }
  Statement subkey = database_.prepare("SELECT 1 FROM keys WHERE parent = ?1 LIMIT 1");
  code = subkey.bind(1, key).step();
  if (code == Statement::Row) return RegistryResult::AccessDenied;
  if (code == RegistryResult::Success)
    code = database_.prepare("DELETE FROM entries WHERE key = ?1").bind(1, key).run();
  if (code == RegistryResult::Success)
    code = database_.prepare("DELETE FROM keys WHERE id = ?1").bind(1, key).run();
  return code == RegistryResult::Success ? transaction.commit() : code;
}

RegistryCode RegistryStore::requireWritable() {
  const RegistryCode code = ensureOpen();
  if (code != RegistryResult::Success) return code;
  return database_.isReadOnly() ? RegistryResult::AccessDenied : RegistryResult::Success;
}

RegistryCode RegistryStore::requireKey(std::int64_t key) {
  if (key == 0) return RegistryResult::Success;  // the top
  const RegistryCode code = database_.prepare("SELECT 1 FROM keys WHERE id = ?1").bind(1, key).step();
  if (code == Statement::Row) return RegistryResult::Success;
  return code == RegistryResult::Success ? RegistryResult::KeyDeleted : code;
}

// Why there was nothing to find: the key is gone, or just has no such value.
RegistryCode RegistryStore::missing(std::int64_t key) {
  const RegistryCode code = requireKey(key);
  return code == RegistryResult::Success ? RegistryResult::FileNotFound : code;
}

RegistryCode RegistryStore::query(std::int64_t key, StringView name, RegistryValue& value) {
  RegistryCode code = ensureOpen();
  if (code != RegistryResult::Success) return code;
  Statement find = database_.prepare("SELECT name, type, data FROM entries WHERE key = ?1 AND folded = ?2");
  code = find.bind(1, key).bind(2, folded(name)).step();
  if (code == RegistryResult::Success) return missing(key);
  if (code != Statement::Row) return code;
  value = valueIn(find);
  return RegistryResult::Success;
}

RegistryCode RegistryStore::set(std::int64_t key, StringView name, std::uint32_t type,
                                std::string_view data) {
  if (name.size() > longestValueName) return RegistryResult::InvalidParameter;
  RegistryCode code = ensureOpen();
  if (code != RegistryResult::Success) return code;
  Transaction transaction(database_);
  code = transaction.code();
  if (code == RegistryResult::Success) code = requireKey(key);
  if (code == RegistryResult::Success)
    code = database_
               .prepare(
                   "INSERT INTO entries (key, name, folded, type, data) VALUES (?1, ?2, ?3, ?4, ?5)"
                   " ON CONFLICT (key, folded) DO UPDATE SET type = ?4, data = ?5")
               .bind(1, key)
               .bind(2, toUtf8(name))
               .bind(3, folded(name))
               .bind(4, std::int64_t{type})
               .bindBytes(5, data)
               .run();
  return code == RegistryResult::Success ? transaction.commit() : code;
}

RegistryCode RegistryStore::deleteValue(std::int64_t key, StringView name) {
  RegistryCode code = ensureOpen();
  if (code != RegistryResult::Success) return code;
  Transaction transaction(database_);
  RegistryValue value;
  code = transaction.code();
  if (code == RegistryResult::Success) code = query(key, name, value);
  if (code == RegistryResult::Success)
    code = database_.prepare("DELETE FROM entries WHERE key = ?1 AND folded = ?2")
               .bind(1, key)
               .bind(2, folded(name))
               .run();
  return code == RegistryResult::Success ? transaction.commit() : code;
}

RegistryCode RegistryStore::enumKey(std::int64_t key, std::uint32_t index, Place& place, String& name) {
  RegistryCode code = ensureOpen();
  if (code != RegistryResult::Success) return code;
  const std::int64_t version = database_.version();
  const bool next = place.version == version && index == place.index + 1;
  Statement find = database_.prepare(
      next ? "SELECT name, folded FROM keys WHERE parent = ?1 AND folded > ?2 ORDER BY folded LIMIT 1"
           : "SELECT name, folded FROM keys WHERE parent = ?1 ORDER BY folded LIMIT 1 OFFSET ?2");
  find.bind(1, key);
  code = (next ? find.bind(2, place.folded) : find.bind(2, std::int64_t{index})).step();
  if (code == RegistryResult::Success) code = requireKey(key);
  if (code == RegistryResult::Success) return RegistryResult::NoMoreItems;
  if (code != Statement::Row) return code;
  name = fromUtf8(find.text(0));
  place = {version, index, find.text(1), 0};
  return RegistryResult::Success;
}

RegistryCode RegistryStore::enumValue(std::int64_t key, std::uint32_t index, Place& place,
                                      RegistryValue& value) {
  RegistryCode code = ensureOpen();
  if (code != RegistryResult::Success) return code;
  const std::int64_t version = database_.version();
  const bool next = place.version == version && index == place.index + 1;
  Statement find = database_.prepare(
      next ? "SELECT name, type, data, id FROM entries WHERE key = ?1 AND id > ?2 ORDER BY id LIMIT 1"
           : "SELECT name, type, data, id FROM entries WHERE key = ?1 ORDER BY id LIMIT 1 OFFSET ?2");
  code = find.bind(1, key).bind(2, next ? place.row : std::int64_t{index}).step();
  if (code == RegistryResult::Success) code = requireKey(key);
  if (code == RegistryResult::Success) return RegistryResult::NoMoreItems;
  if (code != Statement::Row) return code;
  value = valueIn(find);
  place = {version, index, {}, find.integer(3)};
  return RegistryResult::Success;
}

}  // namespace zelUtilities
