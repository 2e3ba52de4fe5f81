#include "bench/served_device.h"

#include <stdexcept>

#include "bench/frames.h"
#include "bench/serve.h"

namespace bench {

ServedDevice::ServedDevice(int appointments) : pair_(connectLoopback()) {
  emulator::Device::create(file(), {});
  fill(appointments);
  thread_ = std::thread([this] { serve(file(), pair_.server.get()); });
}

ServedDevice::~ServedDevice() {
  Payload reply;
  sendFrame(socket(), request(1, 2));
  receiveFrame(socket(), reply);
  thread_.join();
}

void ServedDevice::fill(int appointments) {
  emulator::Device device(file());
  auto& items = device.objectModel.items();
  for (int i = 0; i < appointments; ++i) {
    auto item = items.make(emulator::ObjectKind::Appointment);
    if (items.add(item) != 0) throw std::runtime_error("an appointment was refused");
    if (firstOid_ == 0) firstOid_ = item.oid;
  }
  device.commit();
}

}  // namespace bench
