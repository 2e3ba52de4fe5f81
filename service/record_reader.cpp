#include "service/record_reader.h"

#include <utility>

#include "platform/system.h"

namespace qorv {

CEOID seekFirstRecord(HANDLE database) {
  DWORD index = 0;
  return CeSeekDatabase(database, CEDB_SEEK_BEGINNING, 0, &index);
}

CEOID seekNextRecord(HANDLE database) {
  DWORD index = 0;
  return CeSeekDatabase(database, CEDB_SEEK_CURRENT, 1, &index);
}

std::span<const CEPROPVAL> RecordReader::readAll() {
  return read(0, nullptr);
}

const CEPROPVAL* RecordReader::readOne(CEPROPID property) {
  for (const CEPROPVAL& value : read(1, &property)) {
    // Asked for properties that aren't there, the platform answers with values that only say so.
    if (value.propid == property && (value.wFlags & CEDB_PROPNOTFOUND) == 0) return &value;
  }
  return nullptr;
}

std::span<const CEPROPVAL> RecordReader::read(WORD count, CEPROPID* properties) {
  const CEOID record = CeReadRecordProps(database_, CEDB_ALLOWREALLOC, &count, properties, &block_, &size_);
  if (record == 0 || block_ == nullptr) {
    // After a failure the size may be what was needed instead of what the block has.
    release();
    return {};
  }
  return {reinterpret_cast<const CEPROPVAL*>(block_), count};
}

void RecordReader::release() {
  if (BYTE* block = std::exchange(block_, nullptr)) LocalFree(block);
  size_ = 0;
}

}  // namespace qorv
