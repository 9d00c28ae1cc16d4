#!/usr/bin/env bash
# Runs a program under Wine in a prefix of the project's own: wine.sh PROGRAM [ARGUMENT...]
#   wine.sh --up     makes the prefix, and keeps Wine and a virtual display running for the programs that follow
#   wine.sh --down   ends both
#   wine.sh --display-file   names the file that holds the number of the virtual display
#   wine.sh --bits   prints 32, or 64 where no 32-bit program starts, or nothing where none of either kind does
# VELMARO_DPI=144 uses a second prefix with that resolution. Where Wine starts no program the exit code is 77.
# VELMARO_BITS=64 runs 64-bit programs; each kind has a prefix of its own.
set -u
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
dpi=${VELMARO_DPI:-96}
bits=${VELMARO_BITS:-32}

if [ "${1:-}" = --bits ]; then
  # A loader tells nothing of its kind: the same name can stand for either.
  for kind in 32 64; do
    VELMARO_BITS=$kind "$0" --prefix >/dev/null 2>&1 && { echo "$kind"; break; }
  done
  exit
fi

no_wine() { echo "Wine starts no $bits-bit programs here." >&2; exit 77; }

# The loader, by itself or through the system's own script.
loader() {
  local suffix= candidate
  [ "$bits" = 64 ] && suffix=64
  for candidate in "/usr/lib/wine/wine$suffix" "wine$suffix" wine; do
    "$candidate" --version >/dev/null 2>&1 && { command -v "$candidate"; return; }
  done
  return 1
}

wine=$(loader) || no_wine
server=wineserver
[ -x "/usr/lib/wine/wineserver$bits" ] && server=/usr/lib/wine/wineserver$bits
export WINELOADER=$wine WINESERVER=$(command -v "$server")
export WINEPREFIX=$root/build/wine$bits WINEARCH=win$bits WINEDEBUG=${WINEDEBUG:--all}
[ "$dpi" = 96 ] || WINEPREFIX+=-$dpi
# In a locale that has no letters but those of English, Wine can neither make nor open a file with others in its name.
[ "$(locale charmap 2>/dev/null)" != ANSI_X3.4-1968 ] || export LC_ALL=C.UTF-8
# No offers to download what only other programs need.
export WINEDLLOVERRIDES='mscoree,mshtml='
state=$WINEPREFIX.display

# What tells a process from every other that had or will have its number: its name and when it started.
identity_of() { awk '{ print $2, $22 }' "/proc/$1/stat" 2>/dev/null; }

# A virtual display that outlives this script; its number, its process and what tells that from others are kept in a file.
start_display() {
  local number_file=$state.number
  mkdir -p "$(dirname "$state")"
  Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp -noreset 3>"$number_file" >/dev/null 2>&1 </dev/null &
  local process=$!
  for _ in $(seq 100); do
    [ -s "$number_file" ] && break
    kill -0 "$process" 2>/dev/null || return 1
    sleep 0.05
  done
  echo "$(cat "$number_file") $process $(identity_of "$process")" >"$state"
  rm -f "$number_file"
}

display_is_up() {
  local identity
  [ -f "$state" ] && read -r number process identity <"$state" && [ -n "$identity" ] &&
    [ "$identity" = "$(identity_of "$process")" ]
}

# On the virtual display there is no window manager, and Wine would wait two seconds for its answer each time that a
# window shows or goes.
with_manager() { "$wine" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d "$1" /f >/dev/null 2>&1; }

# Waits until Wine has ended by itself, behind the last program.
let_end() { timeout 20 "$server" -w 2>/dev/null; }

# Wine's desktop lives longer than the program that needed it. One that came up without a display shows nothing, and one
# from before the change still waits for a manager.
use_display() {
  local fresh=
  display_is_up || { let_end; start_display && display_is_up && fresh=1; } ||
    { echo 'No virtual display could be started.' >&2; exit 77; }
  export DISPLAY=:$number
  [ -z "$fresh" ] || { with_manager N; let_end; }
}

down() {
  if display_is_up; then DISPLAY=:$number with_manager Y; fi
  timeout 20 "$server" -k 2>/dev/null
  timeout 20 "$server" -w 2>/dev/null
  if display_is_up; then kill "$process"; fi
  rm -f "$state"
}

# The command interpreter is a program of the prefix's kind, and knows it.
starts_its_kind() {
  local architecture=x86
  [ "$bits" = 64 ] && architecture=AMD64
  [ "$(timeout 60 "$wine" cmd /c 'echo %PROCESSOR_ARCHITECTURE%' 2>/dev/null </dev/null | tr -d '\r ')" = $architecture ]
}

make_prefix() {
  [ -f "$WINEPREFIX/.complete" ] && return
  rm -rf "$WINEPREFIX"
  mkdir -p "$WINEPREFIX"
  timeout 240 "$wine" wineboot --init >/dev/null 2>&1 </dev/null
  [ $? -ne 124 ] || { echo 'The Wine prefix could not be made in time.' >&2; exit 1; }
  starts_its_kind || no_wine
  if [ "$dpi" != 96 ]; then
    "$wine" reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$dpi" /f >/dev/null 2>&1
  fi
  timeout 60 "$server" -w
  touch "$WINEPREFIX/.complete"
}

need_prefix() {
  # One at a time: programs that start together must not make the prefix together.
  mkdir -p "$(dirname "$WINEPREFIX")"
  exec 9>"$WINEPREFIX.lock"
  flock 9
  make_prefix
  exec 9>&-
}

case ${1:-} in
  --display-file)
    echo "$state"
    ;;
  --up)
    need_prefix
    use_display
    "$server" -p >/dev/null 2>&1 </dev/null
    # Wine's services come up now: they would keep the output of the first program open.
    "$wine" cmd /c exit >/dev/null 2>&1 </dev/null
    ;;
  --down)
    down
    ;;
  --prefix)
    need_prefix
    starts_its_kind || no_wine
    ;;
  *)
    own=
    need_prefix
    if [ -z "${DISPLAY:-}" ]; then
      display_is_up || own=1
      use_display
    fi
    "$wine" "$@"
    code=$?
    [ -z "$own" ] || down
    exit $code
    ;;
esac
