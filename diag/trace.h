// A trace for developers: each message goes to the debugger and, as one UDP datagram, to a collector.
//
// The datagram is the message's characters, UTF-16LE, and nothing else: no terminator, no header, no length.
// It goes to port 4321 of the collector whose address the build was given (QORV_TRACE_COLLECTOR).
#pragma once

#include <array>

#include "diag/trace_format.h"

namespace qorv {

/// The longest message; what is beyond is cut off.
inline constexpr std::size_t kMaxTrace = 1024;

void traceFormatted(LPCWSTR format, std::span<const TraceArgument> arguments);

/// Sends a message, as printf makes it. See formatTrace for the conversions. Keeps no state, and whether
/// anything arrives nobody learns.
template <typename... Arguments>
void trace(LPCWSTR format, const Arguments&... arguments) {
  traceFormatted(format, std::array<TraceArgument, sizeof...(Arguments)>{TraceArgument(arguments)...});
}

}  // namespace qorv
