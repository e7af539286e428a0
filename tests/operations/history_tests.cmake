set(history_tests undo_redo_test.cpp)
