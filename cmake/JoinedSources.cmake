# vek_join_sources(target BATCHES count [APART source…])
#
# Compiles the sources of a target in so many batches, each batch as one. Most of the time that a source takes goes
# into other people's templates (the standard library's, JSON's, the matchers'), which every source makes anew and a
# batch makes once; a precompiled header would save their parsing only, the lesser part.
#
# A source's batch depends on its name alone, so that a new one moves no other. Two sources of a batch that give the
# same name of their own to different things collide: one of them goes APART, as those with definitions of their own do
# by themselves. Every source remains one that compiles alone; VEK_JOIN_SOURCES=OFF (or
# CMAKE_DISABLE_PRECOMPILE_HEADERS=ON) holds them to it.
option(VEK_JOIN_SOURCES "Compile the sources of the bench and the tests in batches" ON)

function(vek_join_sources target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "BATCHES" "APART")
  if(NOT VEK_JOIN_SOURCES OR CMAKE_DISABLE_PRECOMPILE_HEADERS)
    return()
  endif()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
  get_target_property(sources ${target} SOURCES)
  list(FILTER sources INCLUDE REGEX "\\.cpp$")
  list(REMOVE_ITEM sources ${arg_APART})
  foreach(source IN LISTS sources)
    get_filename_component(name "${source}" NAME)
    string(MD5 digest "${name}")
    string(SUBSTRING "${digest}" 0 6 digest)
    math(EXPR batch "0x${digest} % ${arg_BATCHES}")
    set_source_files_properties("${source}" PROPERTIES UNITY_GROUP "batch_${batch}")
  endforeach()
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    # The compiler takes a joined source for a header, whose types must not hold those of an unnamed namespace.
    target_compile_options(${target} PRIVATE -Wno-subobject-linkage)
  endif()
endfunction()
