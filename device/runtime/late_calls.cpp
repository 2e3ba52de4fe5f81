#include "device/runtime/late_calls.h"

#include "platform/errors.h"
#include "platform/property_database.h"
#include "platform/system.h"

namespace {

CEOID createDatabaseMissing(CEGUID*, CEDBASEINFOEX*) {
  SetLastError(ERROR_CALL_NOT_IMPLEMENTED);
  return 0;
}

HANDLE openDatabaseMissing(CEGUID*, CEOID*, LPWSTR, SORTORDERSPECEX*, DWORD, CENOTIFYREQUEST*) {
  SetLastError(ERROR_CALL_NOT_IMPLEMENTED);
  return INVALID_HANDLE_VALUE;
}

BOOL objectInfoMissing(CEGUID*, CEOID, CEOIDINFOEX*) {
  SetLastError(ERROR_CALL_NOT_IMPLEMENTED);
  return FALSE;
}

}  // namespace

extern "C" {
// The slots that the calls' thunks jump through; made from the table of imports.
extern FARPROC late_CeCreateDatabaseEx2;
extern FARPROC late_CeOpenDatabaseEx2;
extern FARPROC late_CeOidGetInfoEx2;
}

namespace device {

namespace {

struct LateCall {
  LPCWSTR name;
  FARPROC& slot;
  FARPROC substitute;
};

template <typename Function>
FARPROC entry(Function* function) {
  return reinterpret_cast<FARPROC>(function);
}

}  // namespace

void bindLateCalls() {
  // Not a static object: those are made later, and may want these calls.
  const LateCall lateCalls[] = {
      {u"CeCreateDatabaseEx2", late_CeCreateDatabaseEx2, entry(&createDatabaseMissing)},
      {u"CeOpenDatabaseEx2", late_CeOpenDatabaseEx2, entry(&openDatabaseMissing)},
      {u"CeOidGetInfoEx2", late_CeOidGetInfoEx2, entry(&objectInfoMissing)},
  };
  // The library that everything is in: it is loaded already, and the reference is given back at once.
  HMODULE const core = LoadLibraryW(u"coredll.dll");
  for (const LateCall& call : lateCalls) {
    FARPROC const found = core == nullptr ? nullptr : GetProcAddressW(core, call.name);
    call.slot = found == nullptr ? call.substitute : found;
  }
  if (core != nullptr) FreeLibrary(core);
}

}  // namespace device
