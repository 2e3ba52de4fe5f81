// Every function of the platform: the one table that call log, faults and the agent's processor border read.
#pragma once

#include "emulator/calls/call_table.h"
#include "emulator/calls/entries.h"
#include "platform/files.h"
#include "platform/messaging.h"
#include "platform/outlook.h"
#include "platform/property_database.h"
#include "platform/registry.h"
#include "platform/sockets.h"
#include "platform/system.h"
#include "platform/text.h"
#include "platform/time.h"
#include "platform/windows.h"

namespace emulator {

using FileFunctions = CallList<Call<&::CreateFileW, kReturnsAllOnes>,               //
                               Call<&::ReadFile, out(1, countedBy(2))>,             //
                               Call<&::WriteFile, in(1, countedBy(2))>,             //
                               Call<&::SetFilePointer, inOut(2), kReturnsAllOnes>,  //
                               Call<&::CloseHandle, closes(0)>,                     //
                               Call<&::DeleteFileW>,                                //
                               Call<&::GetFileAttributesW, kReturnsAllOnes>,        //
                               Call<&::FindFirstFileW, kReturnsAllOnes>,            //
                               Call<&::FindNextFileW>,                              //
                               Call<&::FindClose, closes(0)>,                       //
                               Call<&::GetTempPathW, out(1, countedBy(0))>,         //
                               Call<&::GetTempFileNameW, out(3, roomFor(MAX_PATH))>>;

using RegistryFunctions =
    CallList<Call<&::RegOpenKeyExW, kReturnsErrorCode>,
             Call<&::RegQueryValueExW, opaque(2), out(4, countedBy(5)), inOut(5), kReturnsErrorCode>,
             Call<&::RegSetValueExW, in(4, countedBy(5)), kReturnsErrorCode>,
             Call<&::RegCloseKey, kReturnsErrorCode, closes(0)>>;

using SystemFunctions = CallList<Call<&::GetLastError>,                                       //
                                 Call<&::SetLastError>,                                       //
                                 Call<&::GetVersionExW, required(out(0))>,                    //
                                 Call<&::LocalAlloc>,                                         //
                                 Call<&::LocalFree, returnsArgumentOnFailure(0), closes(0)>,  //
                                 Call<&::GetProcessHeap>,                                     //
                                 Call<&::HeapAlloc>,                                          //
                                 Call<&::HeapFree, closes(2)>,                                //
                                 Call<&::LoadLibraryW>,                                       //
                                 Call<&::FreeLibrary>,                                        //
                                 Call<&::GetProcAddressW>,                                    //
                                 Call<&::GetModuleFileNameW, out(1, countedBy(2))>,           //
                                 Call<&::CreateProcessW>>;

using TimeFunctions = CallList<Call<&::GetTimeZoneInformation, required(out(0)), kReturnsAllOnes>,  //
                               Call<&::FileTimeToSystemTime, required(in(0)), required(out(1))>,    //
                               Call<&::SystemTimeToFileTime, required(in(0)), required(out(1))>,    //
                               Call<&::CompareFileTime, required(in(0)), required(in(1))>,          //
                               Call<&::GetTickCount>,                                               //
                               Call<&::Sleep>>;

/// The C library declares a function of this name for its own wide character.
inline constexpr auto kWcstol = static_cast<LONG (*)(LPCWSTR, WCHAR**, int)>(&::wcstol);

using TextFunctions = CallList<Call<&::WideCharToMultiByte, in(2, countedBy(3)), out(4, countedBy(5))>,
                               Call<&::OutputDebugStringW>,  //
                               Call<&::_wcsicmp>,            //
                               Call<&::_memicmp, in(0, countedBy(2)), in(1, countedBy(2))>, Call<kWcstol>>;

using WindowFunctions = CallList<Call<&::RegisterClassW, required(in(0))>,      //
                                 Call<&::FindWindowW>,                          //
                                 Call<&::CreateWindowExW>,                      //
                                 Call<&::DestroyWindow, closes(0)>,             //
                                 Call<&::IsWindow>,                             //
                                 Call<&::ShowWindow>,                           //
                                 Call<&::UpdateWindow>,                         //
                                 Call<&::SendMessageW, messageArgument(3, 1)>,  //
                                 Call<&::GetStockObject>,                       //
                                 Call<&::MessageBoxW>>;

using ComFunctions = CallList<Call<&::CoInitializeEx, kReturnsHresult>,  //
                              Call<&::CoUninitialize>,                   //
                              Call<&::CoCreateInstance, kReturnsHresult>, Call<&::CoFreeUnusedLibraries>>;

using DatabaseFunctions =
    CallList<Call<&::CeCreateDatabase, in(3, countedBy(2))>,  //
             Call<&::CeCreateDatabaseEx2, in(0), in(1)>,
             Call<&::CeOpenDatabaseEx2, in(0), inOut(1), in(3), in(5), kReturnsAllOnes>,
             Call<&::CeSeekDatabase, seekValue(2, 1)>,
             Call<&::CeReadRecordProps, inOut(2), in(3, countedBy(2)), inOut(4, recordsOf(5, 2)), inOut(5)>,
             Call<&::CeReadRecordPropsEx, inOut(2), in(3, countedBy(2)), inOut(4, recordsOf(5, 2)), inOut(5)>,
             Call<&::CeWriteRecordProps, in(3, countedBy(2))>,  //
             Call<&::CeDeleteRecord>,                           //
             Call<&::CeDeleteDatabaseEx, in(0)>,                //
             Call<&::CeOidGetInfoEx2, in(0)>>;

using SocketFunctions =
    CallList<Call<&::WSAStartup, returnsOnFailure(WSASYSNOTREADY)>,  //
             Call<&::WSACleanup, kReturnsAllOnes>,                   //
             Call<&::closesocket, kReturnsAllOnes>, Call<&platform_sockets::socket, kReturnsAllOnes>,
             Call<&platform_sockets::sendto, in(1, countedBy(2)), kReturnsAllOnes>,
             Call<&platform_sockets::htons>, Call<&platform_sockets::inet_addr, kReturnsAllOnes>>;

/// Found by name in a library.
using EntryFunctions =
    CallList<Call<&entries::DllRegisterServer, kReturnsHresult>,
             Call<&entries::MAPIInitialize, kReturnsHresult>, Call<&entries::MAPIUninitialize>,
             Call<&entries::MAPILogonEx, kReturnsHresult>,
             Call<&entries::MAPIFreeBuffer, opaque(0), closes(0), kReturnsAllOnes>,
             Call<&entries::FreeProws, opaque(0), closes(0)>, Call<&entries::InitRichInkDLL>>;

using Functions =
    Concatenated<FileFunctions, RegistryFunctions, SystemFunctions, TimeFunctions, TextFunctions,
                 WindowFunctions, ComFunctions, DatabaseFunctions, SocketFunctions, EntryFunctions>;

}  // namespace emulator
