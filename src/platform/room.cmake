# What touches the system itself, one file per system.
if(WIN32)
  set(platform_system_sources
    platform/address_book_win32.cpp
    platform/desktop_win32.cpp platform/environment_win32.cpp
    platform/programs_win32.cpp
    platform/processes_win32.cpp
    platform/real_path_win32.cpp
    platform/registry_win32.cpp
    platform/shell_win32.cpp)
else()
  include(${PROJECT_SOURCE_DIR}/cmake/MorvelleHivex.cmake)
  set(platform_system_sources
    platform/desktop_posix.cpp
    platform/environment_posix.cpp
    platform/hive_cells.cpp
    platform/hive_reader.cpp
    platform/hive_writer.cpp
    platform/memory_guard_posix.cpp
    platform/processes_posix.cpp
    platform/programs_posix.cpp
    platform/real_path_posix.cpp
    platform/registry_hive.cpp)
endif()

morvelle_room(platform
  SOURCES
    platform/address_book_file.cpp
    platform/book_csv.cpp
    platform/book_formats.cpp
    platform/command_line.cpp
    platform/reg_file_reader.cpp
    platform/reg_file_text.cpp
    platform/reg_file_writer.cpp
    platform/registry_memory.cpp
    platform/registry_regfile.cpp
    platform/registry_tree.cpp
    platform/sample_identity.cpp
    platform/subkey_renames.cpp
    platform/tree_store.cpp
    platform/unicode.cpp
    platform/windows_paths.cpp
    ${platform_system_sources}
  USES disk messages)
if(WIN32)
  target_link_libraries(morvelle_platform PRIVATE version psapi)
else()
  target_link_libraries(morvelle_platform PRIVATE PkgConfig::HIVEX)
endif()
