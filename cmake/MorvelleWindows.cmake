# What makes the program one of Windows: its resources, its name, the version of Windows that it asks
# for.
enable_language(RC)
set(MORVELLE_PACKAGING ${PROJECT_SOURCE_DIR}/packaging/windows)

function(morvelle_windows_program target)
  # The catalogue lies in the library's folder, <folder>/bin/wx-config.
  cmake_path(GET wxWidgets_CONFIG_EXECUTABLE PARENT_PATH folder)
  cmake_path(GET folder PARENT_PATH folder)
  set(MORVELLE_WX_FRENCH ${folder}/fr.mo)
  configure_file(${MORVELLE_PACKAGING}/morvelle.rc.in ${CMAKE_CURRENT_BINARY_DIR}/morvelle.rc @ONLY)
  set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/morvelle.rc PROPERTIES
    OBJECT_DEPENDS "${MORVELLE_PACKAGING}/morvelle.ico;${MORVELLE_PACKAGING}/morvelle.manifest")
  target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/morvelle.rc)
  set_target_properties(${target} PROPERTIES OUTPUT_NAME Morvelle WIN32_EXECUTABLE ON)
  # Windows XP calls itself 5.1, its 64-bit edition 5.2.
  if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    set(minor 1)
  else()
    set(minor 2)
  endif()
  target_link_options(${target} PRIVATE
    -Wl,--major-os-version,5,--minor-os-version,${minor}
    -Wl,--major-subsystem-version,5,--minor-subsystem-version,${minor}
    -Wl,--gc-sections $<$<CONFIG:Release>:-s>)
endfunction()
