set(exchange_tests
  analysis_test.cpp exchange_export_test.cpp screenshot_silhouette_test.cpp
  screenshot_sketches_test.cpp screenshot_test.cpp step_import_test.cpp)
