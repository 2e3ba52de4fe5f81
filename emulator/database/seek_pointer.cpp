#include "emulator/database/seek_pointer.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace emulator {

SeekPointer::SeekPointer(RecordStore& records, Connection& connection, Oid database, const SortOrder* order)
    : records_(records),
      walk_(connection, database, order),
      database_(database),
      order_(order),
      seen_(records.version()) {
  moveTo(walk_.fromBeginning(0), 0);
}

Oid SeekPointer::moveTo(std::optional<RecordPlace> place, std::optional<std::int64_t> index) {
  place_ = std::move(place);
  index_ = place_ ? index : std::nullopt;
  return record();
}

/// Another handle, or this one, may have given the record another key since.
void SeekPointer::refresh() {
  if (seen_ == records_.version()) return;
  seen_ = records_.version();
  index_.reset();
  if (!place_) return;
  if (auto place = placeOf(place_->record)) place_ = std::move(place);
}

std::optional<RecordPlace> SeekPointer::placeOf(Oid oid) {
  const auto found = records_.load(oid);
  if (!found || found->database != database_) return std::nullopt;
  return RecordPlace{order_ == nullptr ? Bytes() : sortKey(*order_, found->properties), oid};
}

Oid SeekPointer::toBeginning(std::int64_t steps) {
  refresh();
  // A walk by positions asks for one after the other: each is a step from the one before.
  const bool isNearer = index_ && std::abs(steps - *index_) < steps;
  if (isNearer) return by(steps - *index_);
  return moveTo(walk_.fromBeginning(steps), steps);
}

Oid SeekPointer::toEnd(std::int64_t steps) {
  refresh();
  if (steps < 0) return moveTo(std::nullopt);
  if (auto place = walk_.fromEnd(steps)) return moveTo(std::move(place));
  moveTo(walk_.fromBeginning(0), 0);
  return 0;
}

Oid SeekPointer::by(std::int64_t steps) {
  refresh();
  if (steps < 0) return back(-steps);
  if (!place_) return 0;
  if (steps == 0) return placeOf(place_->record) ? place_->record : 0;
  // A gap has no index, so a step from a known one leads from record to record.
  const auto index = index_ ? std::optional(*index_ + steps) : std::nullopt;
  return moveTo(walk_.after(*place_, steps - 1), index);
}

Oid SeekPointer::back(std::int64_t steps) {
  if (!place_) return toEnd(steps - 1);
  const auto index = index_ ? std::optional(*index_ - steps) : std::nullopt;
  if (auto place = walk_.before(*place_, steps - 1)) return moveTo(std::move(place), index);
  moveTo(walk_.fromBeginning(0), 0);
  return 0;
}

Oid SeekPointer::to(Oid record) {
  refresh();
  auto place = placeOf(record);
  return place ? moveTo(std::move(place)) : 0;
}

Oid SeekPointer::toSmaller(ByteView value) {
  refresh();
  return moveTo(walk_.lastWithin(leastKnownKey(), sortKeyOfValue(order_->properties.front(), value)));
}

Oid SeekPointer::toGreater(ByteView value) {
  refresh();
  return moveTo(
      walk_.firstWithin(sortKeyOfValue(order_->properties.front(), value), keyPast(leastKnownKey())));
}

Oid SeekPointer::toFirstEqual(ByteView value) {
  refresh();
  const Bytes key = sortKeyOfValue(order_->properties.front(), value);
  return moveTo(walk_.firstWithin(key, keyPast(key)));
}

Oid SeekPointer::toNextEqual(ByteView value) {
  const Bytes key = sortKeyOfValue(order_->properties.front(), value);
  by(1);
  const bool isEqual = place_ && place_->key.size() >= key.size() &&
                       std::ranges::equal(key, ByteView(place_->key).first(key.size()));
  return isEqual ? record() : moveTo(std::nullopt);
}

std::int64_t SeekPointer::index() {
  refresh();
  if (place_ && !index_) index_ = walk_.countBefore(*place_);
  return index_.value_or(0);
}

}  // namespace emulator
