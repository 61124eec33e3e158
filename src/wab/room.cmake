morvelle_room(wab
  SOURCES
    wab/address_reader.cpp wab/book_rule.cpp wab/case_order.cpp wab/k9_whitelist.cpp
    wab/processes.cpp wab/whitelist_file.cpp
  USES core disk)
