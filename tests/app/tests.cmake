morvelle_test(app_tests
  SOURCES app/cut_file_test.cpp app/settings_test.cpp
  USES app platform)
