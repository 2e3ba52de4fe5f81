#include "apps/qorv_sync/appointments.h"

#include "desktop/appointment_record.h"
#include "desktop/item_reader.h"

namespace qorv_sync {

void readAppointments(Run& run, desktop::Session& session, std::span<const std::uint32_t> oids,
                      const std::function<void(desktop::Appointment)>& use) {
  const desktop::ItemSink sink{
      [&](desktop::WireReader& record, std::uint32_t oid) { use(desktop::readAppointment(record, oid)); },
      [&](std::uint32_t oid, desktop::ReadFailure why) {
        run.report.fail("appointment " + std::to_string(oid) + ": " + desktop::spell(why));
      },
  };
  desktop::readItems(session, desktop::ItemType::Appointment, oids, sink);
}

}  // namespace qorv_sync
