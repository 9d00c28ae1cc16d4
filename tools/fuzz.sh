#!/usr/bin/env bash
# Builds the fuzz targets with clang and runs each of them for some seconds: fuzz.sh [SECONDS], 60 where none are named.
# What a target learns is kept under build/. Where clang or its fuzzer can't be had the exit code is 77.
set -u
cd "$(dirname "$0")/.." || exit 1
seconds=${1:-60}
tools/setup.sh fuzz
mkdir -p build
probe='extern "C" int LLVMFuzzerTestOneInput(const unsigned char*, unsigned long) { return 0; }'
if ! clang++ -x c++ -fsanitize=fuzzer,address - -o build/fuzz-probe <<<"$probe" 2>build/fuzz.log; then
  echo 'No clang with a fuzzer here: nothing was fuzzed.'
  exit 77
fi
cmake --preset fuzz >build/fuzz.log || { cat build/fuzz.log; exit 1; }
cmake --build --preset fuzz || exit 1
failed=()
for source in fuzz/*.cpp; do
  name=$(basename "$source" .cpp)
  learned=build/fuzz/corpus/$name
  mkdir -p "$learned"
  if "build/fuzz/fuzz_$name" -max_total_time="$seconds" -timeout=20 -artifact_prefix="build/fuzz/$name-" \
    "$learned" "fuzz/corpus/$name" >"build/fuzz/$name.log" 2>&1; then
    echo "$name: $(grep '^Done' "build/fuzz/$name.log")"
  else
    cat "build/fuzz/$name.log"
    failed+=("$name")
  fi
done
[ ${#failed[@]} -eq 0 ] || { echo "Failed: ${failed[*]}"; exit 1; }
