// Under which names the device keeps state for one installation of the agent.
#pragma once

#include <string>
#include <string_view>

namespace emulator {

/// Installations beside each other are numbered by the folder that holds the library: a name of three
/// characters that begins with a number other than 0. Any other folder has the plain names.
struct InstallationNames {
  std::u16string databaseSuffix;  ///< "_042", or empty
  std::u16string registryKey;     ///< from HKEY_LOCAL_MACHINE on, with "\042" at the end
};

/// `modulePath` is the full path of the agent's library on the device.
InstallationNames installationNames(std::u16string_view modulePath);

}  // namespace emulator
