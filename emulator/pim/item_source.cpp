#include "emulator/pim/item_source.h"

#include "emulator/pim/occurrence.h"

namespace emulator {

std::optional<PimItem> StoredItem::load() {
  return oid_ == 0 ? items_.make(kind_) : items_.load(kind_, oid_);
}

HRESULT StoredItem::save(PimItem& item) {
  const HRESULT result = oid_ == 0 ? items_.add(item) : items_.change(item);
  if (SUCCEEDED(result)) oid_ = item.oid;
  return result;
}

HRESULT StoredItem::remove() {
  return items_.remove(oid_) ? S_OK : E_FAIL;
}

std::optional<PimItem> OccurrenceOfSeries::load() {
  std::optional<PimItem> series = items_.load(ObjectKind::Appointment, series_);
  if (!series) return std::nullopt;
  const std::optional<SeriesException> exception = items_.exceptionOf(*series, originalDay_);
  if (exception && !exception->appointment) return std::nullopt;
  series->properties = exception ? *exception->appointment : plainOccurrence(*series, originalDay_);
  series->properties.forgetChanges();
  return series;
}

HRESULT OccurrenceOfSeries::save(PimItem& item) {
  const HRESULT result = items_.putException(series_, {originalDay_, item.properties});
  if (FAILED(result)) return result;
  std::optional<PimItem> saved = load();
  if (!saved) return E_FAIL;
  item = std::move(*saved);
  return S_OK;
}

HRESULT OccurrenceOfSeries::remove() {
  return items_.putException(series_, {originalDay_, std::nullopt});
}

}  // namespace emulator
