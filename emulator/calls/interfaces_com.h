// The component model's base interfaces and the streams.
#pragma once

#include "emulator/calls/interface.h"

namespace emulator {

template <>
struct Interface<IUnknown> {
  using Base = void;
  using Members =
      CallList<Call<&IUnknown::QueryInterface>, Call<&IUnknown::AddRef>, Call<&IUnknown::Release>>;
};

template <>
struct Interface<IDispatch> {
  using Base = IUnknown;
  using Members = CallList<Call<&IDispatch::GetTypeInfoCount>, Call<&IDispatch::GetTypeInfo>,
                           Call<&IDispatch::GetIDsOfNames, in(1, countedBy(2)), out(4, countedBy(2))>,
                           Call<&IDispatch::Invoke, out(5), out(6)>>;
};

template <>
struct Interface<ISequentialStream> {
  using Base = IUnknown;
  using Members = CallList<Call<&ISequentialStream::Read, out(0, countedBy(1))>,
                           Call<&ISequentialStream::Write, in(0, countedBy(1))>>;
};

template <>
struct Interface<IStream> {
  using Base = ISequentialStream;
  using Members = CallList<Call<&IStream::Seek>, Call<&IStream::SetSize>, Call<&IStream::CopyTo>,
                           Call<&IStream::Commit>, Call<&IStream::Revert>, Call<&IStream::LockRegion>,
                           Call<&IStream::UnlockRegion>, Call<&IStream::Stat>, Call<&IStream::Clone>>;
};

template <>
struct Interface<IRAPIStream> {
  using Base = IStream;
  using Members = CallList<Call<&IRAPIStream::SetRapiStat>, Call<&IRAPIStream::GetRapiStat>>;
};

}  // namespace emulator
