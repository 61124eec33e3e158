morvelle_test(ui_tests
  SOURCES
    ui/actions_test.cpp ui/added_words_test.cpp ui/address_book_test.cpp ui/captions_test.cpp
    ui/command_state_test.cpp
    ui/controls_test.cpp ui/criteria_options_test.cpp ui/rule_files_test.cpp ui/signatures_test.cpp
    ui/rule_commands_test.cpp ui/rule_lifecycle_test.cpp ui/rule_list_test.cpp
    ui/rule_order_test.cpp ui/word_lists_test.cpp
    ../samples/dbx_builder.cpp
  USES ui platform)
target_compile_definitions(ui_tests PRIVATE
  MORVELLE_CAPTIONS="${CMAKE_CURRENT_LIST_DIR}/captions"
  MORVELLE_COMMAND_STATES="${CMAKE_CURRENT_LIST_DIR}/command_state.txt"
  MORVELLE_REFUSED_TEXTS="${CMAKE_CURRENT_LIST_DIR}/refused_texts.txt"
  MORVELLE_STORED="${CMAKE_CURRENT_LIST_DIR}/stored")
