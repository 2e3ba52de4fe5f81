#include "service/item_access.h"

#include <algorithm>

#include "platform/appointment.h"
#include "platform/contact.h"
#include "platform/task.h"

namespace qorv {

namespace {

template <typename Interface>
HRESULT deleteAs(IDispatch& item) {
  return static_cast<Interface&>(item).Delete();
}

/// How the object model knows the items of a data type.
struct ItemKind {
  DataType type;
  int itemType;
  int folder;
  IID iid;
  HRESULT (*remove)(IDispatch& item);
};

constexpr ItemKind kItemKinds[] = {
    {DataType::Contact, olContactItem, olFolderContacts, IContact::kIid, &deleteAs<IContact>},
    {DataType::Appointment, olAppointmentItem, olFolderCalendar, IAppointment::kIid, &deleteAs<IAppointment>},
    {DataType::Task, olTaskItem, olFolderTasks, ITask::kIid, &deleteAs<ITask>},
};

const ItemKind* itemKind(DataType type) {
  const auto* kind = std::ranges::find(kItemKinds, type, &ItemKind::type);
  return kind != std::ranges::end(kItemKinds) ? kind : nullptr;
}

ObtainedItem asKind(const ComPtr<IDispatch>& any, const ItemKind& kind) {
  void* typed = nullptr;
  if (!any || FAILED(any->QueryInterface(kind.iid, &typed)) || !typed) return {};
  // All item interfaces derive from IDispatch alone, so the pointer to one is the pointer to the other.
  return {true, ComPtr<IDispatch>(static_cast<IDispatch*>(typed))};
}

}  // namespace

ObtainedItem findItem(IPOutlookApp& application, DataType type, DWORD oid) {
  const ItemKind* kind = itemKind(type);
  if (!kind) return {true, {}};
  ComPtr<IDispatch> any;
  if (FAILED(application.GetItemFromOid(static_cast<LONG>(oid), any.put()))) return {};
  return asKind(any, *kind);
}

ObtainedItem createItem(IPOutlookApp& application, DataType type) {
  const ItemKind* kind = itemKind(type);
  if (!kind) return {true, {}};
  ComPtr<IDispatch> any;
  if (FAILED(application.CreateItem(kind->itemType, any.put()))) return {};
  return asKind(any, *kind);
}

bool deleteItem(IPOutlookApp& application, DataType type, DWORD oid) {
  const ItemKind* kind = itemKind(type);
  if (!kind) {
    ComPtr<IDispatch> any;
    return SUCCEEDED(application.GetItemFromOid(static_cast<LONG>(oid), any.put()));
  }
  const ObtainedItem found = findItem(application, type, oid);
  return found.obtained && SUCCEEDED(kind->remove(*found.item));
}

FolderItems openFolder(IPOutlookApp& application, int folder) {
  FolderItems opened;
  if (FAILED(application.GetDefaultFolder(folder, opened.folder.put())) || !opened.folder) return {};
  if (FAILED(opened.folder->get_Items(opened.items.put())) || !opened.items) return {};
  if (FAILED(opened.items->get_Count(&opened.count))) return {};
  return opened;
}

FolderItems openDefaultFolder(IPOutlookApp& application, DataType type) {
  const ItemKind* kind = itemKind(type);
  return kind ? openFolder(application, kind->folder) : FolderItems();
}

}  // namespace qorv
