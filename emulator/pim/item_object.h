// The base of contacts, appointments and tasks as objects: their own interface beside the property interface.
#pragma once

#include <algorithm>
#include <array>

#include "emulator/pim/com_object.h"
#include "emulator/pim/item_core.h"
#include "emulator/pim/item_properties.h"
#include "emulator/pim/property.h"

namespace emulator {

/// A property's name as a template argument, so that a misspelt one does not compile.
template <std::size_t size>
struct PropertyName {
  consteval PropertyName(const char (&name)[size]) { std::copy_n(name, size, text); }
  char text[size];
};

template <typename Interface, const auto& properties>
class ItemObject : public ComObject<Interface, IItem> {
 public:
  HRESULT Save() override { return core_.save(); }
  HRESULT Delete() override { return core_.remove(); }
  HRESULT get_Oid(LONG* oid) override { return core_.getOid(oid); }
  HRESULT get_Application(IPOutlookApp**) override { return E_NOTIMPL; }
  HRESULT Display() override { return E_NOTIMPL; }
  HRESULT put_BodyInk(CEBLOB*) override { return E_NOTIMPL; }
  HRESULT get_BodyInk(CEBLOB*) override { return E_NOTIMPL; }
  HRESULT Copy(Interface**) override { return E_NOTIMPL; }

  HRESULT GetProps(const CEPROPID* ids, ULONG flags, WORD count, CEPROPVAL** values, ULONG* size,
                   HANDLE heap) override {
    return getProps(core_, {ids, count}, flags, values, size, heap);
  }
  HRESULT SetProps(ULONG, WORD count, CEPROPVAL* values) override { return setProps(core_, {values, count}); }
  HRESULT OpenProperty(CEPROPID id, DWORD mode, IStream** stream) override {
    return openProperty(core_, static_cast<IItem*>(this), id, mode, stream);
  }
  HRESULT get_DefaultItemType(int*) override { return E_NOTIMPL; }
  HRESULT get_Parent(IFolder**) override { return E_NOTIMPL; }
  HRESULT Display(HWND) override { return E_NOTIMPL; }
  HRESULT Edit(HWND) override { return E_NOTIMPL; }
  HRESULT Copy(IItem**) override { return E_NOTIMPL; }
  HRESULT AddCategory(LPCWSTR) override { return E_NOTIMPL; }
  HRESULT RemoveCategory(LPCWSTR) override { return E_NOTIMPL; }

 protected:
  ItemObject(ModelContext& context, ModelClass modelClass, ObjectKind kind,
             std::unique_ptr<ItemSource> source)
      : ComObject<Interface, IItem>(context.live, modelClass), core_(context, kind, std::move(source)) {}

  ItemCore& core() { return core_; }

  template <PropertyName name, typename Out>
  HRESULT get(Out* out) {
    return core_.get(placeOf(properties, name.text), out);
  }
  template <PropertyName name, typename Value>
  HRESULT put(Value value) {
    return core_.put(placeOf(properties, name.text), value);
  }

 private:
  ItemCore core_;
};

}  // namespace emulator
