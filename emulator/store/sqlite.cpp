#include "emulator/store/sqlite.h"

#include <cstring>
#include <utility>

namespace emulator {
namespace {

/// How long a statement waits for another program that is writing to the same file.
constexpr int kBusyMilliseconds = 10000;

}  // namespace

Cursor::~Cursor() {
  if (!statement_) return;
  sqlite3_reset(statement_.get());
  sqlite3_clear_bindings(statement_.get());
  idle_->push_back(std::move(statement_));
}

bool Cursor::next() {
  const int result = sqlite3_step(statement_.get());
  if (result == SQLITE_ROW) return true;
  if (result != SQLITE_DONE) check(result);
  return false;
}

void Cursor::bindInteger(int index, std::int64_t value) {
  check(sqlite3_bind_int64(statement_.get(), index, value));
}

void Cursor::bindReal(int index, double value) {
  check(sqlite3_bind_double(statement_.get(), index, value));
}

void Cursor::bindText(int index, std::u16string_view value) {
  // A null pointer would bind null; an empty text is a text.
  const void* text = value.empty() ? u"" : value.data();
  check(sqlite3_bind_text64(statement_.get(), index, static_cast<const char*>(text),
                            value.size() * sizeof(char16_t), SQLITE_TRANSIENT, SQLITE_UTF16LE));
}

void Cursor::bindText(int index, std::string_view value) {
  const char* text = value.empty() ? "" : value.data();
  check(sqlite3_bind_text64(statement_.get(), index, text, value.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
}

void Cursor::bindBlob(int index, ByteView value) {
  const void* bytes = value.empty() ? static_cast<const void*>("") : value.data();
  check(sqlite3_bind_blob64(statement_.get(), index, bytes, value.size(), SQLITE_TRANSIENT));
}

void Cursor::check(int result) const {
  if (result != SQLITE_OK) throw StoreError(*file_, sqlite3_errmsg(sqlite3_db_handle(statement_.get())));
}

bool Cursor::isNull(int column) const {
  return sqlite3_column_type(statement_.get(), column) == SQLITE_NULL;
}

std::int64_t Cursor::integer(int column) const {
  return sqlite3_column_int64(statement_.get(), column);
}

double Cursor::real(int column) const {
  return sqlite3_column_double(statement_.get(), column);
}

std::u16string Cursor::text(int column) const {
  const void* text = sqlite3_column_text16(statement_.get(), column);
  const auto bytes = static_cast<std::size_t>(sqlite3_column_bytes16(statement_.get(), column));
  // SQLite promises no alignment.
  std::u16string result(bytes / sizeof(char16_t), u'\0');
  if (!result.empty()) std::memcpy(result.data(), text, bytes);
  return result;
}

std::string Cursor::utf8(int column) const {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_.get(), column));
  const auto bytes = static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column));
  return text == nullptr ? std::string() : std::string(text, bytes);
}

ByteView Cursor::blob(int column) const {
  const void* bytes = sqlite3_column_blob(statement_.get(), column);
  return {static_cast<const std::uint8_t*>(bytes),
          static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column))};
}

Connection::Connection(const std::string& path, std::string name) : name_(std::move(name)) {
  sqlite3* database = nullptr;
  const int result =
      sqlite3_open_v2(path.c_str(), &database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_EXRESCODE, nullptr);
  database_.reset(database);
  check(result);
  check(sqlite3_busy_timeout(database, kBusyMilliseconds));
}

void Connection::execute(const char* sql) {
  check(sqlite3_exec(database_.get(), sql, nullptr, nullptr, nullptr));
}

void Connection::commit() {
  if (inTransaction()) execute("COMMIT");
}

void Connection::rollback() {
  if (inTransaction()) execute("ROLLBACK");
}

bool Connection::inTransaction() const {
  return sqlite3_get_autocommit(database_.get()) == 0;
}

std::int64_t Connection::rowsChanged() const {
  return sqlite3_total_changes64(database_.get());
}

bool Connection::isReadOnly() const {
  return sqlite3_db_readonly(database_.get(), "main") == 1;
}

Cursor::Statement Connection::prepare(std::string_view sql) {
  sqlite3_stmt* statement = nullptr;
  check(sqlite3_prepare_v3(database_.get(), sql.data(), static_cast<int>(sql.size()),
                           SQLITE_PREPARE_PERSISTENT, &statement, nullptr));
  return Cursor::Statement(statement);
}

Cursor Connection::use(std::string_view sql) {
  auto found = idle_.find(sql);
  if (found == idle_.end()) found = idle_.emplace(sql, Idle()).first;
  Idle& idle = found->second;
  Cursor::Statement statement;
  if (idle.empty()) {
    statement = prepare(sql);
  } else {
    statement = std::move(idle.back());
    idle.pop_back();
  }
  if (sqlite3_stmt_readonly(statement.get()) == 0 && !inTransaction()) execute("BEGIN IMMEDIATE");
  return {std::move(statement), idle, name_};
}

void Connection::check(int result) const {
  if (result == SQLITE_OK) return;
  throw StoreError(name_, database_ ? sqlite3_errmsg(database_.get()) : sqlite3_errstr(result));
}

}  // namespace emulator
