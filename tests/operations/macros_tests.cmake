set(macros_tests macros_test.cpp)
