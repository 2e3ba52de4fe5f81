#include "emulator/messaging/mail_session_object.h"

#include "emulator/messaging/entry_id.h"
#include "emulator/messaging/mail_store_object.h"
#include "emulator/messaging/object_interface.h"
#include "emulator/messaging/open_entry.h"
#include "emulator/messaging/table_object.h"

namespace emulator {

MailSessionObject::MailSessionObject(MailContext& context)
    : UnsupportedSessionMembers(context, ModelClass::MailSession) {}

HRESULT MailSessionObject::GetMsgStoresTable(ULONG, IMAPITable** table) {
  if (table == nullptr) return E_INVALIDARG;
  *table = nullptr;
  return atBoundary([&] { return openTable(context(), storeRows(), table); });
}

HRESULT MailSessionObject::OpenMsgStore(ULONG_PTR, ULONG size, BYTE* entryId, LPCIID iid, ULONG,
                                        IMsgStore** store) {
  if (store == nullptr) return E_INVALIDARG;
  *store = nullptr;
  const bool isDefault = size == 0 || entryId == nullptr;
  if (!isDefault && parseEntryId(size, entryId) != storeEntryId()) return MAPI_E_INVALID_ENTRYID;
  if (!isInterfaceOf<IMsgStore>(iid)) return E_NOINTERFACE;
  return atBoundary([&] {
    *store = new MailStoreObject(context());
    return S_OK;
  });
}

HRESULT MailSessionObject::OpenEntry(ULONG size, BYTE* entryId, LPCIID iid, ULONG flags, ULONG* type,
                                     IUnknown** object) {
  return openEntry(context(), size, entryId, iid, flags, type, object);
}

HRESULT MailSessionObject::CompareEntryIDs(ULONG size1, BYTE* entryId1, ULONG size2, BYTE* entryId2, ULONG,
                                           ULONG* equal) {
  if (equal == nullptr) return E_INVALIDARG;
  const auto first = parseEntryId(size1, entryId1);
  const auto second = parseEntryId(size2, entryId2);
  if (!first || !second) return MAPI_E_INVALID_ENTRYID;
  *equal = first == second ? TRUE : FALSE;
  return S_OK;
}

}  // namespace emulator
