// Finds, makes and deletes object-model items by data type.
#pragma once

#include "channel/wire.h"
#include "platform/outlook.h"
#include "service/com_ptr.h"

namespace qorv {

/// What obtaining an item came to. Mail and ink notes have no object-model item: for them obtaining succeeds
/// with null.
struct ObtainedItem {
  bool obtained = false;
  ComPtr<IDispatch> item;  ///< with the interface of its data type
};

/// An item of another type counts as not found.
ObtainedItem findItem(IPOutlookApp& application, DataType type, DWORD oid);
ObtainedItem createItem(IPOutlookApp& application, DataType type);

/// Finds and deletes; true when the item is gone. For mail and ink notes, which have no item to delete, true
/// when the object model knows the OID.
bool deleteItem(IPOutlookApp& application, DataType type, DWORD oid);

/// A default folder's items; the items are released before the folder.
struct FolderItems {
  ComPtr<IFolder> folder;
  ComPtr<IPOutlookItemCollection> items;  ///< null when the folder could not be opened
  int count = 0;
};

FolderItems openFolder(IPOutlookApp& application, int folder);
/// The default folder of a data type; none for mail and ink notes.
FolderItems openDefaultFolder(IPOutlookApp& application, DataType type);

}  // namespace qorv
