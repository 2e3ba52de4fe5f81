#include "mail/message_index.h"

namespace qorv {

MessageIndex::Records::iterator MessageIndex::at(std::size_t position) {
  if (cursor_ == records_.end()) {
    cursor_ = records_.begin();
    cursorPosition_ = 0;
  }
  for (; cursorPosition_ < position; ++cursorPosition_) ++cursor_;
  for (; cursorPosition_ > position; --cursorPosition_) --cursor_;
  return cursor_;
}

MessageIndex::Place MessageIndex::search(DWORD id) {
  // Who walks through the index asks for what the cursor is at.
  if (cursor_ != records_.end() && cursor_->id == id) return {cursorPosition_, true};
  std::size_t low = 0;
  std::size_t high = records_.size();
  while (high - low >= 2) {
    const std::size_t middle = low + (high - low) / 2;
    const DWORD there = at(middle)->id;
    if (id == there) return {middle, true};
    (id > there ? low : high) = middle;
  }
  for (; low < high; ++low) {
    const DWORD there = at(low)->id;
    if (id <= there) return {low, id == there};
  }
  return {high, false};
}

void MessageIndex::insert(const EntryId& entryId) {
  const DWORD id = objectId(entryId);
  if (records_.empty() || records_.back().id < id) {
    records_.push_back({id, entryId});
    return;
  }
  const Place place = search(id);
  if (place.found) {
    at(place.position)->entryId = entryId;
  } else {
    cursor_ = records_.insert(at(place.position), {id, entryId});
  }
}

EntryId* MessageIndex::find(DWORD id) {
  const Place place = search(id);
  return place.found ? &at(place.position)->entryId : nullptr;
}

bool MessageIndex::erase(DWORD id) {
  const Place place = search(id);
  if (!place.found) return false;
  cursor_ = records_.erase(at(place.position));
  return true;
}

const MessageRecord* MessageIndex::iterated() {
  return iterationPosition_ < records_.size() ? &*at(iterationPosition_) : nullptr;
}

const MessageRecord* MessageIndex::first() {
  iterationPosition_ = 0;
  return iterated();
}

const MessageRecord* MessageIndex::next() {
  ++iterationPosition_;
  return iterated();
}

}  // namespace qorv
