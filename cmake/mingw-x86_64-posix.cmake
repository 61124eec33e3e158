# GoogleTest needs std::mutex, which the win32 flavour lacks.
set(morvelle_processor x86_64)
set(morvelle_flavour posix)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
