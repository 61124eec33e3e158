morvelle_test(files_tests
  SOURCES files/prefilter_file_test.cpp files/rule_export_test.cpp files/rule_file_reader_test.cpp
    files/signature_file_test.cpp files/text_files_test.cpp
  USES files platform)
