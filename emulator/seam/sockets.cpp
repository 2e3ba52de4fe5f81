// The device has no network: every call that needs one fails.
#include "platform/sockets.h"

#include "emulator/seam/call.h"

using emulator::call;
using emulator::Device;
using emulator::unsupported;

int WSAStartup(WORD version, WSADATA* data) {
  return unsupported<&::WSAStartup>(version, data);
}

int WSACleanup() {
  return unsupported<&::WSACleanup>();
}

int closesocket(SOCKET socket) {
  return unsupported<&::closesocket>(socket);
}

namespace platform_sockets {

SOCKET socket(int family, int type, int protocol) {
  return unsupported<&platform_sockets::socket>(family, type, protocol);
}

int sendto(SOCKET socket, const char* data, int size, int flags, const SOCKADDR_IN* to, int toSize) {
  return unsupported<&platform_sockets::sendto>(socket, data, size, flags, to, toSize);
}

USHORT htons(USHORT value) {
  return call<&platform_sockets::htons>(
      [&](Device&) { return static_cast<USHORT>((value << 8) | (value >> 8)); }, value);
}

DWORD inet_addr(const char* text) {
  return unsupported<&platform_sockets::inet_addr>(text);
}

}  // namespace platform_sockets
