// The base of the object model's objects: reference counts, QueryInterface and the dispatch slots.
#pragma once

#include <concepts>
#include <new>
#include <tuple>

#include "emulator/pim/live_objects.h"
#include "emulator/store/sqlite.h"
#include "platform/com.h"
#include "platform/errors.h"

namespace emulator {

/// Runs what a method does. Nothing is thrown across the platform's interfaces: a device file that fails is
/// E_FAIL.
template <typename Body>
HRESULT atBoundary(Body body) {
  try {
    return body();
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (const StoreError&) {
    return E_FAIL;
  }
}

/// Gives an interface its dispatch slots, which nobody uses; other interfaces stay as they are.
template <typename Interface>
class DispatchSlots : public Interface {};

template <std::derived_from<IDispatch> Interface>
class DispatchSlots<Interface> : public Interface {
 public:
  HRESULT GetTypeInfoCount(UINT*) final { return E_NOTIMPL; }
  HRESULT GetTypeInfo(UINT, LCID, ITypeInfo**) final { return E_NOTIMPL; }
  HRESULT GetIDsOfNames(REFIID, LPWSTR*, UINT, LCID, DISPID*) final { return E_NOTIMPL; }
  HRESULT Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) final {
    return E_NOTIMPL;
  }
};

/// Begins with one reference, the maker's, and ends itself with the last one. The first interface is the
/// object's own.
template <typename... Interfaces>
class ComObject : public DispatchSlots<Interfaces>... {
 public:
  ComObject(const ComObject&) = delete;
  ComObject& operator=(const ComObject&) = delete;

  HRESULT QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    (offer<Interfaces>(iid, object), ...);
    if (*object == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG AddRef() final { return ++references_; }
  ULONG Release() final {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

 protected:
  ComObject(LiveObjects& live, ModelClass kind) : live_(live, kind) {}
  virtual ~ComObject() = default;

 private:
  template <typename Interface>
  void offer(REFIID iid, void** object) {
    auto* self = static_cast<Interface*>(this);
    if (*object != nullptr) return;
    if (iid == Interface::kIid) *object = self;
    if (iid == IUnknown::kIid) *object = static_cast<IUnknown*>(self);
    if constexpr (std::derived_from<Interface, IDispatch>) {
      if (iid == IDispatch::kIid) *object = static_cast<IDispatch*>(self);
    }
    if constexpr (std::derived_from<Interface, ISequentialStream>) {
      if (iid == ISequentialStream::kIid) *object = static_cast<ISequentialStream*>(self);
    }
  }

  LiveObject live_;
  ULONG references_ = 1;
};

}  // namespace emulator
