set(parameters_tests parameters_test.cpp)
