if(MORVELLE_WX)
  # A program of its own: the toolkit wants its application object before the first test. It needs a
  # display with a window manager, and it alone moves the mouse there.
  add_executable(view_tests
    view/test_main.cpp
    view/dialogs_wx_test.cpp
    view/help_and_about_test.cpp
    view/line_list_test.cpp
    view/main_window_test.cpp
    view/marked_text_test.cpp
    view/menu_bar_test.cpp
    view/mirror_test.cpp
    view/printed_pages_test.cpp
    view/progress_wx_test.cpp
    view/sample_identity_test.cpp
    view/window_place_test.cpp
    support/window_driver.cpp)
  target_include_directories(view_tests PRIVATE ${PROJECT_SOURCE_DIR})
  # The sample identity is edited through the window and then read by another program.
  target_compile_definitions(view_tests PRIVATE
    MORVELLE_SAMPLE_FOLDER="${PROJECT_SOURCE_DIR}/samples/identite"
    MORVELLE_READER="${CMAKE_CURRENT_LIST_DIR}/read_sample_by_hivexregedit.sh"
    MORVELLE_HIVE_MAKER="$<TARGET_FILE:reg_file_sample>")
  add_dependencies(view_tests reg_file_sample)
  target_link_libraries(view_tests PRIVATE morvelle_flags morvelle_view morvelle_platform
    morvelle_platform_wx
    GTest::gmock GTest::gtest)
  add_test(NAME view COMMAND view_tests)
  set_tests_properties(view PROPERTIES RESOURCE_LOCK display TIMEOUT 300)
endif()
