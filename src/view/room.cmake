# The windows, and the halves of the desktop ports that are answered with wxWidgets.
if(MORVELLE_WX)
  include(${PROJECT_SOURCE_DIR}/cmake/MorvelleWx.cmake)
  if(NOT WIN32)
    # The manual has a window of the toolkit; Windows shows it by itself.
    set(platform_wx_system_sources platform/shell_wx.cpp)
  endif()
  morvelle_room(platform_wx
    SOURCES platform/dialogs_wx.cpp platform/file_dialogs_wx.cpp platform/printed_pages_wx.cpp
      platform/printer_wx.cpp platform/progress_wx.cpp ${platform_wx_system_sources}
    USES platform messages ports wx)
  if(WIN32)
    set(view_system_sources view/french_win32.cpp view/list_caret_win32.cpp)
  else()
    set(view_system_sources view/french_posix.cpp view/list_caret_posix.cpp)
  endif()
  morvelle_room(view
    SOURCES ${view_system_sources} view/about_window.cpp view/gestures.cpp view/line_list.cpp view/main_window.cpp
      view/main_window_layout.cpp view/marked_text.cpp view/menu_bar.cpp view/mirror.cpp
      view/pictures.cpp view/rule_menu.cpp view/stack_sizer.cpp view/text_line.cpp
      view/widget_maker.cpp view/window_place.cpp view/wx_text.cpp
    USES ui ports wx)
endif()
