// Which agent the programs under test serve: the host module, or the device library that the environment names.
#pragma once

#include <cstdlib>
#include <string>
#include <vector>

/// Options of `qorv-device serve`; none for the host module.
inline std::vector<std::string> agentOption() {
  const char* const file = std::getenv("QORV_TEST_AGENT");
  if (file == nullptr) return {};
  return {"--agent", file};
}
