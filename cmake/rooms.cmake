# A room is a folder with a library of its own. Its target states which rooms it may look into;
# tests/house holds every #include against that statement.

# add_room(<folder> [LINKS room targets...] [LIBRARIES outside libraries...])
# The target of vetlo/store is vetlo_store. Sources are all of the folder's own *.cpp.
function(add_room folder)
  cmake_parse_arguments(ROOM "" "" "LINKS;LIBRARIES" ${ARGN})
  string(REPLACE "/" "_" target ${folder})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${folder}/*.cpp)
  add_library(${target} STATIC ${sources})
  target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR})
  target_link_libraries(${target} PUBLIC ${ROOM_LINKS} ${ROOM_LIBRARIES})
  use_strict_warnings(${target})
  set_property(GLOBAL APPEND_STRING PROPERTY ROOM_LIST "${folder}: ${ROOM_LINKS}\n")
  set_property(GLOBAL APPEND PROPERTY LINTED_SOURCES ${sources})
endfunction()

function(use_strict_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                                           -Wsign-conversion -Wold-style-cast -Werror)
  # Both report moves of strings and variants that are sound, in this compiler's optimized builds.
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 14)
    target_compile_options(${target} PRIVATE -Wno-restrict -Wno-maybe-uninitialized)
  endif()
endfunction()

# One line a room, "<folder>: <targets it links>", for the test that guards the walls.
function(write_room_list)
  get_property(rooms GLOBAL PROPERTY ROOM_LIST)
  string(REPLACE ";" " " rooms "${rooms}")
  file(WRITE ${CMAKE_BINARY_DIR}/rooms.txt "${rooms}")
endfunction()
