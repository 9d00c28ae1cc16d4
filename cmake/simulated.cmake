# The portable code on a desktop in memory: tests, benchmarks and fuzz targets, all of them native.
if(NOT TARGET velmaro)
  return()
endif()

file(GLOB test_sources CONFIGURE_DEPENDS tests/*.cpp)
if(BUILD_TESTING AND test_sources)
  find_package(GTest REQUIRED)
  velmaro_program(velmaro_tests SOURCES ${test_sources} LIBRARIES velmaro GTest::gtest_main)
  target_include_directories(velmaro_tests PRIVATE tests)
  include(GoogleTest)
  gtest_discover_tests(velmaro_tests DISCOVERY_MODE POST_BUILD DISCOVERY_TIMEOUT 60 PROPERTIES LABELS native TIMEOUT 120)
endif()

# Figures taken under sanitizers mean nothing.
file(GLOB bench_sources CONFIGURE_DEPENDS bench/*.cpp)
if(bench_sources AND BUILD_TESTING AND NOT VELMARO_SANITIZE)
  find_package(benchmark REQUIRED)
  velmaro_program(velmaro_bench SOURCES ${bench_sources} LIBRARIES velmaro benchmark::benchmark_main)
endif()

if(VELMARO_FUZZ)
  file(GLOB fuzz_sources CONFIGURE_DEPENDS fuzz/*.cpp)
  foreach(source IN LISTS fuzz_sources)
    cmake_path(GET source STEM stem)
    velmaro_program(fuzz_${stem} SOURCES ${source} LIBRARIES velmaro)
    target_link_options(fuzz_${stem} PRIVATE -fsanitize=fuzzer)
  endforeach()
endif()
