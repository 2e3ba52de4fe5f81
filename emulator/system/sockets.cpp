#include "emulator/system/sockets.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>
#include <system_error>

#include "platform/errors.h"

namespace emulator {
namespace {

/// High byte the minor, low byte the major version.
constexpr WORD kVersion = 0x0101;
constexpr std::string_view kDescription = "Emulated sockets";
constexpr std::string_view kStatus = "Running";
constexpr USHORT kMaxDatagram = 65507;  // what IPv4 and UDP leave of 65535

constexpr WORD swapped(WORD version) {
  return static_cast<WORD>((version << 8) | (version >> 8));
}

struct HostError {
  int host;
  int device;
};
constexpr HostError kHostErrors[] = {
    {EACCES, WSAEACCES},
    {EPERM, WSAEACCES},
    {EMSGSIZE, WSAEMSGSIZE},
    {EMFILE, WSAEMFILE},
    {ENFILE, WSAEMFILE},
    {ENETUNREACH, WSAENETUNREACH},
    {EHOSTUNREACH, WSAEHOSTUNREACH},
};

int deviceError(const std::system_error& error) {
  const auto* found = std::ranges::find(kHostErrors, error.code().value(), &HostError::host);
  return found != std::ranges::end(kHostErrors) ? found->device : WSAENETDOWN;
}

}  // namespace

int Sockets::startUp(WORD version, WSADATA* data) {
  if (swapped(version) < swapped(kVersion)) return WSAVERNOTSUPPORTED;
  if (data == nullptr) return WSAEFAULT;
  *data = {};
  data->wVersion = data->wHighVersion = kVersion;
  kDescription.copy(data->szDescription, kDescription.size());
  kStatus.copy(data->szSystemStatus, kStatus.size());
  data->iMaxUdpDg = kMaxDatagram;
  ++startUps_;
  return 0;
}

int Sockets::cleanUp() {
  if (startUps_ == 0) return fail(WSANOTINITIALISED);
  if (--startUps_ == 0) sockets_.clear();
  return 0;
}

SOCKET Sockets::open(int family, int type, int protocol) {
  const auto refuse = [this](int error) {
    fail(error);
    return INVALID_SOCKET;
  };
  if (startUps_ == 0) return refuse(WSANOTINITIALISED);
  if (family != platform_sockets::kAfInet) return refuse(WSAEAFNOSUPPORT);
  if (type != platform_sockets::kSockDgram) return refuse(WSAESOCKTNOSUPPORT);
  if (protocol != 0 && protocol != platform_sockets::kIpProtoUdp) return refuse(WSAEPROTONOSUPPORT);
  try {
    auto socket = std::make_unique<DatagramSocket>();
    last_ += 4;
    sockets_.emplace(last_, std::move(socket));
    return last_;
  } catch (const std::system_error& error) {
    return refuse(deviceError(error));
  }
}

int Sockets::refusal(int size, int flags, const SOCKADDR_IN* to, int toSize) {
  if (flags != 0) return WSAEOPNOTSUPP;
  if (size < 0 || to == nullptr || toSize < static_cast<int>(sizeof(SOCKADDR_IN))) return WSAEFAULT;
  return to->sin_family == platform_sockets::kAfInet ? 0 : WSAEAFNOSUPPORT;
}

int Sockets::sendTo(SOCKET socket, const char* data, int size, int flags, const SOCKADDR_IN* to, int toSize) {
  if (startUps_ == 0) return fail(WSANOTINITIALISED);
  const auto found = sockets_.find(socket);
  if (found == sockets_.end()) return fail(WSAENOTSOCK);
  if (const int error = refusal(size, flags, to, toSize)) return fail(error);
  try {
    return static_cast<int>(
        found->second->sendTo({to->sin_addr, to->sin_port}, {data, static_cast<std::size_t>(size)}));
  } catch (const std::system_error& error) {
    return fail(deviceError(error));
  }
}

int Sockets::close(SOCKET socket) {
  if (startUps_ == 0) return fail(WSANOTINITIALISED);
  return sockets_.erase(socket) == 0 ? fail(WSAENOTSOCK) : 0;
}

int Sockets::fail(int error) {
  lastError_.set(static_cast<DWORD>(error));
  return SOCKET_ERROR;
}

}  // namespace emulator
