// The emulated Pocket Outlook object model: what the platform's calls reach of it, and the items behind it.
#pragma once

#include "emulator/pim/model_context.h"
#include "platform/com.h"

namespace emulator {

/// Objects that it handed out must be released before it goes.
class ObjectModel {
 public:
  /// `memory` gives the texts and blocks that callers receive; it and the store must outlive the model.
  ObjectModel(ObjectStore& store, PlatformMemory& memory, const LocalClock& clock);
  ObjectModel(const ObjectModel&) = delete;
  ObjectModel& operator=(const ObjectModel&) = delete;

  /// What CoCreateInstance does: S_OK with a reference in *object; REGDB_E_CLASSNOTREG for any class but the
  /// application's, and for that too while it is not registered; E_NOINTERFACE for an interface that it
  /// lacks.
  HRESULT createInstance(REFCLSID classId, REFIID iid, void** object);

  /// What the library's own DllRegisterServer does. A device begins with the class registered.
  HRESULT registerServer();
  void unregisterServer() { registered_ = false; }

  /// The items themselves, for the device's own programs.
  PimItems& items() { return items_; }
  PlatformMemory& memory() { return context_.memory; }
  const LiveObjects& liveObjects() const { return context_.live; }

 private:
  PimItems items_;
  ModelContext context_;
  bool registered_ = true;
};

}  // namespace emulator
