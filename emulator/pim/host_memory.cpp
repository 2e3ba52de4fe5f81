#include "emulator/pim/host_memory.h"

#include <cstring>
#include <new>

namespace emulator {
namespace {

using Bytes = std::unique_ptr<std::uint8_t[]>;

Bytes allocate(std::size_t size) {
  return Bytes(new (std::nothrow) std::uint8_t[size]);
}

}  // namespace

BSTR HostMemory::allocateText(std::u16string_view text) {
  const auto length = static_cast<std::uint32_t>(text.size() * sizeof(char16_t));
  Bytes block = allocate(sizeof length + length + sizeof(char16_t));
  if (!block) return nullptr;
  std::memcpy(block.get(), &length, sizeof length);
  auto* characters = reinterpret_cast<BSTR>(block.get() + sizeof length);
  if (!text.empty()) std::memcpy(characters, text.data(), length);
  characters[text.size()] = u'\0';
  texts_.emplace(characters, std::move(block));
  return characters;
}

void HostMemory::freeText(BSTR text) {
  texts_.erase(text);
}

void* HostMemory::allocateBlock(HANDLE heap, std::size_t size) {
  Bytes bytes = allocate(size);
  if (!bytes) return nullptr;
  void* block = bytes.get();
  blocks_.emplace(block, Block{std::move(bytes), heap});
  return block;
}

bool HostMemory::freeBlock(HANDLE heap, void* block) {
  const auto found = blocks_.find(block);
  if (found == blocks_.end() || found->second.heap != heap) return false;
  blocks_.erase(found);
  return true;
}

}  // namespace emulator
