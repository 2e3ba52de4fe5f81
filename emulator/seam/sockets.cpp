#include "platform/sockets.h"

#include "emulator/seam/call.h"

using emulator::call;
using emulator::Device;

int WSAStartup(WORD version, WSADATA* data) {
  return call<&::WSAStartup>([&](Device& device) { return device.sockets.startUp(version, data); }, version,
                             data);
}

int WSACleanup() {
  return call<&::WSACleanup>([](Device& device) { return device.sockets.cleanUp(); });
}

int closesocket(SOCKET socket) {
  return call<&::closesocket>([&](Device& device) { return device.sockets.close(socket); }, socket);
}

namespace platform_sockets {

SOCKET socket(int family, int type, int protocol) {
  return call<&platform_sockets::socket>(
      [&](Device& device) { return device.sockets.open(family, type, protocol); }, family, type, protocol);
}

int sendto(SOCKET socket, const char* data, int size, int flags, const SOCKADDR_IN* to, int toSize) {
  return call<&platform_sockets::sendto>(
      [&](Device& device) { return device.sockets.sendTo(socket, data, size, flags, to, toSize); }, socket,
      data, size, flags, to, toSize);
}

USHORT htons(USHORT value) {
  return call<&platform_sockets::htons>(
      [&](Device&) { return static_cast<USHORT>((value << 8) | (value >> 8)); }, value);
}

DWORD inet_addr(const char* text) {
  return call<&platform_sockets::inet_addr>([&](Device&) { return emulator::parseIpv4Address(text); }, text);
}

}  // namespace platform_sockets
