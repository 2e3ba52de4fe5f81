// The fields of the structures that a program hands to the platform, in declared order.
#pragma once

#include "emulator/calls/call_name.h"
#include "platform/messaging_types.h"
#include "platform/property_database.h"
#include "platform/rich_ink.h"
#include "platform/sockets.h"
#include "platform/system.h"
#include "platform/windows.h"

namespace emulator {

enum class Meaning : std::uint8_t {
  Plain,
  Reserved,  ///< padding, or the platform's own: nothing to read there
  Chosen,    ///< a union, of which the property type in the first field chooses one
};

/// One field. `Count` is the field that counts the elements behind a pointer, or of an array that goes on
/// past its declared end.
template <auto Member, Meaning What = Meaning::Plain, auto Count = nullptr>
struct Field {
  static constexpr auto kMember = Member;
  static constexpr auto kCount = Count;
  static constexpr Meaning kMeaning = What;
  static constexpr std::string_view kName = kNameOf<Member>;
};

template <typename... Fields>
struct FieldList {};

template <auto Member>
using ReservedField = Field<Member, Meaning::Reserved>;
template <auto Member>
using ChosenField = Field<Member, Meaning::Chosen>;
template <auto Member, auto Count>
using CountedField = Field<Member, Meaning::Plain, Count>;

/// Specialised for every structure that goes in, and for every one that holds pointers: `Fields`.
template <typename T>
struct Structure;

template <typename T>
concept DescribedStructure = requires {
  typename Structure<T>::Fields;
};

template <>
struct Structure<CEGUID> {
  using Fields =
      FieldList<Field<&CEGUID::Data1>, Field<&CEGUID::Data2>, Field<&CEGUID::Data3>, Field<&CEGUID::Data4>>;
};

template <>
struct Structure<CEPROPVAL> {
  using Fields = FieldList<Field<&CEPROPVAL::propid>, ReservedField<&CEPROPVAL::wLenData>,
                           Field<&CEPROPVAL::wFlags>, ChosenField<&CEPROPVAL::val>>;
};

template <>
struct Structure<SORTORDERSPEC> {
  using Fields = FieldList<Field<&SORTORDERSPEC::propid>, Field<&SORTORDERSPEC::dwFlags>>;
};

template <>
struct Structure<SORTORDERSPECEX> {
  using Fields = FieldList<Field<&SORTORDERSPECEX::wVersion>, Field<&SORTORDERSPECEX::wNumProps>,
                           Field<&SORTORDERSPECEX::wKeyFlags>, ReservedField<&SORTORDERSPECEX::wReserved>,
                           CountedField<&SORTORDERSPECEX::rgPropID, &SORTORDERSPECEX::wNumProps>,
                           CountedField<&SORTORDERSPECEX::rgdwFlags, &SORTORDERSPECEX::wNumProps>>;
};

template <>
struct Structure<CEDBASEINFOEX> {
  using Fields =
      FieldList<Field<&CEDBASEINFOEX::wVersion>, Field<&CEDBASEINFOEX::wNumSortOrder>,
                Field<&CEDBASEINFOEX::dwFlags>, Field<&CEDBASEINFOEX::szDbaseName>,
                Field<&CEDBASEINFOEX::dwDbaseType>, ReservedField<&CEDBASEINFOEX::dwNumRecords>,
                ReservedField<&CEDBASEINFOEX::dwSize>, ReservedField<&CEDBASEINFOEX::ftLastModified>,
                CountedField<&CEDBASEINFOEX::rgSortSpecs, &CEDBASEINFOEX::wNumSortOrder>>;
};

template <>
struct Structure<CENOTIFYREQUEST> {
  using Fields = FieldList<Field<&CENOTIFYREQUEST::dwSize>, Field<&CENOTIFYREQUEST::hwnd>,
                           Field<&CENOTIFYREQUEST::dwFlags>, Field<&CENOTIFYREQUEST::hHeap>,
                           Field<&CENOTIFYREQUEST::dwParam>>;
};

template <>
struct Structure<WNDCLASSW> {
  using Fields =
      FieldList<Field<&WNDCLASSW::style>, Field<&WNDCLASSW::lpfnWndProc>, Field<&WNDCLASSW::cbClsExtra>,
                Field<&WNDCLASSW::cbWndExtra>, Field<&WNDCLASSW::hInstance>, Field<&WNDCLASSW::hIcon>,
                Field<&WNDCLASSW::hCursor>, Field<&WNDCLASSW::hbrBackground>, Field<&WNDCLASSW::lpszMenuName>,
                Field<&WNDCLASSW::lpszClassName>>;
};

template <>
struct Structure<EDITSTREAM> {
  using Fields = FieldList<ReservedField<&EDITSTREAM::dwCookie>, ReservedField<&EDITSTREAM::dwError>,
                           Field<&EDITSTREAM::pfnCallback>>;
};

template <>
struct Structure<SOCKADDR_IN> {
  using Fields = FieldList<Field<&SOCKADDR_IN::sin_family>, Field<&SOCKADDR_IN::sin_port>,
                           Field<&SOCKADDR_IN::sin_addr>, ReservedField<&SOCKADDR_IN::sin_zero>>;
};

template <>
struct Structure<SPropTagArray> {
  using Fields = FieldList<Field<&SPropTagArray::cValues>,
                           CountedField<&SPropTagArray::aulPropTag, &SPropTagArray::cValues>>;
};

template <>
struct Structure<SPropValue> {
  using Fields = FieldList<Field<&SPropValue::ulPropTag>, ReservedField<&SPropValue::dwAlignPad>,
                           ChosenField<&SPropValue::Value>>;
};

template <>
struct Structure<CEBLOB> {
  using Fields = FieldList<Field<&CEBLOB::dwCount>, CountedField<&CEBLOB::lpb, &CEBLOB::dwCount>>;
};

template <>
struct Structure<SBinary> {
  using Fields = FieldList<Field<&SBinary::cb>, CountedField<&SBinary::lpb, &SBinary::cb>>;
};

template <>
struct Structure<SRow> {
  using Fields = FieldList<ReservedField<&SRow::ulAdrEntryPad>, Field<&SRow::cValues>,
                           CountedField<&SRow::lpProps, &SRow::cValues>>;
};

template <>
struct Structure<SRowSet> {
  using Fields = FieldList<Field<&SRowSet::cRows>, CountedField<&SRowSet::aRow, &SRowSet::cRows>>;
};

template <>
struct Structure<STATSTG> {
  using Fields =
      FieldList<Field<&STATSTG::pwcsName>, Field<&STATSTG::type>, Field<&STATSTG::cbSize>,
                Field<&STATSTG::mtime>, Field<&STATSTG::ctime>, Field<&STATSTG::atime>,
                Field<&STATSTG::grfMode>, Field<&STATSTG::grfLocksSupported>, Field<&STATSTG::clsid>,
                Field<&STATSTG::grfStateBits>, ReservedField<&STATSTG::reserved>>;
};

template <>
struct Structure<PROCESS_INFORMATION> {
  using Fields = FieldList<Field<&PROCESS_INFORMATION::hProcess>, Field<&PROCESS_INFORMATION::hThread>,
                           Field<&PROCESS_INFORMATION::dwProcessId>, Field<&PROCESS_INFORMATION::dwThreadId>>;
};

template <>
struct Structure<WSADATA> {
  using Fields =
      FieldList<Field<&WSADATA::wVersion>, Field<&WSADATA::wHighVersion>, Field<&WSADATA::szDescription>,
                Field<&WSADATA::szSystemStatus>, Field<&WSADATA::iMaxSockets>, Field<&WSADATA::iMaxUdpDg>,
                Field<&WSADATA::lpVendorInfo>>;
};

template <>
struct Structure<ENTRYLIST> {
  using Fields = FieldList<Field<&ENTRYLIST::cValues>, CountedField<&ENTRYLIST::lpbin, &ENTRYLIST::cValues>>;
};

template <>
struct Structure<ADRENTRY> {
  using Fields = FieldList<ReservedField<&ADRENTRY::ulReserved1>, Field<&ADRENTRY::cValues>,
                           CountedField<&ADRENTRY::rgPropVals, &ADRENTRY::cValues>>;
};

template <>
struct Structure<ADRLIST> {
  using Fields = FieldList<Field<&ADRLIST::cEntries>, CountedField<&ADRLIST::aEntries, &ADRLIST::cEntries>>;
};

template <>
struct Structure<SSortOrder> {
  using Fields = FieldList<Field<&SSortOrder::ulPropTag>, Field<&SSortOrder::ulOrder>>;
};

template <>
struct Structure<SSortOrderSet> {
  using Fields = FieldList<Field<&SSortOrderSet::cSorts>, Field<&SSortOrderSet::cCategories>,
                           Field<&SSortOrderSet::cExpanded>,
                           CountedField<&SSortOrderSet::aSort, &SSortOrderSet::cSorts>>;
};

template <>
struct Structure<MAPINAMEID> {
  using Fields =
      FieldList<Field<&MAPINAMEID::lpguid>, Field<&MAPINAMEID::ulKind>, ChosenField<&MAPINAMEID::Kind>>;
};

}  // namespace emulator
