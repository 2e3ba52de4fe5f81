// The three ways in which a device lets the desktop down; every message is one line for a person to read.
#pragma once

#include <stdexcept>

namespace desktop {

/// Nobody is there: no connection, no answer in time, or an end of the stream where a reply should begin.
class NoDevice : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The device answered with bytes that the protocol doesn't allow.
class ProtocolError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The device answered properly that it won't do what was asked.
class DeviceRefusal : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace desktop
