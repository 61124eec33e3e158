# What runs on Windows itself, or under Wine: the contract suite on the registry, and the files.
enable_language(RC)
morvelle_test(windows_tests
  SOURCES
    platform/registry_contract_test.cpp
    windows/environment_win32_test.cpp
    windows/host_files_win32_test.cpp
    windows/registry_win32_test.cpp
    windows/version.rc
  USES platform)
target_link_libraries(windows_tests PRIVATE shlwapi)
