# Every build checks who includes whom.
add_custom_target(layering ALL
  COMMAND ${CMAKE_COMMAND} -DROOT=${PROJECT_SOURCE_DIR} -P ${PROJECT_SOURCE_DIR}/cmake/check_layering.cmake
  COMMENT "Checking who includes whom"
  VERBATIM)
