# wxWidgets as one interface target. Its headers count as system ones: they do not pass our warnings.
include_guard(GLOBAL)
# On Windows the manual is shown by the system: the library is built without its own help window.
if(WIN32)
  set(morvelle_wx_components core base)
else()
  set(morvelle_wx_components html core base)
endif()
find_package(wxWidgets 3.2 REQUIRED COMPONENTS ${morvelle_wx_components})
add_library(morvelle_wx INTERFACE)
target_include_directories(morvelle_wx SYSTEM INTERFACE ${wxWidgets_INCLUDE_DIRS})
target_compile_definitions(morvelle_wx INTERFACE ${wxWidgets_DEFINITIONS})
target_compile_options(morvelle_wx INTERFACE ${wxWidgets_CXX_FLAGS})
target_link_libraries(morvelle_wx INTERFACE ${wxWidgets_LIBRARIES})
