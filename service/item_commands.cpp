// The commands on one item: add, change, delete, read; and the two on a whole folder: count and delete all.

#include "service/api_base.h"
#include "service/item_access.h"

namespace qorv {

/// An added item is made; the number is the requester's own. A changed one is found by it.
ObtainedItem CQorvApiBase::obtain(ItemOperation operation, DWORD number) const {
  return operation == ItemOperation::Add ? createItem(application(), dataType())
                                         : findItem(application(), dataType(), number);
}

bool CQorvApiBase::writeSingleItem(ItemOperation operation) {
  setResponseLength(0);
  ItemReplyHeader header;
  WriteBytes(header.bytes());
  DWORD position = 0;
  skipTypeByte(position);
  const DWORD number = ReadDword(requestCursor_, position);
  const bool isNew = operation == ItemOperation::Add;
  const ObtainedItem found = obtain(operation, number);
  if (found.obtained) {
    header.oid = isNew ? 0 : number;
    header.reference = number;
    DWORD consumed = 0;
    header.result = WriteItemRecord(found.item.get(), requestCursor_ + position, consumed, header) ? 1 : 0;
  } else {
    header.status = kStatusRefused;
  }
  responseBuffer().write(0, header.bytes());
  // The length counts the header twice, so ten zero bytes follow it: the desktop expects 20 and reads the
  // first 10.
  setResponseLength(responseLength() + ItemReplyHeader::kSize);
  return header.result != 0;
}

bool CQorvApiBase::AddItem() {
  return writeSingleItem(ItemOperation::Add);
}

bool CQorvApiBase::ChangeItem() {
  return writeSingleItem(ItemOperation::Change);
}

bool CQorvApiBase::DeleteItem() {
  DWORD position = 0;
  skipTypeByte(position);
  const DWORD oid = ReadDword(requestCursor_, position);
  const bool deleted = !requestCut() && deleteItem(application(), dataType(), oid);
  if (deleted) {
    writeStatus(1, kStatusNone);
  } else {
    writeStatus(0, kStatusRefused);
  }
  return deleted;
}

bool CQorvApiBase::DeleteAllItems() {
  DWORD position = 0;
  skipTypeByte(position);
  const FolderItems folder = openDefaultFolder(application(), dataType());
  if (!folder.items) {
    writeStatus(0, kStatusRefused);
    return false;
  }
  // From the end, so that the remaining indices stay valid; an item that can't be removed is passed over.
  for (int i = folder.count; i >= 1; --i) folder.items->Remove(i);
  writeStatus(1, kStatusNone);
  return true;
}

bool CQorvApiBase::CountItems() {
  DWORD position = 0;
  skipTypeByte(position);
  const FolderItems folder = openDefaultFolder(application(), dataType());
  if (folder.items) {
    writeStatus(1, kStatusNone);
  } else {
    writeStatus(0, kStatusRefused);
  }
  WriteDword(static_cast<DWORD>(folder.count));
  return folder.items.get() != nullptr;
}

bool CQorvApiBase::ReadItem() {
  DWORD position = 0;
  skipTypeByte(position);
  const DWORD oid = ReadDword(requestCursor_, position);
  const ObtainedItem found = findItem(application(), dataType(), oid);
  if (!found.obtained) {
    writeStatus(0, kStatusRefused);
    return false;
  }
  return ReadItemRecord(found.item.get(), oid);
}

}  // namespace qorv
