# add_core_variant(name FLAGS flag…)
#
# The platform-free core and what stands in natively for Windows (sockets, log, files, code page), compiled once more with
# the flags of one sanitiser. Whoever links it is compiled and linked with the same flags.
function(add_core_variant name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "FLAGS")
  set(sources
    "${PROJECT_SOURCE_DIR}/tests/support/captured_log.cpp"
    "${PROJECT_SOURCE_DIR}/tests/support/latin1_text_encoding.cpp"
    "${PROJECT_SOURCE_DIR}/tests/support/posix_files.cpp"
    "${PROJECT_SOURCE_DIR}/tests/support/posix_sockets.cpp"
    "${PROJECT_SOURCE_DIR}/tests/support/raw_connection.cpp")
  foreach(folder vek_text vek_server)
    get_target_property(listed ${folder} SOURCES)
    get_target_property(home ${folder} SOURCE_DIR)
    list(TRANSFORM listed PREPEND "${home}/")
    list(APPEND sources ${listed})
  endforeach()
  # The pure files of families that otherwise speak with the host.
  list(APPEND sources
    "${PROJECT_SOURCE_DIR}/addin/companion/companion_messages.cpp"
    "${PROJECT_SOURCE_DIR}/addin/companion/measurement_text.cpp"
    "${PROJECT_SOURCE_DIR}/addin/ops/assembly/constraint_words.cpp"
    "${PROJECT_SOURCE_DIR}/addin/ops/assembly/ir_references.cpp"
    "${PROJECT_SOURCE_DIR}/addin/ops/assembly/occurrence_names.cpp"
    "${PROJECT_SOURCE_DIR}/addin/ops/assembly/pose_arithmetic.cpp"
    "${PROJECT_SOURCE_DIR}/addin/ops/assembly/pose_text.cpp"
    "${PROJECT_SOURCE_DIR}/addin/ops/common/import_names.cpp"
    "${PROJECT_SOURCE_DIR}/addin/ops/common/model_paths.cpp"
    "${PROJECT_SOURCE_DIR}/addin/ops/drawing/cutting_plane.cpp"
    "${PROJECT_SOURCE_DIR}/addin/ops/drawing/drawing_names.cpp"
    "${PROJECT_SOURCE_DIR}/addin/ops/drawing/orientation.cpp"
    "${PROJECT_SOURCE_DIR}/addin/ops/drawing/view_placement.cpp"
    "${PROJECT_SOURCE_DIR}/addin/ops/exchange/analysis_arithmetic.cpp"
    "${PROJECT_SOURCE_DIR}/addin/ops/exchange/export_text.cpp"
    "${PROJECT_SOURCE_DIR}/addin/ops/exchange/import_file_name.cpp"
    "${PROJECT_SOURCE_DIR}/addin/ops/exchange/screenshot_text.cpp"
    "${PROJECT_SOURCE_DIR}/addin/ops/feature/feature_names.cpp"
    "${PROJECT_SOURCE_DIR}/addin/ops/feature/hole_charts.cpp"
    "${PROJECT_SOURCE_DIR}/addin/ops/feature/pattern_words.cpp"
    "${PROJECT_SOURCE_DIR}/addin/ops/feature/rotation_matrix.cpp"
    "${PROJECT_SOURCE_DIR}/addin/ops/feature/selector_syntax.cpp"
    "${PROJECT_SOURCE_DIR}/addin/ops/macros/macro_text.cpp"
    "${PROJECT_SOURCE_DIR}/addin/ops/parameters/expression.cpp"
    "${PROJECT_SOURCE_DIR}/addin/ops/sketch/entity_reference.cpp"
    "${PROJECT_SOURCE_DIR}/addin/ops/sketch/point_array.cpp"
    "${PROJECT_SOURCE_DIR}/addin/shell/file_kind.cpp"
    "${PROJECT_SOURCE_DIR}/deploy/helper/file_names.cpp"
    "${PROJECT_SOURCE_DIR}/deploy/helper/manifest.cpp"
    "${PROJECT_SOURCE_DIR}/deploy/helper/update_decision.cpp"
    "${PROJECT_SOURCE_DIR}/deploy/helper/version.cpp")
  vek_object_library(${name} ${sources})
  target_compile_options(${name} PUBLIC ${arg_FLAGS} -fno-omit-frame-pointer)
  target_link_options(${name} PUBLIC ${arg_FLAGS})
endfunction()
