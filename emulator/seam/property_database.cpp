#include "platform/property_database.h"

#include "emulator/seam/call.h"

using emulator::call;
using emulator::Device;
using emulator::ReadBuffer;
using emulator::textOf;

namespace {

ReadBuffer readBuffer(DWORD flags, BYTE** buffer, DWORD* size, HANDLE heap) {
  return {buffer, size, heap == nullptr ? emulator::processHeap() : heap, (flags & CEDB_ALLOWREALLOC) != 0};
}

}  // namespace

CEOID CeCreateDatabase(LPWSTR name, DWORD type, WORD sortOrders, SORTORDERSPEC* orders) {
  return call<&::CeCreateDatabase>(
      [&](Device& device) { return device.databases.create(textOf(name), type, sortOrders, orders); }, name,
      type, sortOrders, orders);
}

CEOID CeCreateDatabaseEx2(CEGUID* volume, CEDBASEINFOEX* description) {
  return call<&::CeCreateDatabaseEx2>(
      [&](Device& device) { return device.databases.create(volume, description); }, volume, description);
}

HANDLE CeOpenDatabaseEx2(CEGUID* volume, CEOID* oid, LPWSTR name, SORTORDERSPECEX* order, DWORD flags,
                         CENOTIFYREQUEST* request) {
  return call<&::CeOpenDatabaseEx2>(
      [&](Device& device) { return device.databases.open(volume, oid, name, order, flags, request); }, volume,
      oid, name, order, flags, request);
}

CEOID CeSeekDatabase(HANDLE database, DWORD type, DWORD_PTR value, DWORD* index) {
  return call<&::CeSeekDatabase>(
      [&](Device& device) { return device.databases.seek(database, type, value, index); }, database, type,
      value, index);
}

CEOID CeReadRecordProps(HANDLE database, DWORD flags, WORD* count, CEPROPID* ids, BYTE** buffer,
                        DWORD* size) {
  return call<&::CeReadRecordProps>(
      [&](Device& device) {
        return device.databases.read(database, count, ids, readBuffer(flags, buffer, size, nullptr));
      },
      database, flags, count, ids, buffer, size);
}

CEOID CeReadRecordPropsEx(HANDLE database, DWORD flags, WORD* count, CEPROPID* ids, BYTE** buffer,
                          DWORD* size, HANDLE heap) {
  return call<&::CeReadRecordPropsEx>(
      [&](Device& device) {
        return device.databases.read(database, count, ids, readBuffer(flags, buffer, size, heap));
      },
      database, flags, count, ids, buffer, size, heap);
}

CEOID CeWriteRecordProps(HANDLE database, CEOID record, WORD count, CEPROPVAL* values) {
  return call<&::CeWriteRecordProps>(
      [&](Device& device) {
        return device.databases.write(database, record, std::span(values, values == nullptr ? 0 : count));
      },
      database, record, count, values);
}

BOOL CeDeleteRecord(HANDLE database, CEOID record) {
  return call<&::CeDeleteRecord>(
      [&](Device& device) { return device.databases.removeRecord(database, record); }, database, record);
}

BOOL CeDeleteDatabaseEx(CEGUID* volume, CEOID oid) {
  return call<&::CeDeleteDatabaseEx>([&](Device& device) { return device.databases.remove(volume, oid); },
                                     volume, oid);
}

BOOL CeOidGetInfoEx2(CEGUID* volume, CEOID oid, CEOIDINFOEX* information) {
  return call<&::CeOidGetInfoEx2>(
      [&](Device& device) { return device.objects.describe(volume, oid, information); }, volume, oid,
      information);
}
