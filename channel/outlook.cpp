#include "channel/outlook.h"

#include "channel/registry_values.h"
#include "platform/system.h"

namespace qorv {

namespace {

constexpr LPCWSTR kObjectModelKey = u"SOFTWARE\\Microsoft\\Pim\\Outlook";
constexpr LPCWSTR kObjectModelValue = u"Outlook";

/// The object model works only where this value isn't 0; a missing one is left alone.
void enableObjectModel() {
  DWORD enabled = 1;
  if (readRegistryDword(HKEY_LOCAL_MACHINE, kObjectModelKey, kObjectModelValue, enabled) && enabled == 0) {
    writeRegistryDword(HKEY_LOCAL_MACHINE, kObjectModelKey, kObjectModelValue, 1);
  }
}

class Library {
 public:
  explicit Library(LPCWSTR name) : module_(LoadLibraryW(name)) {}
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
  ~Library() {
    if (module_) FreeLibrary(module_);
  }

  [[nodiscard]] FARPROC find(LPCWSTR entry) const {
    return module_ ? GetProcAddressW(module_, entry) : nullptr;
  }

 private:
  HMODULE module_;
};

HRESULT registerObjectModelStore() {
  const Library store(u"pimstore.dll");
  const FARPROC entry = store.find(u"DllRegisterServer");
  return entry ? reinterpret_cast<HRESULT (*)()>(entry)() : E_FAIL;
}

}  // namespace

HRESULT COutlook::createApplication() {
  void* object = nullptr;
  const HRESULT result =
      CoCreateInstance(CLSID_Application, nullptr, CLSCTX_INPROC_SERVER, kInterfaceId<IPOutlookApp>, &object);
  if (FAILED(result)) return result;
  application_ = ComPtr<IPOutlookApp>(static_cast<IPOutlookApp*>(object));
  return application_ ? result : E_FAIL;
}

bool COutlook::logOn() {
  if (application_) return true;
  CoInitializeEx(nullptr, COINIT_MULTITHREADED);
  enableObjectModel();
  if (FAILED(createApplication())) {
    if (FAILED(registerObjectModelStore()) || FAILED(createApplication())) return false;
  }
  return SUCCEEDED(application_->Logon(0));
}

COutlook::~COutlook() {
  if (!application_) return;
  application_->Logoff();
  application_.reset();
  CoFreeUnusedLibraries();
}

}  // namespace qorv
