#include "mail/address_list.h"

#include <algorithm>
#include <cstring>

namespace qorv {

namespace {
constexpr WCHAR kSeparator = u';';
}

/// For so many characters and a terminator.
bool AddressList::makeRoom(std::size_t characters) {
  const std::size_t needed = (characters + 1) * sizeof(WCHAR);
  if (needed <= size_) return true;
  std::size_t size = std::max<std::size_t>(size_, kFirstSize);
  while (size < needed) size *= 2;
  LocalBlock larger(static_cast<UINT>(size));
  if (!larger) return false;
  if (block_) std::memcpy(larger.get(), block_.get(), size_);
  block_ = std::move(larger);
  size_ = size;
  return true;
}

void AddressList::append(std::u16string_view address) {
  if (address.empty() || givenUp_) return;
  const std::size_t separator = length_ > 0 ? 1 : 0;
  if (!makeRoom(length_ + separator + address.size())) {
    block_ = LocalBlock();
    givenUp_ = true;
    return;
  }
  auto* text = static_cast<WCHAR*>(block_.get());
  if (separator) text[length_++] = kSeparator;
  std::memcpy(text + length_, address.data(), address.size() * sizeof(WCHAR));
  length_ += address.size();
}

}  // namespace qorv
