#include "emulator/messaging/mail_folder_object.h"

#include "emulator/messaging/contents_rows.h"
#include "emulator/messaging/entry_id.h"
#include "emulator/messaging/message_object.h"
#include "emulator/messaging/object_interface.h"
#include "emulator/messaging/open_entry.h"
#include "emulator/messaging/table_object.h"

namespace emulator {
namespace {

/// A list that claims more is none.
constexpr ULONG kMostEntries = 0x100000;

using FolderProperty = ReadableProperty<MailFolderInfo>;

constexpr std::array kFolderProperties{
    FolderProperty{PR_ENTRYID,
                   [](const MailFolderInfo& info) -> MailValue { return toBytes(entryIdOf(info.folder)); }},
    FolderProperty{PR_DISPLAY_NAME_W,
                   [](const MailFolderInfo& info) -> MailValue { return std::u16string(info.name); }},
    FolderProperty{
        PR_PARENT_ENTRYID,
        [](const MailFolderInfo&) -> MailValue { return toBytes(entryIdOf(MailFolder::Subtree)); }},
};

/// The folders that lie in a folder.
std::vector<MailFolderInfo> childrenOf(MailFolder folder) {
  if (folder != MailFolder::Subtree) return {};
  std::vector<MailFolderInfo> children;
  for (const MailFolderInfo& info : kMailFolders) {
    if (info.folder != MailFolder::Subtree) children.push_back(info);
  }
  return children;
}

}  // namespace

MailFolderObject::MailFolderObject(MailContext& context, MailFolder folder, bool writable)
    : UnsupportedFolderMembers(context, ModelClass::MailFolder),
      info_(*findMailFolder(folder)),
      writable_(writable) {}

HRESULT MailFolderObject::GetContentsTable(ULONG, IMAPITable** table) {
  if (table == nullptr) return E_INVALIDARG;
  *table = nullptr;
  if (!holdsMessages()) return MAPI_E_NO_SUPPORT;
  return atBoundary(
      [&] { return openTable(context(), std::make_unique<ContentsRows>(context(), info_.folder), table); });
}

HRESULT MailFolderObject::GetHierarchyTable(ULONG, IMAPITable** table) {
  if (table == nullptr) return E_INVALIDARG;
  *table = nullptr;
  return atBoundary([&] {
    using Rows = ListRows<MailFolderInfo>;
    return openTable(context(), std::make_unique<Rows>(kFolderProperties, childrenOf(info_.folder)), table);
  });
}

HRESULT MailFolderObject::OpenEntry(ULONG size, BYTE* entryId, LPCIID iid, ULONG flags, ULONG* type,
                                    IUnknown** object) {
  return openEntry(context(), size, entryId, iid, flags, type, object);
}

HRESULT MailFolderObject::CreateMessage(LPCIID iid, ULONG, IMessage** message) {
  if (message == nullptr) return E_INVALIDARG;
  *message = nullptr;
  if (!isInterfaceOf<IMessage>(iid)) return E_NOINTERFACE;
  if (!holdsMessages()) return MAPI_E_NO_SUPPORT;
  if (!writable_) return MAPI_E_NO_ACCESS;
  return atBoundary([&] {
    *message = new MessageObject(context(), context().mailbox.add(info_.folder).row, true);
    return S_OK;
  });
}

HRESULT MailFolderObject::DeleteMessages(ENTRYLIST* messages, ULONG_PTR, IMAPIProgress*, ULONG) {
  const bool isList = messages != nullptr && messages->cValues <= kMostEntries &&
                      (messages->lpbin != nullptr || messages->cValues == 0);
  if (!isList) return E_INVALIDARG;
  if (!writable_) return MAPI_E_NO_ACCESS;
  return atBoundary([&] {
    bool complete = true;
    for (const SBinary& entry : std::span(messages->lpbin, messages->cValues)) {
      const auto entryId = parseEntryId(entry.cb, entry.lpb);
      const bool isMessage = entryId && entryId->type == MAPI_MESSAGE;
      if (!isMessage || !context().mailbox.remove(entryId->folder, entryId->number)) complete = false;
    }
    return complete ? S_OK : MAPI_W_PARTIAL_COMPLETION;
  });
}

std::optional<Properties> MailFolderObject::properties() {
  const auto read = [this](PropertyTag asked) {
    return readProperty<MailFolderInfo>(kFolderProperties, info_, asked);
  };
  return Properties{tagsOf<MailFolderInfo>(kFolderProperties), read};
}

}  // namespace emulator
