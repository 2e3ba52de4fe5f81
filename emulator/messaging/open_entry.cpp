#include "emulator/messaging/open_entry.h"

#include "emulator/messaging/entry_id.h"
#include "emulator/messaging/mail_folder_object.h"
#include "emulator/messaging/message_object.h"
#include "emulator/messaging/object_interface.h"

namespace emulator {
namespace {

HRESULT openMessage(MailContext& context, const EntryId& entryId, LPCIID iid, bool writable,
                    IUnknown** object) {
  if (!isInterfaceOf<IMessage>(iid)) return E_NOINTERFACE;
  const auto message = context.mailbox.find(entryId.folder, entryId.number);
  if (!message) return MAPI_E_NOT_FOUND;
  *object = new MessageObject(context, message->row, writable);
  return S_OK;
}

HRESULT openFolder(MailContext& context, MailFolder folder, LPCIID iid, bool writable, IUnknown** object) {
  if (!isInterfaceOf<IMAPIFolder>(iid)) return E_NOINTERFACE;
  *object = new MailFolderObject(context, folder, writable);
  return S_OK;
}

}  // namespace

HRESULT openEntry(MailContext& context, ULONG size, const BYTE* entryId, LPCIID iid, ULONG flags, ULONG* type,
                  IUnknown** object) {
  if (object == nullptr) return E_INVALIDARG;
  *object = nullptr;
  return atBoundary([&] {
    const auto parsed = parseEntryId(size, entryId);
    if (!parsed || parsed->type == MAPI_STORE) return MAPI_E_INVALID_ENTRYID;
    const bool writable = asksToWrite(flags);
    const HRESULT result = parsed->type == MAPI_MESSAGE
                               ? openMessage(context, *parsed, iid, writable, object)
                               : openFolder(context, parsed->folder, iid, writable, object);
    if (SUCCEEDED(result) && type != nullptr) *type = parsed->type;
    return result;
  });
}

}  // namespace emulator
