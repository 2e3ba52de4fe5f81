// Walking the records of a database in one order, by steps of the index and without counting.
#pragma once

#include "emulator/database/record_store.h"

namespace emulator {

/// An order without a number is the records' own: by identifier, with empty keys. Each method gives nothing
/// when it reaches no record.
class RecordWalk {
 public:
  RecordWalk(Connection& connection, Oid database, const SortOrder* order);

  /// 0 is the first, and the last.
  std::optional<RecordPlace> fromBeginning(std::int64_t steps);
  std::optional<RecordPlace> fromEnd(std::int64_t steps);
  /// 0 is the next one. The record of the place may be gone.
  std::optional<RecordPlace> after(const RecordPlace& place, std::int64_t steps);
  std::optional<RecordPlace> before(const RecordPlace& place, std::int64_t steps);
  /// The first whose key is in [from, past), and the last.
  std::optional<RecordPlace> firstWithin(const Bytes& from, const Bytes& past);
  std::optional<RecordPlace> lastWithin(const Bytes& from, const Bytes& past);
  /// How many records stand before: takes as long as there are.
  std::int64_t countBefore(const RecordPlace& place);

 private:
  struct Statements;
  static const Statements kKeyed;
  static const Statements kPlain;

  Connection& connection_;
  const Statements& sql_;
  std::int64_t which_;  ///< the order, or for the plain statements the database
};

}  // namespace emulator
