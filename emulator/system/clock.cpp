#include "emulator/system/clock.h"

#include <chrono>
#include <thread>
#include <utility>

namespace emulator {
namespace {

constexpr const char* kOffsetSetting = "clock_offset";

}  // namespace

Ticks hostTime() {
  using namespace std::chrono;
  using Duration = duration<Ticks, std::ratio<1, kTicksPerSecond>>;
  constexpr Duration kUnixEpoch = sys_days(January / 1 / 1970) - sys_days(January / 1 / 1601);
  return (kUnixEpoch + floor<Duration>(system_clock::now().time_since_epoch())).count();
}

Clock::Clock(Settings& settings, Source source, Pace pace)
    : settings_(settings), source_(std::move(source)), pace_(pace), offset_(savedOffset()), opened_(now()) {}

void Clock::sleep(DWORD milliseconds) {
  if (pace_ == Pace::RealTime) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
  } else {
    offset_ += milliseconds * kTicksPerMillisecond;
    settings_.put(kOffsetSetting, offset_);
  }
  runDue();
}

void Clock::after(DWORD milliseconds, std::function<void()> action) {
  if (milliseconds == 0) {
    action();
  } else {
    planned_.emplace(now() + milliseconds * kTicksPerMillisecond, std::move(action));
  }
}

void Clock::runDue() {
  while (!planned_.empty() && planned_.begin()->first <= now()) {
    const auto due = planned_.extract(planned_.begin());
    due.mapped()();
  }
}

DWORD Clock::tickCount() const {
  return static_cast<DWORD>((now() - opened_) / kTicksPerMillisecond);
}

void Clock::reload() {
  offset_ = savedOffset();
}

Ticks Clock::savedOffset() const {
  return settings_.get<Ticks>(kOffsetSetting).value_or(0);
}

}  // namespace emulator
