# velmaro.exe: one file that needs only libraries which every Windows has in its system folder.
target_compile_definitions(velmaro_flags INTERFACE WINVER=0x0A00 _WIN32_WINNT=0x0A00)
target_compile_options(velmaro_flags INTERFACE -ffunction-sections -fdata-sections)
target_link_options(velmaro_flags INTERFACE -static -static-libgcc -static-libstdc++)

if(TARGET velmaro AND EXISTS ${CMAKE_SOURCE_DIR}/src/startup/main.cpp)
  find_package(Python3 REQUIRED COMPONENTS Interpreter)
  set(icons ${CMAKE_BINARY_DIR}/icons)
  add_custom_command(
    OUTPUT ${icons}/app.ico ${icons}/priority.ico ${icons}/memory.ico ${icons}/resources.ico ${icons}/editor.ico
    COMMAND ${Python3_EXECUTABLE} ${CMAKE_SOURCE_DIR}/packaging/draw_icons.py ${icons}
    DEPENDS packaging/draw_icons.py
    VERBATIM)

  # Their numbers are those of the project.
  set(numbered ${CMAKE_BINARY_DIR}/numbered)
  configure_file(packaging/velmaro.manifest.in ${numbered}/velmaro.manifest @ONLY)
  configure_file(packaging/version.h.in ${numbered}/version.h @ONLY)

  enable_language(RC)
  # By themselves, so that they can be made without the program.
  add_library(velmaro_resources OBJECT packaging/velmaro.rc)
  add_executable(velmaro_exe WIN32 src/startup/main.cpp $<TARGET_OBJECTS:velmaro_resources>)
  set_target_properties(velmaro_exe PROPERTIES OUTPUT_NAME velmaro)
  set_property(SOURCE packaging/velmaro.rc PROPERTY OBJECT_DEPENDS
    "${icons}/app.ico;${icons}/priority.ico;${icons}/memory.ico;${icons}/resources.ico;${icons}/editor.ico"
    "${numbered}/velmaro.manifest;${numbered}/version.h;${CMAKE_SOURCE_DIR}/packaging/resources.h")
  target_include_directories(velmaro_resources PRIVATE packaging ${icons} ${numbered})
  target_include_directories(velmaro PUBLIC packaging)
  target_link_libraries(velmaro_exe PRIVATE velmaro gdi32 advapi32 user32)
  # The address space can be laid out anew only while the relocations are in the file.
  if(CMAKE_SYSTEM_PROCESSOR STREQUAL i686)
    target_link_options(velmaro_exe PRIVATE -Wl,--large-address-aware)
  else()
    target_link_options(velmaro_exe PRIVATE -Wl,--high-entropy-va)
  endif()
  target_link_options(velmaro_exe PRIVATE -s -Wl,--gc-sections -Wl,--no-insert-timestamp
    -Wl,--dynamicbase -Wl,--nxcompat -Wl,--enable-reloc-section
    # Older systems than the oldest that has all of it say so by themselves.
    -Wl,--subsystem,windows:6.0,--major-os-version,6,--minor-os-version,0)
endif()

add_executable(run_raw WIN32 tools/run_raw.cpp)
target_link_libraries(run_raw PRIVATE velmaro_flags)
target_link_options(run_raw PRIVATE -s)

if(BUILD_TESTING)
  add_subdirectory(tests/windows)
endif()

file(GLOB bench_sources CONFIGURE_DEPENDS bench/windows/*.cpp)
list(FILTER bench_sources EXCLUDE REGEX "/Empty\\.cpp$")
velmaro_program(velmaro_bench_windows SOURCES ${bench_sources}
  LIBRARIES velmaro gdi32 advapi32 user32)
velmaro_program(velmaro_bench_empty SOURCES bench/windows/Empty.cpp LIBRARIES user32)
set_target_properties(velmaro_bench_empty PROPERTIES WIN32_EXECUTABLE ON)
add_dependencies(velmaro_bench_windows velmaro_bench_empty)
