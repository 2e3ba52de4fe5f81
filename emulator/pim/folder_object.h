// A folder of the object model, and the collection of its items.
#pragma once

#include <vector>

#include "emulator/pim/com_object.h"
#include "emulator/pim/model_context.h"
#include "platform/outlook.h"

namespace emulator {

class FolderObject final : public ComObject<IFolder, IItem> {
 public:
  FolderObject(ModelContext& context, ObjectKind kind);

  HRESULT get_Items(IPOutlookItemCollection** items) override;
  HRESULT get_DefaultItemType(int* type) override;
  HRESULT get_Application(IPOutlookApp**) override { return E_NOTIMPL; }
  HRESULT AddItemToInfraredFolder(int, IDispatch*) override { return E_NOTIMPL; }
  HRESULT SendToInfrared() override { return E_NOTIMPL; }
  HRESULT ReceiveFromInfrared(IPOutlookItemCollection**) override { return E_NOTIMPL; }

  /// A folder takes the wish for notifications, its one property, and has nobody to notify. The wish can be
  /// read from every object of the folder while the device is open.
  HRESULT SetProps(ULONG flags, WORD count, CEPROPVAL* values) override;
  HRESULT GetProps(const CEPROPID* ids, ULONG flags, WORD count, CEPROPVAL** values, ULONG* size,
                   HANDLE heap) override;
  HRESULT Save() override { return S_OK; }
  HRESULT Delete() override { return E_NOTIMPL; }
  HRESULT Display(HWND) override { return E_NOTIMPL; }
  HRESULT Edit(HWND) override { return E_NOTIMPL; }
  HRESULT Copy(IItem**) override { return E_NOTIMPL; }
  HRESULT get_Oid(LONG*) override { return E_NOTIMPL; }
  HRESULT OpenProperty(CEPROPID, DWORD, IStream**) override { return E_NOTIMPL; }
  HRESULT get_Parent(IFolder**) override { return E_NOTIMPL; }
  HRESULT AddCategory(LPCWSTR) override { return E_NOTIMPL; }
  HRESULT RemoveCategory(LPCWSTR) override { return E_NOTIMPL; }

 private:
  ModelContext& context_;
  ObjectKind kind_;
};

/// Counts its items without reading them; their identifiers are read in one go when the first item is asked
/// for, and from then on the collection stays as it is but for what is removed through it.
class ItemCollectionObject final : public ComObject<IPOutlookItemCollection> {
 public:
  ItemCollectionObject(ModelContext& context, ObjectKind kind);

  HRESULT get_Count(int* count) override;
  HRESULT Item(int index, IDispatch** item) override;
  HRESULT Remove(int index) override;

  HRESULT Add(IDispatch**) override { return E_NOTIMPL; }
  HRESULT Find(BSTR, IDispatch**) override { return E_NOTIMPL; }
  HRESULT FindNext(IDispatch**) override { return E_NOTIMPL; }
  HRESULT Restrict(BSTR, IPOutlookItemCollection**) override { return E_NOTIMPL; }
  HRESULT Sort(BSTR, VARIANT_BOOL) override { return E_NOTIMPL; }
  HRESULT get_IncludeRecurrences(VARIANT_BOOL*) override { return E_NOTIMPL; }
  HRESULT put_IncludeRecurrences(VARIANT_BOOL) override { return E_NOTIMPL; }
  HRESULT get__NewEnum(IUnknown**) override { return E_NOTIMPL; }
  HRESULT get_Application(IPOutlookApp**) override { return E_NOTIMPL; }

 private:
  /// The place of an index that counts from 1; nothing outside.
  std::optional<std::size_t> placeOf(int index);

  ModelContext& context_;
  ObjectKind kind_;
  std::optional<std::vector<Oid>> oids_;
};

}  // namespace emulator
