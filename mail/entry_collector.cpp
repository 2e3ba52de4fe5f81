#include "mail/entry_collector.h"

#include <algorithm>
#include <functional>

namespace qorv {

namespace {
DWORD numberOf(const EntryId& entryId) {
  return objectId(entryId);
}
}  // namespace

void EntryCollector::moveTo(MessageIndex& index) {
  std::ranges::stable_sort(entries_, std::less(), numberOf);
  for (auto entry = entries_.begin(); entry != entries_.end(); ++entry) {
    const auto following = std::next(entry);
    const bool isReplaced = following != entries_.end() && numberOf(*following) == numberOf(*entry);
    if (!isReplaced) index.insert(*entry);
  }
  entries_.clear();
}

}  // namespace qorv
