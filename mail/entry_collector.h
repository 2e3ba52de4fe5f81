// Gathers the rows of a scan before they are indexed.
#pragma once

#include <vector>

#include "mail/message_index.h"

namespace qorv {

/// Folders give their rows in any order, and inserting them one by one would walk the index once a row.
/// Gathered and put in order they are all appended.
class EntryCollector {
 public:
  void add(const EntryId& entryId) { entries_.push_back(entryId); }

  /// Of entries with one number the one that was added last goes into the index.
  void moveTo(MessageIndex& index);

 private:
  std::vector<EntryId> entries_;
};

}  // namespace qorv
