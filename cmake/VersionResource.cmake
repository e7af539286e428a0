# vek_version_resource(target file_name description)
#
# Gives a program or DLL for Windows the project's version, which Windows shows among its properties.
enable_language(RC)

function(vek_version_resource target version_file_name version_description)
  get_target_property(type ${target} TYPE)
  set(version_file_type VFT_APP)
  if(type STREQUAL "SHARED_LIBRARY")
    set(version_file_type VFT_DLL)
  endif()
  set(resource "${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc")
  configure_file("${PROJECT_SOURCE_DIR}/cmake/version.rc.in" "${resource}" @ONLY)
  target_sources(${target} PRIVATE "${resource}")
endfunction()
