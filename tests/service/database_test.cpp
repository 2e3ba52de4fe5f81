#include "tests/service/database_test.h"

#include <stdexcept>

#include "emulator/seam/current_device.h"
#include "platform/files.h"
#include "platform/system.h"

namespace test {

namespace {

constexpr std::u16string_view kRegistryRoot = u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Halvern";

/// A database of the device, opened by the test itself.
class OpenDatabase {
 public:
  OpenDatabase(std::u16string name, CEPROPID sortProperty) {
    CEGUID volume = kSystemVolume;
    SORTORDERSPECEX order{};
    order.wVersion = 1;
    order.wNumProps = 1;
    order.rgPropID[0] = sortProperty;
    handle_ =
        CeOpenDatabaseEx2(&volume, &oid_, name.data(), sortProperty != 0 ? &order : nullptr, 0, nullptr);
  }
  OpenDatabase(const OpenDatabase&) = delete;
  OpenDatabase& operator=(const OpenDatabase&) = delete;
  ~OpenDatabase() {
    if (isOpen()) CloseHandle(handle_);
  }

  bool isOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  CEOID oid() const { return oid_; }
  HANDLE get() const { return isOpen() ? handle_ : throw std::runtime_error("no such database"); }

 private:
  CEOID oid_ = 0;
  HANDLE handle_ = INVALID_HANDLE_VALUE;
};

CEPROPVAL platformValue(Property& property) {
  CEPROPVAL value{};
  value.propid = property.tag;
  if (auto* number = std::get_if<DWORD>(&property.value)) value.val.ulVal = *number;
  if (auto* text = std::get_if<std::u16string>(&property.value)) value.val.lpwstr = text->data();
  if (auto* blob = std::get_if<Bytes>(&property.value)) {
    value.val.blob = {static_cast<DWORD>(blob->size()), const_cast<BYTE*>(blob->data())};
  }
  return value;
}

Property property(const CEPROPVAL& value) {
  switch (static_cast<WORD>(value.propid)) {
    case CEVT_LPWSTR:
      return {value.propid, std::u16string(value.val.lpwstr)};
    case CEVT_BLOB:
      return {value.propid, Bytes({value.val.blob.lpb, value.val.blob.lpb + value.val.blob.dwCount})};
    default:
      return {value.propid, DWORD{value.val.ulVal}};
  }
}

Record currentRecord(HANDLE database) {
  WORD count = 0;
  BYTE* block = nullptr;
  DWORD size = 0;
  if (CeReadRecordProps(database, CEDB_ALLOWREALLOC, &count, nullptr, &block, &size) == 0) {
    throw std::runtime_error("no such record");
  }
  Record record;
  const auto* values = reinterpret_cast<const CEPROPVAL*>(block);
  for (WORD i = 0; i < count; ++i) record.push_back(property(values[i]));
  LocalFree(block);
  return record;
}

}  // namespace

CEOID DatabaseTest::makeDatabase(std::u16string name, const std::vector<SORTORDERSPEC>& orders) {
  removeDatabase(name);
  const emulator::CurrentDevice current(device());
  auto writableOrders = orders;
  const CEOID oid = CeCreateDatabase(name.data(), 0, static_cast<WORD>(orders.size()), writableOrders.data());
  EXPECT_NE(oid, 0u);
  return oid;
}

void DatabaseTest::removeDatabase(std::u16string name) {
  const emulator::CurrentDevice current(device());
  const CEOID oid = OpenDatabase(std::move(name), 0).oid();
  if (oid == 0) return;
  CEGUID volume = kSystemVolume;
  EXPECT_TRUE(CeDeleteDatabaseEx(&volume, oid));
}

std::vector<CEOID> DatabaseTest::add(std::u16string name, const std::vector<Record>& records) {
  const emulator::CurrentDevice current(device());
  const OpenDatabase database(std::move(name), 0);
  std::vector<CEOID> oids;
  for (Record record : records) {
    std::vector<CEPROPVAL> values;
    for (Property& each : record) values.push_back(platformValue(each));
    oids.push_back(CeWriteRecordProps(database.get(), 0, static_cast<WORD>(values.size()), values.data()));
    EXPECT_NE(oids.back(), 0u);
  }
  return oids;
}

void DatabaseTest::makeContracts(const std::vector<Record>& records) {
  makeDatabase(kContracts, {{kNameTag, CEDB_SORT_DESCENDING}, {kTypeTag, CEDB_SORT_DESCENDING}});
  add(kContracts, records);
}

std::vector<CEOID> DatabaseTest::makeLog(const std::vector<Record>& records, const std::u16string& name) {
  makeDatabase(name, {{kSequenceTag, CEDB_SORT_DESCENDING}});
  return add(name, records);
}

bool DatabaseTest::exists(std::u16string name) {
  const emulator::CurrentDevice current(device());
  return OpenDatabase(std::move(name), 0).isOpen();
}

std::vector<Record> DatabaseTest::records(std::u16string name, CEPROPID sortProperty) {
  const emulator::CurrentDevice current(device());
  const OpenDatabase database(std::move(name), sortProperty);
  std::vector<Record> found;
  DWORD index = 0;
  CEOID record = CeSeekDatabase(database.get(), CEDB_SEEK_BEGINNING, 0, &index);
  for (; record != 0; record = CeSeekDatabase(database.get(), CEDB_SEEK_CURRENT, 1, &index)) {
    found.push_back(currentRecord(database.get()));
  }
  return found;
}

void DatabaseTest::setCounter(DWORD value, const std::u16string& name) {
  EXPECT_TRUE(device().registry.put(kRegistryRoot, emulator::numberValue(name, value)));
}

std::optional<DWORD> DatabaseTest::counter(const std::u16string& name) {
  const auto value = device().registry.get(kRegistryRoot, name);
  return value ? emulator::numberOf(*value) : std::nullopt;
}

std::vector<std::string> DatabaseTest::databaseCalls() const {
  std::vector<std::string> names;
  for (const std::string& name : callNames()) {
    if (name.starts_with("Ce") || name == "CloseHandle") names.push_back(name);
  }
  return names;
}

std::vector<DWORD> DatabaseTest::sleeps() const {
  std::vector<DWORD> durations;
  for (const auto& call : calls("Sleep")) durations.push_back(call["args"][0]);
  return durations;
}

}  // namespace test
