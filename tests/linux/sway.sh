#!/usr/bin/env bash
# Under a Wayland compositor with an X server beside it, the window is Wayland's own and bears the program's name. Ends
# with 77 where that can't be had.
set -u
for tool in sway swaymsg Xwayland; do
  command -v $tool >/dev/null || { echo "skipped: there is no $tool"; exit 77; }
done
folder=$(mktemp -d) && cp "$1"/velmaro "$1"/velmaro-*.so "$folder" || exit 1
trap 'kill $compositor; wait $compositor 2>/dev/null; rm -rf "$folder"' EXIT
as=(env)  # the compositor does not run as an administrator
[ "$(id -u)" != 0 ] || { as=(setpriv --reuid=65534 --regid=65534 --clear-groups); chown 65534 "$folder"; }
unset DISPLAY WAYLAND_DISPLAY SWAYSOCK QT_QPA_PLATFORM
export XDG_RUNTIME_DIR=$folder HOME=$folder WLR_BACKENDS=headless WLR_LIBINPUT_NO_DEVICES=1 WLR_RENDERER=pixman
printf 'xwayland force\nexec "%s/velmaro"\n' "$folder" >"$folder/config"
"${as[@]}" sway -c "$folder/config" &
compositor=$!
for _ in $(seq 100); do
  sleep 0.1
  tree=$("${as[@]}" swaymsg -s "$folder"/sway-ipc.*.sock -t get_tree 2>/dev/null)
  if grep -q "Zeld's Velmaro Process" <<<"$tree"; then break; fi
done
grep '"app_id": "velmaro"' <<<"$tree"
