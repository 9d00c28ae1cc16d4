#!/usr/bin/env bash
# Plays at random on a program's windows and tells what broke it: monkey.sh linux|windows [SECONDS [SEED]]
# The sanitizer build plays for Linux, velmaro.exe under Wine for Windows. Both have a screen, processes and a temporary
# folder of their own, and of the machine's files they can write none.
set -eu
cd "$(dirname "$0")/.."
case ${1:-} in linux | windows) ;; *) sed -n '2,4s/^# //p' "$0"; exit 2 ;; esac
if [ "${4:-}" != apart ]; then
  tools/setup.sh monkey
  bits=
  if [ "$1" = windows ]; then
    bits=$(tools/wine.sh --bits)
    [ -n "$bits" ] || { echo 'Wine starts no program here.'; exit 77; }
  fi
  exec tools/apart.sh tools/monkey.sh "$1" "${2:-300}" "${3:-1}" apart "$bits"
fi

work=$(mktemp -d /tmp/monkey.XXXXXX)
mkdir "$work/home" "$work/build" "$work/tools"
cp tools/wine.sh "$work/tools"
if [ "$1" = linux ]; then
  cp build/linux-asan/velmaro build/linux-asan/velmaro-*.so tools/leaks.txt "$work"
  program=("$work/velmaro")
else
  folder=build/windows
  [ "$5" = 32 ] || folder=build/windows64
  cp -r "build/wine$5" "$work/build"
  cp $folder/velmaro.exe $folder/probe.exe "$work"
  program=("$work/tools/wine.sh" "$work/velmaro.exe")
  export VELMARO_BITS=$5
fi
# A list of each kind, so that something is ended and something spared.
printf 'pad-mapper\nprobe.exe\n' | tee "$work/home/killlist.txt" >"$work/killlist.txt"
printf 'xev\n' | tee "$work/home/nokilllist.txt" >"$work/nokilllist.txt"
chmod -R a+rX "$work"
if [ "$(id -u)" = 0 ]; then
  chown -R 65534:65534 "$work"
  lower=(setpriv --reuid 65534 --regid 65534 --clear-groups --no-new-privs)
else
  lower=()
fi
lower+=(unshare -rmpf --mount-proc --kill-child)
"${lower[@]}" true || { echo 'No user can be had here who can harm nothing.'; exit 77; }

Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp 3>"$work/number" >/dev/null 2>&1 &
for _ in $(seq 100); do [ -s "$work/number" ] && break; sleep 0.1; done
DISPLAY=:$(cat "$work/number")
export DISPLAY
openbox >/dev/null 2>&1 &
python3 tools/monkey.py "$2" "$3" "$work" "${lower[@]}" -- "${program[@]}"
