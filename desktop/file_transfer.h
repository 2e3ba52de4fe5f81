// Whole files to and from a device, piece by piece in constant memory.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "desktop/local_file.h"
#include "desktop/session.h"

namespace desktop {

/// Told after each piece how many bytes have travelled.
using TransferProgress = std::function<void(std::uint64_t bytes)>;

enum class Verify { Tail, Whole };

/// Makes the device's file out of ours and reads its end, or all of it, back. Throws InputError when the file
/// is too large for the protocol, DeviceRefusal when the device has content in a file of that name (it can
/// only append), or when it doesn't take the file or gives other bytes back.
void putFile(Session& session, InputFile& file, const std::u16string& devicePath, Verify verify,
             const TransferProgress& progress);

/// Appends the bytes to the device's file, which is made when there is none. Throws DeviceRefusal when the device
/// doesn't take all of them.
void appendToDeviceFile(Session& session, const std::u16string& devicePath, BytesView bytes);

/// Takes the pieces of a file, in their order.
using PieceSink = std::function<void(BytesView piece)>;

/// Reads the device's file and gives its size. Throws DeviceRefusal when the device doesn't give all of it.
std::uint64_t readDeviceFile(Session& session, const std::u16string& devicePath, const PieceSink& take);

/// Reads the device's file into ours, which the caller commits, and gives its size. Throws DeviceRefusal when
/// the device doesn't give all of it.
std::uint64_t getFile(Session& session, const std::u16string& devicePath, OutputFile& file,
                      const TransferProgress& progress);

}  // namespace desktop
