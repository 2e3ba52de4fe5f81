// The option of the commands that write files: the form that the files have.
#pragma once

#include <CLI/CLI.hpp>

#include "desktop/file_style.h"

namespace qorv_sync {

/// `--vcard 3.0|4.0`
void addStyleOption(CLI::App& command, desktop::FileStyle& style);

}  // namespace qorv_sync
