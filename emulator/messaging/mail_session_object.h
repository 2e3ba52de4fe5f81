// A session of the messaging library: what a log-on hands out.
#pragma once

#include "emulator/messaging/messaging_object.h"
#include "emulator/messaging/unsupported_members.h"

namespace emulator {

class MailSessionObject final : public UnsupportedSessionMembers<MessagingObject<IMAPISession>> {
 public:
  explicit MailSessionObject(MailContext& context);

  HRESULT GetMsgStoresTable(ULONG flags, IMAPITable** table) override;
  HRESULT OpenMsgStore(ULONG_PTR ui, ULONG size, BYTE* entryId, LPCIID iid, ULONG flags,
                       IMsgStore** store) override;
  HRESULT OpenEntry(ULONG size, BYTE* entryId, LPCIID iid, ULONG flags, ULONG* type,
                    IUnknown** object) override;
  HRESULT CompareEntryIDs(ULONG size1, BYTE* entryId1, ULONG size2, BYTE* entryId2, ULONG flags,
                          ULONG* equal) override;
  /// The objects that the session handed out stay good.
  HRESULT Logoff(ULONG_PTR, ULONG, ULONG) override { return S_OK; }
};

}  // namespace emulator
