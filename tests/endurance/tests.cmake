morvelle_test(endurance_tests
  SOURCES endurance/full_disk_test.cpp endurance/killed_test.cpp
  USES ui platform)
