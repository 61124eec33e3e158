morvelle_test(disk_tests
  SOURCES disk/whole_file_test.cpp
  USES disk)
