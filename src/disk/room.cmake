# What touches the system itself, one file per system.
if(WIN32)
  set(disk_system_sources disk/final_path_win32.cpp disk/host_files_win32.cpp)
else()
  set(disk_system_sources disk/host_files_posix.cpp)
endif()
morvelle_room(disk
  SOURCES disk/dated_copy.cpp disk/dates.cpp disk/device_names.cpp disk/edited_file.cpp disk/file_fault.cpp
    disk/whole_file.cpp ${disk_system_sources}
  USES messages)
if(NOT WIN32)
  # A file is written in a thread of its own while its text is being made.
  find_package(Threads REQUIRED)
  target_link_libraries(morvelle_disk PRIVATE Threads::Threads)
endif()
