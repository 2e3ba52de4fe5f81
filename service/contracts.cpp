#include "service/contracts.h"

#include <array>
#include <string_view>

#include "channel/host_context.h"
#include "service/property_database.h"
#include "service/record_reader.h"

namespace qorv {

namespace {

constexpr DWORD kContractDatabaseType = 12469;

constexpr CEPROPID kName = 0x1205001F;
constexpr CEPROPID kDataType = 0x12040003;
constexpr CEPROPID kSequence = 0x12020003;

UniqueHandle openContracts() {
  return openStoreDatabase(hostContext().contractDatabase, kName);
}

void createContracts() {
  SORTORDERSPEC orders[] = {{kName, CEDB_SORT_DESCENDING}, {kDataType, CEDB_SORT_DESCENDING}};
  std::u16string name = hostContext().contractDatabase;
  CeCreateDatabase(name.data(), kContractDatabaseType, std::size(orders), orders);
}

/// Whether it could be made shows when it is opened again; one that is there after all opens then.
UniqueHandle openOrCreateContracts() {
  UniqueHandle database = openContracts();
  if (database) return database;
  createContracts();
  return openContracts();
}

/// The database stands on the record that is returned; 0 when none has the name.
CEOID findRecord(HANDLE database, std::u16string_view name) {
  RecordReader reader(database);
  CEOID record = seekFirstRecord(database);
  for (; record != 0; record = seekNextRecord(database)) {
    const CEPROPVAL* stored = reader.readOne(kName);
    if (stored && name == stored->val.lpwstr) break;
  }
  return record;
}

CEPROPVAL textProperty(CEPROPID property, LPWSTR text) {
  CEPROPVAL value{};
  value.propid = property;
  value.val.lpwstr = text;
  return value;
}

CEPROPVAL numberProperty(CEPROPID property, DWORD number) {
  CEPROPVAL value{};
  value.propid = property;
  value.val.lVal = static_cast<LONG>(number);
  return value;
}

}  // namespace

ContractLookup::ContractLookup(const RequestText& name) : name_(name), database_(openOrCreateContracts()) {
  if (isOpen()) record_ = findRecord(database_.get(), name_.get());
}

std::optional<DWORD> ContractLookup::sequence() const {
  RecordReader reader(database_.get());
  const CEPROPVAL* stored = reader.readOne(kSequence);
  if (!stored) return std::nullopt;
  return static_cast<DWORD>(stored->val.lVal);
}

bool ContractLookup::write(DataType type, DWORD sequence) {
  std::array values{textProperty(kName, name_.get()), numberProperty(kDataType, static_cast<DWORD>(type)),
                    numberProperty(kSequence, sequence)};
  return CeWriteRecordProps(database_.get(), record_, values.size(), values.data()) != 0;
}

void ContractLookup::erase() {
  // The identifier 0 of a contract that wasn't found is no record's: the platform deletes nothing then.
  CeDeleteRecord(database_.get(), record_);
}

}  // namespace qorv
