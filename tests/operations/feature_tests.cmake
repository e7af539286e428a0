set(feature_tests
  feature_draft_test.cpp feature_edges_test.cpp feature_extrude_test.cpp feature_frame_test.cpp
  feature_patterns_test.cpp feature_revolve_test.cpp feature_shell_hole_rotate_test.cpp feature_sweep_test.cpp
  feature_thread_test.cpp)
