#!/usr/bin/env bash
# Looks at what a release is made of: release.sh CHECK BUILD_FOLDER. Without the tool that a check needs it ends with 77.
set -uo pipefail
cd "$(dirname "$0")/../.."
check=$1
build=$2
page=packaging/linux/velmaro.1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export LC_ALL=C.UTF-8 MANWIDTH=80

need() { command -v "$1" >/dev/null || { echo "skipped: $1 is not installed"; exit 77; }; }
# Runs a tool that has nothing to say where all is well.
silent() { "$@" >"$work/said" 2>&1 && [ ! -s "$work/said" ] || { echo "$*:"; cat "$work/said"; exit 1; }; }
same() { diff "$1" "$2" || { echo "$1 and $2 differ"; exit 1; }; }
switches() { grep -oE '(^|[^a-z0-9/.-])(/[a-z?]+|--[a-z]+)' | grep -oE '[-/].*' | sort -u >"$work/$1"; }

# Which of the pages that it names are on this machine is no fault of the page.
lint() { ! mandoc -Tlint $page 2>&1 | grep -vE 'mandoc.db|referenced manual not found'; }

case $check in
  manual) need mandoc; silent lint ;;
  pages) need man; need groff; silent bash -c "man --warnings -l $page >/dev/null" ;;
  appstream) need appstreamcli; appstreamcli validate --no-net packaging/linux/velmaro.metainfo.xml ;;
  menu) need desktop-file-validate; silent desktop-file-validate packaging/linux/velmaro.desktop ;;
  lintian)
    need lintian
    tools/deb.sh "$build" "$work" && lintian --allow-root --fail-on error,warning "$work"/*.deb
    ;;
  switches)
    "$build/velmaro" --help | grep -E '^  [-/]' | switches help
    sed -nE 's/^\.It (Cm|Fl) (-?)/\2/; s/^-/--/; T; p' $page | switches manual
    same "$work/help" "$work/manual"
    # A system that has no shell of its own is asked in a box.
    { grep -E '^\| `/' docs/command-line.md; echo '--help --version'; } | cut -d '|' -f 1,2 | switches table
    same "$work/help" "$work/table"
    [ "$(wc -l <"$work/help")" -gt 10 ]
    ;;
  version)
    "$build/velmaro" --version | sed 's/^velmaro //' >"$work/program"
    sed -nE '1s/.*\(([^)]*)\).*/\1/p' packaging/debian/changelog >"$work/package"
    sed -nE 's/.*<release version="([^"]*)".*/\1/p' packaging/linux/velmaro.metainfo.xml | head -n 1 >"$work/metainfo"
    sed -nE 's/^## \[([0-9.]+)\].*/\1/p' CHANGELOG.md | head -n 1 >"$work/changes"
    for told in package metainfo changes; do same "$work/program" "$work/$told"; done
    ;;
  # No file names a folder to look for libraries in: beside the program it could be anybody's.
  loading) need readelf; ! readelf -d "$build"/velmaro{,-set-class,-x11.so,-wayland.so,-toolkit.so} | grep -E 'RPATH|RUNPATH' ;;
  *) echo "there is no check $check"; exit 1 ;;
esac
