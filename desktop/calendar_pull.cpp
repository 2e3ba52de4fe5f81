#include "desktop/calendar_pull.h"

#include "desktop/appointment_record.h"
#include "desktop/calendar_files.h"
#include "desktop/device_error.h"
#include "desktop/device_info.h"
#include "desktop/item_reader.h"
#include "desktop/local_file.h"

namespace desktop {

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
        const Appointment appointment = readAppointment(record, oid);
        try {
          outcome.written = writeTextFile(outcome.file, calendarText(appointment, identity));
        } catch (const DeviceRefusal& refusal) {
          outcome.failure = refusal.what();
        }
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
