set(exchange_tests exchange_export_test.cpp exchange_text_test.cpp)
