// A device with an object model, and a check after every test that nothing of it is left behind.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "emulator/pim/com_reference.h"
#include "emulator/pim/host_memory.h"
#include "emulator/pim/object_model.h"
#include "platform/appointment.h"
#include "platform/contact.h"
#include "platform/outlook.h"
#include "platform/recurrence.h"
#include "platform/task.h"
#include "tests/emulator/temporary_folder.h"

namespace emulator::test {

inline constexpr double kPoisonDate = -1234.5;
inline constexpr LONG kPoisonNumber = -77;

/// A DATE's number.
inline double date(int year, int month, int day, int hour = 0, int minute = 0) {
  return dayOf(std::chrono::year{year} / month / day) + (hour * 60 + minute) / 1440.0;
}

class PimTest : public testing::Test {
 protected:
  PimTest();
  ~PimTest() override;

  PimItems& items() { return model_.items(); }

  ComReference<IContact> newContact();
  ComReference<IAppointment> newAppointment();
  ComReference<ITask> newTask();
  /// A saved appointment of one hour.
  ComReference<IAppointment> savedAppointment(double start, const std::u16string& subject = u"Standup");
  /// A saved weekly series of that many occurrences, each an hour long, from a Monday on.
  ComReference<IAppointment> savedSeries(int occurrences);

  ComReference<IPOutlookItemCollection> collection(int folder);
  /// The object of an item; empty when nothing has the identifier.
  template <typename Interface>
  ComReference<Interface> find(LONG oid) {
    ComReference<IDispatch> item;
    if (FAILED(app_->GetItemFromOid(oid, item.out()))) return {};
    return as<Interface>(item.get());
  }

  template <typename Interface>
  static ComReference<Interface> as(IUnknown* object) {
    ComReference<Interface> result;
    void* found = nullptr;
    if (SUCCEEDED(object->QueryInterface(Interface::kIid, &found)))
      *result.out() = static_cast<Interface*>(found);
    return result;
  }

  /// Reads through a getter that was given something else to overwrite; fails the test when it fails.
  template <typename Interface>
  std::u16string text(ComReference<Interface>& object, HRESULT (Interface::*getter)(BSTR*)) {
    BSTR value = nullptr;
    EXPECT_EQ((object.get()->*getter)(&value), S_OK);
    if (value == nullptr) return u"(null)";
    std::u16string result(value);
    EXPECT_EQ(app_->SysFreeString(value), S_OK);
    return result;
  }
  template <typename Interface>
  static double moment(ComReference<Interface>& object, HRESULT (Interface::*getter)(DATE*)) {
    DATE value = kPoisonDate;
    EXPECT_EQ((object.get()->*getter)(&value), S_OK);
    return value;
  }
  template <typename Interface>
  static LONG number(ComReference<Interface>& object, HRESULT (Interface::*getter)(LONG*)) {
    LONG value = kPoisonNumber;
    EXPECT_EQ((object.get()->*getter)(&value), S_OK);
    return value;
  }
  template <typename Interface>
  static VARIANT_BOOL flag(ComReference<Interface>& object, HRESULT (Interface::*getter)(VARIANT_BOOL*)) {
    VARIANT_BOOL value = 77;
    EXPECT_EQ((object.get()->*getter)(&value), S_OK);
    return value;
  }

  /// Gives a text as callers do, who own it.
  template <typename Interface>
  static HRESULT put(ComReference<Interface>& object, HRESULT (Interface::*setter)(BSTR),
                     std::u16string value) {
    return (object.get()->*setter)(value.data());
  }

  ComReference<IRecurrencePattern> pattern(ComReference<IAppointment>& appointment);
  static ComReference<IAppointment> occurrence(ComReference<IRecurrencePattern>& pattern, double day);
  static ComReference<IExceptions> exceptions(ComReference<IRecurrencePattern>& pattern);
  static int count(ComReference<IExceptions>& exceptions);

  double now_ = date(2005, 3, 14, 10, 37);  ///< a Monday
  TemporaryFolder folder_;
  std::unique_ptr<ObjectStore> store_;
  HostMemory memory_;
  ObjectModel model_;
  ComReference<IPOutlookApp> app_;
  const HANDLE heap_ = reinterpret_cast<HANDLE>(0x1000);

 private:
  std::unique_ptr<ObjectStore> makeStore();
};

}  // namespace emulator::test
