#!/usr/bin/env bash
# Installs what a machine with Debian 12 or 13 lacks to build Velmaro for the named platforms: setup.sh [linux] [windows]
# With "checks" instead: what looks at a release, and a Wayland compositor for the tests, with "fuzz" what the fuzz
# targets are built with: what can't be had of them is skipped. With "pictures": what takes those of the documents, and
# with "monkey" what plays at random.
# What builds a platform must be there in the end. Wine, which runs velmaro.exe, may stay missing: where no 32-bit Wine
# can be had, the 64-bit one and a compiler for it are installed, and the 64-bit program stands in. "windows64" asks for
# that one itself, and for 64-bit Wine only where it fits beside what is installed.
set -u
cd "$(dirname "$0")/.." || exit 1
export DEBIAN_FRONTEND=noninteractive LC_ALL=C

tools=(make cmake ninja-build g++ python3 libgtest-dev googletest libbenchmark-dev)
display=(xvfb xauth x11-utils imagemagick)
wine=()
stand_in=()
beside=()
checks=()

# Some kernels run no 32-bit programs. The smallest one that there is, one that only exits, tells.
runs_32_bit() {
  local probe code
  probe=$(mktemp) || return 0
  base64 -d >"$probe" <<<'f0VMRgEBAQAAAAAAAAAAAAIAAwABAAAAVIAECDQAAAAAAAAAAAAAADQAIAABAAAAAAAAAAEAAAAAAAAAAIAECACABAhdAAAAXQAAAAUAAAAAEAAAuAEAAAAx282A'
  chmod +x "$probe"
  "$probe" 2>/dev/null
  code=$?
  rm -f "$probe"
  return $code
}

debian=$(sed -n 's/^VERSION_ID="\(.*\)"$/\1/p' /etc/os-release)
for platform in "$@"; do
  case $platform in
    linux)
      tools+=(pkg-config qt6-base-dev qt6-wayland libx11-dev libxcb1-dev libxcb-res0-dev libxcb-xtest0-dev
        libwayland-dev plasma-wayland-protocols openbox procps
        polkitd pkexec dbus-daemon dpkg-dev file "${display[@]}")
      ;;
    windows)
      # Since Debian 13 the system's own threads do for the tests, and the program is smaller with them.
      threads=posix
      [ "$debian" != 13 ] || threads=win32
      tools+=(g++-mingw-w64-i686-$threads)
      wine+=(wine wine32:i386 fonts-liberation fonts-wine "${display[@]}")
      stand_in+=(wine wine64 g++-mingw-w64-x86-64-posix fonts-liberation fonts-wine "${display[@]}")
      ;;
    windows64)
      tools+=(g++-mingw-w64-x86-64-posix)
      beside+=(wine64)
      ;;
    pictures | monkey) tools+=(xdotool openbox util-linux "${display[@]}") ;;
    checks)
      tools=() checks+=(mandoc man-db groff-base appstream desktop-file-utils lintian sway kwin-wayland xwayland)
      [ "$debian" = 12 ] || checks+=(labwc)
      ;;
    fuzz) checks+=(clang libclang-rt-dev) ;;
  esac
done

missing() {
  [ $# -gt 0 ] || return 0
  dpkg-query -W -f '${db:Status-Status} ${Package}\n${db:Status-Status} ${Package}:${Architecture}\n' \
    "${@}" 2>/dev/null | sed -n 's/^installed //p' | sort -u | grep -vxFf - <(printf '%s\n' "$@")
}

mapfile -t need_tools < <(missing "${tools[@]}")
mapfile -t need_checks < <(missing "${checks[@]}")
mapfile -t need_wine < <(missing "${wine[@]}")
mapfile -t need_stand_in < <(missing "${stand_in[@]}")
mapfile -t need_beside < <(missing "${beside[@]}")
# Where the stand-in serves, 32-bit Wine is tried again after a day: a package index that is out of step heals.
refused=build/no-wine32
if ! runs_32_bit; then
  need_wine=()
elif [ ${#need_wine[@]} -eq 0 ]; then
  need_stand_in=()
elif [ ${#need_stand_in[@]} -eq 0 ] && { [ "$(id -u)" -ne 0 ] || [ -n "$(find $refused -mtime -1 2>/dev/null)" ]; }; then
  need_wine=()
fi
no_room=build/no-wine64
if [ "$(id -u)" -ne 0 ] || [ -n "$(find $no_room -mtime -1 2>/dev/null)" ]; then need_beside=(); fi
[ $((${#need_tools[@]} + ${#need_checks[@]} + ${#need_wine[@]} + ${#need_stand_in[@]} + ${#need_beside[@]})) -gt 0 ] ||
  exit 0

if [ "$(id -u)" -ne 0 ]; then
  foreign=
  if [ ${#need_wine[@]} -gt 0 ]; then
    foreign='dpkg --add-architecture i386; '
    need_stand_in=()
  fi
  echo "Velmaro needs, as root: ${foreign}apt-get install ${need_tools[*]} ${need_checks[*]} ${need_wine[*]} ${need_stand_in[*]}" >&2
  exit $((${#need_tools[@]} > 0))
fi

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
# apt drops its rights to fetch, and must still read the index it fetched.
chmod 755 "$scratch"
apt_options=()
# A setting that the user has changed stays as it is, and nobody is asked about it.
apt() { apt-get -qq -o Dpkg::Use-Pty=0 -o DPkg::Lock::Timeout=300 -o Dpkg::Options::=--force-confold ${apt_options[@]+"${apt_options[@]}"} "$@" </dev/null; }
get() { apt install -y --no-install-recommends "$@"; }

# A source of someone else's that is broken must not stop us: what matters is whether the install works.
if [ ${#need_wine[@]} -gt 0 ] && ! dpkg --print-foreign-architectures | grep -qx i386; then
  dpkg --add-architecture i386
fi
apt update >/dev/null 2>"$scratch/update.log" || sed 's/^/apt-get update: /' "$scratch/update.log" >&2

if [ ${#need_tools[@]} -gt 0 ]; then
  get "${need_tools[@]}" || { echo "Could not install: ${need_tools[*]}" >&2; exit 1; }
fi

# Not at the price of 32-bit Wine, or of anything else: what would have to go shows in a plan.
if [ ${#need_beside[@]} -gt 0 ]; then
  plan=$(get -s "${need_beside[@]}" 2>/dev/null) && ! grep -q '^Remv' <<<"$plan" && get "${need_beside[@]}" || {
    echo '64-bit Wine does not fit beside what is installed: velmaro64.exe is built, and not driven.' >&2
    mkdir -p build && touch $no_room
  }
fi

for check in ${need_checks[@]+"${need_checks[@]}"}; do
  get "$check" || echo "Could not install $check: what needs it will be skipped." >&2
done

# The index of the release suites alone, from the machine's own mirrors, beside the machine's own settings.
release_suites_only() {
  local codename file
  codename=$(. /etc/os-release && echo "$VERSION_CODENAME")
  mkdir -p "$scratch/lists/partial" "$scratch/parts"
  for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    [ -f "$file" ] && grep -E "^deb .* $codename(-updates)? " "$file" >"$scratch/parts/${file##*/}.list"
  done
  for file in /etc/apt/sources.list.d/*.sources; do
    [ -f "$file" ] && awk -v c="$codename" 'BEGIN { RS = ""; FS = "\n" } {
      kept = ""; stanza = ""
      for (i = 1; i <= NF; i++) {
        if ($i ~ /^Suites:/) {
          n = split($i, suites, " ")
          for (s = 2; s <= n; s++) if (suites[s] == c || suites[s] == c "-updates") kept = kept " " suites[s]
          stanza = stanza "Suites:" kept "\n"
        } else stanza = stanza $i "\n"
      }
      if (kept != "") print stanza }' "$file" >"$scratch/parts/${file##*/}"
  done
  apt_options=(-o Dir::Etc::sourcelist=- -o Dir::Etc::sourceparts="$scratch/parts"
    -o Dir::State::lists="$scratch/lists" -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache=)
  apt update >/dev/null || true
}

# Libraries of two architectures must be of one version. Names each that this machine has newer than the release
# suites, for both architectures, and what else here was built from the same sources and so is tied to it.
taken_back() {
  local closure name arch version source
  closure=$(apt-cache "${apt_options[@]}" depends --recurse --no-recommends --no-suggests --no-enhances \
    --no-conflicts --no-breaks --no-replaces "${need_wine[@]}" | grep -oE '[a-z0-9][a-z0-9.+-]+:i386$' | sort -u)
  apt-cache "${apt_options[@]}" madison $(sed 's/:i386$//' <<<"$closure") $(dpkg-query -W -f '${Package}\n') |
    awk -F ' *[|] *' '{ sub(/^ */, "", $1) } $3 ~ /Packages/ && !seen[$1]++ { print $1, $2 }' >"$scratch/release"
  dpkg-query -W -f '${db:Status-Status} ${Package} ${Architecture} ${Version} ${source:Package}\n' |
    sed -n 's/^installed //p' >"$scratch/installed"
  awk 'NR == FNR { release[$1] = $2; next } ($1 in release) && release[$1] != $3 { print $0, release[$1] }' \
    "$scratch/release" "$scratch/installed" |
    while read -r name arch version source wanted; do
      dpkg --compare-versions "$version" gt "$wanted" && echo "$name $arch $source $wanted"
    done >"$scratch/newer"
  awk 'NR == FNR { wanted[$1] = 1; next } ($1 ":i386") in wanted { print $3 }' \
    <(echo "$closure") "$scratch/newer" | sort -u >"$scratch/sources"
  while read -r name arch source version; do
    grep -qxF "$source" "$scratch/sources" || continue
    echo "$name:$arch=$version"
    if [ "$arch" != all ] && grep -qxF "$name:i386" <<<"$closure"; then echo "$name:i386=$version"; fi
  done <"$scratch/newer" | sort -u
}

install_wine() {
  if get -s "${need_wine[@]}" >/dev/null 2>&1 && get "${need_wine[@]}"; then return; fi
  echo '32-bit Wine does not fit the package index as it is: trying the release suites alone.' >&2
  release_suites_only
  mapfile -t back < <(taken_back)
  get --allow-downgrades "${need_wine[@]}" ${back[@]+"${back[@]}"}
}

if [ ${#need_wine[@]} -gt 0 ]; then
  if install_wine; then exit 0; fi
  echo '32-bit Wine could not be installed: a 64-bit build stands in for velmaro.exe.' >&2
  mkdir -p build && touch $refused
  apt_options=()
fi
if [ ${#need_stand_in[@]} -gt 0 ] && ! get "${need_stand_in[@]}"; then
  echo 'Wine could not be installed: what needs it will be skipped.' >&2
fi
