// Length-prefixed messages over the remote-API stream.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "platform/rapi_stream.h"

namespace qorv {

/// A length word is a claim: up to this much is read with one call, more in blocks of this size as the bytes
/// arrive.
inline constexpr DWORD kReadBlock = 1024 * 1024;

/// The next request's payload; nothing when the stream ended or failed before all of it came.
std::optional<std::vector<BYTE>> readFrame(IRAPIStream& stream);

/// Two writes, also for an empty payload. False when the stream failed.
bool writeFrame(IRAPIStream& stream, std::span<const BYTE> payload);

}  // namespace qorv
