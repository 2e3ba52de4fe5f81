// The component model: base interfaces, streams, and the calls that make objects.
#pragma once

#include "platform/types.h"

struct ITypeInfo;
struct DISPPARAMS;
struct VARIANT;
struct EXCEPINFO;
using DISPID = LONG;
using LCID = DWORD;

/// The identifier of an interface, found by its type.
template <typename Interface>
inline constexpr IID kInterfaceId = Interface::kIid;

/// Objects count their references and end themselves with the last one; nobody deletes through an interface.
class IUnknown {
 public:
  static constexpr IID kIid{0x00000000, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

  /// S_OK with a new reference in *object, which the caller releases; E_NOINTERFACE and null otherwise.
  virtual HRESULT QueryInterface(REFIID iid, void** object) = 0;
  /// The new number of references.
  virtual ULONG AddRef() = 0;
  /// The number of references left; at 0 the object is gone.
  virtual ULONG Release() = 0;

 protected:
  ~IUnknown() = default;
};

class IDispatch : public IUnknown {
 public:
  static constexpr IID kIid{0x00020400, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

  virtual HRESULT GetTypeInfoCount(UINT* count) = 0;
  virtual HRESULT GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) = 0;
  virtual HRESULT GetIDsOfNames(REFIID iid, LPWSTR* names, UINT count, LCID locale, DISPID* ids) = 0;
  virtual HRESULT Invoke(DISPID member, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                         VARIANT* result, EXCEPINFO* exception, UINT* argumentError) = 0;

 protected:
  ~IDispatch() = default;
};

class ISequentialStream : public IUnknown {
 public:
  static constexpr IID kIid{0x0C733A30, 0x2A1C, 0x11CE, {0xAD, 0xE5, 0x00, 0xAA, 0x00, 0x44, 0x77, 0x3D}};

  /// Blocks until `count` bytes or the end came; *bytesRead says how many did. A failing result moved
  /// nothing.
  virtual HRESULT Read(void* buffer, ULONG count, ULONG* bytesRead) = 0;
  virtual HRESULT Write(const void* buffer, ULONG count, ULONG* bytesWritten) = 0;

 protected:
  ~ISequentialStream() = default;
};

inline constexpr DWORD STREAM_SEEK_SET = 0;
inline constexpr DWORD STREAM_SEEK_CUR = 1;
inline constexpr DWORD STREAM_SEEK_END = 2;
inline constexpr DWORD STATFLAG_NONAME = 1;

struct STATSTG {
  LPWSTR pwcsName;
  DWORD type;
  ULARGE_INTEGER cbSize;
  FILETIME mtime;
  FILETIME ctime;
  FILETIME atime;
  DWORD grfMode;
  DWORD grfLocksSupported;
  CLSID clsid;
  DWORD grfStateBits;
  DWORD reserved;
};
static_assert(kHasDeviceLayout<sizeof(STATSTG), 72>);

class IStream : public ISequentialStream {
 public:
  static constexpr IID kIid{0x0000000C, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

  virtual HRESULT Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* newPosition) = 0;
  virtual HRESULT SetSize(ULARGE_INTEGER size) = 0;
  virtual HRESULT CopyTo(IStream* target, ULARGE_INTEGER count, ULARGE_INTEGER* read,
                         ULARGE_INTEGER* written) = 0;
  virtual HRESULT Commit(DWORD flags) = 0;
  virtual HRESULT Revert() = 0;
  virtual HRESULT LockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER count, DWORD type) = 0;
  virtual HRESULT UnlockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER count, DWORD type) = 0;
  /// With STATFLAG_NONAME the name is left null and nothing needs freeing.
  virtual HRESULT Stat(STATSTG* statistics, DWORD flag) = 0;
  virtual HRESULT Clone(IStream** clone) = 0;

 protected:
  ~IStream() = default;
};

inline constexpr DWORD COINIT_MULTITHREADED = 0;
inline constexpr DWORD CLSCTX_INPROC_SERVER = 1;

/// S_OK, S_FALSE when initialised before, RPC_E_CHANGED_MODE when initialised otherwise.
extern "C" HRESULT CoInitializeEx(void* reserved, DWORD mode) CE_CALL(CoInitializeEx);
extern "C" void CoUninitialize() CE_CALL(CoUninitialize);
/// S_OK with a reference in *object that the caller releases; REGDB_E_CLASSNOTREG when the class is not
/// registered.
extern "C" HRESULT CoCreateInstance(REFCLSID classId, IUnknown* outer, DWORD context, REFIID iid,
                                    void** object) CE_CALL(CoCreateInstance);
extern "C" void CoFreeUnusedLibraries() CE_CALL(CoFreeUnusedLibraries);
