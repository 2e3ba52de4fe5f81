// One session: a desktop at the other end of two descriptors, the agent, and the device.
#pragma once

#include "emulator/calls/call_monitor.h"
#include "emulator/device.h"
#include "emulator/session/agent.h"
#include "emulator/session/peer.h"

namespace emulator {

/// Invokes the agent once. Its calls are observed when there is a monitor. Returns what the agent returned;
/// what it did for a request that it left without a reply is undone. Throws SessionError when the device's
/// file failed, which leaves what was not committed undone, and AgentBroken.
HRESULT runSession(Agent& agent, Device& device, CallMonitor* monitor, const Peer& peer);

}  // namespace emulator
