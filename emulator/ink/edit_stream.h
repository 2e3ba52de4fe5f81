// Moves bytes between the control and a program's stream callback, in chunks.
#pragma once

#include "emulator/store/object_store.h"
#include "platform/rich_ink.h"

namespace emulator {

/// How many bytes the control asks for or offers at a time. The platform's control keeps that to itself; here
/// the sizes vary, odd ones among them, so that a callback that counts wrongly is found out.
class ChunkSizes {
 public:
  LONG next();

 private:
  std::size_t place_ = 0;
};

/// Calls the callback until it moves nothing, and appends what it gives to `bytes`. The callback's error,
/// which is also left in the stream's error word; a callback that claims to have moved more than it was asked
/// for, or none at all, is ERROR_INVALID_PARAMETER.
DWORD pullAll(EDITSTREAM& stream, ChunkSizes& sizes, Bytes& bytes);

/// Calls the callback until it has taken all bytes, or takes nothing. What it leaves of a chunk is offered
/// again. Errors as for pullAll.
DWORD pushAll(EDITSTREAM& stream, ChunkSizes& sizes, Bytes bytes);

}  // namespace emulator
