# The native program of a Linux desktop.
add_subdirectory(src/platform/linux)
if(BUILD_TESTING)
  add_subdirectory(tests/linux)
endif()
