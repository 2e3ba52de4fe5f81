#include "emulator/pim/occurrence.h"

#include <algorithm>

#include "emulator/pim/recurrence_series.h"
#include "emulator/pim/variant_time.h"
#include "platform/outlook.h"

namespace emulator {
namespace {

using Neighbour = std::optional<Day> (*)(const RecurrenceRule& rule, Day day);

double startOf(const PimItem& series, const SeriesExceptions& exceptions, Day originalDay) {
  const SeriesException* exception = findException(exceptions, originalDay);
  return exception != nullptr ? exception->appointment->get<double>(kStart)
                              : plainOccurrence(series, originalDay).get<double>(kStart);
}

// When the nearest occurrence in one direction that was not deleted starts.
std::optional<double> neighbouringStart(const PimItem& series, const SeriesExceptions& exceptions, Day day,
                                        Neighbour neighbour) {
  std::optional<Day> at = neighbour(*series.rule, day);
  const auto isDeleted = [&](Day original) {
    const SeriesException* exception = findException(exceptions, original);
    return exception != nullptr && !exception->appointment;
  };
  while (at && isDeleted(*at)) at = neighbour(*series.rule, *at);
  if (!at) return std::nullopt;
  return startOf(series, exceptions, *at);
}

bool sharesItsDay(const SeriesExceptions& exceptions, const SeriesException& exception) {
  const Day day = dayAt(exception.appointment->get<double>(kStart));
  return std::ranges::any_of(exceptions, [&](const SeriesException& other) {
    return other.originalDay != exception.originalDay && other.appointment &&
           dayAt(other.appointment->get<double>(kStart)) == day;
  });
}

}  // namespace

const SeriesException* findException(const SeriesExceptions& exceptions, Day originalDay) {
  const auto found = std::ranges::lower_bound(exceptions, originalDay, {}, &SeriesException::originalDay);
  return found != exceptions.end() && found->originalDay == originalDay ? &*found : nullptr;
}

ItemRecord plainOccurrence(const PimItem& series, Day day) {
  ItemRecord record = series.properties;
  const double start = record.get<double>(kStart);
  const double end = record.get<double>(kEnd);
  const double moved = day + timeOfDayAt(start);
  record.set(kStart, moved);
  if (end != kNoDate) record.set(kEnd, roundToMillisecond(moved + end - start));
  return record;
}

bool hasOccurrenceOn(const PimItem& series, const std::optional<SeriesException>& exception, Day day) {
  if (!exception) return series.rule && isOccurrence(*series.rule, day);
  return exception->appointment && dayAt(exception->appointment->get<double>(kStart)) == day;
}

HRESULT checkStanding(const PimItem& series, const SeriesExceptions& exceptions,
                      const SeriesException& exception) {
  if (!series.rule || !isOccurrence(*series.rule, exception.originalDay)) return E_INVALIDARG;
  return exception.appointment && sharesItsDay(exceptions, exception) ? E_EXCEPTIONSAMEDAY : S_OK;
}

HRESULT checkPlacement(const PimItem& series, const SeriesExceptions& exceptions,
                       const SeriesException& exception) {
  const HRESULT standing = checkStanding(series, exceptions, exception);
  if (FAILED(standing) || !exception.appointment) return standing;
  const double start = exception.appointment->get<double>(kStart);
  const auto before = neighbouringStart(series, exceptions, exception.originalDay, occurrenceBefore);
  const auto after = neighbouringStart(series, exceptions, exception.originalDay, occurrenceAfter);
  const bool isPast = (before && start < *before) || (after && start > *after);
  return isPast ? E_OVERLAPPINGEXCEPTION : S_OK;
}

}  // namespace emulator
