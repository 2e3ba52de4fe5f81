// The bases of the messaging library's objects: what all of them answer alike.
#pragma once

#include <algorithm>

#include "emulator/messaging/mail_context.h"
#include "emulator/pim/com_object.h"
#include "platform/messaging.h"

namespace emulator {

/// Messaging objects don't tell their interfaces.
template <typename Interface>
class MessagingObject : public ComObject<Interface> {
 public:
  HRESULT QueryInterface(REFIID, void** object) override {
    if (object != nullptr) *object = nullptr;
    return E_NOTIMPL;
  }

 protected:
  MessagingObject(MailContext& context, ModelClass kind)
      : ComObject<Interface>(context.live, kind), context_(context) {
    context_.handedOut.insert(this);
  }
  ~MessagingObject() override { context_.handedOut.erase(this); }

  MailContext& context() const { return context_; }

 private:
  MailContext& context_;
};

/// What GetProps and GetIDsFromNames do, for objects of any interface. `tags` null asks for all that have a
/// value.
HRESULT answerProperties(MailContext& context, const SPropTagArray* tags, const Properties& properties,
                         ULONG* count, SPropValue** values);
HRESULT answerNames(MailContext& context, std::span<MAPINAMEID* const> names, bool make,
                    SPropTagArray** tags);

/// An object with properties. Its own class says which it has; one that doesn't say more can't be changed.
template <typename Interface>
class PropertyObject : public MessagingObject<Interface> {
 public:
  using MessagingObject<Interface>::context;

  HRESULT GetLastError(HRESULT, ULONG, MAPIERROR**) final { return MAPI_E_NO_SUPPORT; }
  HRESULT SaveChanges(ULONG) final { return S_OK; }
  HRESULT GetProps(SPropTagArray* tags, ULONG, ULONG* count, SPropValue** values) final {
    return atBoundary([&] {
      if (count == nullptr || values == nullptr) return E_INVALIDARG;
      *count = 0;
      *values = nullptr;
      const std::optional<Properties> described = properties();
      return described ? answerProperties(context(), tags, *described, count, values) : MAPI_E_NOT_FOUND;
    });
  }
  HRESULT GetPropList(ULONG, SPropTagArray**) final { return MAPI_E_NO_SUPPORT; }
  HRESULT OpenProperty(ULONG, LPCIID, ULONG, ULONG, IUnknown** object) override {
    if (object != nullptr) *object = nullptr;
    return MAPI_E_NO_SUPPORT;
  }
  HRESULT SetProps(ULONG, SPropValue*, SPropProblemArray**) override { return MAPI_E_NO_SUPPORT; }
  HRESULT DeleteProps(SPropTagArray*, SPropProblemArray**) override { return MAPI_E_NO_SUPPORT; }
  HRESULT CopyTo(ULONG, LPCIID, SPropTagArray*, ULONG_PTR, IMAPIProgress*, LPCIID, void*, ULONG,
                 SPropProblemArray**) final {
    return MAPI_E_NO_SUPPORT;
  }
  HRESULT CopyProps(SPropTagArray*, ULONG_PTR, IMAPIProgress*, LPCIID, void*, ULONG,
                    SPropProblemArray**) final {
    return MAPI_E_NO_SUPPORT;
  }
  HRESULT GetNamesFromIDs(SPropTagArray**, GUID*, ULONG, ULONG*, MAPINAMEID***) final {
    return MAPI_E_NO_SUPPORT;
  }
  HRESULT GetIDsFromNames(ULONG count, MAPINAMEID** names, ULONG flags, SPropTagArray** tags) final {
    return atBoundary([&] {
      return answerNames(context(), {names, names == nullptr ? 0 : count}, (flags & MAPI_CREATE) != 0, tags);
    });
  }

 protected:
  using MessagingObject<Interface>::MessagingObject;

  /// The object's properties as they are now; nothing when what it stands for is gone.
  virtual std::optional<Properties> properties() = 0;
};

}  // namespace emulator
