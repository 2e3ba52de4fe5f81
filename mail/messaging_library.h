// The messaging library "CEMAPI.DLL", loaded at run time; its functions under their own names.
#pragma once

#include "platform/messaging.h"

namespace qorv {

/// Set once and kept for the life of the process: the library is never given back.
struct MessagingLibrary {
  HMODULE module = nullptr;
  MAPIInitialize_t initialize = nullptr;
  MAPIUninitialize_t uninitialize = nullptr;
};

MessagingLibrary& messagingLibrary();

/// The last error as a result: 0x80070000 with its low 16 bits; one that is negative, and so a result
/// already, or 0 as it is.
HRESULT resultOfLastError();

/// 0 when the library is loaded, also when it was before.
HRESULT LoadMessagingLibrary();

// The library's functions. Each loads it first; a library or function that is missing is told as the last
// error.

/// A function that is missing frees nothing and answers 0: rows then stay where they are, and the caller
/// can't help it.
HRESULT FreeProws(SRowSet* rows);
HRESULT MAPIFreeBuffer(void* buffer);
/// Asks for the function also when the library could not be loaded.
HRESULT MAPILogonEx(ULONG_PTR ui, LPWSTR profile, LPWSTR password, FLAGS flags, IMAPISession** session);
HRESULT MAPIInitialize(void* parameters);
/// Does nothing when the library or the function is missing.
void MAPIUninitialize();

}  // namespace qorv
