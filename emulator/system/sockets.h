// The device's datagram sockets. What they send goes out into the host's network.
#pragma once

#include <map>
#include <memory>

#include "emulator/system/datagram_socket.h"
#include "emulator/system/last_error.h"
#include "platform/sockets.h"

namespace emulator {

/// The calls of `platform/sockets.h`. A call that fails leaves its reason as the last error.
class Sockets {
 public:
  explicit Sockets(LastError& lastError) : lastError_(lastError) {}

  /// 0, or the error, which is returned only. There is one version, 1.1; who wants a later one gets it.
  int startUp(WORD version, WSADATA* data);
  /// The last one closes the sockets that are open.
  int cleanUp();
  /// Datagrams over IPv4 are all that there is.
  SOCKET open(int family, int type, int protocol);
  int sendTo(SOCKET socket, const char* data, int size, int flags, const SOCKADDR_IN* to, int toSize);
  int close(SOCKET socket);

  std::size_t openCount() const { return sockets_.size(); }
  /// Start-ups that were not given back.
  std::size_t startUps() const { return startUps_; }

 private:
  int fail(int error);
  /// ERROR_SUCCESS, or why the target can't be one.
  static int refusal(int size, int flags, const SOCKADDR_IN* to, int toSize);

  LastError& lastError_;
  std::size_t startUps_ = 0;
  std::map<SOCKET, std::unique_ptr<DatagramSocket>> sockets_;
  SOCKET last_ = 0x00B00000;  ///< Sockets are not given out twice, nor are the values of other handles.
};

}  // namespace emulator
