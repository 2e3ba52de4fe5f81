#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

#include "apps/qorv_sync/appointments.h"
#include "apps/qorv_sync/commands.h"
#include "apps/qorv_sync/item_types.h"
#include "desktop/appointment_json.h"
#include "desktop/item_reader.h"
#include "desktop/local_time.h"
#include "desktop/recurrence_fields.h"
#include "desktop/text.h"

namespace qorv_sync {

namespace {

using desktop::Appointment;

std::string spellSpan(const Appointment& item) {
  const auto spell = item.allDay ? desktop::spellDay : desktop::spellTime;
  char span[64];
  std::snprintf(span, sizeof span, "%-16s  %-16s", spell(item.start).c_str(), spell(item.end).c_str());
  return span;
}

std::string spellSubject(const Appointment& item) {
  std::string text = desktop::toUtf8(item.subject);
  if (!item.recurrence) return text;
  text += " (" + std::string(desktop::shapeOf(item.recurrence->type).name);
  const std::size_t exceptions = item.exceptions.size();
  if (exceptions > 0) {
    text += ", " + std::to_string(exceptions) + (exceptions == 1 ? " exception" : " exceptions");
  }
  return text + ")";
}

void sayList(Report& report, std::vector<Appointment>& items) {
  std::sort(items.begin(), items.end(), [](const Appointment& left, const Appointment& right) {
    return std::tie(left.start, left.oid) < std::tie(right.start, right.oid);
  });
  if (!items.empty()) report.say("       OID  START             END               SUBJECT");
  for (const Appointment& item : items) {
    char oid[16];
    std::snprintf(oid, sizeof oid, "%10u  ", item.oid);
    report.say(oid + spellSpan(item) + "  " + spellSubject(item));
  }
  report.say(std::to_string(items.size()) + (items.size() == 1 ? " appointment" : " appointments"));
}

void listItems(Run& run, const std::string& typeName) {
  const desktop::ItemType type = supportedType(typeName);
  desktop::Session& session = run.connect();
  const std::vector<std::uint32_t> oids = desktop::listItems(session, type);
  std::vector<Appointment> items;
  nlohmann::json& listed = run.report.data()[typeName] = nlohmann::json::array();
  readAppointments(run, session, oids, [&](Appointment item) {
    listed.push_back(desktop::toJson(item));
    items.push_back(std::move(item));
    run.report.progress("reading " + std::to_string(items.size()) + " of " + std::to_string(oids.size()));
  });
  sayList(run.report, items);
}

}  // namespace

Action defineList(CLI::App& command) {
  const auto type = std::make_shared<std::string>();
  command.add_option("TYPE", *type, "appointments")->required();
  return [type](Run& run) { listItems(run, *type); };
}

}  // namespace qorv_sync
