set(assembly_tests
  assembly_adding_test.cpp assembly_constraints_test.cpp assembly_ir_test.cpp assembly_moving_test.cpp
  assembly_occurrences_test.cpp assembly_suppression_test.cpp)
