// The exceptions of a series as the object model gives them.
#pragma once

#include "emulator/pim/com_object.h"
#include "emulator/pim/com_reference.h"
#include "emulator/pim/item_core.h"
#include "platform/recurrence.h"

namespace emulator {

/// The exceptions as they are at each call: one that is made while the collection is held appears in it.
/// Those that a put dropped are gone from it before the item is saved. Tasks have none.
class ExceptionsObject final : public ComObject<IExceptions> {
 public:
  /// Keeps the item alive.
  ExceptionsObject(ItemCore& item, IUnknown* owner);

  HRESULT Item(int index, IException** exception) override;
  HRESULT get_Count(int* count) override;
  HRESULT get__NewEnum(IUnknown**) override { return E_NOTIMPL; }
  HRESULT get_Application(IPOutlookApp**) override { return E_NOTIMPL; }

 private:
  const SeriesExceptions& current();

  ItemCore& item_;
  ComReference<IUnknown> owner_;
  SeriesExceptions exceptions_;
  std::int64_t version_ = -1;  ///< of the device file when the exceptions were read
};

/// One exception, as it was when it was taken from its collection.
class ExceptionObject final : public ComObject<IException> {
 public:
  ExceptionObject(ModelContext& context, Oid series, Day originalDay, bool deleted);

  HRESULT get_AppointmentItem(IAppointment** appointment) override;
  HRESULT get_OriginalDate(DATE* date) override;
  HRESULT get_Deleted(VARIANT_BOOL* deleted) override;
  HRESULT get_Application(IPOutlookApp**) override { return E_NOTIMPL; }

 private:
  ModelContext& context_;
  Oid series_;
  Day originalDay_;
  bool deleted_;
};

}  // namespace emulator
