# The target "lint" runs clang-tidy over every source of the rooms; a source is looked at again
# when it, any header or the list of checks has changed.
function(add_lint_target)
  find_program(CLANG_TIDY clang-tidy)
  if(NOT CLANG_TIDY)
    return()
  endif()
  get_property(sources GLOBAL PROPERTY LINTED_SOURCES)
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/vetlo/*.h
       ${CMAKE_SOURCE_DIR}/quillmarsh/*.h)
  set(stamps)
  foreach(source IN LISTS sources)
    file(RELATIVE_PATH name ${CMAKE_SOURCE_DIR} ${source})
    set(stamp ${CMAKE_BINARY_DIR}/lint/${name}.ok)
    cmake_path(GET stamp PARENT_PATH folder)
    add_custom_command(
      OUTPUT ${stamp}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
      COMMAND ${CLANG_TIDY} --quiet --extra-arg=-Wno-unknown-warning-option -p ${CMAKE_BINARY_DIR}
              ${source}
      COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
      DEPENDS ${source} ${headers} ${CMAKE_SOURCE_DIR}/.clang-tidy
      COMMENT "Linting ${name}"
      VERBATIM)
    list(APPEND stamps ${stamp})
  endforeach()
  add_custom_target(lint DEPENDS ${stamps})
endfunction()
