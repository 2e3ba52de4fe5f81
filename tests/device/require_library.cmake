# Fails with one clear line when the device library was not built: cmake -D LIBRARY=FILE -P require_library.cmake
if(NOT EXISTS ${LIBRARY})
  message(FATAL_ERROR "${LIBRARY} is not built: cmake --preset device && cmake --build --preset device")
endif()
