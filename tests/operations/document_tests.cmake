set(document_tests
  document_access_test.cpp document_files_test.cpp document_history_test.cpp document_session_test.cpp)
