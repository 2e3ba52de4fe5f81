# The tests of calendar files: a program of their own.
qorv_add_test(icalendar_tests
  SOURCES
    icalendar_alarm_test.cpp
    icalendar_broken_test.cpp
    icalendar_event_test.cpp
    icalendar_exceptions_test.cpp
    icalendar_round_trip_test.cpp
    icalendar_rules_test.cpp
    icalendar_samples_test.cpp
    icalendar_task_test.cpp
    icalendar_write_test.cpp
    icalendar_zone_test.cpp
  LIBRARIES qorv_desktop
)
