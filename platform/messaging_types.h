// The messaging library's structures, property tags and flags.
#pragma once

#include "platform/com.h"

using SCODE = LONG;
using FLAGS = ULONG;
using BOOKMARK = ULONG;
/// A property's number in the high word, its type in the low word.
using PropertyTag = ULONG;

inline constexpr ULONG PT_UNSPECIFIED = 0;
inline constexpr ULONG PT_NULL = 1;
inline constexpr ULONG PT_LONG = 3;
inline constexpr ULONG PT_DOUBLE = 5;
inline constexpr ULONG PT_ERROR = 10;
inline constexpr ULONG PT_BOOLEAN = 11;
inline constexpr ULONG PT_OBJECT = 13;
inline constexpr ULONG PT_STRING8 = 30;
inline constexpr ULONG PT_UNICODE = 31;
inline constexpr ULONG PT_SYSTIME = 64;
inline constexpr ULONG PT_CLSID = 72;
inline constexpr ULONG PT_BINARY = 258;

inline constexpr ULONG PR_START_DATE = 0x00600040;
inline constexpr ULONG PR_END_DATE = 0x00610040;
inline constexpr ULONG PR_SUBJECT_W = 0x0037001F;
inline constexpr ULONG PR_RECIPIENT_TYPE = 0x0C150003;
inline constexpr ULONG PR_SENDER_NAME_W = 0x0C1A001F;
inline constexpr ULONG PR_SENDER_EMAIL_ADDRESS_W = 0x0C1F001F;
inline constexpr ULONG PR_MESSAGE_DELIVERY_TIME = 0x0E060040;
inline constexpr ULONG PR_MESSAGE_FLAGS = 0x0E070003;
inline constexpr ULONG PR_MESSAGE_SIZE = 0x0E080003;
inline constexpr ULONG PR_PARENT_ENTRYID = 0x0E090102;
inline constexpr ULONG PR_ATTACH_SIZE = 0x0E200003;
inline constexpr ULONG PR_ATTACH_NUM = 0x0E210003;
inline constexpr ULONG PR_ENTRYID = 0x0FFF0102;
inline constexpr ULONG PR_BODY_W = 0x1000001F;
inline constexpr ULONG PR_ROWID = 0x30000003;
inline constexpr ULONG PR_DISPLAY_NAME_W = 0x3001001F;
inline constexpr ULONG PR_ADDRTYPE_W = 0x3002001F;
inline constexpr ULONG PR_EMAIL_ADDRESS_W = 0x3003001F;
inline constexpr ULONG PR_IPM_SUBTREE_ENTRYID = 0x35E00102;
inline constexpr ULONG PR_IPM_OUTBOX_ENTRYID = 0x35E20102;
inline constexpr ULONG PR_IPM_WASTEBASKET_ENTRYID = 0x35E30102;
inline constexpr ULONG PR_IPM_SENTMAIL_ENTRYID = 0x35E40102;
inline constexpr ULONG PR_ATTACH_DATA_BIN = 0x37010102;
inline constexpr ULONG PR_ATTACH_FILENAME_W = 0x3704001F;
inline constexpr ULONG PR_CE_IPM_DRAFTS_ENTRYID = 0x81040102;
inline constexpr ULONG PR_CE_IPM_INBOX_ENTRYID = 0x81060102;

inline constexpr ULONG MAPI_MODIFY = 1;
inline constexpr ULONG MAPI_CREATE = 2;
inline constexpr ULONG MAPI_UNICODE = 0x80000000;
inline constexpr ULONG MDB_NO_DIALOG = 1;
inline constexpr ULONG MAPI_BEST_ACCESS = 0x10;
inline constexpr ULONG MODRECIP_ADD = 2;
inline constexpr ULONG MODRECIP_MODIFY = 4;
inline constexpr ULONG MODRECIP_REMOVE = 8;
inline constexpr LONG MAPI_TO = 1;
inline constexpr LONG MAPI_CC = 2;
inline constexpr LONG MAPI_BCC = 3;
inline constexpr BOOKMARK BOOKMARK_BEGINNING = 0;
inline constexpr BOOKMARK BOOKMARK_CURRENT = 1;
inline constexpr BOOKMARK BOOKMARK_END = 2;
inline constexpr ULONG TABLE_SORT_ASCEND = 0;
inline constexpr ULONG TABLE_SORT_DESCEND = 1;
inline constexpr ULONG TBL_NOADVANCE = 1;
inline constexpr ULONG MAPI_STORE = 1;
inline constexpr ULONG MAPI_FOLDER = 3;
inline constexpr ULONG MAPI_MESSAGE = 5;
inline constexpr ULONG MAPI_ATTACH = 7;
inline constexpr LONG MSGFLAG_READ = 1;
inline constexpr LONG MSGFLAG_UNSENT = 8;
inline constexpr LONG MSGFLAG_HASATTACH = 0x10;
inline constexpr ULONG MNID_ID = 0;
inline constexpr ULONG MNID_STRING = 1;

inline constexpr GUID PS_MAPI{0x00020328, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

struct SBinary {
  ULONG cb;
  BYTE* lpb;
};
static_assert(kHasDeviceLayout<sizeof(SBinary), 8>);

struct ENTRYLIST {
  ULONG cValues;
  SBinary* lpbin;
};
static_assert(kHasDeviceLayout<sizeof(ENTRYLIST), 8>);

/// cValues tags follow one another; the declared one is the first.
struct SPropTagArray {
  ULONG cValues;
  ULONG aulPropTag[1];
};

union SPropValueUnion {
  LONG l;
  ULONG ul;
  USHORT b;
  double dbl;
  FILETIME ft;
  LPWSTR lpszW;
  SBinary bin;
  GUID* lpguid;
  SCODE err;
};

struct SPropValue {
  ULONG ulPropTag;
  ULONG dwAlignPad;
  SPropValueUnion Value;
};
static_assert(kHasDeviceLayout<sizeof(SPropValue), 16>);

struct SPropProblemArray;

struct SRow {
  ULONG ulAdrEntryPad;
  ULONG cValues;
  SPropValue* lpProps;
};
static_assert(kHasDeviceLayout<sizeof(SRow), 12>);

/// cRows rows follow one another; the declared one is the first.
struct SRowSet {
  ULONG cRows;
  SRow aRow[1];
};

struct ADRENTRY {
  ULONG ulReserved1;
  ULONG cValues;
  SPropValue* rgPropVals;
};
static_assert(kHasDeviceLayout<sizeof(ADRENTRY), 12>);

/// cEntries entries follow one another; the declared one is the first.
struct ADRLIST {
  ULONG cEntries;
  ADRENTRY aEntries[1];
};

struct SSortOrder {
  ULONG ulPropTag;
  ULONG ulOrder;
};

/// cSorts orders follow one another; the declared one is the first.
struct SSortOrderSet {
  ULONG cSorts;
  ULONG cCategories;
  ULONG cExpanded;
  SSortOrder aSort[1];
};

struct MAPINAMEID {
  GUID* lpguid;
  ULONG ulKind;
  union {
    LONG lID;
    LPWSTR lpwstrName;
  } Kind;
};
static_assert(kHasDeviceLayout<sizeof(MAPINAMEID), 12>);
