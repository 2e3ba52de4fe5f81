// The commands on several items: write, read and delete.

#include "service/api_base.h"
#include "service/item_access.h"

namespace qorv {

namespace {
constexpr BYTE kAddOperation = static_cast<BYTE>(Command::AddItem);
}

struct CQorvApiBase::BatchEntry {
  ItemOperation operation;
  BYTE type;
  DWORD number;  ///< the requester's reference of an added item, the OID of a changed one
};

CQorvApiBase::BatchEntry CQorvApiBase::readBatchEntry() {
  DWORD position = 0;
  const BYTE operation = ReadByte(requestCursor_, position);
  const BYTE type = ReadByte(requestCursor_, position);
  const DWORD number = ReadDword(requestCursor_, position);
  requestCursor_ += position;
  return {operation == kAddOperation ? ItemOperation::Add : ItemOperation::Change, type, number};
}

bool CQorvApiBase::writeBatchEntry(const BatchEntry& entry, ItemReplyHeader& header) {
  header.result = 0;
  const bool isNew = entry.operation == ItemOperation::Add;
  header.oid = isNew ? 0 : entry.number;
  header.reference = entry.number;
  const bool isOurs = entry.type == static_cast<BYTE>(dataType());
  const ObtainedItem found = isOurs ? obtain(entry.operation, entry.number) : ObtainedItem();
  if (!found.obtained) {
    writeStatus(0, kStatusRefused);
    return false;
  }
  DWORD consumed = 0;
  header.result = WriteItemRecord(found.item.get(), requestCursor_, consumed, header) ? 1 : 0;
  requestCursor_ += consumed;
  if (requestCut()) return false;
  WriteBytes(header.bytes());
  return true;
}

bool CQorvApiBase::WriteItems() {
  setResponseLength(0);
  DWORD position = 0;
  skipTypeByte(position);
  const DWORD count = ReadDword(requestCursor_, position);
  requestCursor_ += position;
  // One header for the whole batch: a status that a record writer sets stays for the entries that follow.
  ItemReplyHeader header;
  for (DWORD i = 0; i < count && room() >= ItemReplyHeader::kSize; ++i) {
    const BatchEntry entry = readBatchEntry();
    if (requestCut() || !writeBatchEntry(entry, header)) return false;
  }
  return true;
}

bool CQorvApiBase::readListedItem(DWORD oid) {
  const ObtainedItem found = findItem(application(), dataType(), oid);
  if (!found.obtained) return false;
  ReadItemRecord(found.item.get(), oid);
  return true;
}

bool CQorvApiBase::ReadItems() {
  setResponseLength(0);
  resetOverflow();
  DWORD position = 0;
  skipTypeByte(position);
  const DWORD count = ReadDword(requestCursor_, position);
  listHeader_.result = 1;
  listHeader_.count = 0;
  writeListHeader();
  const ListReplyHeader started = listHeader_;
  // Records are built in the header's own block, so the count of entries is kept here meanwhile.
  DWORD read = 0;
  for (DWORD i = 0; i < count; ++i) {
    const DWORD oid = ReadDword(requestCursor_, position);
    if (requestCut()) break;
    if (!readListedItem(oid)) {
      // The desktop tells this case by the count of 0 and the seven bytes that nobody writes.
      listHeader_ = started;
      if (!skip(ListReplyHeader::kSize)) listHeader_.result = 0;
      copyListHeader(0);
      return false;
    }
    if (overflowed()) break;
    ++read;
  }
  listHeader_.result = bufferFull() ? 0 : 1;
  listHeader_.status = kStatusNone;
  listHeader_.count = read;
  copyListHeader(0);
  return true;
}

bool CQorvApiBase::DeleteItems() {
  setResponseLength(0);
  DWORD position = 0;
  skipTypeByte(position);
  const DWORD count = ReadDword(requestCursor_, position);
  for (DWORD i = 0; i < count && room() >= sizeof(DWORD); ++i) {
    const DWORD oid = ReadDword(requestCursor_, position);
    if (requestCut()) break;
    if (DeleteItemByOid(dataType(), oid)) WriteDword(oid);
  }
  return true;
}

bool CQorvApiBase::DeleteItemByOid(DataType type, DWORD oid) {
  return deleteItem(application(), type, oid);
}

}  // namespace qorv
