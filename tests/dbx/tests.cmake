morvelle_test(dbx_tests
  SOURCES dbx/folder_store_test.cpp dbx/hex_test.cpp
    ../samples/dbx_builder.cpp
  USES dbx)
