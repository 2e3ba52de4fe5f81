#include "emulator/pim/stored_recurrence.h"

#include <cmath>

#include "emulator/pim/recurrence_blob.h"
#include "emulator/pim/variant_time.h"

namespace emulator {
namespace {

std::int32_t minutesOf(double days) {
  return static_cast<std::int32_t>(std::lround(days / kMinute));
}

OccurrenceTimes timesOf(const ItemRecord& appointment) {
  const double start = appointment.get<double>(kStart);
  const std::int32_t startMinutes = minutesOf(timeOfDayAt(start));
  return {startMinutes, startMinutes + minutesOf(appointment.get<double>(kEnd) - start)};
}

}  // namespace

std::vector<std::uint8_t> storedRecurrence(PimItems& items, const PimItem& series) {
  StoredRecurrence recurrence{*series.rule, {}, {}, std::nullopt};
  for (const SeriesException& exception : items.exceptions(series)) {
    recurrence.replaced.push_back(exception.originalDay);
    if (exception.appointment)
      recurrence.changed.push_back(dayAt(exception.appointment->get<double>(kStart)));
  }
  if (series.kind() == ObjectKind::Appointment) recurrence.times = timesOf(series.properties);
  return recurrenceBlob(recurrence);
}

}  // namespace emulator
