# GoogleTest from Debian's sources, so that it serves the cross build as well: GTest::gtest_main and, for who wants
# them, GTest::gmock's matchers.
set(INSTALL_GTEST OFF)
set(VEK_GOOGLETEST_SOURCES "/usr/src/googletest" CACHE PATH "Where GoogleTest's sources lie")
add_subdirectory("${VEK_GOOGLETEST_SOURCES}" "${PROJECT_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)
foreach(library gtest gtest_main gmock gmock_main)
  if(NOT MSVC)
    # Not our code, so not our warnings.
    target_compile_options(${library} PRIVATE -Wno-error)
  endif()
  if(NOT TARGET GTest::${library})
    add_library(GTest::${library} ALIAS ${library})
  endif()
endforeach()
