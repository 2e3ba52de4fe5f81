// Where an item object's values come from and where they go when it is saved.
#pragma once

#include "emulator/pim/pim_items.h"

namespace emulator {

class ItemSource {
 public:
  virtual ~ItemSource() = default;

  /// 0 before the first save.
  virtual Oid oid() const = 0;
  /// Nothing when the item is gone.
  virtual std::optional<PimItem> load() = 0;
  /// On success the item is as it was saved.
  virtual HRESULT save(PimItem& item) = 0;
  virtual HRESULT remove() = 0;
};

/// A contact, appointment or task of its own.
class StoredItem final : public ItemSource {
 public:
  /// With identifier 0 a new item.
  StoredItem(PimItems& items, ObjectKind kind, Oid oid) : items_(items), kind_(kind), oid_(oid) {}

  Oid oid() const override { return oid_; }
  std::optional<PimItem> load() override;
  HRESULT save(PimItem& item) override;
  HRESULT remove() override;

 private:
  PimItems& items_;
  ObjectKind kind_;
  Oid oid_;
};

/// One occurrence of a series, known by the day that it originally had. Its identifier is the series'.
class OccurrenceOfSeries final : public ItemSource {
 public:
  OccurrenceOfSeries(PimItems& items, Oid series, Day originalDay)
      : items_(items), series_(series), originalDay_(originalDay) {}

  Oid oid() const override { return series_; }
  /// The appointment of the day's exception wherever it went, else the plain occurrence.
  std::optional<PimItem> load() override;
  /// Makes an exception, or changes the one that there is.
  HRESULT save(PimItem& item) override;
  HRESULT remove() override;

 private:
  PimItems& items_;
  Oid series_;
  Day originalDay_;
};

}  // namespace emulator
