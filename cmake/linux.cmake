# The native program of a Linux desktop.
add_subdirectory(src/platform/linux)
if(BUILD_TESTING)
  add_subdirectory(tests/linux)
endif()

# Figures taken under sanitizers mean nothing.
file(GLOB bench_sources CONFIGURE_DEPENDS bench/linux/*.cpp)
if(bench_sources AND BUILD_TESTING AND NOT VELMARO_SANITIZE)
  list(FILTER bench_sources EXCLUDE REGEX "/(Probe|Empty)\\.cpp$")
  velmaro_program(velmaro_bench_linux SOURCES ${bench_sources} LIBRARIES velmaro)
  velmaro_program(velmaro_bench_probe SOURCES bench/linux/Probe.cpp)
  # What it reports is when it runs, so it loads nothing that it does not use.
  target_link_options(velmaro_bench_probe PRIVATE -Wl,--as-needed)
  find_package(Qt6 REQUIRED COMPONENTS Widgets)
  velmaro_program(velmaro_bench_empty SOURCES bench/linux/Empty.cpp LIBRARIES Qt6::Widgets)
  add_dependencies(velmaro_bench_linux velmaro_exe velmaro_bench_probe velmaro_bench_empty)
endif()
