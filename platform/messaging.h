// The device's messaging interfaces. "CEMAPI.DLL" is loaded at run time; its entries are typed at the end.
#pragma once

#include "platform/messaging_types.h"

// Interfaces that a call hands out are the caller's to release; buffers of GetProps and GetIDsFromNames are
// freed with MAPIFreeBuffer, row sets with FreeProws. Methods marked "unsupported" keep their place in the
// order only. Many objects answer QueryInterface with E_NOTIMPL.

class IAttach;
class IMessage;
class IMAPIFolder;
class IMAPITable;
class IMsgStore;
struct IMAPIAdviseSink;
struct IMAPIProgress;
struct MAPIERROR;
struct NOTIFICATION;
struct SRestriction;

class IMAPIProp : public IUnknown {
 public:
  static constexpr IID kIid{0x00020303, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

  virtual HRESULT GetLastError(HRESULT result, ULONG flags, MAPIERROR** error) = 0;  // unsupported
  /// The device does nothing here: every change is effective at once.
  virtual HRESULT SaveChanges(ULONG flags) = 0;
  /// Values in the order asked; a missing one has the type PT_ERROR and the result is MAPI_W_ERRORS_RETURNED.
  virtual HRESULT GetProps(SPropTagArray* tags, ULONG flags, ULONG* count, SPropValue** values) = 0;
  virtual HRESULT GetPropList(ULONG flags, SPropTagArray** tags) = 0;  // unsupported
  /// A null interface identifier gives an IStream. MAPI_CREATE with MAPI_MODIFY writes.
  virtual HRESULT OpenProperty(ULONG tag, LPCIID iid, ULONG interfaceOptions, ULONG flags,
                               IUnknown** object) = 0;
  virtual HRESULT SetProps(ULONG count, SPropValue* values, SPropProblemArray** problems) = 0;
  virtual HRESULT DeleteProps(SPropTagArray* tags, SPropProblemArray** problems) = 0;
  virtual HRESULT CopyTo(ULONG excludedCount, LPCIID excluded, SPropTagArray* excludedTags, ULONG_PTR ui,
                         IMAPIProgress* progress, LPCIID iid, void* target, ULONG flags,
                         SPropProblemArray** problems) = 0;  // unsupported
  virtual HRESULT CopyProps(SPropTagArray* tags, ULONG_PTR ui, IMAPIProgress* progress, LPCIID iid,
                            void* target, ULONG flags, SPropProblemArray** problems) = 0;  // unsupported
  virtual HRESULT GetNamesFromIDs(SPropTagArray** tags, GUID* set, ULONG flags, ULONG* count,
                                  MAPINAMEID*** names) = 0;  // unsupported
  /// Tags of type PT_UNSPECIFIED; MAPI_CREATE makes missing names.
  virtual HRESULT GetIDsFromNames(ULONG count, MAPINAMEID** names, ULONG flags, SPropTagArray** tags) = 0;

 protected:
  ~IMAPIProp() = default;
};

class IMsgStore : public IMAPIProp {
 public:
  static constexpr IID kIid{0x00020306, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

  virtual HRESULT Advise(ULONG size, BYTE* entryId, ULONG events, IMAPIAdviseSink* sink,
                         ULONG* connection) = 0;
  virtual HRESULT Unadvise(ULONG connection) = 0;
  virtual HRESULT CompareEntryIDs(ULONG size1, BYTE* entryId1, ULONG size2, BYTE* entryId2, ULONG flags,
                                  ULONG* equal) = 0;  // unsupported
  /// Any folder or message of the store; *type receives MAPI_FOLDER or MAPI_MESSAGE.
  virtual HRESULT OpenEntry(ULONG size, BYTE* entryId, LPCIID iid, ULONG flags, ULONG* type,
                            IUnknown** object) = 0;
  virtual HRESULT SetReceiveFolder(LPWSTR messageClass, ULONG flags, ULONG size,
                                   BYTE* entryId) = 0;  // unsupported
  virtual HRESULT GetReceiveFolder(LPWSTR messageClass, ULONG flags, ULONG* size, BYTE** entryId,
                                   LPWSTR* explicitClass) = 0;
  virtual HRESULT GetReceiveFolderTable(ULONG flags, IMAPITable** table) = 0;  // unsupported
  virtual HRESULT StoreLogoff(ULONG* flags) = 0;                               // unsupported
  virtual HRESULT AbortSubmit(ULONG size, BYTE* entryId, ULONG flags) = 0;     // unsupported
  virtual HRESULT GetOutgoingQueue(ULONG flags, IMAPITable** table) = 0;       // unsupported
  virtual HRESULT SetLockState(IMessage* message, ULONG state) = 0;            // unsupported
  virtual HRESULT FinishedMsg(ULONG flags, ULONG size, BYTE* entryId) = 0;     // unsupported
  virtual HRESULT NotifyNewMail(NOTIFICATION* notification) = 0;               // unsupported

 protected:
  ~IMsgStore() = default;
};

class IMAPIContainer : public IMAPIProp {
 public:
  static constexpr IID kIid{0x0002030B, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

  virtual HRESULT GetContentsTable(ULONG flags, IMAPITable** table) = 0;
  virtual HRESULT GetHierarchyTable(ULONG flags, IMAPITable** table) = 0;
  virtual HRESULT OpenEntry(ULONG size, BYTE* entryId, LPCIID iid, ULONG flags, ULONG* type,
                            IUnknown** object) = 0;
  virtual HRESULT SetSearchCriteria(SRestriction* restriction, ENTRYLIST* containers, ULONG flags) = 0;
  virtual HRESULT GetSearchCriteria(ULONG flags, SRestriction** restriction, ENTRYLIST** containers,
                                    ULONG* state) = 0;

 protected:
  ~IMAPIContainer() = default;
};

class IMAPIFolder : public IMAPIContainer {
 public:
  static constexpr IID kIid{0x0002030C, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

  virtual HRESULT CreateMessage(LPCIID iid, ULONG flags, IMessage** message) = 0;
  virtual HRESULT CopyMessages(ENTRYLIST* messages, LPCIID iid, void* folder, ULONG_PTR ui,
                               IMAPIProgress* progress, ULONG flags) = 0;
  /// Identifiers that name no message are skipped. Deletion is final.
  virtual HRESULT DeleteMessages(ENTRYLIST* messages, ULONG_PTR ui, IMAPIProgress* progress, ULONG flags) = 0;
  virtual HRESULT CreateFolder(ULONG type, LPWSTR name, LPWSTR comment, LPCIID iid, ULONG flags,
                               IMAPIFolder** folder) = 0;
  virtual HRESULT CopyFolder(ULONG size, BYTE* entryId, LPCIID iid, void* target, LPWSTR name, ULONG_PTR ui,
                             IMAPIProgress* progress, ULONG flags) = 0;
  virtual HRESULT DeleteFolder(ULONG size, BYTE* entryId, ULONG_PTR ui, IMAPIProgress* progress,
                               ULONG flags) = 0;
  virtual HRESULT SetReadFlags(ENTRYLIST* messages, ULONG_PTR ui, IMAPIProgress* progress,
                               ULONG flags) = 0;                                                // unsupported
  virtual HRESULT GetMessageStatus(ULONG size, BYTE* entryId, ULONG flags, ULONG* status) = 0;  // unsupported
  virtual HRESULT SetMessageStatus(ULONG size, BYTE* entryId, ULONG status, ULONG mask,
                                   ULONG* oldStatus) = 0;                   // unsupported
  virtual HRESULT SaveContentsSort(SSortOrderSet* order, ULONG flags) = 0;  // unsupported
  virtual HRESULT EmptyFolder(ULONG_PTR ui, IMAPIProgress* progress, ULONG flags) = 0;

 protected:
  ~IMAPIFolder() = default;
};

class IMessage : public IMAPIProp {
 public:
  static constexpr IID kIid{0x00020307, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

  virtual HRESULT GetAttachmentTable(ULONG flags, IMAPITable** table) = 0;
  virtual HRESULT OpenAttach(ULONG number, LPCIID iid, ULONG flags, IAttach** attachment) = 0;
  virtual HRESULT CreateAttach(LPCIID iid, ULONG flags, ULONG* number, IAttach** attachment) = 0;
  virtual HRESULT DeleteAttach(ULONG number, ULONG_PTR ui, IMAPIProgress* progress, ULONG flags) = 0;
  virtual HRESULT GetRecipientTable(ULONG flags, IMAPITable** table) = 0;
  virtual HRESULT ModifyRecipients(ULONG flags, ADRLIST* recipients) = 0;
  virtual HRESULT SubmitMessage(ULONG flags) = 0;
  virtual HRESULT SetReadFlag(ULONG flags) = 0;  // unsupported

 protected:
  ~IMessage() = default;
};

class IAttach : public IMAPIProp {
 public:
  static constexpr IID kIid{0x00020308, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

 protected:
  ~IAttach() = default;
};

/// The cursor starts before the first row.
class IMAPITable : public IUnknown {
 public:
  static constexpr IID kIid{0x00020301, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

  virtual HRESULT GetLastError(HRESULT result, ULONG flags, MAPIERROR** error) = 0;    // unsupported
  virtual HRESULT Advise(ULONG events, IMAPIAdviseSink* sink, ULONG* connection) = 0;  // unsupported
  virtual HRESULT Unadvise(ULONG connection) = 0;                                      // unsupported
  virtual HRESULT GetStatus(ULONG* status, ULONG* type) = 0;                           // unsupported
  virtual HRESULT SetColumns(SPropTagArray* columns, ULONG flags) = 0;
  virtual HRESULT QueryColumns(ULONG flags, SPropTagArray** columns) = 0;  // unsupported
  virtual HRESULT GetRowCount(ULONG flags, ULONG* count) = 0;
  virtual HRESULT SeekRow(BOOKMARK origin, LONG rows, LONG* sought) = 0;
  virtual HRESULT SeekRowApprox(ULONG numerator, ULONG denominator) = 0;  // unsupported
  virtual HRESULT QueryPosition(ULONG* row, ULONG* numerator, ULONG* denominator) = 0;
  virtual HRESULT FindRow(SRestriction* restriction, BOOKMARK origin, ULONG flags) = 0;  // unsupported
  virtual HRESULT Restrict(SRestriction* restriction, ULONG flags) = 0;
  virtual HRESULT CreateBookmark(BOOKMARK* position) = 0;  // unsupported
  virtual HRESULT FreeBookmark(BOOKMARK position) = 0;     // unsupported
  virtual HRESULT SortTable(SSortOrderSet* order, ULONG flags) = 0;
  virtual HRESULT QuerySortOrder(SSortOrderSet** order) = 0;  // unsupported
  /// Rows from the cursor on, freed with FreeProws; 0 rows at the end. A failure leaves *rows alone or null.
  virtual HRESULT QueryRows(LONG count, ULONG flags, SRowSet** rows) = 0;
  virtual HRESULT Abort() = 0;  // unsupported
  virtual HRESULT ExpandRow(ULONG size, BYTE* instanceKey, ULONG count, ULONG flags, SRowSet** rows,
                            ULONG* more) = 0;                                                 // unsupported
  virtual HRESULT CollapseRow(ULONG size, BYTE* instanceKey, ULONG flags, ULONG* count) = 0;  // unsupported
  /// MAPI_E_TIMEOUT while the table is busy; any other result means that rows may be asked for.
  virtual HRESULT WaitForCompletion(ULONG flags, ULONG timeout, ULONG* status) = 0;
  virtual HRESULT GetCollapseState(ULONG flags, ULONG size, BYTE* instanceKey, ULONG* stateSize,
                                   BYTE** state) = 0;  // unsupported
  virtual HRESULT SetCollapseState(ULONG flags, ULONG size, BYTE* state,
                                   BOOKMARK* position) = 0;  // unsupported

 protected:
  ~IMAPITable() = default;
};

class IMAPISession : public IUnknown {
 public:
  static constexpr IID kIid{0x00020300, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

  virtual HRESULT GetLastError(HRESULT result, ULONG flags, MAPIERROR** error) = 0;  // unsupported
  virtual HRESULT GetMsgStoresTable(ULONG flags, IMAPITable** table) = 0;
  /// Without an entry identifier the default store.
  virtual HRESULT OpenMsgStore(ULONG_PTR ui, ULONG size, BYTE* entryId, LPCIID iid, ULONG flags,
                               IMsgStore** store) = 0;
  virtual HRESULT OpenAddressBook(ULONG_PTR ui, LPCIID iid, ULONG flags,
                                  void** addressBook) = 0;  // unsupported
  virtual HRESULT OpenProfileSection(GUID* section, LPCIID iid, ULONG flags,
                                     void** object) = 0;                // unsupported
  virtual HRESULT GetStatusTable(ULONG flags, IMAPITable** table) = 0;  // unsupported
  virtual HRESULT OpenEntry(ULONG size, BYTE* entryId, LPCIID iid, ULONG flags, ULONG* type,
                            IUnknown** object) = 0;
  virtual HRESULT CompareEntryIDs(ULONG size1, BYTE* entryId1, ULONG size2, BYTE* entryId2, ULONG flags,
                                  ULONG* equal) = 0;
  virtual HRESULT Advise(ULONG size, BYTE* entryId, ULONG events, IMAPIAdviseSink* sink,
                         ULONG* connection) = 0;
  virtual HRESULT Unadvise(ULONG connection) = 0;
  virtual HRESULT MessageOptions(ULONG_PTR ui, ULONG flags, LPWSTR adrType,
                                 IMessage* message) = 0;  // unsupported
  virtual HRESULT QueryDefaultMessageOpt(LPWSTR adrType, ULONG flags, ULONG* count,
                                         SPropValue** options) = 0;             // unsupported
  virtual HRESULT EnumAdrTypes(ULONG flags, ULONG* count, LPWSTR** types) = 0;  // unsupported
  virtual HRESULT QueryIdentity(ULONG* size, BYTE** entryId) = 0;               // unsupported
  virtual HRESULT Logoff(ULONG_PTR ui, ULONG flags, ULONG reserved) = 0;
  virtual HRESULT SetDefaultStore(ULONG flags, ULONG size, BYTE* entryId) = 0;  // unsupported
  virtual HRESULT AdminServices(ULONG flags, void** admin) = 0;                 // unsupported
  virtual HRESULT ShowForm(ULONG_PTR ui, IMsgStore* store, IMAPIFolder* parent, LPCIID iid, ULONG token,
                           IMessage* sent, ULONG flags, ULONG status, ULONG messageFlags, ULONG access,
                           LPWSTR messageClass) = 0;                             // unsupported
  virtual HRESULT PrepareForm(LPCIID iid, IMessage* message, ULONG* token) = 0;  // unsupported

 protected:
  ~IMAPISession() = default;
};

/// The entries of "CEMAPI.DLL", found by name at run time.
using MAPIInitialize_t = HRESULT (*)(void* parameters);
using MAPIUninitialize_t = void (*)();
using MAPILogonEx_t = HRESULT (*)(ULONG_PTR ui, LPWSTR profile, LPWSTR password, FLAGS flags,
                                  IMAPISession** session);
using MAPIFreeBuffer_t = ULONG (*)(void* buffer);
using FreeProws_t = void (*)(SRowSet* rows);
