#include "emulator/pim/folder_object.h"

#include <algorithm>
#include <span>

#include "emulator/pim/item_factory.h"
#include "emulator/pim/item_properties.h"
#include "emulator/pim/model_numbers.h"

namespace emulator {

FolderObject::FolderObject(ModelContext& context, ObjectKind kind)
    : ComObject(context.live, ModelClass::Folder), context_(context), kind_(kind) {}

HRESULT FolderObject::get_Items(IPOutlookItemCollection** items) {
  if (items == nullptr) return E_POINTER;
  *items = nullptr;
  return atBoundary([&] {
    *items = new ItemCollectionObject(context_, kind_);
    return S_OK;
  });
}

HRESULT FolderObject::get_DefaultItemType(int* type) {
  if (type == nullptr) return E_POINTER;
  *type = itemTypeOf(kind_);
  return S_OK;
}

HRESULT FolderObject::SetProps(ULONG, WORD count, CEPROPVAL* values) {
  if (values == nullptr || count == 0) return E_INVALIDARG;
  const std::span given(values, count);
  const bool areKnown = std::ranges::all_of(
      given, [](const CEPROPVAL& value) { return value.propid == PIMPR_FOLDERNOTIFICATIONS; });
  if (!areKnown) return E_INVALIDARG;
  return atBoundary([&] {
    context_.folderNotifications[kind_] = given.back().val.ulVal;
    return S_OK;
  });
}

HRESULT FolderObject::GetProps(const CEPROPID* ids, ULONG flags, WORD count, CEPROPVAL** values, ULONG* size,
                               HANDLE heap) {
  const HRESULT checked = checkGetProps({ids, count}, flags, values, size);
  if (FAILED(checked)) return checked;
  return atBoundary([&] {
    std::vector<BlockValue> found;
    for (const CEPROPID id : std::span(ids, count)) {
      const auto wish = context_.folderNotifications.find(kind_);
      const bool isThere = id == PIMPR_FOLDERNOTIFICATIONS && wish != context_.folderNotifications.end();
      found.push_back(isThere ? blockValue(numberProperty(id, wish->second)) : missingValue(id));
    }
    return giveValues(context_.memory, found, values, size, heap);
  });
}

ItemCollectionObject::ItemCollectionObject(ModelContext& context, ObjectKind kind)
    : ComObject(context.live, ModelClass::ItemCollection), context_(context), kind_(kind) {}

HRESULT ItemCollectionObject::get_Count(int* count) {
  if (count == nullptr) return E_POINTER;
  return atBoundary([&] {
    *count = oids_ ? static_cast<int>(oids_->size()) : context_.items.count(kind_);
    return S_OK;
  });
}

HRESULT ItemCollectionObject::Item(int index, IDispatch** item) {
  if (item == nullptr) return E_POINTER;
  *item = nullptr;
  return atBoundary([&] {
    const std::optional<std::size_t> place = placeOf(index);
    if (!place) return E_INVALIDARG;
    *item = makeItemObject(context_, kind_, (*oids_)[*place]);
    return S_OK;
  });
}

HRESULT ItemCollectionObject::Remove(int index) {
  return atBoundary([&] {
    const std::optional<std::size_t> place = placeOf(index);
    if (!place) return E_INVALIDARG;
    const Oid oid = (*oids_)[*place];
    oids_->erase(oids_->begin() + static_cast<std::ptrdiff_t>(*place));
    return context_.items.remove(oid) ? S_OK : E_FAIL;
  });
}

std::optional<std::size_t> ItemCollectionObject::placeOf(int index) {
  if (!oids_) oids_ = context_.items.list(kind_);
  if (index < 1 || static_cast<std::size_t>(index) > oids_->size()) return std::nullopt;
  return static_cast<std::size_t>(index) - 1;
}

}  // namespace emulator
