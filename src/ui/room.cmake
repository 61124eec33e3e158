morvelle_room(ui
  SOURCES
    ui/actions.cpp ui/controls.cpp ui/criteria_options.cpp ui/frm_morvelle.cpp ui/menu_table.cpp
    ui/merge.cpp ui/prefilters.cpp ui/printing.cpp ui/rule_files.cpp ui/signatures.cpp
    ui/rule_commands.cpp ui/rule_lifecycle.cpp ui/rule_list.cpp ui/rule_order.cpp ui/word_lists.cpp
  USES app)
