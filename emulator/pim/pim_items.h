// The device's contacts, appointments and tasks as its own programs handle them: plain values, saved by the
// object model's rules, and a word to whoever records changes.
#pragma once

#include <functional>

#include "emulator/pim/item_rules.h"
#include "emulator/pim/item_storage.h"

namespace emulator {

enum class ItemChangeKind : std::uint8_t { Added, Changed, Deleted };

struct ItemChange {
  ItemChangeKind change;
  ObjectKind kind;
  Oid oid;
};

/// Failures of the device file are StoreErrors; the object model's own refusals are results.
class PimItems {
 public:
  using Listener = std::function<void(const ItemChange&)>;

  PimItems(ObjectStore& store, LocalClock clock);

  /// Hears of every change after it was made. A change to an occurrence is a change of its series.
  void setListener(Listener listener) { listener_ = std::move(listener); }

  /// Another number after every change to the device file.
  std::int64_t version() const { return store_.connection().rowsChanged(); }

  /// See newItem, putProperty and freshRule.
  PimItem make(ObjectKind kind) const { return newItem(kind, clock_); }
  HRESULT put(ItemRecord& record, std::size_t place, PropertyValue value) const;
  RecurrenceRule freshPattern(const ItemRecord& item) const;

  std::int32_t count(ObjectKind kind) { return storage_.count(kind); }
  /// A folder's items in its order: contacts by FileAs, appointments by start, tasks by identifier.
  std::vector<Oid> list(ObjectKind kind) { return storage_.list(kind); }
  /// The kind of the item that has the identifier; nothing for other objects.
  std::optional<ObjectKind> kindOf(Oid oid);
  std::optional<PimItem> load(ObjectKind kind, Oid oid) { return storage_.load(kind, oid); }

  /// Saves a new item, under its own identifier when it has one, else under a new one that it is given.
  HRESULT add(PimItem& item);
  /// Saves what was changed in the item since it was made or loaded, and brings it up to date with what
  /// others saved meanwhile. The exceptions that a series keeps are prepared with it, as what they have from
  /// the series changed too; one that is refused refuses the series. E_FAIL when the item is gone.
  HRESULT change(PimItem& item);
  /// Whether there was such an item.
  bool remove(Oid oid);

  SeriesExceptions exceptions(const PimItem& series) { return storage_.loadExceptions(series); }
  std::optional<SeriesException> exceptionOf(const PimItem& series, Day originalDay) {
    return storage_.loadException(series, originalDay);
  }
  /// Saves one exception of a saved series, or refuses it: see checkPlacement.
  HRESULT putException(Oid series, SeriesException exception);
  /// Saves all exceptions of a saved series at once, in place of those it had, or refuses them all: see
  /// checkStanding; E_INVALIDARG also for two of one occurrence.
  HRESULT replaceExceptions(const PimItem& series, SeriesExceptions exceptions);

 private:
  /// None when they were dropped, or when another rule that was saved meanwhile left one without its
  /// occurrence.
  SeriesExceptions keptExceptions(const PimItem& series, bool dropped);
  void notify(ItemChangeKind change, const PimItem& item) const;

  ObjectStore& store_;
  ItemStorage storage_;
  LocalClock clock_;
  Listener listener_;
};

}  // namespace emulator
