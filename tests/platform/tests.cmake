morvelle_test(platform_tests
  SOURCES
    platform/book_formats_test.cpp
    platform/edited_file_test.cpp
    platform/memory_guard_test.cpp
    platform/processes_posix_test.cpp
    platform/reg_file_test.cpp
    platform/registry_contract_test.cpp
    platform/registry_hive_test.cpp
    platform/registry_regfile_test.cpp
    platform/subkey_renames_test.cpp
    platform/windows_paths_test.cpp
  USES platform)
target_link_libraries(platform_tests PRIVATE PkgConfig::HIVEX)
target_compile_definitions(platform_tests PRIVATE
  MORVELLE_BOOK_CASES="${CMAKE_CURRENT_LIST_DIR}/book_cases.txt"
  MORVELLE_PROFILE="${CMAKE_CURRENT_LIST_DIR}/profile.reg"
  MORVELLE_PATH_CASES="${CMAKE_CURRENT_LIST_DIR}/windows_paths_cases.txt"
  MORVELLE_REG_CASES="${CMAKE_CURRENT_LIST_DIR}/reg_file_cases.txt")

# What the store writes, read by a program that shares no line with ours.
add_executable(reg_file_sample platform/reg_file_sample.cpp)
target_include_directories(reg_file_sample PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(reg_file_sample PRIVATE morvelle_flags morvelle_platform)
add_test(NAME reg_file_read_by_hivexregedit
  COMMAND sh ${CMAKE_CURRENT_LIST_DIR}/read_by_hivexregedit.sh $<TARGET_FILE:reg_file_sample>)
