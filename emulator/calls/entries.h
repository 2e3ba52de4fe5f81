// The functions that a program finds by name in a library of the device, under their plain names.
#pragma once

#include "platform/messaging.h"
#include "platform/rich_ink.h"

namespace emulator::entries {

/// "pimstore.dll": registers the object model's application class again.
HRESULT DllRegisterServer();

/// "CEMAPI.DLL".
HRESULT MAPIInitialize(void* parameters);
void MAPIUninitialize();
HRESULT MAPILogonEx(ULONG_PTR ui, LPWSTR profile, LPWSTR password, FLAGS flags, IMAPISession** session);
ULONG MAPIFreeBuffer(void* buffer);
void FreeProws(SRowSet* rows);

/// "RichInk.dll": registers the control's window class.
void InitRichInkDLL();

static_assert(std::is_same_v<decltype(&MAPIInitialize), MAPIInitialize_t>);
static_assert(std::is_same_v<decltype(&MAPIUninitialize), MAPIUninitialize_t>);
static_assert(std::is_same_v<decltype(&MAPILogonEx), MAPILogonEx_t>);
static_assert(std::is_same_v<decltype(&MAPIFreeBuffer), MAPIFreeBuffer_t>);
static_assert(std::is_same_v<decltype(&FreeProws), FreeProws_t>);
static_assert(std::is_same_v<decltype(&InitRichInkDLL), InitRichInkDLL_t>);

}  // namespace emulator::entries
