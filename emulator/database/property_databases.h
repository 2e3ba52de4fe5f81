// The platform's calls for property databases: open databases with their seek pointers, and last errors.
#pragma once

#include "emulator/database/database_description.h"
#include "emulator/database/database_store.h"
#include "emulator/database/property_block.h"
#include "emulator/pim/platform_memory.h"
#include "emulator/system/handle_table.h"
#include "emulator/system/last_error.h"

namespace emulator {

class OpenDatabase;

/// Where a read puts the properties, as the platform's call is given it.
struct ReadBuffer {
  BYTE** block;
  DWORD* size;
  HANDLE heap;
  bool mayReallocate;
};

/// The calls behave as `platform/property_database.h` says. One that fails leaves its reason as the last error;
/// one that succeeds leaves the last error alone. The object store is the only volume; a null volume is
/// refused.
class PropertyDatabases {
 public:
  PropertyDatabases(DatabaseStore& store, PlatformMemory& memory, HandleTable& handles, LastError& lastError)
      : store_(store), memory_(memory), handles_(handles), lastError_(lastError) {}

  Oid create(std::u16string_view name, DWORD type, WORD count, const SORTORDERSPEC* orders);
  Oid create(const CEGUID* volume, const CEDBASEINFOEX* description);
  HANDLE open(const CEGUID* volume, CEOID* oid, LPCWSTR name, const SORTORDERSPECEX* order, DWORD flags,
              const CENOTIFYREQUEST* request);
  Oid seek(HANDLE database, DWORD type, DWORD_PTR value, DWORD* index);
  Oid read(HANDLE database, WORD* count, const CEPROPID* ids, const ReadBuffer& buffer);
  Oid write(HANDLE database, Oid record, std::span<const CEPROPVAL> values);
  bool removeRecord(HANDLE database, Oid record);
  bool remove(const CEGUID* volume, Oid database);

 private:
  Oid fail(DWORD error);
  HANDLE failToOpen(DWORD error);
  Oid make(PropertyDatabase database);
  std::optional<Record> recordOf(const OpenDatabase& open, Oid record);
  DWORD fill(const ReadBuffer& buffer, std::span<const BlockValue> values);

  DatabaseStore& store_;
  PlatformMemory& memory_;
  HandleTable& handles_;
  LastError& lastError_;
};

}  // namespace emulator
