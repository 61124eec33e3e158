morvelle_test(core_tests
  SOURCES core/registry_access_test.cpp core/identity_test.cpp core/new_rule_test.cpp core/new_rule_keys_test.cpp core/word_lists_test.cpp
    core/rule_loader_test.cpp core/rule_writer_test.cpp core/saving_test.cpp
  USES core platform)
# The lines of a store as it must be, one file for each.
target_compile_definitions(core_tests PRIVATE MORVELLE_STORED="${CMAKE_CURRENT_LIST_DIR}/stored")
