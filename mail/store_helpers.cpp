#include "mail/store_helpers.h"

#include <optional>
#include <string_view>
#include <vector>

#include "mail/properties.h"
#include "platform/files.h"
#include "platform/text.h"

namespace qorv {

namespace {

constexpr WCHAR kPathSeparator = u'\\';

/// A copy of an identifier that outlives its row.
using EntryIdCopy = std::vector<BYTE>;

/// The identifier of the first row whose name is accepted.
template <typename Accept>
std::optional<EntryIdCopy> findByName(IMAPITable& table, Accept accept) {
  const RowSet found(table, kMostRows);
  for (const SRow& row : found.rows()) {
    const LPCWSTR name = textOf(findValue(valuesOf(row), PR_DISPLAY_NAME_W));
    const SPropValue* entryId = findValue(valuesOf(row), PR_ENTRYID);
    if (!name || !accept(name) || !entryId) continue;
    const SBinary& bytes = entryId->Value.bin;
    return EntryIdCopy(bytes.lpb, bytes.lpb + bytes.cb);
  }
  return std::nullopt;
}

std::optional<EntryIdCopy> findActiveSyncEntry(IMAPISession& session) {
  ComPtr<IMAPITable> stores;
  if (FAILED(session.GetMsgStoresTable(MAPI_UNICODE, stores.put())) || !stores) return std::nullopt;
  stores->SetColumns(TagArray<2>{.tags = {PR_DISPLAY_NAME_W, PR_ENTRYID}}.get(), 0);
  return findByName(*stores, [](LPCWSTR name) { return _wcsicmp(name, u"ActiveSync") == 0; });
}

/// The child of that name; names of MAX_PATH characters or more have no folder.
Opened<IMAPIFolder> openChild(IMAPIFolder& parent, std::u16string_view wanted) {
  Opened<IMAPIFolder> none{MAPI_E_NOT_FOUND, {}};
  if (wanted.size() >= MAX_PATH) return none;
  ComPtr<IMAPITable> children;
  none.result = parent.GetHierarchyTable(1, children.put());
  if (FAILED(none.result) || !children) return none;
  children->SetColumns(TagArray<2>{.tags = {PR_ENTRYID, PR_DISPLAY_NAME_W}}.get(), 0);
  auto entryId = findByName(*children, [&](std::u16string_view name) {
    const auto size = static_cast<UINT>(wanted.size() * sizeof(WCHAR));
    return name.size() == wanted.size() && _memicmp(name.data(), wanted.data(), size) == 0;
  });
  none.result = MAPI_E_NOT_FOUND;
  if (!entryId) return none;
  return openEntry<IMAPIFolder>(parent, {static_cast<ULONG>(entryId->size()), entryId->data()}, MAPI_MODIFY);
}

}  // namespace

HRESULT FindActiveSyncStore(IMAPISession& session, IMsgStore** store) {
  *store = nullptr;
  if (auto entryId = findActiveSyncEntry(session)) {
    return session.OpenMsgStore(0, static_cast<ULONG>(entryId->size()), entryId->data(), nullptr,
                                MDB_NO_DIALOG | MAPI_BEST_ACCESS, store);
  }
  return session.OpenMsgStore(0, 0, nullptr, nullptr, 0, store);
}

HRESULT OpenStoreFolder(IMsgStore& store, IMAPIFolder** folder, ULONG tag) {
  *folder = nullptr;
  const PropertyValues values(store, TagArray<1>{.tags = {tag}});
  if (FAILED(values.result())) return values.result();
  const SBinary* entryId = values.findBinary(tag);
  if (!entryId) return E_FAIL;
  Opened<IMAPIFolder> opened = openEntry<IMAPIFolder>(store, *entryId, MAPI_MODIFY);
  *folder = opened.object.detach();
  return opened.result;
}

HRESULT OpenFolderByPath(IMsgStore& store, ULONG tag, LPCWSTR path, IMAPIFolder* parent,
                         IMAPIFolder** folder) {
  *folder = nullptr;
  Opened<IMAPIFolder> reached{S_OK, ComPtr<IMAPIFolder>(parent)};
  if (parent) {
    parent->AddRef();
  } else {
    reached.result = OpenStoreFolder(store, reached.object.put(), tag);
  }
  std::u16string_view rest = path;
  while (!rest.empty() && reached.object) {
    const std::u16string_view name = rest.substr(0, rest.find(kPathSeparator));
    rest.remove_prefix(std::min(rest.size(), name.size() + 1));
    if (!name.empty()) reached = openChild(*reached.object, name);
  }
  *folder = reached.object.detach();
  return reached.result;
}

}  // namespace qorv
