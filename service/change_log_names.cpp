#include "service/change_log_names.h"

#include <algorithm>

#include "channel/host_context.h"
#include "platform/outlook.h"

namespace qorv {

namespace {

struct NamedLog {
  ChangeLogCode form;
  DWORD code;
  std::u16string HostContext::*name;
  bool result;
};

constexpr NamedLog kNamedLogs[] = {
    {ChangeLogCode::Notification, 256, &HostContext::contactLog, true},
    {ChangeLogCode::Notification, 512, &HostContext::appointmentLog, true},
    {ChangeLogCode::Notification, 768, &HostContext::taskLog, true},
    // Kept: the name of the mail log is told, and the result denies it.
    {ChangeLogCode::Notification, 1024, &HostContext::mailLog, false},
    {ChangeLogCode::Notification, 1280, &HostContext::mailLog, false},
    {ChangeLogCode::Folder, olFolderCalendar, &HostContext::appointmentLog, true},
    {ChangeLogCode::Folder, olFolderContacts, &HostContext::contactLog, true},
    {ChangeLogCode::Folder, olFolderTasks, &HostContext::taskLog, true},
};

}  // namespace

bool changeLogName(DWORD code, ChangeLogCode form, std::u16string& name) {
  const auto* found = std::ranges::find_if(
      kNamedLogs, [=](const NamedLog& log) { return log.form == form && log.code == code; });
  if (found == std::ranges::end(kNamedLogs)) return false;
  name = hostContext().*found->name;
  return found->result;
}

}  // namespace qorv
