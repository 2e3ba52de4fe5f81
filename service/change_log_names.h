// The names of the change logs, by the codes that a host application knows data types by.
#pragma once

#include <string>

#include "platform/types.h"

namespace qorv {

/// Whose codes: those of the host application's change notifications (256, 512, 768, 1024, 1280), or the
/// object model's folder numbers (9, 10, 13).
enum class ChangeLogCode { Notification, Folder };

/// Copies the name of a data type's change log. False when the code is unknown; `name` stays then. False
/// also for the mail codes 1024 and 1280, which copy the name all the same: callers were never to rely on
/// the result for mail.
bool changeLogName(DWORD code, ChangeLogCode form, std::u16string& name);

}  // namespace qorv
