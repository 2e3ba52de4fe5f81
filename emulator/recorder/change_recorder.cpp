#include "emulator/recorder/change_recorder.h"

#include <algorithm>
#include <array>

#include "emulator/recorder/installation_names.h"

namespace emulator {
namespace {

struct LogRow {
  ObjectKind kind;
  std::u16string_view name;
};

constexpr std::array kLogs{
    LogRow{ObjectKind::Contact, u"\\QorvContactLog"},
    LogRow{ObjectKind::Appointment, u"\\QorvAppointmentLog"},
    LogRow{ObjectKind::Task, u"\\QorvTaskLog"},
};

LoggedChange logged(ItemChangeKind change) {
  if (change == ItemChangeKind::Added) return LoggedChange::Added;
  return change == ItemChangeKind::Changed ? LoggedChange::Changed : LoggedChange::Deleted;
}

/// What became of an item in one request, after what was said of it before.
LoggedChange combined(LoggedChange before, LoggedChange now) {
  return before == LoggedChange::Added && now == LoggedChange::Changed ? before : now;
}

}  // namespace

void ChangeRecorder::record(const ItemChange& change) {
  const auto* const row = std::ranges::find(kLogs, change.kind, &LogRow::kind);
  if (row == kLogs.end()) return;
  const LoggedChange now = logged(change.change);
  const auto [said, isFirst] = request_.try_emplace({change.kind, change.oid}, now);
  if (isFirst) return log(row->name).append(change.oid, now);
  said->second = combined(said->second, now);
  log(row->name).amend(change.oid, said->second);
}

void ChangeRecorder::endRequest() {
  request_.clear();
  logs_.clear();
}

ChangeLog& ChangeRecorder::log(std::u16string_view name) {
  const auto found = logs_.find(name);
  if (found != logs_.end() && found->second.isThere()) return found->second;
  logs_.erase(name);
  const InstallationNames names = installationNames(configuration_.modulePath());
  return logs_
      .try_emplace(name, databases_, registry_, std::u16string(name) + names.databaseSuffix,
                   names.registryKey)
      .first->second;
}

}  // namespace emulator
