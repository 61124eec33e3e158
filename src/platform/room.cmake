# What touches the system itself, one file per system.
if(WIN32)
  set(platform_system_sources)
else()
  include(${PROJECT_SOURCE_DIR}/cmake/MorvelleHivex.cmake)
  set(platform_system_sources
    platform/environment_posix.cpp
    platform/hive_cells.cpp
    platform/hive_reader.cpp
    platform/hive_writer.cpp
    platform/host_files_posix.cpp
    platform/registry_hive.cpp)
endif()

morvelle_room(platform
  SOURCES
    platform/command_line.cpp
    platform/edited_file.cpp
    platform/reg_file_reader.cpp
    platform/reg_file_text.cpp
    platform/reg_file_writer.cpp
    platform/registry_memory.cpp
    platform/registry_regfile.cpp
    platform/registry_tree.cpp
    platform/sample_identity.cpp
    platform/tree_store.cpp
    platform/unicode.cpp
    platform/windows_paths.cpp
    ${platform_system_sources}
  USES messages)
if(NOT WIN32)
  target_link_libraries(morvelle_platform PRIVATE PkgConfig::HIVEX)
endif()
