// Property values as the platform hands them out: one block with the values in front and behind them the texts
// and blobs that they point to.
#pragma once

#include <span>

#include "emulator/database/record_property.h"

namespace emulator {

/// A value and the bytes behind its pointer, when it is a text (with its NUL) or a blob.
struct BlockValue {
  CEPROPVAL value{};
  Bytes bytes;
};

BlockValue blockValue(const RecordProperty& property);
/// What stands for a property that is not there.
BlockValue missingValue(CEPROPID id);

std::size_t blockSize(std::span<const BlockValue> values);
/// The block must have room for blockSize bytes and lie at an address fit for a CEPROPVAL.
void fillBlock(std::uint8_t* block, std::span<const BlockValue> values);

}  // namespace emulator
