#include "emulator/pim/pim_items.h"

#include <algorithm>

#include "emulator/pim/occurrence.h"
#include "emulator/pim/recurrence_puts.h"

namespace emulator {
namespace {

void markSaved(PimItem& item) {
  item.properties.forgetChanges();
  item.ruleChanged = false;
  item.exceptionsDropped = false;
}

HRESULT prepareAll(SeriesExceptions& exceptions) {
  for (SeriesException& exception : exceptions) {
    const HRESULT result = exception.appointment ? prepareForSave(*exception.appointment) : S_OK;
    if (FAILED(result)) return result;
  }
  return S_OK;
}

}  // namespace

PimItems::PimItems(ObjectStore& store, LocalClock clock)
    : store_(store), storage_(store), clock_(std::move(clock)) {}

HRESULT PimItems::put(ItemRecord& record, std::size_t place, PropertyValue value) const {
  return putProperty(record, place, std::move(value), clock_);
}

RecurrenceRule PimItems::freshPattern(const ItemRecord& item) const {
  return freshRule(item, clock_);
}

std::optional<ObjectKind> PimItems::kindOf(Oid oid) {
  const std::optional<ObjectKind> kind = store_.kindOf(oid);
  return kind && isItem(*kind) ? kind : std::nullopt;
}

HRESULT PimItems::add(PimItem& item) {
  PimItem saved = item;
  const HRESULT result = prepareForSave(saved);
  if (FAILED(result)) return result;
  storage_.insert(saved);
  markSaved(saved);
  item = std::move(saved);
  notify(ItemChangeKind::Added, item);
  return S_OK;
}

HRESULT PimItems::change(PimItem& item) {
  std::optional<PimItem> saved = storage_.load(item.kind(), item.oid);
  if (!saved) return E_FAIL;
  saved->properties.takeChanges(item.properties);
  if (item.ruleChanged) saved->rule = item.rule;
  HRESULT result = prepareForSave(*saved);
  if (FAILED(result)) return result;
  SeriesExceptions exceptions = keptExceptions(*saved, item.exceptionsDropped);
  result = prepareAll(exceptions);
  if (FAILED(result)) return result;
  storage_.update(*saved);
  if (exceptions.empty()) storage_.removeExceptions(item.oid);
  for (const SeriesException& exception : exceptions) {
    if (exception.appointment) storage_.moveException(item.oid, exception);
  }
  item = std::move(*saved);
  markSaved(item);
  notify(ItemChangeKind::Changed, item);
  return S_OK;
}

SeriesExceptions PimItems::keptExceptions(const PimItem& series, bool dropped) {
  if (dropped || series.kind() != ObjectKind::Appointment || !series.rule) return {};
  SeriesExceptions exceptions = storage_.loadExceptions(series);
  const bool stand = std::ranges::all_of(exceptions, [&](const SeriesException& exception) {
    return SUCCEEDED(checkStanding(series, exceptions, exception));
  });
  return stand ? exceptions : SeriesExceptions();
}

bool PimItems::remove(Oid oid) {
  const std::optional<ObjectKind> kind = kindOf(oid);
  if (!kind) return false;
  storage_.remove(*kind, oid);
  if (listener_) listener_({ItemChangeKind::Deleted, *kind, oid});
  return true;
}

HRESULT PimItems::putException(Oid oid, SeriesException exception) {
  const std::optional<PimItem> series = storage_.load(ObjectKind::Appointment, oid);
  if (!series) return E_FAIL;
  if (exception.appointment) {
    const HRESULT prepared = prepareForSave(*exception.appointment);
    if (FAILED(prepared)) return prepared;
  }
  const HRESULT result = checkPlacement(*series, storage_.loadExceptions(*series), exception);
  if (FAILED(result)) return result;
  storage_.putException(*series, exception);
  notify(ItemChangeKind::Changed, *series);
  return S_OK;
}

HRESULT PimItems::replaceExceptions(const PimItem& series, SeriesExceptions exceptions) {
  std::ranges::sort(exceptions, {}, &SeriesException::originalDay);
  const HRESULT prepared = prepareAll(exceptions);
  if (FAILED(prepared)) return prepared;
  const auto sameOccurrence = [](const SeriesException& left, const SeriesException& right) {
    return left.originalDay == right.originalDay;
  };
  if (std::ranges::adjacent_find(exceptions, sameOccurrence) != exceptions.end()) return E_INVALIDARG;
  for (const SeriesException& exception : exceptions) {
    const HRESULT result = checkStanding(series, exceptions, exception);
    if (FAILED(result)) return result;
  }
  storage_.removeExceptions(series.oid);
  for (const SeriesException& exception : exceptions) storage_.putException(series, exception);
  notify(ItemChangeKind::Changed, series);
  return S_OK;
}

void PimItems::notify(ItemChangeKind change, const PimItem& item) const {
  if (listener_) listener_({change, item.kind(), item.oid});
}

}  // namespace emulator
