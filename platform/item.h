// The property interface that every object-model item and folder offers beside its own.
#pragma once

#include "platform/com.h"
#include "platform/property_database.h"
#include "platform/windows.h"

class IFolder;
class IPOutlookApp;

/// The stored recurrence of an appointment and of a task, blobs in the object store's standard structure.
inline constexpr CEPROPID kAppointmentRecurrenceProperty = 0x40150041;
inline constexpr CEPROPID kTaskRecurrenceProperty = 0x41160041;
/// The body as a stream of ANSI text, through OpenProperty only.
inline constexpr CEPROPID PIMPR_BODY_BINARY = 0x001E0064;
/// Which changes of a folder are notified; 3 is all.
inline constexpr CEPROPID PIMPR_FOLDERNOTIFICATIONS = 0x10010013;

class IItem : public IUnknown {
 public:
  static constexpr IID kIid{0xFB8998D0, 0x38F0, 0x4D12, {0xAC, 0x56, 0x4E, 0xC8, 0xFC, 0xE9, 0xF3, 0xD5}};

  /// With CEDB_ALLOWREALLOC the values come in one block of `heap`, which the caller frees with HeapFree; a
  /// value that is not there has CEDB_PROPNOTFOUND in its flags. Fails before the item's first save.
  virtual HRESULT GetProps(const CEPROPID* ids, ULONG flags, WORD count, CEPROPVAL** values, ULONG* size,
                           HANDLE heap) = 0;
  virtual HRESULT SetProps(ULONG flags, WORD count, CEPROPVAL* values) = 0;
  virtual HRESULT Save() = 0;
  virtual HRESULT Delete() = 0;
  virtual HRESULT Display(HWND owner) = 0;
  virtual HRESULT Edit(HWND owner) = 0;
  virtual HRESULT Copy(IItem** copy) = 0;
  virtual HRESULT get_Oid(LONG* oid) = 0;
  /// What is written to the stream takes effect with Save.
  virtual HRESULT OpenProperty(CEPROPID id, DWORD mode, IStream** stream) = 0;
  virtual HRESULT get_DefaultItemType(int* type) = 0;
  virtual HRESULT get_Application(IPOutlookApp** application) = 0;
  virtual HRESULT get_Parent(IFolder** folder) = 0;
  virtual HRESULT AddCategory(LPCWSTR category) = 0;
  virtual HRESULT RemoveCategory(LPCWSTR category) = 0;

 protected:
  ~IItem() = default;
};
