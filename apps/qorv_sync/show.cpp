#include <memory>

#include "apps/qorv_sync/appointments.h"
#include "apps/qorv_sync/commands.h"
#include "apps/qorv_sync/item_types.h"
#include "desktop/appointment_json.h"
#include "desktop/calendar_files.h"
#include "desktop/device_error.h"
#include "desktop/device_info.h"

namespace qorv_sync {

namespace {

struct Arguments {
  std::string type;
  std::uint32_t oid = 0;
};

void showItem(Run& run, const Arguments& arguments) {
  supportedType(arguments.type);
  desktop::Session& session = run.connect();
  const std::u16string identity = desktop::readIdentity(session);
  readAppointments(run, session, std::span(&arguments.oid, 1), [&](const desktop::Appointment& item) {
    run.report.data()["appointment"] = desktop::toJson(item);
    try {
      const std::string text = desktop::calendarText(item, identity);
      run.report.print(text);
      run.report.data()["icalendar"] = text;
    } catch (const desktop::DeviceRefusal& refusal) {
      run.report.fail("appointment " + std::to_string(item.oid) + ": " + refusal.what());
    }
  });
}

}  // namespace

Action defineShow(CLI::App& command) {
  const auto arguments = std::make_shared<Arguments>();
  command.add_option("TYPE", arguments->type, "appointments")->required();
  command.add_option("OID", arguments->oid, "The item's identifier")->required();
  return [arguments](Run& run) { showItem(run, *arguments); };
}

}  // namespace qorv_sync
