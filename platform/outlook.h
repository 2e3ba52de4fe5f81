// The object model's application, folders and item collections.
#pragma once

#include "platform/com.h"
#include "platform/item.h"
#include "platform/time.h"

class ICity;
class IPOutlookApp;
class IPOutlookItemCollection;
class ITimeZone;

inline constexpr int olFolderCalendar = 9;
inline constexpr int olFolderContacts = 10;
inline constexpr int olFolderTasks = 13;
inline constexpr int olFolderCities = 101;
inline constexpr int olFolderInfrared = 102;

inline constexpr int olAppointmentItem = 1;
inline constexpr int olContactItem = 2;
inline constexpr int olTaskItem = 3;
inline constexpr int olCityItem = 102;

inline constexpr LONG olNormal = 0;
inline constexpr LONG olPrivate = 2;

inline constexpr LONG olFree = 0;
inline constexpr LONG olTentative = 1;
inline constexpr LONG olBusy = 2;
inline constexpr LONG olOutOfOffice = 3;

/// What the object model reports for a date that is not set: 4501-01-01.
inline constexpr double kNoDate = 949998.0;

inline constexpr CLSID CLSID_Application{
    0x05058F23, 0x20BE, 0x11D2, {0x8F, 0x18, 0x00, 0x00, 0xF8, 0x7A, 0x43, 0x35}};

class IFolder : public IDispatch {
 public:
  static constexpr IID kIid{0x05058F20, 0x20BE, 0x11D2, {0x8F, 0x18, 0x00, 0x00, 0xF8, 0x7A, 0x43, 0x35}};

  virtual HRESULT get_Items(IPOutlookItemCollection** items) = 0;
  virtual HRESULT get_DefaultItemType(int* type) = 0;
  virtual HRESULT get_Application(IPOutlookApp** application) = 0;
  virtual HRESULT AddItemToInfraredFolder(int type, IDispatch* item) = 0;
  virtual HRESULT SendToInfrared() = 0;
  virtual HRESULT ReceiveFromInfrared(IPOutlookItemCollection** items) = 0;

 protected:
  ~IFolder() = default;
};

/// A folder's items as they were when the collection was made. A series is one entry.
class IPOutlookItemCollection : public IDispatch {
 public:
  static constexpr IID kIid{0xF06748C0, 0x21A5, 0x11D2, {0x8F, 0x18, 0x00, 0x00, 0xF8, 0x7A, 0x43, 0x35}};

  virtual HRESULT Add(IDispatch** item) = 0;
  virtual HRESULT get_Count(int* count) = 0;
  virtual HRESULT Find(BSTR restriction, IDispatch** item) = 0;
  virtual HRESULT FindNext(IDispatch** item) = 0;
  /// Indices count from 1; E_INVALIDARG outside.
  virtual HRESULT Item(int index, IDispatch** item) = 0;
  /// Deletes the item from the store.
  virtual HRESULT Remove(int index) = 0;
  virtual HRESULT Restrict(BSTR restriction, IPOutlookItemCollection** items) = 0;
  virtual HRESULT Sort(BSTR property, VARIANT_BOOL descending) = 0;
  virtual HRESULT get_IncludeRecurrences(VARIANT_BOOL* include) = 0;
  virtual HRESULT put_IncludeRecurrences(VARIANT_BOOL include) = 0;
  virtual HRESULT get__NewEnum(IUnknown** enumerator) = 0;
  virtual HRESULT get_Application(IPOutlookApp** application) = 0;

 protected:
  ~IPOutlookItemCollection() = default;
};

/// Interfaces that a call hands out are the caller's to release.
class IPOutlookApp : public IDispatch {
 public:
  static constexpr IID kIid{0x05058F22, 0x20BE, 0x11D2, {0x8F, 0x18, 0x00, 0x00, 0xF8, 0x7A, 0x43, 0x35}};

  /// The owner window travels as a number; 0 for none.
  virtual HRESULT Logon(LONG owner) = 0;
  virtual HRESULT Logoff() = 0;
  virtual HRESULT get_Version(BSTR* version) = 0;
  virtual HRESULT GetDefaultFolder(int folder, IFolder** object) = 0;
  /// A new item, which has no identifier before its first save. The object is an IContact, IAppointment or
  /// ITask.
  virtual HRESULT CreateItem(int type, IDispatch** item) = 0;
  /// E_INVALIDARG when no contact, appointment or task has the identifier.
  virtual HRESULT GetItemFromOid(LONG oid, IDispatch** item) = 0;
  virtual HRESULT get_HomeCity(ICity** city) = 0;
  virtual HRESULT put_HomeCity(ICity* city) = 0;
  virtual HRESULT get_VisitingCity(ICity** city) = 0;
  virtual HRESULT put_VisitingCity(ICity* city) = 0;
  virtual HRESULT get_CurrentCityIndex(LONG* index) = 0;
  virtual HRESULT put_CurrentCityIndex(LONG index) = 0;
  virtual HRESULT ReceiveFromInfrared() = 0;
  virtual HRESULT get_OutlookCompatible(VARIANT_BOOL* compatible) = 0;
  virtual HRESULT GetTimeZoneFromIndex(int index, ITimeZone** zone) = 0;
  virtual HRESULT GetTimeZoneInformationFromIndex(int index, TIME_ZONE_INFORMATION* zone) = 0;
  virtual HRESULT get_Application(IPOutlookApp** application) = 0;
  virtual HRESULT SysFreeString(BSTR text) = 0;
  /// Whole seconds; the milliseconds are 0 and the day of week is filled in.
  virtual HRESULT VariantTimeToSystemTime(DATE date, SYSTEMTIME* time) = 0;
  virtual HRESULT SystemTimeToVariantTime(SYSTEMTIME* time, DATE* date) = 0;

 protected:
  ~IPOutlookApp() = default;
};
