// An ink note as the desktop holds it: its text without ink.
#pragma once

#include <cstdint>
#include <string>

namespace desktop {

struct Note {
  std::uint32_t oid = 0;
  std::u16string name;     ///< of its file on the device, without folder and extension
  std::u16string content;  ///< with the device's line ends, CR LF
};

}  // namespace desktop
