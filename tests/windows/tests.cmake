# What runs on Windows itself, or under Wine: the contract suite on the registry, the files, the
# processes, the address book, and the window's commands on the registry.
enable_language(RC)
morvelle_test(windows_tests
  SOURCES
    platform/registry_contract_test.cpp
    windows/address_book_win32_test.cpp
    windows/environment_win32_test.cpp
    windows/host_files_win32_test.cpp
    windows/k9_win32_test.cpp
    windows/processes_win32_test.cpp
    windows/registry_win32_test.cpp
    windows/version.rc
    windows/window_on_registry_test.cpp
    ../samples/dbx_builder.cpp
  USES ui platform)
target_link_libraries(windows_tests PRIVATE shlwapi psapi)

# Stand-ins of what belongs to others, under their names.
add_library(kwab_stand_in SHARED windows/kwab_stand_in.cpp)
set_target_properties(kwab_stand_in PROPERTIES PREFIX "" OUTPUT_NAME kWab)
target_link_options(kwab_stand_in PRIVATE -static -Wl,--kill-at)
add_executable(k9_stand_in windows/k9_stand_in.cpp)
set_target_properties(k9_stand_in PROPERTIES OUTPUT_NAME K9-F)
foreach(stand_in kwab_stand_in k9_stand_in)
  target_link_libraries(${stand_in} PRIVATE morvelle_flags)
  add_dependencies(windows_tests ${stand_in})
endforeach()
