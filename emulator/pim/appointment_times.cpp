#include "emulator/pim/appointment_times.h"

#include <cmath>

#include "emulator/pim/variant_time.h"

namespace emulator {
namespace {

// A pattern's times may be any date; only the time of day counts.
bool isTime(double time) {
  return isInCalendar(time, kFirstDay);
}

}  // namespace

LONG durationInMinutes(const ItemRecord& appointment) {
  return static_cast<LONG>(
      std::lround((appointment.get<double>(kEnd) - appointment.get<double>(kStart)) / kMinute));
}

HRESULT putDuration(const PimItems& items, ItemRecord& appointment, LONG minutes) {
  if (minutes < 0 || minutes > kLongestDuration) return E_INVALIDARG;
  return items.put(appointment, kEnd,
                   roundToMillisecond(appointment.get<double>(kStart) + minutes * kMinute));
}

HRESULT putStartTime(const PimItems& items, ItemRecord& appointment, double time) {
  if (!isTime(time)) return E_INVALIDARG;
  return items.put(appointment, kStart, dayAt(appointment.get<double>(kStart)) + timeOfDayAt(time));
}

HRESULT putEndTime(const PimItems& items, ItemRecord& appointment, double time) {
  if (!isTime(time)) return E_INVALIDARG;
  const double start = appointment.get<double>(kStart);
  const double end = dayAt(start) + timeOfDayAt(time);
  return items.put(appointment, kEnd, end < start ? end + 1 : end);
}

}  // namespace emulator
