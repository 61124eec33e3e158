# Debian's compilers for Windows: `morvelle_processor`, and `morvelle_flavour` where it is not the
# one that needs nothing later than Windows XP. The posix flavour's threads call functions that came
# with Vista.
if(NOT morvelle_flavour)
  set(morvelle_flavour win32)
endif()
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR ${morvelle_processor})
set(morvelle_tools ${morvelle_processor}-w64-mingw32)
set(CMAKE_C_COMPILER ${morvelle_tools}-gcc-${morvelle_flavour})
set(CMAKE_CXX_COMPILER ${morvelle_tools}-g++-${morvelle_flavour})
set(CMAKE_RC_COMPILER ${morvelle_tools}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${morvelle_tools})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
# wxWidgets lies in the cache.
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE BOTH)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Windows XP: what came later is not even declared.
set(CMAKE_CXX_FLAGS_INIT
  "-D_WIN32_WINNT=0x0501 -DWINVER=0x0501 -DWIN32_LEAN_AND_MEAN -DNOMINMAX")
# One file, with all that the compiler brings.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
