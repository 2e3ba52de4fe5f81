// How calendar programs name the four states of busyness, which TRANSP can't tell apart.
#pragma once

#include <array>
#include <cstdint>

namespace desktop {

constexpr const char* kBusyProperty = "X-MICROSOFT-CDO-BUSYSTATUS";

/// By the device's number.
constexpr std::array<const char*, 4> kBusyNames = {"FREE", "TENTATIVE", "BUSY", "OOF"};

constexpr std::uint32_t kFree = 0;
constexpr std::uint32_t kTentative = 1;
constexpr std::uint32_t kBusy = 2;

}  // namespace desktop
