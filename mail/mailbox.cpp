#include "mail/mailbox.h"

#include "mail/properties.h"

namespace qorv {

struct Mailbox::Folder {
  ULONG tag;  ///< the store's property that holds the folder's identifier
  ComPtr<IMAPIFolder> Mailbox::*slot;
  DWORD FolderIds::*id;
  MessageIndex Mailbox::*index;
  ULONG tableFlags;
  LPCWSTR busyText;
};

// In the order of the scan. Three folders go through one slot, which ends as the Inbox.
const Mailbox::Folder Mailbox::kFolders[] = {
    {PR_IPM_WASTEBASKET_ENTRYID, &Mailbox::mainFolder_, nullptr, &Mailbox::deletedItems_, 0,
     u"Deleted Items table is busy -- cannot retrieve records."},
    {PR_CE_IPM_DRAFTS_ENTRYID, &Mailbox::drafts_, &FolderIds::drafts, &Mailbox::messages_, 0,
     u"Drafts table is busy -- cannot retrieve records."},
    {PR_IPM_SENTMAIL_ENTRYID, &Mailbox::sentItems_, &FolderIds::sentItems, &Mailbox::messages_, 0,
     u"Sent Items table is busy -- cannot retrieve records."},
    {PR_IPM_OUTBOX_ENTRYID, &Mailbox::mainFolder_, &FolderIds::outbox, &Mailbox::messages_, 0,
     u"Outbox table is busy -- cannot retrieve records."},
    {PR_CE_IPM_INBOX_ENTRYID, &Mailbox::mainFolder_, &FolderIds::inbox, &Mailbox::messages_, 1,
     u"Inbox table is busy -- cannot retrieve records."},
};

Mailbox::Mailbox() {
  if (FAILED(MAPILogonEx(0, nullptr, nullptr, 0, session_.put())) || !session_) return;
  if (FAILED(session_->OpenMsgStore(0, 0, nullptr, nullptr, 0, store_.put())) || !store_) return;
  scan();
}

void Mailbox::open(const Folder& folder) {
  ComPtr<IMAPIFolder>& slot = this->*folder.slot;
  // The folder that was here is not released: the library has never been called so in the middle of a scan. A
  // slot whose folder can't be opened is empty, so that nothing is written into another folder.
  static_cast<void>(slot.detach());
  const PropertyValues values(*store_, TagArray<1>{.tags = {folder.tag}});
  const SBinary* entryId = values.findBinary(folder.tag);
  if (!entryId) return;
  if (folder.id) folderIds_.*folder.id = objectId(*entryId).value_or(0);
  slot = openEntry<IMAPIFolder>(*store_, *entryId, MAPI_MODIFY).object;
}

IMAPITable* Mailbox::openTable(IMAPIFolder& folder, ULONG flags) {
  contents_.reset();
  contents_ = openContents(folder, flags);
  return contents_.get();
}

void Mailbox::scan() {
  EntryCollector messages;
  EntryCollector deletedItems;
  for (const Folder& folder : kFolders) {
    open(folder);
    IMAPIFolder* opened = (this->*folder.slot).get();
    IMAPITable* contents = opened ? openTable(*opened, folder.tableFlags) : nullptr;
    if (!contents) continue;
    collectRows(*contents, folder.busyText, folder.index == &Mailbox::messages_ ? messages : deletedItems);
  }
  messages.moveTo(messages_);
  deletedItems.moveTo(deletedItems_);
}

ULONG Mailbox::countMessages() {
  ULONG count = 0;
  for (IMAPIFolder* folder : {mainFolder(), drafts(), sentItems()}) {
    IMAPITable* contents = folder ? openTable(*folder, 1) : nullptr;
    if (contents) count += rowCount(*contents);
  }
  return count;
}

}  // namespace qorv
