// Walks the records of a property database and reads the properties of the one it stands on.
#pragma once

#include <span>

#include "platform/property_database.h"

namespace qorv {

/// Move to a record and return its identifier; 0 when there is none, or the platform refuses.
CEOID seekFirstRecord(HANDLE database);
CEOID seekNextRecord(HANDLE database);

/// Reads records of one database, one after another, into a block that the platform makes and enlarges.
class RecordReader {
 public:
  explicit RecordReader(HANDLE database) : database_(database) {}
  RecordReader(const RecordReader&) = delete;
  RecordReader& operator=(const RecordReader&) = delete;
  ~RecordReader() { release(); }

  /// All properties of the current record, in the record's order. Valid until the next read. Empty when the
  /// record can't be read.
  std::span<const CEPROPVAL> readAll();
  /// One property of the current record, by its number and type. Null when the record doesn't have it, or
  /// can't be read.
  const CEPROPVAL* readOne(CEPROPID property);

 private:
  std::span<const CEPROPVAL> read(WORD count, CEPROPID* properties);
  void release();

  HANDLE database_;
  BYTE* block_ = nullptr;
  DWORD size_ = 0;
};

}  // namespace qorv
