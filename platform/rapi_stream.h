// The stream that the remote-API service hands to an export invoked in stream mode.
#pragma once

#include "platform/com.h"

enum RAPISTREAMFLAG : DWORD { STREAM_TIMEOUT_READ = 0 };

class IRAPIStream : public IStream {
 public:
  static constexpr IID kIid{0x449FE623, 0x24B0, 0x454B, {0xA8, 0x89, 0x12, 0x9B, 0xB0, 0x5D, 0xDB, 0xED}};

  virtual HRESULT SetRapiStat(RAPISTREAMFLAG flag, DWORD value) = 0;
  virtual HRESULT GetRapiStat(RAPISTREAMFLAG flag, DWORD* value) = 0;

 protected:
  ~IRAPIStream() = default;
};
