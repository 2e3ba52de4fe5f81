// Owns the memory that the messaging library hands out, and local memory.
#pragma once

#include <span>
#include <utility>

#include "mail/messaging_library.h"
#include "platform/system.h"

namespace qorv {

/// A buffer of GetProps or GetIDsFromNames.
template <typename T>
class MapiBuffer {
 public:
  MapiBuffer() = default;
  MapiBuffer(const MapiBuffer&) = delete;
  MapiBuffer& operator=(const MapiBuffer&) = delete;
  ~MapiBuffer() {
    if (buffer_) MAPIFreeBuffer(buffer_);
  }

  [[nodiscard]] T* get() const { return buffer_; }
  T* operator->() const { return buffer_; }
  explicit operator bool() const { return buffer_ != nullptr; }
  /// For the out-parameter of one call.
  [[nodiscard]] T** put() { return &buffer_; }

 private:
  T* buffer_ = nullptr;
};

/// The rows of a table. Empty when the query gave none.
class RowSet {
 public:
  /// Asks for `count` rows from the table's cursor on.
  RowSet(IMAPITable& table, LONG count) {
    if (table.QueryRows(count, 0, &set_) < 0) reset();
  }
  RowSet(const RowSet&) = delete;
  RowSet& operator=(const RowSet&) = delete;
  ~RowSet() { reset(); }

  [[nodiscard]] std::span<const SRow> rows() const {
    return set_ ? std::span<const SRow>(static_cast<const SRow*>(set_->aRow), set_->cRows)
                : std::span<const SRow>();
  }
  /// Frees the rows before the end of the scope, where the order of calls asks for it.
  void reset() {
    if (SRowSet* held = std::exchange(set_, nullptr)) FreeProws(held);
  }

 private:
  SRowSet* set_ = nullptr;
};

/// A zeroed block of local memory.
class LocalBlock {
 public:
  LocalBlock() = default;
  /// Empty when there is no room.
  explicit LocalBlock(UINT size) : block_(LocalAlloc(LPTR, size)) {}
  LocalBlock(const LocalBlock&) = delete;
  LocalBlock& operator=(const LocalBlock&) = delete;
  LocalBlock(LocalBlock&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
  LocalBlock& operator=(LocalBlock&& other) noexcept {
    std::swap(block_, other.block_);
    return *this;
  }
  ~LocalBlock() {
    if (block_) LocalFree(block_);
  }

  [[nodiscard]] void* get() const { return block_; }
  explicit operator bool() const { return block_ != nullptr; }

 private:
  HLOCAL block_ = nullptr;
};

}  // namespace qorv
