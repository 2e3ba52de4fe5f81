// The libraries that the device has for the agent to load, and the agent's own module.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "emulator/system/configuration.h"
#include "emulator/system/last_error.h"
#include "platform/system.h"

namespace emulator {

/// Exported entry points by name, which is compared exactly.
using ModuleEntries = std::map<std::u16string, FARPROC, std::less<>>;

/// Library names are compared without regard to case; a folder before the name and a missing ".dll" do not
/// matter.
class Modules {
 public:
  Modules(const Configuration& configuration, LastError& lastError)
      : configuration_(configuration), lastError_(lastError) {}

  /// From now on the device has this library. A second library of the name replaces the first. `unloaded` is
  /// called when the last load of the library was given back.
  void provide(std::u16string_view name, ModuleEntries entries, std::function<void()> unloaded = {});

  /// LoadLibraryW: null with ERROR_MOD_NOT_FOUND. Each load is given back with `unload`.
  HMODULE load(std::u16string_view name);
  /// FreeLibrary: false with ERROR_INVALID_HANDLE when the library is not loaded.
  bool unload(HMODULE module);
  /// GetProcAddressW: null with ERROR_PROC_NOT_FOUND, or with ERROR_INVALID_HANDLE when the library is not
  /// loaded.
  FARPROC entry(HMODULE module, std::u16string_view name);
  /// GetModuleFileNameW of the agent or of a loaded library: the characters copied without the NUL, cut to
  /// the capacity; 0 with ERROR_INVALID_HANDLE for any other.
  DWORD fileName(HMODULE module, WCHAR* name, DWORD capacity);

  /// What stands for the agent's own module. It is always loaded.
  static HMODULE agent();

  /// Loads that were not given back.
  std::size_t loadCount() const;

 private:
  struct Library {
    std::u16string path;
    ModuleEntries entries;
    HMODULE module;
    std::function<void()> unloaded;
    std::size_t loads = 0;
  };

  Library* loaded(HMODULE module);

  const Configuration& configuration_;
  LastError& lastError_;
  std::map<std::u16string, Library> libraries_;  ///< by folded name
};

}  // namespace emulator
