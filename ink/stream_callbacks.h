// What the rich-ink control calls to get or to hand over the bytes of a transfer.
#pragma once

#include "platform/rich_ink.h"

namespace qorv {

/// The file of a transfer.
struct FileCookie {
  HANDLE file = nullptr;
  void* unused[2] = {};
  LONG unusedCount = 0;
  DWORD error = 0;  ///< the platform's last error, once a call has failed
};
static_assert(kHasDeviceLayout<sizeof(FileCookie), 20>);

/// The memory of a transfer.
struct MemoryCookie {
  HANDLE unused = nullptr;
  BYTE* start = nullptr;    ///< null while bytes are only counted
  BYTE* current = nullptr;  ///< where the next bytes lie or go
  LONG count = 0;           ///< how many bytes there are, or there is room for
};
static_assert(kHasDeviceLayout<sizeof(MemoryCookie), 16>);

// Each is called with the address of its cookie, a buffer and a number of bytes, tells in *moved how many it
// took or gave, and returns 0 or the platform's error. None throws: the control could not pass it on.

/// From the file into the buffer.
DWORD readFromFile(DWORD_PTR cookie, BYTE* buffer, LONG count, LONG* moved) noexcept;
/// From the buffer into the file. Without a valid handle everything counts as written, and nothing is.
DWORD writeToFile(DWORD_PTR cookie, BYTE* buffer, LONG count, LONG* moved) noexcept;
/// From memory into the buffer.
DWORD readFromMemory(DWORD_PTR cookie, BYTE* buffer, LONG count, LONG* moved) noexcept;
/// From the buffer into memory, as much as there is room for; a terminating zero character follows the last
/// byte that has room, so there are two bytes more than the cookie says. Without memory the bytes are counted
/// only.
DWORD writeToMemory(DWORD_PTR cookie, BYTE* buffer, LONG count, LONG* moved) noexcept;

}  // namespace qorv
