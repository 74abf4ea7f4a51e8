#include "platform/linux/Database.h"

#include <sqlite3.h>
#include <sys/stat.h>

#include <new>

namespace zelUtilities {

namespace {

constexpr int patience = 5000;  // milliseconds that a file in use by others is waited for

RegistryCode codeOf(int result) {
  switch (result & 0xFF) {
    case SQLITE_OK:
    case SQLITE_DONE:
      return RegistryResult::Success;
    case SQLITE_ROW:
      return Statement::Row;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return RegistryResult::Busy;
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_AUTH:
    case SQLITE_CANTOPEN:
      return RegistryResult::AccessDenied;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_SCHEMA:
      return RegistryResult::Corrupt;
    case SQLITE_FULL:
      return RegistryResult::DiskFull;
    case SQLITE_NOMEM:
      return RegistryResult::OutOfMemory;
    case SQLITE_TOOBIG:
      return RegistryResult::InvalidParameter;
    default:
      return RegistryResult::IOFailed;
  }
}

// The file's name in the form that promises that nobody changes it, so that no journal is looked for.
std::string unchangingName(const std::string& path) {
  static constexpr char digits[] = "0123456789ABCDEF";
  std::string name = "file:";
  for (const char c : path) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte > ' ' && byte < 0x7F && std::string_view("%?#").find(c) == std::string_view::npos) {
      name += c;
    } else {
      name.append({'%', digits[byte >> 4], digits[byte & 15]});
    }
  }
  return name + "?immutable=1";
}

// Not to be written to by its owner. The mode counts, since a superuser may write to anything.
bool isWriteProtected(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && (status.st_mode & S_IWUSR) == 0;
}

}  // namespace

Statement::~Statement() {
  if (!statement_) return;
  sqlite3_reset(statement_);
  sqlite3_clear_bindings(statement_);
}

void Statement::keep(int result) {
  if (failure_ == RegistryResult::Success) failure_ = codeOf(result);
}

Statement& Statement::bind(int at, std::int64_t value) {
  if (statement_) keep(sqlite3_bind_int64(statement_, at, value));
  return *this;
}

Statement& Statement::bind(int at, std::string_view text) {
  if (statement_)
    keep(sqlite3_bind_text64(statement_, at, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
  return *this;
}

Statement& Statement::bindBytes(int at, std::string_view bytes) {
  if (!statement_) return *this;
  // No bytes must not become no value.
  keep(bytes.empty() ? sqlite3_bind_zeroblob(statement_, at, 0)
                     : sqlite3_bind_blob64(statement_, at, bytes.data(), bytes.size(), SQLITE_TRANSIENT));
  return *this;
}

RegistryCode Statement::step() {
  if (failure_ != RegistryResult::Success) return failure_;
  return codeOf(sqlite3_step(statement_));
}

RegistryCode Statement::run() {
  RegistryCode code = step();
  while (code == Row) code = step();
  return code;
}

std::int64_t Statement::integer(int column) const { return sqlite3_column_int64(statement_, column); }

std::string Statement::text(int column) const { return bytes(column); }

std::string Statement::bytes(int column) const {
  const auto* data = static_cast<const char*>(sqlite3_column_blob(statement_, column));
  const int size = sqlite3_column_bytes(statement_, column);
  if (!data && size > 0) throw std::bad_alloc();
  return data ? std::string(data, static_cast<std::size_t>(size)) : std::string();
}

RegistryCode Database::openWith(const std::string& name, int flags) {
  const int result =
      sqlite3_open_v2(name.c_str(), &connection_, flags | SQLITE_OPEN_FULLMUTEX | SQLITE_OPEN_URI, nullptr);
  if (result != SQLITE_OK) {
    close();
    return codeOf(result);
  }
  readOnly_ = sqlite3_db_readonly(connection_, "main") == 1;
  sqlite3_extended_result_codes(connection_, 1);
  sqlite3_busy_timeout(connection_, patience);
  // A damaged file is to be noticed, not trusted.
  sqlite3_db_config(connection_, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(connection_, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  execute("PRAGMA cell_size_check = ON");
  // The first read tells whether it is a database at all, and one that may be read.
  std::int64_t answer = 0;
  const RegistryCode code = ask("PRAGMA schema_version", answer);
  if (code != RegistryResult::Success) close();
  return code;
}

RegistryCode Database::open(const std::string& path) {
  close();
  if (!isWriteProtected(path)) {
    const RegistryCode code = openWith(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    if (code != RegistryResult::AccessDenied) return code;
  }
  const RegistryCode code = openWith(path, SQLITE_OPEN_READONLY);
  if (code != RegistryResult::AccessDenied) return code;
  // Where no journal can be made beside the file, nobody can be writing to it either.
  return openWith(unchangingName(path), SQLITE_OPEN_READONLY);
}

void Database::close() {
  for (const auto& [sql, statement] : statements_) sqlite3_finalize(statement);
  statements_.clear();
  sqlite3_close_v2(connection_);
  connection_ = nullptr;
}

bool Database::hasMoved() const {
  int moved = 0;
  sqlite3_file_control(connection_, "main", SQLITE_FCNTL_HAS_MOVED, &moved);
  return moved != 0;
}

RegistryCode Database::execute(const char* sql) {
  return codeOf(sqlite3_exec(connection_, sql, nullptr, nullptr, nullptr));
}

RegistryCode Database::ask(const char* sql, std::int64_t& answer) {
  Statement statement = prepare(sql);
  const RegistryCode code = statement.step();
  if (code != Statement::Row) return code;
  answer = statement.integer(0);
  return RegistryResult::Success;
}

Statement Database::prepare(const char* sql) {
  sqlite3_stmt*& statement = statements_[sql];
  int result = SQLITE_OK;
  if (!statement)
    result = sqlite3_prepare_v3(connection_, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
  return Statement(statement, codeOf(result));
}

std::int64_t Database::version() {
  std::int64_t others = 0;
  ask("PRAGMA data_version", others);
  return (others << 32) + sqlite3_total_changes(connection_);
}

RegistryCode Transaction::commit() {
  if (code_ != RegistryResult::Success) return code_;
  const RegistryCode code = database_.execute("COMMIT");
  if (code == RegistryResult::Success) code_ = Statement::Row;  // nothing left to take back
  return code;
}

}  // namespace zelUtilities
