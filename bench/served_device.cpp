#include "bench/served_device.h"

#include <stdexcept>
#include <string>

#include "bench/frames.h"
#include "emulator/seam/current_device.h"
#include "emulator/seam/libraries.h"
#include "emulator/session/session.h"

namespace bench {
namespace {

std::filesystem::path temporaryFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "qorv-bench-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
  return name;
}

void serve(const std::filesystem::path& file, int socket) {
  emulator::Device device(file);
  emulator::provideLibraries(device);
  const emulator::CurrentDevice current(device);
  emulator::AgentModule agent(QORV_AGENT, emulator::Modules::agent());
  emulator::runSession(agent, device, nullptr, emulator::Peer(socket, socket, -1));
}

}  // namespace

ServedDevice::ServedDevice(int appointments) : folder_(temporaryFolder()), pair_(connectLoopback()) {
  emulator::Device::create(folder_ / "device", {});
  fill(appointments);
  thread_ = std::thread([this] { serve(folder_ / "device", pair_.server.get()); });
}

ServedDevice::~ServedDevice() {
  Payload reply;
  sendFrame(socket(), request(1, 2));
  receiveFrame(socket(), reply);
  thread_.join();
  std::filesystem::remove_all(folder_);
}

void ServedDevice::fill(int appointments) {
  emulator::Device device(folder_ / "device");
  auto& items = device.objectModel.items();
  for (int i = 0; i < appointments; ++i) {
    auto item = items.make(emulator::ObjectKind::Appointment);
    if (items.add(item) != 0) throw std::runtime_error("an appointment was refused");
    if (firstOid_ == 0) firstOid_ = item.oid;
  }
  device.commit();
}

}  // namespace bench
