# The manual: its pages in `help` as they are where the program shows them itself, compiled to one
# file for the viewer of Windows.
set(MORVELLE_HELP ${PROJECT_SOURCE_DIR}/help)
file(GLOB MORVELLE_HELP_FILES CONFIGURE_DEPENDS
  ${MORVELLE_HELP}/*.htm ${MORVELLE_HELP}/morvelle.hh* ${MORVELLE_HELP}/images/*.png)

# morvelle_help_file(TARGET): Morvelle.chm beside the program. The compiler writes it into the folder
# in which it runs, so that it runs on a copy.
function(morvelle_help_file target)
  find_program(MORVELLE_CHMCMD chmcmd REQUIRED)
  set(copy ${CMAKE_CURRENT_BINARY_DIR}/aide)
  set(compiled ${CMAKE_CURRENT_BINARY_DIR}/Morvelle.chm)
  add_custom_command(OUTPUT ${compiled}
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${copy}
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${MORVELLE_HELP} ${copy}
    COMMAND ${CMAKE_COMMAND} -E chdir ${copy} ${MORVELLE_CHMCMD} morvelle.hhp
    COMMAND ${CMAKE_COMMAND} -E rename ${copy}/Morvelle.chm ${compiled}
    DEPENDS ${MORVELLE_HELP_FILES} VERBATIM)
  add_custom_target(${target}_help ALL DEPENDS ${compiled})
  add_dependencies(${target} ${target}_help)
endfunction()

# morvelle_help_pages(TARGET): the pages in ../share/morvelle/aide beside the program, as once
# installed.
function(morvelle_help_pages target)
  set(pages ${PROJECT_BINARY_DIR}/share/morvelle/aide)
  set(stamp ${CMAKE_CURRENT_BINARY_DIR}/aide.stamp)
  add_custom_command(OUTPUT ${stamp}
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${pages}
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${MORVELLE_HELP} ${pages}
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${pages}/captures
    COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
    DEPENDS ${MORVELLE_HELP_FILES} VERBATIM)
  add_custom_target(${target}_help ALL DEPENDS ${stamp})
  add_dependencies(${target} ${target}_help)
  install(DIRECTORY ${pages} DESTINATION share/morvelle)
endfunction()
