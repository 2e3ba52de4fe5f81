#include "emulator/store/object_store.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <limits>
#include <system_error>

#include "emulator/store/schema.h"

namespace emulator {
namespace {

constexpr const char* kNextOidSetting = "next_oid";
constexpr const char* kVersionPragma = "PRAGMA user_version";
constexpr int kNoKind = 0;  ///< The kind of an identifier that is free but must not be allocated.

/// A file that this program has just made, and that goes again unless it is kept.
class NewFile {
 public:
  explicit NewFile(const std::string& path) : path_(path) {
    std::FILE* file = std::fopen(path.c_str(), "wbx");
    if (file == nullptr) throw StoreError(path, errno == EEXIST ? "already exists" : std::strerror(errno));
    static_cast<void>(std::fclose(file));
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile() {
    if (kept_) return;
    for (const char* suffix : {"", "-wal", "-shm", "-journal"}) std::remove((path_ + suffix).c_str());
  }
  void keep() { kept_ = true; }

 private:
  std::string path_;
  bool kept_ = false;
};

/// The full path: SQLite gives some bare names, such as ":memory:", a meaning of its own.
std::string fullPath(const std::string& path) {
  return std::filesystem::absolute(path).string();
}

/// SQLite would explain a path that holds no file in its own words, and take an empty file for an empty
/// database.
std::string pathOfExistingFile(const std::string& path) {
  std::error_code error;
  const auto status = std::filesystem::status(path, error);
  if (status.type() == std::filesystem::file_type::not_found) throw StoreError(path, "no such file");
  if (error) throw StoreError(path, error.message());
  if (status.type() == std::filesystem::file_type::directory) throw StoreError(path, "is a directory");
  if (status.type() != std::filesystem::file_type::regular) throw StoreError(path, "not a device file");
  return fullPath(path);
}

std::int32_t pragma(Connection& connection, const char* sql) {
  Cursor row = connection.query(sql);
  return row.next() ? row.get<std::int32_t>(0) : 0;
}

/// Reads only, so that a file that turns out to be another program's is left as it was.
void requireDeviceFile(Connection& connection) {
  std::int32_t application = 0;
  std::int32_t version = 0;
  try {
    application = pragma(connection, "PRAGMA application_id");
    version = pragma(connection, kVersionPragma);
  } catch (const StoreError&) {
    throw StoreError(connection.name(), "not a device file");
  }
  if (application != kApplicationId) throw StoreError(connection.name(), "not a device file");
  if (version > kSchemaVersion) {
    throw StoreError(connection.name(), "made by a newer version of this program (format " +
                                            std::to_string(version) + ", this one reads " +
                                            std::to_string(kSchemaVersion) + ")");
  }
  if (connection.isReadOnly()) throw StoreError(connection.name(), "cannot be written");
}

/// A device of an earlier version becomes one of this version.
void bringUpToDate(Connection& connection) {
  if (pragma(connection, kVersionPragma) >= kSchemaVersion) return;
  connection.execute("BEGIN IMMEDIATE");
  // Another program may have done so meanwhile.
  completeSchema(connection, pragma(connection, kVersionPragma));
  connection.commit();
}

/// Survives the process, not the machine: what was answered is in the log file, which the system holds.
void configure(Connection& connection) {
  connection.execute("PRAGMA journal_mode = WAL");
  connection.execute("PRAGMA synchronous = NORMAL");
  connection.execute("PRAGMA foreign_keys = ON");
}

}  // namespace

void ObjectStore::create(const std::string& path, const std::function<void(ObjectStore&)>& fill) {
  NewFile file(path);
  {
    ObjectStore store(path, Unfinished{});
    store.connection_.execute("BEGIN IMMEDIATE");
    completeSchema(store.connection_, 0);
    store.settings_.put(kNextOidSetting, kFirstOid);
    fill(store);
    store.commit();
  }
  file.keep();
}

ObjectStore::ObjectStore(const std::string& path)
    : connection_(pathOfExistingFile(path), path), settings_(connection_) {
  requireDeviceFile(connection_);
  configure(connection_);
  bringUpToDate(connection_);
}

ObjectStore::ObjectStore(const std::string& path, Unfinished)
    : connection_(fullPath(path), path), settings_(connection_) {
  // Texts stay as they are given, lone surrogates included: there is no conversion on the way in or out.
  connection_.execute("PRAGMA encoding = 'UTF-16le'");
  configure(connection_);
}

Oid ObjectStore::allocate(ObjectKind kind) {
  Oid oid = countOn();
  while (connection_.query("SELECT 1 FROM object WHERE oid = ?", oid).next()) oid = countOn();
  connection_.run("INSERT INTO object (oid, kind) VALUES (?, ?)", oid, kind);
  return oid;
}

void ObjectStore::claim(Oid oid, ObjectKind kind) {
  if (oid == 0) throw StoreError(connection_.name(), "0 is no object identifier");
  if (kindOf(oid)) {
    throw StoreError(connection_.name(), "object identifier " + std::to_string(oid) + " is in use");
  }
  connection_.run("INSERT OR REPLACE INTO object (oid, kind) VALUES (?, ?)", oid, kind);
}

void ObjectStore::reserve(Oid oid) {
  connection_.run("INSERT OR IGNORE INTO object (oid, kind) VALUES (?, ?)", oid, kNoKind);
}

std::optional<ObjectKind> ObjectStore::kindOf(Oid oid) {
  Cursor row = connection_.query("SELECT kind FROM object WHERE oid = ?", oid);
  if (!row.next() || row.get<int>(0) == kNoKind) return std::nullopt;
  return row.get<ObjectKind>(0);
}

void ObjectStore::release(Oid oid) {
  if (oid < settings_.get<std::int64_t>(kNextOidSetting)) {
    connection_.run("DELETE FROM object WHERE oid = ?", oid);
  } else {
    // A claimed identifier that the count has not reached yet: the row stays so that the count passes over
    // it.
    connection_.run("UPDATE object SET kind = ? WHERE oid = ?", kNoKind, oid);
  }
}

void ObjectStore::commit() {
  connection_.commit();
}

void ObjectStore::rollback() {
  connection_.rollback();
}

Oid ObjectStore::countOn() {
  // One statement, so that two programs on one device never count the same.
  Cursor row = connection_.query(
      "UPDATE setting SET value = value + 1 WHERE name = ? AND value <= ? RETURNING value - 1",
      kNextOidSetting, std::numeric_limits<Oid>::max());
  if (!row.next()) throw StoreError(connection_.name(), "no object identifiers are left");
  return row.get<Oid>(0);
}

}  // namespace emulator
