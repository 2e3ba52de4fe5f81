// A folder of the message store.
#pragma once

#include "emulator/messaging/messaging_object.h"
#include "emulator/messaging/unsupported_members.h"

namespace emulator {

/// The folders are those that the store has; none are made.
class MailFolderObject final : public UnsupportedFolderMembers<PropertyObject<IMAPIFolder>> {
 public:
  MailFolderObject(MailContext& context, MailFolder folder, bool writable);

  HRESULT GetContentsTable(ULONG flags, IMAPITable** table) override;
  HRESULT GetHierarchyTable(ULONG flags, IMAPITable** table) override;
  HRESULT OpenEntry(ULONG size, BYTE* entryId, LPCIID iid, ULONG flags, ULONG* type,
                    IUnknown** object) override;
  /// The message is in the folder at once.
  HRESULT CreateMessage(LPCIID iid, ULONG flags, IMessage** message) override;
  /// MAPI_W_PARTIAL_COMPLETION when an identifier names no message.
  HRESULT DeleteMessages(ENTRYLIST* messages, ULONG_PTR ui, IMAPIProgress* progress, ULONG flags) override;

 private:
  std::optional<Properties> properties() override;
  bool holdsMessages() const { return info_.folder != MailFolder::Subtree; }

  const MailFolderInfo& info_;
  bool writable_;
};

}  // namespace emulator
