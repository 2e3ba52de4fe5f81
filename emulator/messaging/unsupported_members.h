// The members of the messaging interfaces that nobody calls: an object derives from these and overrides what it
// serves. The device itself has no support for most of them, and none of these moves what it was given.
#pragma once

#include "platform/errors.h"
#include "platform/messaging.h"

namespace emulator {

/// `Base` is IMsgStore, or an object that implements it in part; so below, each for its interface.
template <typename Base>
class UnsupportedStoreMembers : public Base {
 public:
  using Base::Base;

  HRESULT Advise(ULONG, BYTE*, ULONG, IMAPIAdviseSink*, ULONG*) override { return MAPI_E_NO_SUPPORT; }
  HRESULT Unadvise(ULONG) override { return MAPI_E_NO_SUPPORT; }
  HRESULT CompareEntryIDs(ULONG, BYTE*, ULONG, BYTE*, ULONG, ULONG*) override { return MAPI_E_NO_SUPPORT; }
  HRESULT SetReceiveFolder(LPWSTR, ULONG, ULONG, BYTE*) override { return MAPI_E_NO_SUPPORT; }
  HRESULT GetReceiveFolder(LPWSTR, ULONG, ULONG*, BYTE**, LPWSTR*) override { return MAPI_E_NO_SUPPORT; }
  HRESULT GetReceiveFolderTable(ULONG, IMAPITable**) override { return MAPI_E_NO_SUPPORT; }
  HRESULT StoreLogoff(ULONG*) override { return MAPI_E_NO_SUPPORT; }
  HRESULT AbortSubmit(ULONG, BYTE*, ULONG) override { return MAPI_E_NO_SUPPORT; }
  HRESULT GetOutgoingQueue(ULONG, IMAPITable**) override { return MAPI_E_NO_SUPPORT; }
  HRESULT SetLockState(IMessage*, ULONG) override { return MAPI_E_NO_SUPPORT; }
  HRESULT FinishedMsg(ULONG, ULONG, BYTE*) override { return MAPI_E_NO_SUPPORT; }
  HRESULT NotifyNewMail(NOTIFICATION*) override { return MAPI_E_NO_SUPPORT; }
};

/// IMAPIFolder.
template <typename Base>
class UnsupportedFolderMembers : public Base {
 public:
  using Base::Base;

  HRESULT SetSearchCriteria(SRestriction*, ENTRYLIST*, ULONG) override { return MAPI_E_NO_SUPPORT; }
  HRESULT GetSearchCriteria(ULONG, SRestriction**, ENTRYLIST**, ULONG*) override { return MAPI_E_NO_SUPPORT; }
  HRESULT CopyMessages(ENTRYLIST*, LPCIID, void*, ULONG_PTR, IMAPIProgress*, ULONG) override {
    return MAPI_E_NO_SUPPORT;
  }
  HRESULT CreateFolder(ULONG, LPWSTR, LPWSTR, LPCIID, ULONG, IMAPIFolder**) override {
    return MAPI_E_NO_SUPPORT;
  }
  HRESULT CopyFolder(ULONG, BYTE*, LPCIID, void*, LPWSTR, ULONG_PTR, IMAPIProgress*, ULONG) override {
    return MAPI_E_NO_SUPPORT;
  }
  HRESULT DeleteFolder(ULONG, BYTE*, ULONG_PTR, IMAPIProgress*, ULONG) override { return MAPI_E_NO_SUPPORT; }
  HRESULT SetReadFlags(ENTRYLIST*, ULONG_PTR, IMAPIProgress*, ULONG) override { return MAPI_E_NO_SUPPORT; }
  HRESULT GetMessageStatus(ULONG, BYTE*, ULONG, ULONG*) override { return MAPI_E_NO_SUPPORT; }
  HRESULT SetMessageStatus(ULONG, BYTE*, ULONG, ULONG, ULONG*) override { return MAPI_E_NO_SUPPORT; }
  HRESULT SaveContentsSort(SSortOrderSet*, ULONG) override { return MAPI_E_NO_SUPPORT; }
  HRESULT EmptyFolder(ULONG_PTR, IMAPIProgress*, ULONG) override { return MAPI_E_NO_SUPPORT; }
};

/// IMAPITable.
template <typename Base>
class UnsupportedTableMembers : public Base {
 public:
  using Base::Base;

  HRESULT GetLastError(HRESULT, ULONG, MAPIERROR**) override { return MAPI_E_NO_SUPPORT; }
  HRESULT Advise(ULONG, IMAPIAdviseSink*, ULONG*) override { return MAPI_E_NO_SUPPORT; }
  HRESULT Unadvise(ULONG) override { return MAPI_E_NO_SUPPORT; }
  HRESULT GetStatus(ULONG*, ULONG*) override { return MAPI_E_NO_SUPPORT; }
  HRESULT QueryColumns(ULONG, SPropTagArray**) override { return MAPI_E_NO_SUPPORT; }
  HRESULT SeekRowApprox(ULONG, ULONG) override { return MAPI_E_NO_SUPPORT; }
  HRESULT FindRow(SRestriction*, BOOKMARK, ULONG) override { return MAPI_E_NO_SUPPORT; }
  HRESULT CreateBookmark(BOOKMARK*) override { return MAPI_E_NO_SUPPORT; }
  HRESULT FreeBookmark(BOOKMARK) override { return MAPI_E_NO_SUPPORT; }
  HRESULT QuerySortOrder(SSortOrderSet**) override { return MAPI_E_NO_SUPPORT; }
  HRESULT Abort() override { return MAPI_E_NO_SUPPORT; }
  HRESULT ExpandRow(ULONG, BYTE*, ULONG, ULONG, SRowSet**, ULONG*) override { return MAPI_E_NO_SUPPORT; }
  HRESULT CollapseRow(ULONG, BYTE*, ULONG, ULONG*) override { return MAPI_E_NO_SUPPORT; }
  HRESULT WaitForCompletion(ULONG, ULONG, ULONG*) override { return MAPI_E_NO_SUPPORT; }
  HRESULT GetCollapseState(ULONG, ULONG, BYTE*, ULONG*, BYTE**) override { return MAPI_E_NO_SUPPORT; }
  HRESULT SetCollapseState(ULONG, ULONG, BYTE*, BOOKMARK*) override { return MAPI_E_NO_SUPPORT; }
};

/// IMAPISession.
template <typename Base>
class UnsupportedSessionMembers : public Base {
 public:
  using Base::Base;

  HRESULT GetLastError(HRESULT, ULONG, MAPIERROR**) override { return MAPI_E_NO_SUPPORT; }
  HRESULT OpenAddressBook(ULONG_PTR, LPCIID, ULONG, void**) override { return MAPI_E_NO_SUPPORT; }
  HRESULT OpenProfileSection(GUID*, LPCIID, ULONG, void**) override { return MAPI_E_NO_SUPPORT; }
  HRESULT GetStatusTable(ULONG, IMAPITable**) override { return MAPI_E_NO_SUPPORT; }
  HRESULT Advise(ULONG, BYTE*, ULONG, IMAPIAdviseSink*, ULONG*) override { return MAPI_E_NO_SUPPORT; }
  HRESULT Unadvise(ULONG) override { return MAPI_E_NO_SUPPORT; }
  HRESULT MessageOptions(ULONG_PTR, ULONG, LPWSTR, IMessage*) override { return MAPI_E_NO_SUPPORT; }
  HRESULT QueryDefaultMessageOpt(LPWSTR, ULONG, ULONG*, SPropValue**) override { return MAPI_E_NO_SUPPORT; }
  HRESULT EnumAdrTypes(ULONG, ULONG*, LPWSTR**) override { return MAPI_E_NO_SUPPORT; }
  HRESULT QueryIdentity(ULONG*, BYTE**) override { return MAPI_E_NO_SUPPORT; }
  HRESULT SetDefaultStore(ULONG, ULONG, BYTE*) override { return MAPI_E_NO_SUPPORT; }
  HRESULT AdminServices(ULONG, void**) override { return MAPI_E_NO_SUPPORT; }
  HRESULT ShowForm(ULONG_PTR, IMsgStore*, IMAPIFolder*, LPCIID, ULONG, IMessage*, ULONG, ULONG, ULONG, ULONG,
                   LPWSTR) override {
    return MAPI_E_NO_SUPPORT;
  }
  HRESULT PrepareForm(LPCIID, IMessage*, ULONG*) override { return MAPI_E_NO_SUPPORT; }
};

}  // namespace emulator
