// Database: a SQLite file and its prepared statements, with failures as RegistryCodes.
//
//   Database database;
//   if (RegistryCode code = database.open("/home/u/store.db")) return code;
//   Statement find = database.prepare("SELECT id FROM keys WHERE name = ?1");
//   find.bind(1, "Software");
//   if (find.step() == Statement::Row) id = find.integer(0);
//
// Nothing here raises but for want of memory. One thread at a time.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "platform/Registry.h"

struct sqlite3;
struct sqlite3_stmt;

namespace zelUtilities {

// A use of a prepared statement, which goes back to its database reset. A failure before (in preparing or
// binding) is the result of the first step.
class Statement {
 public:
  static constexpr RegistryCode Row = -1;  // step: there is a row; otherwise 0 at the end, or a failure

  Statement(sqlite3_stmt* statement, RegistryCode failure) : statement_(statement), failure_(failure) {}
  ~Statement();
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  Statement& bind(int at, std::int64_t value);
  Statement& bind(int at, std::string_view text);
  Statement& bindBytes(int at, std::string_view bytes);

  RegistryCode step();
  // Steps to the end; a row on the way is passed over.
  RegistryCode run();

  std::int64_t integer(int column) const;
  std::string text(int column) const;
  std::string bytes(int column) const;

 private:
  void keep(int result);

  sqlite3_stmt* statement_;
  RegistryCode failure_;
};

class Database {
 public:
  Database() = default;
  ~Database() { close(); }
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  // Creates the file where it is missing. One that is not to be written to is opened for reading.
  RegistryCode open(const std::string& path);
  void close();
  bool isOpen() const { return connection_ != nullptr; }
  bool isReadOnly() const { return readOnly_; }
  // Whether the file that was opened is no longer the one under that name.
  bool hasMoved() const;

  // One or more statements without results.
  RegistryCode execute(const char* sql);
  // The first column of the first row as a number.
  RegistryCode ask(const char* sql, std::int64_t& answer);
  // The text must be one that lives on, as a literal does.
  Statement prepare(const char* sql);

  // Changes with every change that anybody makes to the file.
  std::int64_t version();

 private:
  RegistryCode openWith(const std::string& name, int flags);

  sqlite3* connection_ = nullptr;
  bool readOnly_ = false;
  std::map<const char*, sqlite3_stmt*> statements_;
};

// All that is done while it lives happens at once or not at all.
class Transaction {
 public:
  explicit Transaction(Database& database)
      : database_(database), code_(database.execute("BEGIN IMMEDIATE")) {}
  ~Transaction() {
    if (code_ == RegistryResult::Success) database_.execute("ROLLBACK");
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  // Why it could not begin; 0 while it is under way.
  RegistryCode code() const { return code_; }
  RegistryCode commit();

 private:
  Database& database_;
  RegistryCode code_;
};

}  // namespace zelUtilities
