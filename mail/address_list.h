// Joins the addresses of a message's recipients.
#pragma once

#include <string_view>

#include "mail/messaging_memory.h"

namespace qorv {

/// Addresses with ";" between them, in a zeroed block of local memory. The first block holds what most lists
/// need; a longer list moves into larger ones.
class AddressList {
 public:
  static constexpr UINT kFirstSize = 1000;

  /// An empty address is left out. When there is no room the whole list is given up, as nobody shall take a
  /// part of it for the whole.
  void append(std::u16string_view address);

  /// Null for an empty list.
  [[nodiscard]] LPCWSTR text() const { return static_cast<LPCWSTR>(block_.get()); }

 private:
  bool makeRoom(std::size_t characters);

  LocalBlock block_;
  std::size_t size_ = 0;    ///< of the block, in bytes
  std::size_t length_ = 0;  ///< of the text, in characters
  bool givenUp_ = false;
};

}  // namespace qorv
