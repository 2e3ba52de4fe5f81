#include "service/change_counter.h"

#include "channel/host_context.h"
#include "channel/registry_values.h"
#include "platform/time.h"

namespace qorv {

DWORD ChangeCounter::read() {
  for (;;) {
    const DWORD before = readOnce();
    if (!wait()) return before;
    const DWORD after = readOnce();
    if (after == before || !wait()) return after;
  }
}

void ChangeCounter::reset() {
  for (;;) {
    // Lets the counter settle before it is written; what it was doesn't matter.
    read();
    writeZero();
    if (read() == 0 || !wait()) return;
  }
}

DWORD ChangeCounter::readOnce() const {
  DWORD value = 0;
  readRegistryDword(HKEY_LOCAL_MACHINE, hostContext().registryRoot.c_str(), logName_.c_str(), value);
  return value;
}

void ChangeCounter::writeZero() const {
  writeRegistryDword(HKEY_LOCAL_MACHINE, hostContext().registryRoot.c_str(), logName_.c_str(), 0);
}

bool ChangeCounter::wait() {
  if (waitsLeft_ == 0) return false;
  --waitsLeft_;
  Sleep(kCounterSettleTime);
  return true;
}

}  // namespace qorv
