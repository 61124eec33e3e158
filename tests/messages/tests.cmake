morvelle_test(messages_tests
  SOURCES messages/text_test.cpp messages/errors_test.cpp messages/messages_test.cpp
  USES messages)
