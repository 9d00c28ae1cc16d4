# What every target of ours shares.
add_library(velmaro_flags INTERFACE)
target_compile_options(velmaro_flags INTERFACE -Wall -Wextra -Wpedantic)

# Folders fill up one by one: a target whose sources are not there yet is left out.
function(velmaro_program name)
  cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES" ${ARGN})
  if(arg_SOURCES)
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} velmaro_flags)
  endif()
endfunction()
