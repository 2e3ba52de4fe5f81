#include "emulator/messaging/mail_store_object.h"

#include "emulator/messaging/entry_id.h"
#include "emulator/messaging/open_entry.h"

namespace emulator {
namespace {

/// The store that stays in step with a desktop.
constexpr std::u16string_view kStoreName = u"ActiveSync";

struct Store {};

using StoreProperty = ReadableProperty<Store>;

constexpr std::array kStoreProperties{
    StoreProperty{PR_ENTRYID, [](const Store&) -> MailValue { return toBytes(storeEntryId()); }},
    StoreProperty{PR_DISPLAY_NAME_W, [](const Store&) -> MailValue { return std::u16string(kStoreName); }},
};

MailValue storeValue(PropertyTag asked) {
  for (const MailFolderInfo& info : kMailFolders) {
    if (asksFor(asked, info.storeTag)) return toBytes(entryIdOf(info.folder));
  }
  return readProperty<Store>(kStoreProperties, {}, asked);
}

}  // namespace

MailStoreObject::MailStoreObject(MailContext& context)
    : UnsupportedStoreMembers(context, ModelClass::MailStore) {}

HRESULT MailStoreObject::OpenEntry(ULONG size, BYTE* entryId, LPCIID iid, ULONG flags, ULONG* type,
                                   IUnknown** object) {
  return openEntry(context(), size, entryId, iid, flags, type, object);
}

std::optional<Properties> MailStoreObject::properties() {
  Properties properties{tagsOf<Store>(kStoreProperties), storeValue};
  for (const MailFolderInfo& info : kMailFolders) properties.tags.push_back(info.storeTag);
  return properties;
}

std::unique_ptr<RowSource> storeRows() {
  return std::make_unique<ListRows<Store>>(kStoreProperties, std::vector<Store>(1));
}

}  // namespace emulator
