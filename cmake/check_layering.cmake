# Fails when a folder includes what it may not. Run as: cmake -DROOT=<repository> -P check_layering.cmake
cmake_minimum_required(VERSION 3.25)

# What the handlers may know of the channel: the wire primitives and the host context.
set(CHANNEL_BASE
  channel/host_context.h channel/registry_values.h channel/reply_writer.h channel/request_reader.h
  channel/response_buffer.h channel/wire.h)

# folder -> folders and single headers that it may include beside its own
set(ALLOWED_platform)
set(ALLOWED_channel platform service)
set(ALLOWED_service platform ${CHANNEL_BASE})
set(ALLOWED_pim platform service ${CHANNEL_BASE})
set(ALLOWED_ink platform service ${CHANNEL_BASE})
set(ALLOWED_mail platform service pim/time_zone.h ${CHANNEL_BASE})
set(ALLOWED_diag platform)
set(ALLOWED_emulator platform)
set(ALLOWED_device platform)
set(ALLOWED_desktop)
set(ALLOWED_apps emulator desktop)

# The dispatcher alone makes the handlers of all types.
set(ALLOWED_FILE_channel/dispatcher.cpp pim ink mail)

# Folders that go onto the device take nothing but the standard library, and not the parts that would swell it.
set(STANDARD_ONLY platform channel service pim ink mail diag)
set(TOO_LARGE
  atomic condition_variable filesystem fstream future iomanip ios iostream istream locale mutex ostream regex
  shared_mutex sstream streambuf syncstream thread)

set(violations "")

function(report file include why)
  set(violations "${violations}${file} includes ${include}: ${why}\n" PARENT_SCOPE)
endfunction()

function(check_quoted folder file include)
  string(REGEX MATCH "^[^/]+" target "${include}")
  if(target STREQUAL folder)
    return()
  endif()
  foreach(permitted IN LISTS ALLOWED_${folder} ALLOWED_FILE_${file})
    if(target STREQUAL permitted OR include STREQUAL permitted)
      return()
    endif()
  endforeach()
  report("${file}" "\"${include}\"" "${folder}/ may not")
  set(violations "${violations}" PARENT_SCOPE)
endfunction()

function(check_angled folder file include)
  if(NOT folder IN_LIST STANDARD_ONLY)
    return()
  endif()
  if(include MATCHES "[./]")
    report("${file}" "<${include}>" "${folder}/ takes nothing but the standard library")
  elseif(include IN_LIST TOO_LARGE)
    report("${file}" "<${include}>" "too large for the device")
  endif()
  set(violations "${violations}" PARENT_SCOPE)
endfunction()

foreach(folder platform channel service pim ink mail diag emulator device desktop apps)
  file(GLOB_RECURSE sources RELATIVE "${ROOT}" "${ROOT}/${folder}/*.h" "${ROOT}/${folder}/*.cpp")
  foreach(file IN LISTS sources)
    file(STRINGS "${ROOT}/${file}" lines REGEX "^[ \t]*#[ \t]*include")
    foreach(line IN LISTS lines)
      if(line MATCHES "\"([^\"]+)\"")
        check_quoted("${folder}" "${file}" "${CMAKE_MATCH_1}")
      elseif(line MATCHES "<([^>]+)>")
        check_angled("${folder}" "${file}" "${CMAKE_MATCH_1}")
      endif()
    endforeach()
  endforeach()
endforeach()

if(violations)
  message(FATAL_ERROR "layering:\n${violations}")
endif()
