# vek_precompile(target header…)
#
# Headers that most sources of the target include, read once for all of them. It is for Clang, which keeps the
# templates that they instantiate as well; joined sources (JoinedSources.cmake) save more, and with Clang the two go
# together. Every source goes on including what it uses: CMAKE_DISABLE_PRECOMPILE_HEADERS=ON holds them to it.
function(vek_precompile target)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL Clang OR CMAKE_DISABLE_PRECOMPILE_HEADERS)
    return()
  endif()
  target_precompile_headers(${target} PRIVATE ${ARGN})
  # Without the time in it, the same headers give the same file, and ccache knows what was compiled with it.
  target_compile_options(${target} PRIVATE "SHELL:-Xclang -fno-pch-timestamp")
  if(CMAKE_CXX_COMPILER_LAUNCHER STREQUAL ccache)
    set_target_properties(${target} PROPERTIES
      CXX_COMPILER_LAUNCHER "env;CCACHE_SLOPPINESS=pch_defines,time_macros;ccache")
  endif()
endfunction()
