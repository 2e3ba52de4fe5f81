// The device has no property databases: every call fails.
#include "platform/property_database.h"

#include "emulator/seam/call.h"

using emulator::unsupported;

CEOID CeCreateDatabase(LPWSTR name, DWORD type, WORD sortOrders, SORTORDERSPEC* orders) {
  return unsupported<&::CeCreateDatabase>(name, type, sortOrders, orders);
}

CEOID CeCreateDatabaseEx2(CEGUID* volume, CEDBASEINFOEX* description) {
  return unsupported<&::CeCreateDatabaseEx2>(volume, description);
}

HANDLE CeOpenDatabaseEx2(CEGUID* volume, CEOID* oid, LPWSTR name, SORTORDERSPECEX* order, DWORD flags,
                         CENOTIFYREQUEST* request) {
  return unsupported<&::CeOpenDatabaseEx2>(volume, oid, name, order, flags, request);
}

CEOID CeSeekDatabase(HANDLE database, DWORD type, DWORD_PTR value, DWORD* index) {
  return unsupported<&::CeSeekDatabase>(database, type, value, index);
}

CEOID CeReadRecordProps(HANDLE database, DWORD flags, WORD* count, CEPROPID* ids, BYTE** buffer,
                        DWORD* size) {
  return unsupported<&::CeReadRecordProps>(database, flags, count, ids, buffer, size);
}

CEOID CeReadRecordPropsEx(HANDLE database, DWORD flags, WORD* count, CEPROPID* ids, BYTE** buffer,
                          DWORD* size, HANDLE heap) {
  return unsupported<&::CeReadRecordPropsEx>(database, flags, count, ids, buffer, size, heap);
}

CEOID CeWriteRecordProps(HANDLE database, CEOID record, WORD count, CEPROPVAL* values) {
  return unsupported<&::CeWriteRecordProps>(database, record, count, values);
}

BOOL CeDeleteRecord(HANDLE database, CEOID record) {
  return unsupported<&::CeDeleteRecord>(database, record);
}

BOOL CeDeleteDatabaseEx(CEGUID* volume, CEOID oid) {
  return unsupported<&::CeDeleteDatabaseEx>(volume, oid);
}

BOOL CeOidGetInfoEx2(CEGUID* volume, CEOID oid, CEOIDINFOEX* information) {
  return unsupported<&::CeOidGetInfoEx2>(volume, oid, information);
}
