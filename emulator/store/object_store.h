// A device file: one space of object identifiers for everything on the device, and the transaction of a
// request.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "emulator/store/object_kind.h"
#include "emulator/store/settings.h"
#include "emulator/store/sqlite.h"

namespace emulator {

/// An object identifier; 0 names nothing.
using Oid = std::uint32_t;

/// The first identifier that a device gives out. A device's own identifiers lie far above the small numbers
/// that a person writes into a snapshot, so the two never meet by accident, and one that somebody cuts to 16
/// bits shows.
inline constexpr Oid kFirstOid = 0x01000011;

class ObjectStore {
 public:
  /// Makes a device file, lets `fill` put the first contents into it and commits. Refuses a path at which
  /// something exists; when anything fails, nothing is left at the path. Throws StoreError, or what `fill`
  /// throws.
  static void create(const std::string& path, const std::function<void(ObjectStore&)>& fill);

  /// Opens a device file. Throws StoreError for anything else: no file, a directory, another program's file,
  /// a device of a newer version.
  explicit ObjectStore(const std::string& path);

  /// A new object's identifier: one that was never used on this device.
  Oid allocate(ObjectKind kind);
  /// Gives an object the identifier that its maker chose. Throws StoreError when it is 0 or an object holds
  /// it.
  void claim(Oid oid, ObjectKind kind);
  /// Keeps a free identifier from being allocated. It stays free to be claimed.
  void reserve(Oid oid);
  /// What holds the identifier; nothing when it is free.
  std::optional<ObjectKind> kindOf(Oid oid);
  /// The object is gone. Its identifier is never allocated again.
  void release(Oid oid);

  Settings& settings() { return settings_; }
  Connection& connection() { return connection_; }

  /// Ends a unit of work. Writing begins one by itself.
  void commit();
  void rollback();

 private:
  struct Unfinished {};  ///< Opens a file that `create` has just made.
  ObjectStore(const std::string& path, Unfinished);

  Oid countOn();

  Connection connection_;
  Settings settings_;
};

}  // namespace emulator
