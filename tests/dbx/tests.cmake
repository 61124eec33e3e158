morvelle_test(dbx_tests
  SOURCES dbx/folder_store_test.cpp dbx/hex_test.cpp dbx/sample_identity_test.cpp
    ../samples/dbx_builder.cpp
  USES dbx)
target_compile_definitions(dbx_tests PRIVATE
  MORVELLE_SAMPLE_IDENTITY="${PROJECT_SOURCE_DIR}/samples/identite")
