# VekCreoAddin.dll: the objects that vek_addin carries, the two entry points, and the toolkit's client library: the
# bench's, or a user's licensed one.
#
# CREO_CLIENT_LIBRARIES names the licensed client library's files when they lie elsewhere than below the toolkit's
# folder or bear other names than looked for here. The entry points are ours in both builds. A client library that
# brings entry points of the same names makes the linker complain of doubles; CREO_CLIENT_ENTRY_POINTS leaves ours out
# then.
include(VersionResource)

set(CREO_CLIENT_LIBRARIES "" CACHE STRING "The licensed client library's files; empty looks for them")
option(CREO_CLIENT_ENTRY_POINTS "The licensed client library brings the entry points itself" OFF)

add_library(VekCreoAddin SHARED)
target_link_libraries(VekCreoAddin PRIVATE vek_addin)
set_target_properties(VekCreoAddin PROPERTIES
  PREFIX "" OUTPUT_NAME VekCreoAddin
  RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/addin")
vek_version_resource(VekCreoAddin VekCreoAddin.dll "Automation bridge for Creo Parametric")
if(NOT CREO_TOOLKIT_ROOT OR NOT CREO_CLIENT_ENTRY_POINTS)
  target_sources(VekCreoAddin PRIVATE "${PROJECT_SOURCE_DIR}/bench/toolkit/client/entry_points.cpp")
endif()

if(NOT CREO_TOOLKIT_ROOT)
  target_link_libraries(VekCreoAddin PRIVATE creobench)
else()
  if(NOT CREO_CLIENT_LIBRARIES)
    file(GLOB_RECURSE CREO_CLIENT_LIBRARIES "${CREO_TOOLKIT_ROOT}/*.lib")
    # One toolkit ships its library for several runtime libraries and kinds of program; only its user knows which
    # of them fits CMAKE_MSVC_RUNTIME_LIBRARY.
    list(LENGTH CREO_CLIENT_LIBRARIES found)
    if(NOT found EQUAL 1)
      list(JOIN CREO_CLIENT_LIBRARIES "\n  " candidates)
      message(FATAL_ERROR "Name the client library with -DCREO_CLIENT_LIBRARIES=FILE[;FILE…]. Found:\n  ${candidates}")
    endif()
  endif()
  target_link_libraries(VekCreoAddin PRIVATE ${CREO_CLIENT_LIBRARIES})
endif()
