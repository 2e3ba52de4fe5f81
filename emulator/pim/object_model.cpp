#include "emulator/pim/object_model.h"

#include "emulator/pim/application_object.h"
#include "emulator/pim/com_reference.h"

namespace emulator {

ObjectModel::ObjectModel(ObjectStore& store, PlatformMemory& memory, const LocalClock& clock)
    : items_(store, clock), context_{items_, memory, clock, {}, {}} {}

HRESULT ObjectModel::createInstance(REFCLSID classId, REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (!registered_ || classId != CLSID_Application) return REGDB_E_CLASSNOTREG;
  return atBoundary([&] {
    auto* application = new ApplicationObject(context_);
    const HRESULT result = application->QueryInterface(iid, object);
    application->Release();
    return result;
  });
}

HRESULT ObjectModel::registerServer() {
  registered_ = true;
  return S_OK;
}

}  // namespace emulator
