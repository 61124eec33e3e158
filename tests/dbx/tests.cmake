morvelle_test(dbx_tests
  SOURCES dbx/folder_store_test.cpp dbx/hex_test.cpp support/dbx_builder.cpp
  USES dbx)
