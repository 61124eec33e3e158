morvelle_test(app_tests
  SOURCES app/export_start_test.cpp app/settings_test.cpp app/start_up_test.cpp
  USES app platform)
