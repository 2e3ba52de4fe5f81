#include "emulator/calls/call_monitor.h"

namespace emulator {

CallMonitor::CallMonitor(std::optional<CallLog> log, Faults faults, std::function<void(DWORD)> setLastError)
    : log_(std::move(log)),
      faults_(std::move(faults)),
      setLastError_(std::move(setLastError)),
      taps_(*this, names_) {}

ObservedCall::ObservedCall(CallMonitor& monitor, std::string_view name)
    : monitor_(monitor),
      line_(monitor.log_ ? &monitor.log_->begin(name) : nullptr),
      fault_(monitor.faults_.count(name)) {}

ObservedCall::~ObservedCall() {
  if (line_ == nullptr) return;
  if (!hasResult_) line_->json().null();
  monitor_.log_->end(*line_);
}

}  // namespace emulator
