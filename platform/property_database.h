// Property databases and the object store's identifiers.
#pragma once

#include "platform/types.h"

using CEOID = DWORD;
/// A property's number in the high word, its type in the low word.
using CEPROPID = DWORD;

inline constexpr WORD CEVT_I2 = 2;
inline constexpr WORD CEVT_I4 = 3;
inline constexpr WORD CEVT_R8 = 5;
inline constexpr WORD CEVT_BOOL = 11;
inline constexpr WORD CEVT_UI2 = 18;
inline constexpr WORD CEVT_UI4 = 19;
inline constexpr WORD CEVT_LPWSTR = 31;
inline constexpr WORD CEVT_FILETIME = 64;
inline constexpr WORD CEVT_BLOB = 65;
inline constexpr WORD CEVT_PIM_STREAM = 100;
inline constexpr WORD CEVT_PIM_AUTO_I4 = 102;

inline constexpr WORD CEDB_PROPNOTFOUND = 0x0100;  ///< set by reads
inline constexpr WORD CEDB_PROPDELETE = 0x0200;    ///< given to writes
inline constexpr DWORD CEDB_ALLOWREALLOC = 1;
inline constexpr DWORD CEDB_AUTOINCREMENT = 1;

inline constexpr DWORD CEDB_SORT_DESCENDING = 1;
inline constexpr DWORD CEDB_SORT_CASEINSENSITIVE = 2;
inline constexpr DWORD CEDB_SORT_UNKNOWNFIRST = 4;
inline constexpr DWORD CEDB_SORT_UNIQUE = 0x200;
inline constexpr DWORD CEDB_SORT_NONNULL = 0x400;

inline constexpr DWORD CEDB_VALIDNAME = 1;
inline constexpr DWORD CEDB_VALIDTYPE = 2;
inline constexpr DWORD CEDB_VALIDSORTSPEC = 4;
inline constexpr DWORD CEDB_VALIDMODTIME = 8;
inline constexpr DWORD CEDB_VALIDDBFLAGS = 0x10;
inline constexpr DWORD CEDB_NOCOMPRESS = 0x10000;
inline constexpr DWORD CEDB_SYSTEMDB = 0x20000;

inline constexpr DWORD CEDB_SEEK_CEOID = 0x01;
inline constexpr DWORD CEDB_SEEK_BEGINNING = 0x02;
inline constexpr DWORD CEDB_SEEK_END = 0x04;
inline constexpr DWORD CEDB_SEEK_CURRENT = 0x08;
inline constexpr DWORD CEDB_SEEK_VALUESMALLER = 0x10;
inline constexpr DWORD CEDB_SEEK_VALUEFIRSTEQUAL = 0x20;
inline constexpr DWORD CEDB_SEEK_VALUEGREATER = 0x40;
inline constexpr DWORD CEDB_SEEK_VALUENEXTEQUAL = 0x80;

inline constexpr std::size_t CEDB_MAXDBASENAMELEN = 32;
inline constexpr std::size_t CEDB_MAXSORTORDER = 4;
inline constexpr std::size_t CEDB_MAXSORTPROP = 3;

inline constexpr WORD OBJTYPE_INVALID = 0;
inline constexpr WORD OBJTYPE_FILE = 1;
inline constexpr WORD OBJTYPE_DIRECTORY = 2;
inline constexpr WORD OBJTYPE_DATABASE = 3;
inline constexpr WORD OBJTYPE_RECORD = 4;

/// All zero is the object store; all ones is no volume in particular.
struct CEGUID {
  DWORD Data1;
  DWORD Data2;
  DWORD Data3;
  DWORD Data4;

  friend constexpr bool operator==(const CEGUID&, const CEGUID&) = default;
};
inline constexpr CEGUID kSystemVolume{0, 0, 0, 0};
inline constexpr CEGUID kInvalidVolume{~DWORD{0}, ~DWORD{0}, ~DWORD{0}, ~DWORD{0}};

struct CEBLOB {
  DWORD dwCount;
  BYTE* lpb;
};
static_assert(kHasDeviceLayout<sizeof(CEBLOB), 8>);

union CEVALUNION {
  SHORT iVal;
  USHORT uiVal;
  LONG lVal;
  ULONG ulVal;
  FILETIME filetime;
  LPWSTR lpwstr;
  CEBLOB blob;
  BOOL boolVal;
  double dblVal;
};

struct CEPROPVAL {
  CEPROPID propid;
  WORD wLenData;
  WORD wFlags;
  CEVALUNION val;
};
static_assert(kHasDeviceLayout<sizeof(CEPROPVAL), 16>);

struct SORTORDERSPEC {
  CEPROPID propid;
  DWORD dwFlags;
};

struct SORTORDERSPECEX {
  WORD wVersion;  ///< 1
  WORD wNumProps;
  WORD wKeyFlags;
  WORD wReserved;
  CEPROPID rgPropID[CEDB_MAXSORTPROP];
  DWORD rgdwFlags[CEDB_MAXSORTPROP];
};
static_assert(sizeof(SORTORDERSPECEX) == 32);

struct CEDBASEINFO {
  DWORD dwFlags;
  WCHAR szDbaseName[CEDB_MAXDBASENAMELEN];
  DWORD dwDbaseType;
  WORD wNumRecords;
  WORD wNumSortOrder;
  DWORD dwSize;
  FILETIME ftLastModified;
  SORTORDERSPEC rgSortSpecs[CEDB_MAXSORTORDER];
};
static_assert(sizeof(CEDBASEINFO) == 120);

struct CEDBASEINFOEX {
  WORD wVersion;  ///< 1
  WORD wNumSortOrder;
  DWORD dwFlags;
  WCHAR szDbaseName[CEDB_MAXDBASENAMELEN];
  DWORD dwDbaseType;
  DWORD dwNumRecords;
  DWORD dwSize;
  FILETIME ftLastModified;
  SORTORDERSPECEX rgSortSpecs[CEDB_MAXSORTORDER];
};
static_assert(sizeof(CEDBASEINFOEX) == 220);

struct CENOTIFYREQUEST {
  DWORD dwSize;  ///< 20 on the device
  HWND hwnd;
  DWORD dwFlags;
  HANDLE hHeap;
  DWORD dwParam;
};
static_assert(kHasDeviceLayout<sizeof(CENOTIFYREQUEST), 20>);

struct CEFILEINFO {
  DWORD dwAttributes;
  CEOID oidParent;
  WCHAR szFileName[MAX_PATH];  ///< the full path
  FILETIME ftLastChanged;
  DWORD dwLength;
};
static_assert(sizeof(CEFILEINFO) == 540);

struct CEDIRINFO {
  DWORD dwAttributes;
  CEOID oidParent;
  WCHAR szDirName[MAX_PATH];
};
static_assert(sizeof(CEDIRINFO) == 528);

struct CERECORDINFO {
  CEOID oidParent;
};

struct CEOIDINFOEX {
  WORD wVersion;  ///< 1, set by the caller
  WORD wObjType;
  union {
    CEFILEINFO infFile;
    CEDIRINFO infDirectory;
    CEDBASEINFOEX infDatabase;
    CERECORDINFO infRecord;
  };
};
static_assert(sizeof(CEOIDINFOEX) == 544);

/// The older form, with the type in the first field.
struct CEOIDINFO {
  WORD wObjType;
  WORD wPad;
  union {
    CEFILEINFO infFile;
    CEDIRINFO infDirectory;
    CEDBASEINFO infDatabase;
    CERECORDINFO infRecord;
  };
};
static_assert(sizeof(CEOIDINFO) == 544);

/// The new database's identifier, or 0 with the last error set (ERROR_DUP_NAME when the name exists).
extern "C" CEOID CeCreateDatabase(LPWSTR name, DWORD type, WORD sortOrders, SORTORDERSPEC* orders)
    CE_CALL(CeCreateDatabase);
extern "C" CEOID CeCreateDatabaseEx2(CEGUID* volume, CEDBASEINFOEX* description) CE_CALL(CeCreateDatabaseEx2);
/// With *oid 0 by name, and *oid receives the identifier; else by *oid. INVALID_HANDLE_VALUE on failure.
/// The caller closes the handle with CloseHandle.
extern "C" HANDLE CeOpenDatabaseEx2(CEGUID* volume, CEOID* oid, LPWSTR name, SORTORDERSPECEX* order,
                                    DWORD flags, CENOTIFYREQUEST* request) CE_CALL(CeOpenDatabaseEx2);
/// The record reached, or 0. `value` is a count, an identifier, or the address of a CEPROPVAL; hence its
/// width.
extern "C" CEOID CeSeekDatabase(HANDLE database, DWORD type, DWORD_PTR value, DWORD* index)
    CE_CALL(CeSeekDatabase);
/// The record read, or 0. With CEDB_ALLOWREALLOC *buffer is null or a LocalAlloc block; the call may replace
/// it even when it fails, and the caller frees it with LocalFree.
extern "C" CEOID CeReadRecordProps(HANDLE database, DWORD flags, WORD* count, CEPROPID* ids, BYTE** buffer,
                                   DWORD* size) CE_CALL(CeReadRecordProps);
/// As CeReadRecordProps with a block of `heap`, freed with HeapFree; a null heap means LocalAlloc.
extern "C" CEOID CeReadRecordPropsEx(HANDLE database, DWORD flags, WORD* count, CEPROPID* ids, BYTE** buffer,
                                     DWORD* size, HANDLE heap) CE_CALL(CeReadRecordPropsEx);
/// Record 0 makes a new one; else the given properties are changed and the others kept. 0 on failure.
extern "C" CEOID CeWriteRecordProps(HANDLE database, CEOID record, WORD count, CEPROPVAL* values)
    CE_CALL(CeWriteRecordProps);
extern "C" BOOL CeDeleteRecord(HANDLE database, CEOID record) CE_CALL(CeDeleteRecord);
/// FALSE with ERROR_SHARING_VIOLATION while the database is open.
extern "C" BOOL CeDeleteDatabaseEx(CEGUID* volume, CEOID oid) CE_CALL(CeDeleteDatabaseEx);
extern "C" BOOL CeOidGetInfoEx2(CEGUID* volume, CEOID oid, CEOIDINFOEX* information) CE_CALL(CeOidGetInfoEx2);
