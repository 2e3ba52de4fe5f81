// Opening a folder or message by its entry identifier, as store, session and folders do alike.
#pragma once

#include "emulator/messaging/mail_context.h"
#include "platform/messaging.h"

namespace emulator {

/// Any folder or message of the store. `type`, which may be null, receives MAPI_FOLDER or MAPI_MESSAGE.
/// MAPI_E_INVALID_ENTRYID for what is no identifier of these, MAPI_E_NOT_FOUND for a message that is gone.
HRESULT openEntry(MailContext& context, ULONG size, const BYTE* entryId, LPCIID iid, ULONG flags, ULONG* type,
                  IUnknown** object);

}  // namespace emulator
