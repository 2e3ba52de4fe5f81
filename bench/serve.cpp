#include "bench/serve.h"

#include "emulator/seam/current_device.h"
#include "emulator/seam/libraries.h"
#include "emulator/session/agent_module.h"
#include "emulator/session/session.h"

namespace bench {

void serve(const std::filesystem::path& file, int socket) {
  emulator::Device device(file);
  emulator::provideLibraries(device);
  const emulator::CurrentDevice current(device);
  emulator::AgentModule agent(QORV_AGENT, emulator::Modules::agent());
  emulator::runSession(agent, device, nullptr, emulator::Peer(socket, socket, -1));
}

}  // namespace bench
