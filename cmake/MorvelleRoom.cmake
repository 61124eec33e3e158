# morvelle_room(NAME SOURCES file... USES room...)
#
# One static library per room. What stands after USES is all that the room may include: the include
# path of a room is the shared `src`, so the wall is the link line together with the check in
# tests/walls.
add_library(morvelle_flags INTERFACE)
target_compile_options(morvelle_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees an overlap in std::string's own assignment where there is none (its bug 105651).
  target_compile_options(morvelle_flags INTERFACE -Wno-restrict)
endif()
if(MORVELLE_SANITIZE)
  target_compile_options(morvelle_flags INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(morvelle_flags INTERFACE -fsanitize=address,undefined)
endif()
include(${CMAKE_CURRENT_LIST_DIR}/MorvelleHardening.cmake)

if(MORVELLE_FUZZ)
  # What leads an input to new code is known only where every room counts its branches.
  target_compile_options(morvelle_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

function(morvelle_room name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;USES" ${ARGN})
  if(ROOM_SOURCES)
    add_library(morvelle_${name} STATIC ${ROOM_SOURCES})
    target_include_directories(morvelle_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(morvelle_${name} PRIVATE morvelle_flags)
    set(scope PUBLIC)
  else()
    add_library(morvelle_${name} INTERFACE)
    target_include_directories(morvelle_${name} INTERFACE ${PROJECT_SOURCE_DIR}/src)
    set(scope INTERFACE)
  endif()
  foreach(used IN LISTS ROOM_USES)
    target_link_libraries(morvelle_${name} ${scope} morvelle_${used})
  endforeach()
endfunction()
