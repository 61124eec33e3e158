morvelle_room(core
  SOURCES
    core/command_batch.cpp core/damage_report.cpp core/entry_types.cpp core/identity.cpp core/new_rule.cpp core/new_rule_keys.cpp core/registry_access.cpp
    core/rule_loader.cpp core/rule_tables.cpp core/rule_writer.cpp core/write_plan.cpp
    core/whole_rules.cpp core/word_lists.cpp
  USES messages)
