// A small agent for tests. A request is a command letter and a text; the reply is told beside each command.
#include <string>
#include <vector>

#include "platform/errors.h"
#include "platform/files.h"
#include "platform/rapi_stream.h"
#include "platform/system.h"
#include "platform/time.h"

namespace {

HMODULE ownModule = nullptr;

bool readAll(IRAPIStream& stream, void* buffer, DWORD size) {
  ULONG done = 0;
  return SUCCEEDED(stream.Read(buffer, size, &done)) && done == size;
}

void reply(IRAPIStream& stream, const void* bytes, std::size_t size) {
  const auto length = static_cast<DWORD>(size);
  stream.Write(&length, sizeof length, nullptr);
  stream.Write(bytes, length, nullptr);
}

void makeFile(const std::string& name) {
  const std::u16string path = u"\\Temp\\" + std::u16string(name.begin(), name.end());
  CloseHandle(
      CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
}

void replyModuleName(IRAPIStream& stream) {
  WCHAR name[MAX_PATH];
  const DWORD length = GetModuleFileNameW(ownModule, name, MAX_PATH);
  reply(stream, name, length * sizeof(WCHAR));
}

}  // namespace

extern "C" __attribute__((visibility("default"))) BOOL DllMain(HMODULE module, DWORD reason, void*) {
  if (reason == DLL_PROCESS_ATTACH) {
    ownModule = module;
    GetTickCount();  // to be seen in no log: it is made before the export is entered
  }
  return TRUE;
}

extern "C" __attribute__((visibility("default"))) HRESULT rsCeApiMgr(DWORD, BYTE*, DWORD*, BYTE**,
                                                                     IRAPIStream* stream) {
  DWORD length = 0;
  while (readAll(*stream, &length, sizeof length)) {
    std::string request(length, '\0');
    if (!readAll(*stream, request.data(), length)) break;
    const std::string text = request.substr(1);
    switch (request[0]) {
      case 'd':  // make a file; empty
        makeFile(text);
        reply(*stream, nullptr, 0);
        break;
      case 'm':  // the module's path
        replyModuleName(*stream);
        break;
      case 's':  // sleep a minute; empty
        Sleep(60'000);
        reply(*stream, nullptr, 0);
        break;
      case 'x':  // make a file and leave; nothing
        makeFile(text);
        stream->Release();
        return S_OK;
      case 'f':  // fail; nothing, and the stream is kept
        return E_FAIL;
      default:  // end; the text back
        reply(*stream, text.data(), text.size());
        stream->Release();
        return S_OK;
    }
  }
  stream->Release();
  return S_OK;
}
