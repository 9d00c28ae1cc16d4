set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR ${VELMARO_MACHINE})
# GoogleTest needs std::mutex. Before GCC 13 that takes the posix thread model, which adds some 17 KB to the executable,
# and 33 KB with GCC 14.
set(threads posix)
execute_process(COMMAND ${VELMARO_MACHINE}-w64-mingw32-g++-win32 -dumpversion
  OUTPUT_VARIABLE native_threads RESULT_VARIABLE has_none ERROR_QUIET)
if(NOT has_none AND native_threads VERSION_GREATER_EQUAL 13)
  set(threads win32)
endif()
set(CMAKE_C_COMPILER ${VELMARO_MACHINE}-w64-mingw32-gcc-${threads})
set(CMAKE_CXX_COMPILER ${VELMARO_MACHINE}-w64-mingw32-g++-${threads})
set(CMAKE_RC_COMPILER ${VELMARO_MACHINE}-w64-mingw32-windres)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../tools/wine.sh)
set(CMAKE_FIND_ROOT_PATH /usr/${VELMARO_MACHINE}-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
