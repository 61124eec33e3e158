morvelle_test(wab_tests
  SOURCES wab/address_reader_test.cpp wab/book_rule_test.cpp wab/case_order_test.cpp
    wab/k9_whitelist_test.cpp
  USES wab platform)
