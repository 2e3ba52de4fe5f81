// A device whose property databases are reached through the platform's calls, as an agent reaches them.
#pragma once

#include <string>
#include <vector>

#include "emulator/seam/call.h"
#include "platform/system.h"
#include "tests/emulator/device_test.h"

namespace emulator::test {

inline constexpr CEPROPID kName = 0x1205001F;
inline constexpr CEPROPID kSequence = 0x12020003;
inline constexpr CEPROPID kItem = 0x12010013;
inline constexpr DWORD kPoison = 0xDEADBEEF;

inline CEPROPVAL number(CEPROPID id, LONG value) {
  CEPROPVAL result{};
  result.propid = id;
  result.val.lVal = value;
  return result;
}
/// The text must outlive the value.
inline CEPROPVAL text(CEPROPID id, const char16_t* value) {
  CEPROPVAL result{};
  result.propid = id;
  result.val.lpwstr = const_cast<char16_t*>(value);
  return result;
}
inline CEPROPVAL deletion(CEPROPID id) {
  CEPROPVAL result{};
  result.propid = id;
  result.wFlags = CEDB_PROPDELETE;
  return result;
}

inline SORTORDERSPECEX orderOn(std::vector<SORTORDERSPEC> keys, WORD keyFlags = 0) {
  SORTORDERSPECEX order{};
  order.wVersion = 1;
  order.wNumProps = static_cast<WORD>(keys.size());
  order.wKeyFlags = keyFlags;
  for (std::size_t i = 0; i < keys.size(); ++i) {
    order.rgPropID[i] = keys[i].propid;
    order.rgdwFlags[i] = keys[i].dwFlags;
  }
  return order;
}

class DatabaseTest : public DeviceTest {
 protected:
  ~DatabaseTest() override { EXPECT_EQ(device().memory.liveBlocks(), 0u); }

  CEOID create(std::u16string name, std::vector<SORTORDERSPEC> orders, DWORD type = 0) {
    return CeCreateDatabase(name.data(), type, static_cast<WORD>(orders.size()), orders.data());
  }
  /// Opens the database on one property; 0 opens it without an order.
  HANDLE open(CEOID oid, CEPROPID property = 0, DWORD flags = 0) {
    SORTORDERSPECEX order = orderOn({{property, 0}});
    return CeOpenDatabaseEx2(&volume_, &oid, nullptr, property == 0 ? nullptr : &order, flags, nullptr);
  }
  /// A database on the sequence, and open on it, with records of these sequences in this order.
  HANDLE openWith(const std::vector<LONG>& sequences, DWORD orderFlags = 0, DWORD openFlags = 0) {
    database_ = create(u"\\Log", {{kSequence, orderFlags}});
    const HANDLE writer = open(database_, kSequence);
    for (const LONG sequence : sequences) records_.push_back(write(writer, 0, {number(kSequence, sequence)}));
    EXPECT_TRUE(CloseHandle(writer));
    return open(database_, kSequence, openFlags);
  }

  static CEOID write(HANDLE handle, CEOID record, std::vector<CEPROPVAL> values) {
    return CeWriteRecordProps(handle, record, static_cast<WORD>(values.size()), values.data());
  }
  static CEOID seek(HANDLE handle, DWORD type, LONG value, DWORD* index = nullptr) {
    return CeSeekDatabase(handle, type, static_cast<DWORD>(value), index);
  }
  static CEOID seek(HANDLE handle, DWORD type, CEPROPVAL value, DWORD* index = nullptr) {
    return CeSeekDatabase(handle, type, reinterpret_cast<DWORD_PTR>(&value), index);
  }

  /// The sequence of the record that the pointer is on; the last error, negative, when it can't be read.
  static LONG sequenceHere(HANDLE handle) {
    BYTE buffer[64];
    BYTE* block = buffer;
    DWORD size = sizeof buffer;
    CEPROPID id = kSequence;
    WORD count = 1;
    if (CeReadRecordProps(handle, 0, &count, &id, &block, &size) == 0)
      return -static_cast<LONG>(GetLastError());
    return reinterpret_cast<const CEPROPVAL*>(block)->val.lVal;
  }
  /// The sequences of all records, in the order of the handle.
  static std::vector<LONG> sequences(HANDLE handle) {
    std::vector<LONG> found;
    for (CEOID oid = seek(handle, CEDB_SEEK_BEGINNING, 0); oid != 0;
         oid = seek(handle, CEDB_SEEK_CURRENT, 1)) {
      found.push_back(sequenceHere(handle));
    }
    return found;
  }

  CEGUID volume_ = kSystemVolume;
  CEOID database_ = 0;
  std::vector<CEOID> records_;

 private:
  CurrentDevice current_{device()};
};

}  // namespace emulator::test
