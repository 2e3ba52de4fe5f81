// The names of all calls that the platform has.
#pragma once

#include <string_view>

namespace emulator {

/// "CreateFileW", "IAppointment.Save", and an inherited member under the name of each interface that has it.
bool isPlatformCall(std::string_view name);

}  // namespace emulator
