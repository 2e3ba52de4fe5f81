// Calls that older devices lack, looked up on attach.
#pragma once

namespace device {

/// Gives each late call's slot the device's entry, or one that fails with ERROR_CALL_NOT_IMPLEMENTED where
/// the device has none.
void bindLateCalls();

}  // namespace device
