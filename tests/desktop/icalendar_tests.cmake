# The tests of calendar files: a program of their own.
qorv_add_test(icalendar_tests
  SOURCES
    icalendar_rules_test.cpp
  LIBRARIES qorv_desktop
)
