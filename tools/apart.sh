#!/usr/bin/env bash
# Runs a command where it can end nothing but what it started: apart.sh COMMAND [ARGUMENT...]. It sees no other processes
# and has a temporary folder of its own; what it leaves behind ends with it. Where that can't be had, it runs as it is.
set -u
if [ "${1:-}" = --inside ]; then
  user=$2 group=$3
  shift 3
  # A server of displays takes what others left there for its own, if it can't see them run: it would take their place.
  # The folder that this was called in stays where it is, though it may be one of those that are hidden.
  mount -t tmpfs -o mode=1777 none /tmp && mkdir -m 1777 /tmp/.X11-unix || exit 125
  case $PWD/ in /tmp/*) mkdir -p "$PWD" && mount -c --rbind . "$PWD" && cd "$PWD" || exit 125 ;; esac
  # Who is asked over a bus to do something to a process would take its number for another one's.
  for place in /run/user /run/dbus; do
    if [ -d $place ]; then mount -t tmpfs none $place || exit 125; fi
  done
  unset TMPDIR XDG_RUNTIME_DIR DBUS_SESSION_BUS_ADDRESS
  # As the first process of all this shell takes in orphans, and what it runs is an ordinary one.
  if [ "$user" = 0 ]; then "$@"; else unshare --user --map-user="$user" --map-group="$group" -- "$@"; fi
  exit
fi

apart=(unshare --pid --fork --kill-child --mount-proc)
[ "$(id -u)" = 0 ] || apart+=(--map-root-user)
apart+=("$0" --inside "$(id -u)" "$(id -g)")
"${apart[@]}" true 2>/dev/null && exec "${apart[@]}" "$@"
echo 'No processes of its own can be had here: it runs among all others.' >&2
exec "$@"
