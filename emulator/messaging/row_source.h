// What a table shows: rows, each with the properties of one thing.
#pragma once

#include <utility>

#include "emulator/messaging/mail_value.h"
#include "platform/errors.h"

namespace emulator {

class RowSource {
 public:
  using Visitor = std::function<void(const PropertyLookup&)>;

  virtual ~RowSource() = default;

  /// The columns until others are set.
  virtual std::vector<PropertyTag> defaultColumns() const = 0;
  virtual std::size_t count() = 0;
  /// Shows rows in order, from a position on, at most `limit`.
  virtual void read(std::size_t position, std::size_t limit, const Visitor& visit) = 0;
  /// Puts the rows in another order. MAPI_E_NO_SUPPORT leaves them as they are.
  virtual HRESULT sort(std::span<const SSortOrder>) { return MAPI_E_NO_SUPPORT; }
};

/// Rows of a short list, as it was when the table was opened.
template <typename Thing>
class ListRows final : public RowSource {
 public:
  ListRows(std::span<const ReadableProperty<Thing>> properties, std::vector<Thing> things)
      : properties_(properties), things_(std::move(things)) {}

  std::vector<PropertyTag> defaultColumns() const override { return tagsOf(properties_); }
  std::size_t count() override { return things_.size(); }
  void read(std::size_t position, std::size_t limit, const Visitor& visit) override {
    for (std::size_t i = position; i < things_.size() && i - position < limit; ++i) {
      visit([&](PropertyTag asked) { return readProperty(properties_, things_[i], asked); });
    }
  }

 private:
  std::span<const ReadableProperty<Thing>> properties_;
  std::vector<Thing> things_;
};

}  // namespace emulator
