// Where the call log may not be written: over what is being served.
#pragma once

#include <filesystem>

namespace qorv_device {

/// Throws Unusable when writing the log would destroy the device or the agent, by whatever name or link the
/// log is given.
void requireHarmlessLog(const std::filesystem::path& log, const std::filesystem::path& device,
                        const std::filesystem::path& agent);

}  // namespace qorv_device
