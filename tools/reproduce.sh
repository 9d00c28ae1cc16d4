#!/usr/bin/env bash
# Makes a release twice and compares the bytes: reproduce.sh [--whole]. The second time it is made from the source
# archive of the first, in another folder, at another time, with another mask and language.
# All of it takes minutes. Without --whole a telling part is compiled anew: the three libraries of the Linux program, all
# that is drawn, written or numbered by the build, and what knows its version or place. The rest is taken from the first.
set -euo pipefail
cd "$(dirname "$0")/.."
# Nor may what is not compiled twice ask for the time or its place.
if grep -rnE '__(DATE|TIME|TIMESTAMP|FILE)__|source_location' src packaging; then exit 1; fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
tools/dist.sh "$work/first" >/dev/null
mkdir "$work/another folder"
tar xzf "$work"/first/*.tar.gz -C "$work/another folder" --strip-components=1 --touch
first=$PWD
cd "$work/another folder"
umask 077
export TZ=Asia/Tokyo LC_ALL=C.UTF-8 CCACHE_DISABLE=1

objects=(linux/CMakeFiles/velmaro.dir/src/platform/linux/ground/{Conventions,Places}.cpp.o
  linux/CMakeFiles/velmaro.dir/src/desktop/formSplash.cpp.o
  windows{,64}/CMakeFiles/velmaro_resources.dir/packaging/velmaro.rc.res)
linux=(velmaro_toolkit velmaro_x11 velmaro_wayland velmaro_icon velmaro_documents)
windows=(velmaro_resources)
for object in "${objects[@]}"; do
  case $object in linux/*) linux+=("${object#*/}") ;; esac
done
[ "${1:-}" != --whole ] || { linux+=(velmaro_exe velmaro_set_class) windows+=(velmaro_exe); }
{
  cmake --preset linux -DBUILD_TESTING=OFF && cmake --build --preset linux --target "${linux[@]}"
  for preset in windows windows64; do
    cmake --preset $preset -DBUILD_TESTING=OFF && cmake --build --preset $preset --target "${windows[@]}"
  done
} >"$work/log" 2>&1 || { tail -n 40 "$work/log"; exit 1; }
for file in linux/velmaro linux/velmaro-set-class windows/velmaro.exe windows64/velmaro.exe; do
  [ -e "build/$file" ] || cp -p "$first/build/$file" "build/$file"
done

tools/dist.sh "$work/second" >/dev/null
for object in "${objects[@]}"; do cmp "$first/build/$object" "build/$object"; done
diff "$work/first/SHA256SUMS" "$work/second/SHA256SUMS"
sed 's/^/the same bytes: /' "$work/second/SHA256SUMS"
