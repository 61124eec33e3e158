morvelle_room(ui
  SOURCES
    ui/actions.cpp ui/address_book.cpp ui/controls.cpp ui/criteria_options.cpp ui/frm_morvelle.cpp
    ui/frm_version.cpp ui/menu_table.cpp ui/merge.cpp ui/prefilters.cpp ui/printing.cpp
    ui/rule_commands.cpp ui/rule_files.cpp ui/rule_lifecycle.cpp ui/rule_list.cpp ui/rule_order.cpp
    ui/signatures.cpp ui/tools.cpp ui/word_lists.cpp
  USES app)
set(MORVELLE_UPDATE_ADDRESS "" CACHE STRING "Web address of the updates, shown in the about box")
set_source_files_properties(ui/frm_version.cpp PROPERTIES
  COMPILE_DEFINITIONS MORVELLE_UPDATE_ADDRESS="${MORVELLE_UPDATE_ADDRESS}")
