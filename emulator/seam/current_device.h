// The device that the platform's calls reach.
#pragma once

namespace emulator {

class CallMonitor;
struct Device;

/// Makes a device current for as long as it lives; the one before it is current again afterwards. Whoever
/// calls the platform without a current device ends the program.
class CurrentDevice {
 public:
  /// With a monitor calls are observed; it and the device outlive this object.
  explicit CurrentDevice(Device& device, CallMonitor* monitor = nullptr);
  ~CurrentDevice();
  CurrentDevice(const CurrentDevice&) = delete;
  CurrentDevice& operator=(const CurrentDevice&) = delete;

  static CurrentDevice& get();

  Device& device() { return device_; }
  CallMonitor* monitor() { return monitor_; }

 private:
  Device& device_;
  CallMonitor* monitor_;
  CurrentDevice* previous_;
};

}  // namespace emulator
