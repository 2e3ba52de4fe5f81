// Datagram sockets, version 1.1.
#pragma once

#include "platform/types.h"

using SOCKET = UINT_PTR;
inline constexpr SOCKET INVALID_SOCKET = ~SOCKET{0};
inline constexpr int SOCKET_ERROR = -1;

namespace platform_sockets {
inline constexpr int kAfInet = 2;
inline constexpr int kSockDgram = 2;
inline constexpr int kIpProtoUdp = 17;
}  // namespace platform_sockets

// Errors of the socket calls. They are also the last error.
inline constexpr int WSAEACCES = 10013;
inline constexpr int WSAEFAULT = 10014;
inline constexpr int WSAEMFILE = 10024;
inline constexpr int WSAENOTSOCK = 10038;
inline constexpr int WSAEMSGSIZE = 10040;
inline constexpr int WSAEPROTONOSUPPORT = 10043;
inline constexpr int WSAESOCKTNOSUPPORT = 10044;
inline constexpr int WSAEOPNOTSUPP = 10045;
inline constexpr int WSAEAFNOSUPPORT = 10047;
inline constexpr int WSAENETDOWN = 10050;
inline constexpr int WSAENETUNREACH = 10051;
inline constexpr int WSAEHOSTUNREACH = 10065;
inline constexpr int WSASYSNOTREADY = 10091;
inline constexpr int WSAVERNOTSUPPORTED = 10092;
inline constexpr int WSANOTINITIALISED = 10093;

struct WSADATA {
  WORD wVersion;
  WORD wHighVersion;
  char szDescription[257];
  char szSystemStatus[129];
  USHORT iMaxSockets;
  USHORT iMaxUdpDg;
  char* lpVendorInfo;
};
static_assert(kHasDeviceLayout<sizeof(WSADATA), 400>);

/// sockaddr_in as it lies in memory: port and address in network order.
struct SOCKADDR_IN {
  USHORT sin_family;
  USHORT sin_port;
  DWORD sin_addr;
  char sin_zero[8];
};
static_assert(sizeof(SOCKADDR_IN) == 16);

// The declarations below bear the platform's names in the C++ language: the host's own headers declare C
// functions of the same names with other types.
/// Returns its error itself. Each success is given back with WSACleanup; nothing else works without one.
int WSAStartup(WORD version, WSADATA* data) CE_CALL(WSAStartup);
int WSACleanup() CE_CALL(WSACleanup);
int closesocket(SOCKET socket) CE_CALL(closesocket);

namespace platform_sockets {
SOCKET socket(int family, int type, int protocol) CE_CALL(socket);
int sendto(SOCKET socket, const char* data, int size, int flags, const SOCKADDR_IN* to, int toSize)
    CE_CALL(sendto);
USHORT htons(USHORT value) CE_CALL(htons);
/// 0xFFFFFFFF when the text is no address.
DWORD inet_addr(const char* text) CE_CALL(inet_addr);
}  // namespace platform_sockets
