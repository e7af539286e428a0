# Language, warnings and the one way in which this project makes libraries.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(MSVC)
  add_compile_options(/W4 /WX /utf-8 /permissive- /EHsc)
  add_compile_definitions(_CRT_SECURE_NO_WARNINGS)
else()
  add_compile_options(-Wall -Wextra -Werror)
endif()

if(WIN32)
  add_compile_definitions(UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0601)
endif()
if(MINGW)
  # Nothing but Windows' own DLLs may be imported: the compiler's runtime is linked in.
  add_link_options(-static)
endif()

include(JoinedSources)
include(PrecompiledHeaders)

# A folder's object library. Objects, not archives, so that no linker drops what only registers itself.
function(vek_object_library name)
  add_library(${name} OBJECT ${ARGN})
  target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}")
endfunction()

# The toolkit's headers: the bench's declarations, or a user's licensed ones in their place.
add_library(creo_toolkit_headers INTERFACE)
if(CREO_TOOLKIT_ROOT)
  target_include_directories(creo_toolkit_headers SYSTEM INTERFACE "${CREO_TOOLKIT_ROOT}/includes")
else()
  target_include_directories(creo_toolkit_headers INTERFACE "${PROJECT_SOURCE_DIR}/bench/toolkit")
endif()
