// What is known about tasks.
#include <array>
#include <nlohmann/json.hpp>

#include "desktop/calendar_text.h"
#include "desktop/item_kind.h"
#include "desktop/local_time.h"
#include "desktop/record_json.h"
#include "desktop/recurrence_fields.h"
#include "desktop/task_fields.h"
#include "desktop/task_record.h"
#include "desktop/text.h"

namespace desktop {

namespace {

constexpr std::array kColumns{"DUE", "DONE", "IMPORTANCE", "SUBJECT"};
constexpr auto kLayouts = seriesLayoutsOf(kTaskFields);
constexpr std::array kImportances{"low", "normal", "high"};

const Task& taskIn(const Item& item) {
  return std::get<Task>(item);
}

Item read(WireReader& record, std::uint32_t oid) {
  return readTask(record, oid);
}

std::vector<Bytes> write(const Item& item, bool isThere) {
  return taskRecords(taskIn(item), isThere);
}

std::vector<Difference> compare(const Item& sent, const Item& device) {
  Differences out;
  compareFields(out, kTaskFields, taskIn(sent), taskIn(device));
  compareRules(out, taskIn(sent).recurrence, taskIn(device).recurrence);
  return out;
}

std::string fileText(const Item& item, const std::string& uid, const FileStyle&) {
  return calendarText(taskIn(item), uid);
}

std::u16string title(const Item& item) {
  return taskIn(item).subject;
}

std::string spellImportance(std::uint32_t importance) {
  return importance < kImportances.size() ? kImportances[importance] : std::to_string(importance);
}

std::vector<std::string> cells(const Item& item) {
  const Task& task = taskIn(item);
  std::string subject = toUtf8(task.subject);
  if (task.recurrence) subject += " (" + std::string(shapeOf(task.recurrence->type).name) + ")";
  return {spellDay(task.due), task.complete ? "yes" : "no", spellImportance(task.importance), subject};
}

nlohmann::json toJson(const Item& item) {
  const Task& task = taskIn(item);
  nlohmann::json json{{"oid", task.oid}};
  addFields(json, kTaskFields, task);
  if (task.recurrence) json["repetition"] = jsonOfRule(*task.recurrence);
  return json;
}

}  // namespace

const ItemKind kTaskKind{
    .type = ItemType::Task,
    .name = "tasks",
    .singular = "task",
    .plural = "tasks",
    .folder = "tasks",
    .format = kCalendarFormat,
    .columns = kColumns,
    .layouts = kLayouts,
    .read = read,
    .write = write,
    .compare = compare,
    .fileText = fileText,
    .title = title,
    .cells = cells,
    .toJson = toJson,
};

}  // namespace desktop
