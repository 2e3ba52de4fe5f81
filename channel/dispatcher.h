// Turns one request into one call on the handler of its data type, and sends the reply.
#pragma once

#include <span>

#include "channel/module_state.h"
#include "platform/rapi_stream.h"

namespace qorv {

/// Exactly one reply leaves for every request. A request that is too short to name a command and a type, an
/// unknown type and an unknown command get an empty one. False when the stream failed.
bool dispatch(std::span<const BYTE> request, IRAPIStream& stream, COutlook& session,
              FullListingFlags& fullListings);

}  // namespace qorv
