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
  # What of Linux only takes texts and files apart.
  set(readers files/SettingsText ground/Descriptor ground/Environment ground/GroupPlace ground/ReadWhole ground/Words memory/ControlGroup
    processes/ProcFolder processes/ProcessNames processes/ProcessStatus processes/Script starts/Command
    starts/DesktopEntry)
  list(TRANSFORM readers REPLACE "(.+)" "src/platform/linux/\\1.cpp")
  add_library(velmaro_linux_readers STATIC ${readers})
  target_link_libraries(velmaro_linux_readers PUBLIC velmaro)
  file(GLOB fuzz_sources CONFIGURE_DEPENDS fuzz/*.cpp)
  foreach(source IN LISTS fuzz_sources)
    cmake_path(GET source STEM stem)
    velmaro_program(fuzz_${stem} SOURCES ${source} LIBRARIES velmaro_linux_readers)
    target_link_options(fuzz_${stem} PRIVATE -fsanitize=fuzzer)
  endforeach()
endif()
