// The device's messages as one request sees them: session, default store, folders and index.
#pragma once

#include "mail/contents_table.h"
#include "mail/message_index.h"
#include "service/com_ptr.h"

namespace qorv {

/// The numbers of the folders' identifiers; 0 for a folder that the store doesn't name.
struct FolderIds {
  DWORD drafts = 0;
  DWORD sentItems = 0;
  DWORD outbox = 0;
  DWORD inbox = 0;
};

class Mailbox {
 public:
  /// Logs on, opens the default store and scans five folders. Whatever fails is missing afterwards:
  /// interfaces are null, and the index is short of messages.
  Mailbox();

  [[nodiscard]] bool isOpen() const { return static_cast<bool>(store_); }
  [[nodiscard]] IMsgStore* store() const { return store_.get(); }
  /// The Inbox, and where every message is made or found that is neither a draft nor sent.
  [[nodiscard]] IMAPIFolder* mainFolder() const { return mainFolder_.get(); }
  [[nodiscard]] IMAPIFolder* drafts() const { return drafts_.get(); }
  [[nodiscard]] IMAPIFolder* sentItems() const { return sentItems_.get(); }
  [[nodiscard]] const FolderIds& folderIds() const { return folderIds_; }

  /// Drafts, Sent Items, Outbox and Inbox.
  [[nodiscard]] MessageIndex& messages() { return messages_; }
  [[nodiscard]] MessageIndex& deletedItems() { return deletedItems_; }

  /// The messages of Inbox, Drafts and Sent Items: desktops have never counted those of the Outbox, which are
  /// listed.
  ULONG countMessages();

 private:
  struct Folder;
  static const Folder kFolders[];

  void scan();
  void open(const Folder& folder);
  /// The table of the folder, in place of the one opened before.
  IMAPITable* openTable(IMAPIFolder& folder, ULONG flags);

  FolderIds folderIds_;
  MessageIndex messages_;
  MessageIndex deletedItems_;
  // Released from the last to the first.
  ComPtr<IMAPISession> session_;
  ComPtr<IMsgStore> store_;
  ComPtr<IMAPIFolder> sentItems_;
  ComPtr<IMAPIFolder> drafts_;
  ComPtr<IMAPIFolder> mainFolder_;
  ComPtr<IMAPITable> contents_;
};

}  // namespace qorv
