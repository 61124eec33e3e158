# What runs on Windows itself, or under Wine: the contract suite on the registry, the files, and the
# window's commands on the registry.
enable_language(RC)
morvelle_test(windows_tests
  SOURCES
    platform/registry_contract_test.cpp
    windows/environment_win32_test.cpp
    windows/host_files_win32_test.cpp
    windows/processes_win32_test.cpp
    windows/registry_win32_test.cpp
    windows/version.rc
    windows/window_on_registry_test.cpp
    ../samples/dbx_builder.cpp
  USES ui platform)
target_link_libraries(windows_tests PRIVATE shlwapi)
