// The messages of a set of folders by their numbers, in ascending order.
#pragma once

#include <list>

#include "mail/entry_id.h"

namespace qorv {

struct MessageRecord {
  DWORD id;
  EntryId entryId;
};
static_assert(sizeof(MessageRecord) == 24);

/// A linked list with a cursor, the place reached last, and a binary search over positions: a step costs one
/// link, so appending and walking on are cheap and a search at random walks about as many links as there are
/// records.
class MessageIndex {
 public:
  MessageIndex() = default;
  MessageIndex(const MessageIndex&) = delete;
  MessageIndex& operator=(const MessageIndex&) = delete;

  [[nodiscard]] std::size_t size() const { return records_.size(); }

  /// The later of two entries with one number replaces the earlier. A number above all others is appended
  /// without a search.
  void insert(const EntryId& entryId);
  /// Null when there is none; valid until the record is erased.
  [[nodiscard]] EntryId* find(DWORD id);
  /// False when there is none.
  bool erase(DWORD id);

  /// In ascending order; null at the end.
  [[nodiscard]] const MessageRecord* first();
  [[nodiscard]] const MessageRecord* next();

 private:
  using Records = std::list<MessageRecord>;
  struct Place {
    std::size_t position;  ///< of the record, or where it belongs
    bool found;
  };

  Place search(DWORD id);
  Records::iterator at(std::size_t position);
  [[nodiscard]] const MessageRecord* iterated();

  Records records_;
  Records::iterator cursor_ = records_.end();  ///< the end while it is unset
  std::size_t cursorPosition_ = 0;
  std::size_t iterationPosition_ = 0;
};

}  // namespace qorv
