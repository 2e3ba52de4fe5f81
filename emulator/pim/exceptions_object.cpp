#include "emulator/pim/exceptions_object.h"

#include "emulator/pim/appointment_object.h"

namespace emulator {

ExceptionsObject::ExceptionsObject(ItemCore& item, IUnknown* owner)
    : ComObject(item.context().live, ModelClass::Exceptions), item_(item), owner_(owner) {}

const SeriesExceptions& ExceptionsObject::current() {
  const PimItem* item = item_.item();
  if (item == nullptr || item->exceptionsDropped) {
    exceptions_.clear();
    version_ = -1;
  } else if (version_ != item_.context().items.version()) {
    exceptions_ = item_.context().items.exceptions(*item);
    version_ = item_.context().items.version();
  }
  return exceptions_;
}

HRESULT ExceptionsObject::Item(int index, IException** exception) {
  if (exception == nullptr) return E_POINTER;
  *exception = nullptr;
  return atBoundary([&] {
    const SeriesExceptions& exceptions = current();
    if (index < 1 || static_cast<std::size_t>(index) > exceptions.size()) return E_INVALIDARG;
    const SeriesException& found = exceptions[static_cast<std::size_t>(index) - 1];
    *exception = new ExceptionObject(item_.context(), item_.oid(), found.originalDay, !found.appointment);
    return S_OK;
  });
}

HRESULT ExceptionsObject::get_Count(int* count) {
  if (count == nullptr) return E_POINTER;
  return atBoundary([&] {
    *count = static_cast<int>(current().size());
    return S_OK;
  });
}

ExceptionObject::ExceptionObject(ModelContext& context, Oid series, Day originalDay, bool deleted)
    : ComObject(context.live, ModelClass::Exception),
      context_(context),
      series_(series),
      originalDay_(originalDay),
      deleted_(deleted) {}

HRESULT ExceptionObject::get_AppointmentItem(IAppointment** appointment) {
  if (appointment == nullptr) return E_POINTER;
  *appointment = nullptr;
  if (deleted_) return E_FAIL;
  return atBoundary([&] {
    *appointment = new AppointmentObject(
        context_, std::make_unique<OccurrenceOfSeries>(context_.items, series_, originalDay_));
    return S_OK;
  });
}

HRESULT ExceptionObject::get_OriginalDate(DATE* date) {
  if (date == nullptr) return E_POINTER;
  *date = static_cast<double>(originalDay_);
  return S_OK;
}

HRESULT ExceptionObject::get_Deleted(VARIANT_BOOL* deleted) {
  if (deleted == nullptr) return E_POINTER;
  *deleted = deleted_ ? VARIANT_TRUE : VARIANT_FALSE;
  return S_OK;
}

}  // namespace emulator
