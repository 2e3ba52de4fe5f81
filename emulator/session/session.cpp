#include "emulator/session/session.h"

#include "emulator/seam/current_device.h"
#include "emulator/session/rapi_stream.h"
#include "emulator/session/session_error.h"

namespace emulator {

HRESULT runSession(Agent& agent, Device& device, CallMonitor* monitor, const Peer& peer) {
  RapiStream stream(peer, {[&] { device.commit(); }, [&] { device.rollback(); }});
  const CurrentDevice current(device, monitor);
  // An agent that could not start keeps its stream; the end of the session is the stream's all the same.
  const auto finish = [&] {
    if (monitor != nullptr) monitor->taps().end(&stream);
    stream.finish();
  };
  HRESULT result = E_FAIL;
  try {
    result = agent.serve(monitor == nullptr ? static_cast<IRAPIStream*>(&stream)
                                            : monitor->tapped<IRAPIStream>(&stream));
  } catch (const AgentBroken&) {
    finish();
    throw;
  }
  finish();
  if (!stream.deviceFailure().empty()) throw SessionError(stream.deviceFailure());
  return result;
}

}  // namespace emulator
