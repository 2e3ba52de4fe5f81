// The messaging interfaces.
#pragma once

#include "emulator/calls/interface.h"

namespace emulator {

template <>
struct Interface<IMAPIProp> {
  using Base = IUnknown;
  using Members =
      CallList<Call<&IMAPIProp::GetLastError>, Call<&IMAPIProp::SaveChanges>,
               Call<&IMAPIProp::GetProps, in(0), out(3, recordsOf(2, 2))>, Call<&IMAPIProp::GetPropList>,
               Call<&IMAPIProp::OpenProperty>, Call<&IMAPIProp::SetProps, in(1, countedBy(0))>,
               Call<&IMAPIProp::DeleteProps, in(0)>,
               Call<&IMAPIProp::CopyTo, in(1, countedBy(0)), in(2), inInterface(6)>,
               Call<&IMAPIProp::CopyProps, in(0), inInterface(4)>, Call<&IMAPIProp::GetNamesFromIDs, in(1)>,
               Call<&IMAPIProp::GetIDsFromNames, in(1, countedBy(0))>>;
};

template <>
struct Interface<IMsgStore> {
  using Base = IMAPIProp;
  using Members =
      CallList<Call<&IMsgStore::Advise, in(1, countedBy(0))>, Call<&IMsgStore::Unadvise>,
               Call<&IMsgStore::CompareEntryIDs, in(1, countedBy(0)), in(3, countedBy(2))>,
               Call<&IMsgStore::OpenEntry, in(1, countedBy(0))>,
               Call<&IMsgStore::SetReceiveFolder, in(3, countedBy(2))>,
               Call<&IMsgStore::GetReceiveFolder, out(3, blockOf(2))>,
               Call<&IMsgStore::GetReceiveFolderTable>, Call<&IMsgStore::StoreLogoff, inOut(0)>,
               Call<&IMsgStore::AbortSubmit, in(1, countedBy(0))>, Call<&IMsgStore::GetOutgoingQueue>,
               Call<&IMsgStore::SetLockState>, Call<&IMsgStore::FinishedMsg, in(2, countedBy(1))>,
               Call<&IMsgStore::NotifyNewMail>>;
};

template <>
struct Interface<IMAPIContainer> {
  using Base = IMAPIProp;
  using Members =
      CallList<Call<&IMAPIContainer::GetContentsTable>, Call<&IMAPIContainer::GetHierarchyTable>,
               Call<&IMAPIContainer::OpenEntry, in(1, countedBy(0))>,
               Call<&IMAPIContainer::SetSearchCriteria, in(1)>, Call<&IMAPIContainer::GetSearchCriteria>>;
};

template <>
struct Interface<IMAPIFolder> {
  using Base = IMAPIContainer;
  using Members =
      CallList<Call<&IMAPIFolder::CreateMessage>, Call<&IMAPIFolder::CopyMessages, in(0), inInterface(2)>,
               Call<&IMAPIFolder::DeleteMessages, in(0)>, Call<&IMAPIFolder::CreateFolder>,
               Call<&IMAPIFolder::CopyFolder, in(1, countedBy(0)), inInterface(3)>,
               Call<&IMAPIFolder::DeleteFolder, in(1, countedBy(0))>, Call<&IMAPIFolder::SetReadFlags, in(0)>,
               Call<&IMAPIFolder::GetMessageStatus, in(1, countedBy(0))>,
               Call<&IMAPIFolder::SetMessageStatus, in(1, countedBy(0))>,
               Call<&IMAPIFolder::SaveContentsSort, in(0)>, Call<&IMAPIFolder::EmptyFolder>>;
};

template <>
struct Interface<IMessage> {
  using Base = IMAPIProp;
  using Members = CallList<Call<&IMessage::GetAttachmentTable>, Call<&IMessage::OpenAttach>,
                           Call<&IMessage::CreateAttach>, Call<&IMessage::DeleteAttach>,
                           Call<&IMessage::GetRecipientTable>, Call<&IMessage::ModifyRecipients, in(1)>,
                           Call<&IMessage::SubmitMessage>, Call<&IMessage::SetReadFlag>>;
};

template <>
struct Interface<IAttach> {
  using Base = IMAPIProp;
  using Members = CallList<>;
};

template <>
struct Interface<IMAPITable> {
  using Base = IUnknown;
  using Members =
      CallList<Call<&IMAPITable::GetLastError>, Call<&IMAPITable::Advise>, Call<&IMAPITable::Unadvise>,
               Call<&IMAPITable::GetStatus>, Call<&IMAPITable::SetColumns, in(0)>,
               Call<&IMAPITable::QueryColumns>, Call<&IMAPITable::GetRowCount>, Call<&IMAPITable::SeekRow>,
               Call<&IMAPITable::SeekRowApprox>, Call<&IMAPITable::QueryPosition>, Call<&IMAPITable::FindRow>,
               Call<&IMAPITable::Restrict>, Call<&IMAPITable::CreateBookmark>,
               Call<&IMAPITable::FreeBookmark>, Call<&IMAPITable::SortTable, in(0)>,
               Call<&IMAPITable::QuerySortOrder>, Call<&IMAPITable::QueryRows>, Call<&IMAPITable::Abort>,
               Call<&IMAPITable::ExpandRow, in(1, countedBy(0))>,
               Call<&IMAPITable::CollapseRow, in(1, countedBy(0))>, Call<&IMAPITable::WaitForCompletion>,
               Call<&IMAPITable::GetCollapseState, in(2, countedBy(1)), out(4, blockOf(3))>,
               Call<&IMAPITable::SetCollapseState, in(2, countedBy(1))>>;
};

template <>
struct Interface<IMAPISession> {
  using Base = IUnknown;
  using Members =
      CallList<Call<&IMAPISession::GetLastError>, Call<&IMAPISession::GetMsgStoresTable>,
               Call<&IMAPISession::OpenMsgStore, in(2, countedBy(1))>, Call<&IMAPISession::OpenAddressBook>,
               Call<&IMAPISession::OpenProfileSection, in(0)>, Call<&IMAPISession::GetStatusTable>,
               Call<&IMAPISession::OpenEntry, in(1, countedBy(0))>,
               Call<&IMAPISession::CompareEntryIDs, in(1, countedBy(0)), in(3, countedBy(2))>,
               Call<&IMAPISession::Advise, in(1, countedBy(0))>, Call<&IMAPISession::Unadvise>,
               Call<&IMAPISession::MessageOptions>, Call<&IMAPISession::QueryDefaultMessageOpt>,
               Call<&IMAPISession::EnumAdrTypes>, Call<&IMAPISession::QueryIdentity, out(1, blockOf(0))>,
               Call<&IMAPISession::Logoff>, Call<&IMAPISession::SetDefaultStore, in(2, countedBy(1))>,
               Call<&IMAPISession::AdminServices>, Call<&IMAPISession::ShowForm>,
               Call<&IMAPISession::PrepareForm>>;
};

}  // namespace emulator
