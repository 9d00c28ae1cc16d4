set(VELMARO_MACHINE i686)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
