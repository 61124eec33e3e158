morvelle_test(disk_tests
  SOURCES disk/host_files_posix_test.cpp disk/whole_file_test.cpp
  USES disk)
