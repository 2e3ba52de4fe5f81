// The members of a stream that nobody calls: a stream derives from this and overrides what it serves.
#pragma once

#include "platform/errors.h"
#include "platform/rapi_stream.h"

namespace emulator {

/// `Base` is an interface derived from IStream, or an object that implements one in part.
template <typename Base>
class UnsupportedStream : public Base {
 public:
  using Base::Base;

  HRESULT Seek(LARGE_INTEGER, DWORD, ULARGE_INTEGER*) override { return E_NOTIMPL; }
  HRESULT SetSize(ULARGE_INTEGER) override { return E_NOTIMPL; }
  HRESULT CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*) override { return E_NOTIMPL; }
  HRESULT Commit(DWORD) override { return E_NOTIMPL; }
  HRESULT Revert() override { return E_NOTIMPL; }
  HRESULT LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
  HRESULT UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
  HRESULT Stat(STATSTG*, DWORD) override { return E_NOTIMPL; }
  HRESULT Clone(IStream** clone) override {
    if (clone != nullptr) *clone = nullptr;
    return E_NOTIMPL;
  }
};

/// The same for the remote-API stream, which adds two.
class UnsupportedRapiStream : public UnsupportedStream<IRAPIStream> {
 public:
  HRESULT SetRapiStat(RAPISTREAMFLAG, DWORD) override { return E_NOTIMPL; }
  HRESULT GetRapiStat(RAPISTREAMFLAG, DWORD*) override { return E_NOTIMPL; }
};

}  // namespace emulator
