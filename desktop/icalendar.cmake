# Calendar files, with libical. The including list adds ${QORV_ICALENDAR_SOURCES} to its target and links
# ${QORV_LIBICAL}.
find_library(QORV_LIBICAL ical REQUIRED)
set(QORV_ICALENDAR_SOURCES
  icalendar_alarm.cpp
  icalendar_blocks.cpp
  icalendar_components.cpp
  icalendar_event.cpp
  icalendar_exceptions.cpp
  icalendar_occurrences.cpp
  icalendar_properties.cpp
  icalendar_read.cpp
  icalendar_rule.cpp
  icalendar_series.cpp
  icalendar_task.cpp
  icalendar_trigger.cpp
  icalendar_write.cpp
  icalendar_write_task.cpp
  icalendar_zone.cpp
)
