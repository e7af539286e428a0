set(feature_tests
  feature_centerline_test.cpp feature_creation_test.cpp feature_extrude_solids_test.cpp feature_extrude_test.cpp
  feature_faults_test.cpp feature_frame_test.cpp feature_lifecycle_test.cpp feature_revolve_test.cpp
  feature_test.cpp)
