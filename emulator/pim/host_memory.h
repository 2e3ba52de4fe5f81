// Texts and heap blocks in the memory of the program itself.
#pragma once

#include <cstdint>
#include <memory>
#include <unordered_map>

#include "emulator/pim/platform_memory.h"

namespace emulator {

class HostMemory final : public PlatformMemory {
 public:
  BSTR allocateText(std::u16string_view text) override;
  void freeText(BSTR text) override;
  void* allocateBlock(HANDLE heap, std::size_t size) override;
  bool freeBlock(HANDLE heap, void* block) override;

  std::size_t liveTexts() const override { return texts_.size(); }
  std::size_t liveBlocks() const override { return blocks_.size(); }

 private:
  struct Block {
    std::unique_ptr<std::uint8_t[]> bytes;
    HANDLE heap;
  };

  std::unordered_map<BSTR, std::unique_ptr<std::uint8_t[]>> texts_;
  std::unordered_map<void*, Block> blocks_;
};

}  // namespace emulator
