set(sketch_tests
  sketch_commit_test.cpp sketch_constraints_test.cpp sketch_geometry_test.cpp sketch_text_test.cpp)
