// Where the agent is installed, and every name under which it keeps state on the device.
#pragma once

#include <string>

#include "platform/types.h"

namespace qorv {

/// Installations live side by side, each in a directory of its own; a directory of three characters that
/// begins with a number other than 0 gives all names a suffix, so that installations don't share state.
struct HostContext {
  HMODULE module = nullptr;
  std::u16string applicationName;
  std::u16string windowClassName;
  std::u16string windowName;
  std::u16string databaseSuffix;  ///< "_042", or empty
  std::u16string registrySuffix;  ///< "\042", or empty
  std::u16string contractDatabase;
  std::u16string contactLog;
  std::u16string appointmentLog;
  std::u16string taskLog;
  std::u16string mailLog;
  std::u16string registryRoot;  ///< under HKEY_LOCAL_MACHINE

  bool operator==(const HostContext&) const = default;
};

/// The names of the host window before they get the instance's suffix; the export has no window and gives
/// none.
struct HostWindowNames {
  std::u16string className;
  std::u16string windowName;
};

/// The one host context of the loaded module.
HostContext& hostContext();

/// Fills the module's host context. Always true.
bool prepareHostContext(HMODULE module, LPCWSTR applicationName, const HostWindowNames& window = {});

}  // namespace qorv
