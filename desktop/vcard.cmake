# Cards of address books, with libebook-contacts. The including list adds ${QORV_VCARD_SOURCES} to its target and
# links qorv_ebook_contacts.
find_package(PkgConfig REQUIRED)
pkg_check_modules(QORV_EBOOK_CONTACTS REQUIRED libebook-contacts-1.2)
add_library(qorv_ebook_contacts INTERFACE)
# Of what the package names, only these are called; the others are its own business.
target_link_libraries(qorv_ebook_contacts INTERFACE ebook-contacts-1.2 gobject-2.0 glib-2.0)
target_include_directories(qorv_ebook_contacts SYSTEM INTERFACE ${QORV_EBOOK_CONTACTS_INCLUDE_DIRS})
set(QORV_VCARD_SOURCES
  vcard_address.cpp
  vcard_cards.cpp
  vcard_date.cpp
  vcard_days.cpp
  vcard_draft.cpp
  vcard_email.cpp
  vcard_format.cpp
  vcard_library.cpp
  vcard_line.cpp
  vcard_name.cpp
  vcard_phone.cpp
  vcard_places.cpp
  vcard_property.cpp
  vcard_read.cpp
  vcard_texts.cpp
  vcard_write.cpp
)
