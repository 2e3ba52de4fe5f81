#include "diag/trace.h"

#include <bit>

#include "platform/sockets.h"
#include "platform/system.h"
#include "platform/text.h"

namespace qorv {

namespace {

constexpr WORD kSocketsVersion = 0x0101;
constexpr USHORT kCollectorPort = 4321;

// The characters leave as they lie in memory.
static_assert(std::endian::native == std::endian::little);

SOCKADDR_IN collector() {
  SOCKADDR_IN address{};
  address.sin_family = platform_sockets::kAfInet;
  address.sin_port = platform_sockets::htons(kCollectorPort);
  address.sin_addr = platform_sockets::inet_addr(QORV_TRACE_COLLECTOR);
  return address;
}

void send(const WCHAR* message, std::size_t length) {
  WSADATA data{};
  WSAStartup(kSocketsVersion, &data);
  const SOCKADDR_IN to = collector();
  const SOCKET socket = platform_sockets::socket(platform_sockets::kAfInet, platform_sockets::kSockDgram,
                                                 platform_sockets::kIpProtoUdp);
  if (socket != INVALID_SOCKET) {
    platform_sockets::sendto(socket, reinterpret_cast<const char*>(message),
                             static_cast<int>(length * sizeof(WCHAR)), 0, &to, sizeof(to));
  } else {
    GetLastError();
  }
  // Also a socket that there is none of: the sequence of calls has always been so.
  closesocket(socket);
  WSACleanup();
}

}  // namespace

void traceFormatted(LPCWSTR format, std::span<const TraceArgument> arguments) {
  std::array<WCHAR, kMaxTrace + 1> message{};
  const std::size_t length = formatTrace(message, format ? format : u"", arguments);
  OutputDebugStringW(message.data());
  send(message.data(), length);
}

}  // namespace qorv
