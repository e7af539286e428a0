# Arrays, element trees, sections, features, regeneration, the kernel's client, export.
set(trees_tests
  arrays_test.cpp element_trees_test.cpp export_test.cpp extrude_test.cpp feature_ground.cpp
  feature_removal_test.cpp kernel_client_test.cpp regeneration_test.cpp revolve_test.cpp
  sections_test.cpp sketch_feature_test.cpp)

# Kernels that misbehave, as scripts.
set_source_files_properties(kernel_client_test.cpp PROPERTIES
  COMPILE_DEFINITIONS "VEK_TEST_KERNELS=\"${CMAKE_CURRENT_LIST_DIR}/kernels\"")
