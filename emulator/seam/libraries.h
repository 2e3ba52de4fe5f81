// The libraries that the device has for the agent to load at run time.
#pragma once

namespace emulator {

struct Device;

/// Gives a device the libraries whose entries the seam defines.
void provideLibraries(Device& device);

}  // namespace emulator
