#include "apps/qorv_device/call_log_place.h"

#include "apps/qorv_device/command.h"

namespace qorv_device {
namespace {

namespace fs = std::filesystem;

bool isSameFile(const fs::path& left, const fs::path& right) {
  std::error_code error;
  if (fs::equivalent(left, right, error)) return true;
  // Neither need exist yet: the store's own files come and go with its connections.
  const fs::path leftPlace = fs::weakly_canonical(fs::absolute(left), error);
  return !error && leftPlace == fs::weakly_canonical(fs::absolute(right), error) && !error;
}

bool isOfDevice(const fs::path& file, const fs::path& device) {
  for (const char* suffix : {"", "-wal", "-shm", "-journal"}) {
    if (isSameFile(file, fs::path(device) += suffix)) return true;
  }
  return false;
}

}  // namespace

void requireHarmlessLog(const fs::path& log, const fs::path& device, const fs::path& agent) {
  const std::string complaint = log.string() + ": the call log can't be written over the ";
  if (isOfDevice(log, device)) throw Unusable(complaint + "device");
  if (isSameFile(log, agent)) throw Unusable(complaint + "agent");
}

}  // namespace qorv_device
