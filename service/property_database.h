// Opens and makes property databases, and tells what an object identifier names.
#pragma once

#include <string>

#include "platform/property_database.h"
#include "platform/windows.h"
#include "service/unique_handle.h"

namespace qorv {

/// Opens by name when `oid` is 0, and `oid` receives the identifier; else by `oid`. The database stands in
/// the stored order whose property is `sortProperty`; 0 leaves the order to the platform. `request` may be
/// null. Empty on failure, with the last error set.
UniqueHandle openDatabase(CEGUID& volume, CEOID& oid, const std::u16string& name, CEPROPID sortProperty,
                          DWORD flags, CENOTIFYREQUEST* request);

/// As openDatabase; changes of the database are notified to `window` unless it is null.
UniqueHandle openDatabaseWithNotification(CEGUID& volume, CEOID& oid, const std::u16string& name,
                                          CEPROPID sortProperty, DWORD flags, HWND window);

/// A database of the object store by its name, without notifications.
UniqueHandle openStoreDatabase(const std::u16string& name, CEPROPID sortProperty);

/// Makes a database from a description in the older form, in which a sort order has one key. The new
/// database's identifier, or 0 with the last error set.
CEOID createDatabase(CEGUID& volume, const CEDBASEINFO& description);

/// What an object identifier names. Also copies the object's type into the first field, the version, because
/// that is where the older form has it. False, and the type 0, when the identifier names nothing.
bool objectInformation(CEGUID& volume, CEOID oid, CEOIDINFOEX& information);

}  // namespace qorv
