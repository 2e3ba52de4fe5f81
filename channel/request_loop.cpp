#include "channel/request_loop.h"

#include "channel/dispatcher.h"
#include "channel/frame.h"

namespace qorv {

void serveRequests(IRAPIStream& stream, COutlook& session, FullListingFlags& fullListings) {
  bool ended = false;
  while (!ended) {
    const auto request = readFrame(stream);
    if (!request) return;
    if (!dispatch(*request, stream, session, fullListings)) return;
    ended = !request->empty() && request->front() == static_cast<BYTE>(Command::EndSession);
  }
}

}  // namespace qorv
