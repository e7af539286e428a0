# GoogleTest and its matchers, compiled from Debian's sources so that they serve the cross build as well:
# GTest::gtest_main for most tests, GTest::gmock_main for those that match.
#
# Its own build files are not used: they ask for a C compiler and Python, which neither build needs otherwise.
set(VEK_GOOGLETEST_SOURCES "/usr/src/googletest" CACHE PATH "Where GoogleTest's sources lie")
find_package(Threads REQUIRED)

function(vek_googletest_library name folder)
  add_library(${name} STATIC EXCLUDE_FROM_ALL ${ARGN})
  target_include_directories(${name} SYSTEM PUBLIC "${VEK_GOOGLETEST_SOURCES}/${folder}/include")
  target_include_directories(${name} PRIVATE "${VEK_GOOGLETEST_SOURCES}/${folder}")
  if(NOT MSVC)
    # Not our code, so not our warnings. It is compiled more often than it is run, like the tests.
    target_compile_options(${name} PRIVATE -w -O0)
  endif()
  add_library(GTest::${name} ALIAS ${name})
endfunction()

vek_googletest_library(gtest googletest "${VEK_GOOGLETEST_SOURCES}/googletest/src/gtest-all.cc")
target_link_libraries(gtest PUBLIC Threads::Threads)
vek_googletest_library(gmock googlemock "${VEK_GOOGLETEST_SOURCES}/googlemock/src/gmock-all.cc")
target_link_libraries(gmock PUBLIC gtest)
vek_googletest_library(gtest_main googletest "${VEK_GOOGLETEST_SOURCES}/googletest/src/gtest_main.cc")
target_link_libraries(gtest_main PUBLIC gtest)
vek_googletest_library(gmock_main googlemock "${VEK_GOOGLETEST_SOURCES}/googlemock/src/gmock_main.cc")
target_link_libraries(gmock_main PUBLIC gmock)
