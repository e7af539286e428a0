# add_test_suites(target [LABEL label] [LOCKS lock…] [TIMEOUT seconds] [ENVIRONMENT NAME=value…]
#                 [EXCEPT suite…] [LONG_SUITES suite…])
#
# Every GoogleTest suite of the program becomes one CTest test, named <label>.<suite>. The suites are asked for when
# CTest runs, not when the program is built: a cross-compiled program can't be run by a build that has no Wine yet.
# Long suites take minutes by their nature: they are started first, and given more time. The environment is that of all
# suites but those which it doesn't suit (EXCEPT).
function(add_test_suites target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "LABEL;TIMEOUT" "LOCKS;ENVIRONMENT;EXCEPT;LONG_SUITES")
  if(NOT arg_LABEL)
    set(arg_LABEL ${target})
  endif()
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 120)
  endif()
  set(include_file "${CMAKE_CURRENT_BINARY_DIR}/${target}_suites.cmake")
  file(GENERATE OUTPUT "${include_file}" CONTENT "
set(program \"$<TARGET_FILE:${target}>\")
set(launcher \"${CMAKE_CROSSCOMPILING_EMULATOR}\")
set(label \"${arg_LABEL}\")
set(locks \"${arg_LOCKS}\")
set(timeout \"${arg_TIMEOUT}\")
set(environment \"${arg_ENVIRONMENT}\")
set(plain_suites \"${arg_EXCEPT}\")
set(long_suites \"${arg_LONG_SUITES}\")
include(\"${PROJECT_SOURCE_DIR}/cmake/ListSuites.cmake\")
")
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES "${include_file}")
endfunction()
