// The object model's application object, from which everything else is reached.
#pragma once

#include "emulator/pim/com_object.h"
#include "emulator/pim/model_context.h"
#include "platform/outlook.h"

namespace emulator {

class ApplicationObject final : public ComObject<IPOutlookApp> {
 public:
  explicit ApplicationObject(ModelContext& context);

  /// There is one user, who is always welcome.
  HRESULT Logon(LONG) override { return S_OK; }
  HRESULT Logoff() override { return S_OK; }
  HRESULT GetDefaultFolder(int folder, IFolder** object) override;
  HRESULT CreateItem(int type, IDispatch** item) override;
  HRESULT GetItemFromOid(LONG oid, IDispatch** item) override;
  HRESULT SysFreeString(BSTR text) override;
  HRESULT VariantTimeToSystemTime(DATE date, SYSTEMTIME* time) override;
  HRESULT SystemTimeToVariantTime(SYSTEMTIME* time, DATE* date) override;

  HRESULT get_Version(BSTR*) override { return E_NOTIMPL; }
  HRESULT get_HomeCity(ICity**) override { return E_NOTIMPL; }
  HRESULT put_HomeCity(ICity*) override { return E_NOTIMPL; }
  HRESULT get_VisitingCity(ICity**) override { return E_NOTIMPL; }
  HRESULT put_VisitingCity(ICity*) override { return E_NOTIMPL; }
  HRESULT get_CurrentCityIndex(LONG*) override { return E_NOTIMPL; }
  HRESULT put_CurrentCityIndex(LONG) override { return E_NOTIMPL; }
  HRESULT ReceiveFromInfrared() override { return E_NOTIMPL; }
  HRESULT get_OutlookCompatible(VARIANT_BOOL*) override { return E_NOTIMPL; }
  HRESULT GetTimeZoneFromIndex(int, ITimeZone**) override { return E_NOTIMPL; }
  HRESULT GetTimeZoneInformationFromIndex(int, TIME_ZONE_INFORMATION*) override { return E_NOTIMPL; }
  HRESULT get_Application(IPOutlookApp**) override { return E_NOTIMPL; }

 private:
  ModelContext& context_;
};

}  // namespace emulator
