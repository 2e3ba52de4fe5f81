// Serves one session of the real agent on a device file.
#pragma once

#include <filesystem>

namespace bench {

/// Until the end command comes over the socket, or the stream ends.
void serve(const std::filesystem::path& file, int socket);

}  // namespace bench
