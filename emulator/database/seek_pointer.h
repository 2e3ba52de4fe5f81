// The seek pointer of an open database: the record that it is on, or the end, and how it moves.
#pragma once

#include "emulator/database/record_walk.h"

namespace emulator {

/// Each move gives the record reached, or 0. One that reaches none leaves the pointer at the end, or at the
/// first record when it would go past the beginning. A pointer whose record was deleted stays in the gap that
/// it left: one step on is the record that followed it.
class SeekPointer {
 public:
  /// On the first record. `order` null is the order of the identifiers; it and the stores must outlive the
  /// pointer.
  SeekPointer(RecordStore& records, Connection& connection, Oid database, const SortOrder* order);

  /// The record that the pointer is on, deleted or not; 0 at the end.
  Oid record() const { return place_ ? place_->record : 0; }

  /// To the record with so many before it.
  Oid toBeginning(std::int64_t steps);
  /// To the record with so many after it; -1 is the end.
  Oid toEnd(std::int64_t steps);
  Oid by(std::int64_t steps);
  /// To a record by its identifier. The pointer stays where it is when the database has no such record.
  Oid to(Oid record);
  /// Where a value would stand in the order: the last record before all that have it, the first at or after
  /// them, the first that has it, and the next one if it has it. Only for a pointer with an order.
  Oid toSmaller(ByteView value);
  Oid toGreater(ByteView value);
  Oid toFirstEqual(ByteView value);
  Oid toNextEqual(ByteView value);

  /// How many records stand before the pointer. Known after most moves, else counted.
  std::int64_t index();

 private:
  Oid moveTo(std::optional<RecordPlace> place, std::optional<std::int64_t> index = std::nullopt);
  Oid back(std::int64_t steps);
  void refresh();
  std::optional<RecordPlace> placeOf(Oid record);

  RecordStore& records_;
  RecordWalk walk_;
  Oid database_;
  const SortOrder* order_;
  std::optional<RecordPlace> place_;
  std::optional<std::int64_t> index_;  ///< of the place, while it is known
  std::uint64_t seen_;                 ///< the records' version that place and index belong to
};

}  // namespace emulator
