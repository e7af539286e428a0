# vek_nlohmann_json: the JSON library of the bench and the bridge, which is headers only.
include_guard(GLOBAL)

add_library(vek_nlohmann_json INTERFACE)
if(CMAKE_CROSSCOMPILING)
  # A header-only package of the build machine's system: its folder alone, since /usr/include holds another platform's
  # headers.
  find_path(nlohmann_folder json.hpp PATHS /usr/include/nlohmann NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  file(MAKE_DIRECTORY "${PROJECT_BINARY_DIR}/header_only")
  file(CREATE_LINK "${nlohmann_folder}" "${PROJECT_BINARY_DIR}/header_only/nlohmann" SYMBOLIC)
  target_include_directories(vek_nlohmann_json SYSTEM INTERFACE "${PROJECT_BINARY_DIR}/header_only")
else()
  find_package(nlohmann_json REQUIRED)
  target_link_libraries(vek_nlohmann_json INTERFACE nlohmann_json::nlohmann_json)
endif()
