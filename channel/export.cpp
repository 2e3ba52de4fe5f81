// What the platform sees of the module: the export and the attach notification.

#include "channel/host_context.h"
#include "channel/module_state.h"
#include "channel/request_loop.h"
#include "platform/errors.h"
#include "platform/system.h"

namespace qorv {

namespace {

/// Whatever escapes the loop ends the session like an end command would: the device's service must not see
/// it.
void serveGuarded(IRAPIStream& stream, ModuleState& state) {
  try {
    serveRequests(stream, *state.session, state.fullListings);
  } catch (...) {
  }
}

HRESULT serveSession(IRAPIStream& stream) {
  ModuleState& state = moduleState();
  if (!prepareHostContext(state.module, u"QorvApiMgrApp")) return E_FAIL;
  if (!state.session) state.session = std::make_unique<COutlook>();
  if (!state.session->logOn()) return E_FAIL;
  serveGuarded(stream, state);
  stream.Release();
  state.session.reset();
  return S_OK;
}

}  // namespace

}  // namespace qorv

extern "C" {

/// One invocation is one session: 0 after it ran to its end, 0x80004005 when it could not start, in which
/// case the stream is not released. The input block and the output pointers are not used.
__attribute__((visibility("default"))) HRESULT rsCeApiMgr(DWORD, BYTE*, DWORD*, BYTE**,
                                                          IRAPIStream* stream) try {
  return stream ? qorv::serveSession(*stream) : E_FAIL;
} catch (...) {
  return E_FAIL;
}

__attribute__((visibility("default"))) BOOL DllMain(HMODULE module, DWORD reason, void*) {
  if (reason == DLL_PROCESS_ATTACH) qorv::moduleState().module = module;
  return TRUE;
}
}
