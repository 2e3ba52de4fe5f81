#include "mail/messaging_library.h"

#include "platform/errors.h"
#include "platform/system.h"

namespace qorv {

namespace {

constexpr DWORD kWin32Facility = 0x80070000;

template <typename Entry>
Entry findEntry(LPCWSTR name) {
  return reinterpret_cast<Entry>(GetProcAddressW(messagingLibrary().module, name));
}

}  // namespace

MessagingLibrary& messagingLibrary() {
  static MessagingLibrary library;
  return library;
}

HRESULT resultOfLastError() {
  const DWORD error = GetLastError();
  const bool isErrorNumber = static_cast<LONG>(error) > 0;
  return static_cast<HRESULT>(isErrorNumber ? kWin32Facility | (error & 0xFFFF) : error);
}

HRESULT LoadMessagingLibrary() {
  HMODULE& module = messagingLibrary().module;
  if (!module) module = LoadLibraryW(u"CEMAPI.DLL");
  return module ? S_OK : resultOfLastError();
}

HRESULT FreeProws(SRowSet* rows) {
  if (const HRESULT loaded = LoadMessagingLibrary(); FAILED(loaded)) return loaded;
  if (const auto entry = findEntry<FreeProws_t>(u"FreeProws")) entry(rows);
  return S_OK;
}

HRESULT MAPIFreeBuffer(void* buffer) {
  if (const HRESULT loaded = LoadMessagingLibrary(); FAILED(loaded)) return loaded;
  const auto entry = findEntry<MAPIFreeBuffer_t>(u"MAPIFreeBuffer");
  return entry ? static_cast<HRESULT>(entry(buffer)) : resultOfLastError();
}

HRESULT MAPILogonEx(ULONG_PTR ui, LPWSTR profile, LPWSTR password, FLAGS flags, IMAPISession** session) {
  LoadMessagingLibrary();
  const auto entry = findEntry<MAPILogonEx_t>(u"MAPILogonEx");
  return entry ? entry(ui, profile, password, flags, session) : resultOfLastError();
}

HRESULT MAPIInitialize(void* parameters) {
  if (const HRESULT loaded = LoadMessagingLibrary(); FAILED(loaded)) return loaded;
  MAPIInitialize_t& entry = messagingLibrary().initialize;
  if (!entry) entry = findEntry<MAPIInitialize_t>(u"MAPIInitialize");
  return entry ? entry(parameters) : resultOfLastError();
}

void MAPIUninitialize() {
  if (FAILED(LoadMessagingLibrary())) return;
  MAPIUninitialize_t& entry = messagingLibrary().uninitialize;
  if (!entry) entry = findEntry<MAPIUninitialize_t>(u"MAPIUninitialize");
  if (entry) entry();
}

}  // namespace qorv
