// Serves requests over a stream, one reply each, until the end command.
#pragma once

#include "channel/module_state.h"
#include "platform/rapi_stream.h"

namespace qorv {

/// Returns after an end command, or when the stream ends or fails.
void serveRequests(IRAPIStream& stream, COutlook& session, FullListingFlags& fullListings);

}  // namespace qorv
