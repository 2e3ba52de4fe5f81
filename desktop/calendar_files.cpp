#include "desktop/calendar_files.h"

#include <algorithm>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include "desktop/calendar_uid.h"
#include "desktop/device_error.h"
#include "desktop/input_error.h"
#include "desktop/local_file.h"
#include "desktop/recurrence_fields.h"

namespace desktop {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kUidName = "UID";

bool isCalendarName(const fs::path& path) {
  std::string extension = path.extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(), [](char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
  });
  return extension == ".ics";
}

std::vector<fs::path> calendarFilesIn(const fs::path& folder) {
  std::vector<fs::path> files;
  std::error_code error;
  fs::recursive_directory_iterator entry(folder, error);
  for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
    if (isCalendarName(entry->path()) && entry->is_regular_file()) files.push_back(entry->path());
  }
  if (error) throw InputError(folder.string() + ": " + error.message());
  if (files.empty()) throw InputError(folder.string() + ": no .ics file in this folder");
  std::sort(files.begin(), files.end());
  return files;
}

void readInto(CalendarItems& all, const fs::path& path) {
  CalendarFile file = readCalendar(readTextFile(path), path.string());
  for (CalendarEntry& entry : file.entries) all.items.push_back({path.string(), std::move(entry)});
  std::move(file.problems.begin(), file.problems.end(), std::back_inserter(all.problems));
}

/// A device can hold numbers that make no rule. Throws DeviceRefusal for them.
void expectMeaning(const Recurrence& rule) {
  const auto refuse = [](std::string_view name, std::uint32_t value) {
    throw DeviceRefusal("its repetition has no meaning: " + std::string(name) + " " + std::to_string(value));
  };
  if (rule.interval == 0) refuse("interval", rule.interval);
  for (const RecurrenceParameter& parameter : kRecurrenceParameters) {
    const std::uint32_t value = rule.*parameter.member;
    if (uses(rule.type, parameter) && (value == 0 || value > parameter.most)) refuse(parameter.name, value);
  }
}

/// Long lines go on in the next one, after a blank.
std::string unfolded(std::string_view text) {
  std::string whole;
  for (const char letter : text) {
    const bool goesOn = (letter == ' ' || letter == '\t') && whole.ends_with('\n');
    if (!goesOn) {
      whole += letter;
      continue;
    }
    whole.pop_back();
    if (whole.ends_with('\r')) whole.pop_back();
  }
  return whole;
}

}  // namespace

CalendarItems readCalendarFiles(std::span<const fs::path> paths) {
  CalendarItems all;
  for (const fs::path& path : paths) {
    if (fs::is_directory(path)) {
      for (const fs::path& file : calendarFilesIn(path)) readInto(all, file);
    } else {
      readInto(all, path);
    }
  }
  return all;
}

std::string calendarText(const Appointment& appointment, std::u16string_view deviceIdentity) {
  if (appointment.recurrence) expectMeaning(*appointment.recurrence);
  try {
    return writeCalendar(appointment, calendarUid(deviceIdentity, appointment.oid));
  } catch (const std::invalid_argument& error) {
    throw DeviceRefusal(error.what());
  }
}

bool namesOnly(std::string_view text, std::string_view uid) {
  bool isNamed = false;
  std::istringstream lines(unfolded(text));
  for (std::string line; std::getline(lines, line);) {
    if (line.ends_with('\r')) line.pop_back();
    if (!line.starts_with(kUidName)) continue;
    if (line.substr(kUidName.size()) != ":" + std::string(uid)) return false;
    isNamed = true;
  }
  return isNamed;
}

fs::path makeCalendarFolder(const fs::path& folder) {
  const fs::path calendar = folder / "calendar";
  std::error_code error;
  fs::create_directories(calendar, error);
  if (error) throw InputError(calendar.string() + ": " + error.message());
  return calendar;
}

}  // namespace desktop
