#include "desktop/calendar_pull.h"

#include "desktop/appointment_record.h"
#include "desktop/calendar_files.h"
#include "desktop/calendar_uid.h"
#include "desktop/device_error.h"
#include "desktop/device_info.h"
#include "desktop/input_error.h"
#include "desktop/item_reader.h"
#include "desktop/local_file.h"

namespace desktop {

namespace {

/// Why the file must stay as it is: a person may keep something else under the item's name. Empty when it is
/// the item's own, or isn't there.
std::string whyKept(const std::filesystem::path& file, const std::string& uid) {
  std::error_code error;
  if (!std::filesystem::exists(std::filesystem::symlink_status(file, error))) return {};
  try {
    if (namesOnly(readTextFile(file), uid)) return {};
  } catch (const InputError& unreadable) {
    return unreadable.what();
  }
  return file.string() + ": not this appointment's file, left as it is";
}

void writeItem(PullOutcome& outcome, const Appointment& appointment, const std::u16string& identity) {
  try {
    const std::string text = calendarText(appointment, identity);
    outcome.failure = whyKept(outcome.file, calendarUid(identity, outcome.oid));
    if (outcome.failure.empty()) outcome.written = writeTextFile(outcome.file, text);
  } catch (const DeviceRefusal& refusal) {
    outcome.failure = refusal.what();
  }
}

}  // namespace

void pullCalendar(Session& session, const std::filesystem::path& folder, const PullReport& report) {
  const std::u16string identity = readIdentity(session);
  const std::vector<std::uint32_t> oids = listItems(session, ItemType::Appointment);
  const auto outcomeOf = [&](std::uint32_t oid) {
    PullOutcome outcome;
    outcome.oid = oid;
    outcome.file = folder / (std::to_string(oid) + ".ics");
    return outcome;
  };
  const ItemSink sink{
      [&](WireReader& record, std::uint32_t oid) {
        PullOutcome outcome = outcomeOf(oid);
        writeItem(outcome, readAppointment(record, oid), identity);
        report(outcome, oids.size());
      },
      [&](std::uint32_t oid, ReadFailure why) {
        PullOutcome outcome = outcomeOf(oid);
        outcome.failure = spell(why);
        report(outcome, oids.size());
      },
  };
  readItems(session, ItemType::Appointment, oids, sink);
}

}  // namespace desktop
