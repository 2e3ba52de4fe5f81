// The folders of the device's message store.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "platform/messaging_types.h"

namespace emulator {

/// A folder's number stands in its entry identifier. The numbers lie below those that the device gives to
/// objects.
enum class MailFolder : std::uint32_t {
  Subtree = 0x01000001,  ///< holds the others, and no messages
  Inbox = 0x01000002,
  Outbox = 0x01000003,
  SentItems = 0x01000004,
  Drafts = 0x01000005,
  DeletedItems = 0x01000006,
};

struct MailFolderInfo {
  MailFolder folder;
  std::u16string_view name;
  PropertyTag storeTag;  ///< the store's property that holds the folder's entry identifier
};

inline constexpr std::array kMailFolders{
    MailFolderInfo{MailFolder::Subtree, u"IPM_SUBTREE", PR_IPM_SUBTREE_ENTRYID},
    MailFolderInfo{MailFolder::Inbox, u"Inbox", PR_CE_IPM_INBOX_ENTRYID},
    MailFolderInfo{MailFolder::Outbox, u"Outbox", PR_IPM_OUTBOX_ENTRYID},
    MailFolderInfo{MailFolder::SentItems, u"Sent Items", PR_IPM_SENTMAIL_ENTRYID},
    MailFolderInfo{MailFolder::Drafts, u"Drafts", PR_CE_IPM_DRAFTS_ENTRYID},
    MailFolderInfo{MailFolder::DeletedItems, u"Deleted Items", PR_IPM_WASTEBASKET_ENTRYID},
};

/// Null for a number that is no folder's.
constexpr const MailFolderInfo* findMailFolder(MailFolder folder) {
  const auto found = std::ranges::find(kMailFolders, folder, &MailFolderInfo::folder);
  return found == kMailFolders.end() ? nullptr : &*found;
}

}  // namespace emulator
