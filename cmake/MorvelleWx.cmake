# wxWidgets as one interface target. Its headers count as system ones: they do not pass our warnings.
include_guard(GLOBAL)
find_package(wxWidgets 3.2 REQUIRED COMPONENTS html core base)
add_library(morvelle_wx INTERFACE)
target_include_directories(morvelle_wx SYSTEM INTERFACE ${wxWidgets_INCLUDE_DIRS})
target_compile_definitions(morvelle_wx INTERFACE ${wxWidgets_DEFINITIONS})
target_compile_options(morvelle_wx INTERFACE ${wxWidgets_CXX_FLAGS})
target_link_libraries(morvelle_wx INTERFACE ${wxWidgets_LIBRARIES})
