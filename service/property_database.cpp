#include "service/property_database.h"

#include <algorithm>

namespace qorv {

namespace {

/// Of sort orders, database descriptions and object information alike.
constexpr WORD kStructureVersion = 1;
/// A notification request as the device lays it out; where pointers are wider the number stays the same.
constexpr DWORD kNotifyRequestSize = 20;

SORTORDERSPECEX singleKeyOrder(CEPROPID property, DWORD flags) {
  SORTORDERSPECEX order{};
  order.wVersion = kStructureVersion;
  order.wNumProps = 1;
  order.rgPropID[0] = property;
  order.rgdwFlags[0] = flags;
  return order;
}

CEDBASEINFOEX extendedDescription(const CEDBASEINFO& description) {
  CEDBASEINFOEX extended{};
  extended.wVersion = kStructureVersion;
  extended.wNumSortOrder = description.wNumSortOrder;
  extended.dwFlags = description.dwFlags;
  std::ranges::copy(description.szDbaseName, extended.szDbaseName);
  extended.dwDbaseType = description.dwDbaseType;
  extended.dwNumRecords = description.wNumRecords;
  extended.dwSize = description.dwSize;
  extended.ftLastModified = description.ftLastModified;
  std::ranges::transform(description.rgSortSpecs, extended.rgSortSpecs, [](const SORTORDERSPEC& order) {
    return singleKeyOrder(order.propid, order.dwFlags);
  });
  return extended;
}

}  // namespace

UniqueHandle openDatabase(CEGUID& volume, CEOID& oid, const std::u16string& name, CEPROPID sortProperty,
                          DWORD flags, CENOTIFYREQUEST* request) {
  // A stored order is known by its property and keeps its own direction, so the flags here are 0.
  SORTORDERSPECEX order = singleKeyOrder(sortProperty, 0);
  std::u16string writableName = name;
  return UniqueHandle(CeOpenDatabaseEx2(&volume, &oid, writableName.data(),
                                        sortProperty != 0 ? &order : nullptr, flags, request));
}

UniqueHandle openDatabaseWithNotification(CEGUID& volume, CEOID& oid, const std::u16string& name,
                                          CEPROPID sortProperty, DWORD flags, HWND window) {
  CENOTIFYREQUEST request{};
  request.dwSize = kNotifyRequestSize;
  request.hwnd = window;
  return openDatabase(volume, oid, name, sortProperty, flags, window ? &request : nullptr);
}

UniqueHandle openStoreDatabase(const std::u16string& name, CEPROPID sortProperty) {
  CEGUID volume = kSystemVolume;
  CEOID oid = 0;
  return openDatabase(volume, oid, name, sortProperty, 0, nullptr);
}

CEOID createDatabase(CEGUID& volume, const CEDBASEINFO& description) {
  CEDBASEINFOEX extended = extendedDescription(description);
  return CeCreateDatabaseEx2(&volume, &extended);
}

bool objectInformation(CEGUID& volume, CEOID oid, CEOIDINFOEX& information) {
  information = {};
  information.wVersion = kStructureVersion;
  const bool isKnown = CeOidGetInfoEx2(&volume, oid, &information) != FALSE;
  information.wVersion = information.wObjType;
  return isKnown;
}

}  // namespace qorv
