// Finds stores and folders by name, for host applications; requests work on the default store.
#pragma once

#include "platform/messaging.h"

namespace qorv {

/// Stores and folders are looked for among the first rows of their table only, which come with one query.
inline constexpr LONG kMostRows = 255;

// Each gives out one reference, or none when it fails.

/// The first store whose name is "ActiveSync" without regard to case, or the default store when there is
/// none.
HRESULT FindActiveSyncStore(IMAPISession& session, IMsgStore** store);

/// The folder whose identifier a property of the store holds. E_FAIL when the property is not there.
HRESULT OpenStoreFolder(IMsgStore& store, IMAPIFolder** folder, ULONG tag);

/// Follows the names of a path ("Sub\Sub") from `parent`, or from the store's folder of the tag when that is
/// null, without regard to case. Empty names are passed over. MAPI_E_NOT_FOUND when a folder has no such
/// child.
HRESULT OpenFolderByPath(IMsgStore& store, ULONG tag, LPCWSTR path, IMAPIFolder* parent,
                         IMAPIFolder** folder);

}  // namespace qorv
