# Mail: its format with gmime, the HTML in it with libxml2. The including list adds ${QORV_MAIL_SOURCES} to its target
# and links qorv_mail_libraries.
find_package(PkgConfig REQUIRED)
pkg_check_modules(QORV_GMIME REQUIRED gmime-3.0)
pkg_check_modules(QORV_XML REQUIRED libxml-2.0)
add_library(qorv_mail_libraries INTERFACE)
# Of what the packages name, only these are called.
target_link_libraries(qorv_mail_libraries INTERFACE gmime-3.0 gobject-2.0 glib-2.0 xml2)
target_include_directories(qorv_mail_libraries SYSTEM INTERFACE
  ${QORV_GMIME_INCLUDE_DIRS} ${QORV_XML_INCLUDE_DIRS})
set(QORV_MAIL_SOURCES
  attachment_list.cpp
  html_text.cpp
  mail_body.cpp
  mail_folder.cpp
  mail_format.cpp
  mail_kind.cpp
  mail_read.cpp
  mail_recipients.cpp
  mail_write.cpp
  maildir_files.cpp
  maildir_name.cpp
  mbox.cpp
  message_record.cpp
  mime_addresses.cpp
  mime_format.cpp
  mime_handles.cpp
  mime_parse.cpp
)
