// What is done with a program's calls while they are observed: logged, made to fail, their objects tapped.
#pragma once

#include <functional>
#include <optional>

#include "emulator/calls/call_log.h"
#include "emulator/calls/faults.h"
#include "emulator/calls/object_names.h"
#include "emulator/calls/taps.h"
#include "emulator/calls/value_encoder.h"
#include "platform/types.h"

namespace emulator {

/// Exists only when a log or faults were asked for; without it a program's calls go straight to the device.
class CallMonitor {
 public:
  /// Either may be missing. `setLastError` reaches the device's last error.
  CallMonitor(std::optional<CallLog> log, Faults faults, std::function<void(DWORD)> setLastError);
  CallMonitor(const CallMonitor&) = delete;
  CallMonitor& operator=(const CallMonitor&) = delete;
  ~CallMonitor() = default;

  /// Throws CallLogError when the log could not be written whole.
  void checkLog() const {
    if (log_) log_->check();
  }

  Taps& taps() { return taps_; }
  ObjectNames& names() { return names_; }

  /// An object as the program shall hold it.
  template <typename T>
  T* tapped(T* object) {
    return object == nullptr ? nullptr : static_cast<T*>(taps_.tap(object, interfaceInfo<T>()));
  }
  /// An object that the program gave, as the device knows it.
  template <typename T>
  T* untapped(T* object) const {
    IUnknown* const target = taps_.target(object);
    return target == object ? object : static_cast<T*>(target);
  }

 private:
  friend class ObservedCall;

  std::optional<CallLog> log_;
  Faults faults_;
  std::function<void(DWORD)> setLastError_;
  ObjectNames names_;
  Taps taps_;
};

/// One call, from its beginning to its end. However it ends, its line is completed.
class ObservedCall {
 public:
  ObservedCall(CallMonitor& monitor, std::string_view name);
  ~ObservedCall();
  ObservedCall(const ObservedCall&) = delete;
  ObservedCall& operator=(const ObservedCall&) = delete;

  CallMonitor& monitor() { return monitor_; }
  /// What the call shall fail with instead of being made.
  std::optional<std::uint32_t> fault() const { return fault_; }
  void setLastError(DWORD error) { monitor_.setLastError_(error); }

  /// Lets `write`, which takes a ValueEncoder, write the arguments.
  template <typename Write>
  void arguments(Write write) {
    if (line_ == nullptr) return;
    ValueEncoder encoder(line_->json(), monitor_.names_);
    write(encoder);
    line_->endArguments();
  }
  /// As for the arguments.
  template <typename Write>
  void result(Write write) {
    if (line_ == nullptr) return;
    ValueEncoder encoder(line_->json(), monitor_.names_);
    write(encoder);
    hasResult_ = true;
  }

 private:
  CallMonitor& monitor_;
  CallLog::Line* line_;
  std::optional<std::uint32_t> fault_;
  bool hasResult_ = false;
};

}  // namespace emulator
