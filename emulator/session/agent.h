// An agent that is loaded: invoked once for each session.
#pragma once

#include "platform/rapi_stream.h"

namespace emulator {

/// A device is current whenever an agent runs: while it is loaded, invoked and unloaded.
class Agent {
 public:
  Agent() = default;
  Agent(const Agent&) = delete;
  Agent& operator=(const Agent&) = delete;
  virtual ~Agent() = default;

  /// One session, which lasts as long as the call. The result is the agent's own. Throws AgentBroken when
  /// the agent can't go on; it must not be invoked again then.
  virtual HRESULT serve(IRAPIStream* stream) = 0;
};

}  // namespace emulator
