// The object model's application, folders, collections and the property interface of its items.
#pragma once

#include "emulator/calls/interface.h"

namespace emulator {

template <>
struct Interface<IFolder> {
  using Base = IDispatch;
  using Members = CallList<Call<&IFolder::get_Items>, Call<&IFolder::get_DefaultItemType>,
                           Call<&IFolder::get_Application>, Call<&IFolder::AddItemToInfraredFolder>,
                           Call<&IFolder::SendToInfrared>, Call<&IFolder::ReceiveFromInfrared>>;
};

template <>
struct Interface<IPOutlookItemCollection> {
  using Base = IDispatch;
  using Members =
      CallList<Call<&IPOutlookItemCollection::Add>, Call<&IPOutlookItemCollection::get_Count>,
               Call<&IPOutlookItemCollection::Find>, Call<&IPOutlookItemCollection::FindNext>,
               Call<&IPOutlookItemCollection::Item>, Call<&IPOutlookItemCollection::Remove>,
               Call<&IPOutlookItemCollection::Restrict>, Call<&IPOutlookItemCollection::Sort>,
               Call<&IPOutlookItemCollection::get_IncludeRecurrences>,
               Call<&IPOutlookItemCollection::put_IncludeRecurrences>,
               Call<&IPOutlookItemCollection::get__NewEnum>, Call<&IPOutlookItemCollection::get_Application>>;
};

template <>
struct Interface<IPOutlookApp> {
  using Base = IDispatch;
  using Members =
      CallList<Call<&IPOutlookApp::Logon>, Call<&IPOutlookApp::Logoff>, Call<&IPOutlookApp::get_Version>,
               Call<&IPOutlookApp::GetDefaultFolder>, Call<&IPOutlookApp::CreateItem>,
               Call<&IPOutlookApp::GetItemFromOid>, Call<&IPOutlookApp::get_HomeCity>,
               Call<&IPOutlookApp::put_HomeCity>, Call<&IPOutlookApp::get_VisitingCity>,
               Call<&IPOutlookApp::put_VisitingCity>, Call<&IPOutlookApp::get_CurrentCityIndex>,
               Call<&IPOutlookApp::put_CurrentCityIndex>, Call<&IPOutlookApp::ReceiveFromInfrared>,
               Call<&IPOutlookApp::get_OutlookCompatible>, Call<&IPOutlookApp::GetTimeZoneFromIndex>,
               Call<&IPOutlookApp::GetTimeZoneInformationFromIndex>, Call<&IPOutlookApp::get_Application>,
               Call<&IPOutlookApp::SysFreeString>, Call<&IPOutlookApp::VariantTimeToSystemTime>,
               Call<&IPOutlookApp::SystemTimeToVariantTime, in(0)>>;
};

template <>
struct Interface<IItem> {
  using Base = IUnknown;
  using Members =
      CallList<Call<&IItem::GetProps, in(0, countedBy(2)), out(3, recordsOf(4, 2))>,
               Call<&IItem::SetProps, in(2, countedBy(1))>, Call<&IItem::Save>, Call<&IItem::Delete>,
               Call<&IItem::Display>, Call<&IItem::Edit>, Call<&IItem::Copy>, Call<&IItem::get_Oid>,
               Call<&IItem::OpenProperty>, Call<&IItem::get_DefaultItemType>, Call<&IItem::get_Application>,
               Call<&IItem::get_Parent>, Call<&IItem::AddCategory>, Call<&IItem::RemoveCategory>>;
};

}  // namespace emulator
