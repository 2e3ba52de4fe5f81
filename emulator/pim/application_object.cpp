#include "emulator/pim/application_object.h"

#include "emulator/pim/folder_object.h"
#include "emulator/pim/item_factory.h"
#include "emulator/pim/model_numbers.h"
#include "emulator/pim/variant_time.h"

namespace emulator {

ApplicationObject::ApplicationObject(ModelContext& context)
    : ComObject(context.live, ModelClass::Application), context_(context) {}

HRESULT ApplicationObject::GetDefaultFolder(int folder, IFolder** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  const std::optional<ObjectKind> kind = kindOfFolder(folder);
  if (!kind) return E_INVALIDARG;
  return atBoundary([&] {
    *object = new FolderObject(context_, *kind);
    return S_OK;
  });
}

HRESULT ApplicationObject::CreateItem(int type, IDispatch** item) {
  if (item == nullptr) return E_POINTER;
  *item = nullptr;
  const std::optional<ObjectKind> kind = kindOfItemType(type);
  if (!kind) return E_INVALIDARG;
  return atBoundary([&] {
    *item = makeItemObject(context_, *kind, 0);
    return S_OK;
  });
}

HRESULT ApplicationObject::GetItemFromOid(LONG oid, IDispatch** item) {
  if (item == nullptr) return E_POINTER;
  *item = nullptr;
  return atBoundary([&] {
    const std::optional<ObjectKind> kind = context_.items.kindOf(static_cast<Oid>(oid));
    if (!kind) return E_INVALIDARG;
    *item = makeItemObject(context_, *kind, static_cast<Oid>(oid));
    return S_OK;
  });
}

HRESULT ApplicationObject::SysFreeString(BSTR text) {
  context_.memory.freeText(text);
  return S_OK;
}

HRESULT ApplicationObject::VariantTimeToSystemTime(DATE date, SYSTEMTIME* time) {
  if (time == nullptr) return E_POINTER;
  const std::optional<SYSTEMTIME> converted = toSystemTime(date);
  if (!converted) return E_INVALIDARG;
  *time = *converted;
  return S_OK;
}

HRESULT ApplicationObject::SystemTimeToVariantTime(SYSTEMTIME* time, DATE* date) {
  if (time == nullptr || date == nullptr) return E_POINTER;
  const std::optional<double> converted = toDate(*time);
  if (!converted) return E_INVALIDARG;
  *date = *converted;
  return S_OK;
}

}  // namespace emulator
