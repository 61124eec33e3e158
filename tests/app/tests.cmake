morvelle_test(app_tests
  SOURCES app/settings_test.cpp
  USES app platform)
