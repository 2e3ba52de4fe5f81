# The tests of cards: a program of their own.
qorv_add_test(vcard_tests
  SOURCES
    vcard_broken_test.cpp
    vcard_names_test.cpp
    vcard_places_test.cpp
    vcard_round_trip_test.cpp
    vcard_texts_test.cpp
    vcard_versions_test.cpp
  LIBRARIES qorv_desktop
)
