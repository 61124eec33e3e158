morvelle_test(files_tests
  SOURCES files/made_prefilters_test.cpp files/prefilter_file_test.cpp files/rule_export_test.cpp
    files/entry_types_test.cpp files/rule_file_reader_test.cpp files/signature_file_test.cpp files/file_names_test.cpp
  USES files platform)
target_compile_definitions(files_tests PRIVATE
  MORVELLE_LISTING="${CMAKE_CURRENT_LIST_DIR}/listing.txt"
  MORVELLE_MAKE_PREFILTERS="${PROJECT_BINARY_DIR}/data/make_prefilters"
  MORVELLE_RULE_FILE="${CMAKE_CURRENT_LIST_DIR}/rule_file.txt"
  MORVELLE_PREFILTERS="${PROJECT_BINARY_DIR}/share/morvelle/prefiltres")
add_dependencies(files_tests prefilters)
