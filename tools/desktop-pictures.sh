#!/usr/bin/env bash
# Pictures of the program on a real desktop at 100 % and 150 %: desktop-pictures.sh SEAT HANDS FOLDER NAME
# SEAT runs a line of the shell in the session, as `bash -c` does, and HANDS gives it keys and takes its picture from
# outside ("key alt-h", "shot FILE.png"), such as those of a virtual machine. FOLDER gets NAME-100.png (the list of
# windows), NAME-100-launch.png, NAME-100-memory.png and the same for 150. The scale is set back at the end.
set -eu
seat=$1 hands=$2 folder=$3 name=$4
in_session() { $seat "$*" </dev/null; }

gnome_scale() { # SCALE: the nearest one that the screen offers
  cat <<LINES
name=org.gnome.Mutter.DisplayConfig
call="gdbus call --session --dest \$name --object-path /org/gnome/Mutter/DisplayConfig --method \$name"
gsettings set org.gnome.mutter experimental-features "['scale-monitor-framebuffer']"; sleep 2
state=\$(\$call.GetCurrentState)
serial=\$(sed -n 's/^(uint32 \([0-9]*\),.*/\1/p' <<<"\$state")
screen=\$(grep -o "(('[A-Za-z0-9-]*'" <<<"\$state" | head -1 | tr -d "('")
mode=\$(grep -o "('[0-9x@.]*', [0-9]*, [0-9]*, [^]]*\][^)]*'is-current': <true>" <<<"\$state" | head -1)
near=\$(sed 's/.*\[//; s/\].*//' <<<"\$mode" | tr ', ' '\n\n' |
  awk -v w=$1 'NF{d=\$1-w;if(d<0)d=-d;if(!n++||d<b){b=d;v=\$1}}END{print v}')
id=\$(cut -d\' -f2 <<<"\$mode")
\$call.ApplyMonitorsConfig \$serial 1 \
  "[(0, 0, \$near, uint32 0, true, [('\$screen', '\$id', @a{sv} {})])]" '@a{sv} {}'
LINES
}

set_scale() { # SCALE
  case $desktop in
    *KDE*) in_session "kscreen-doctor output.1.scale.$1" ;;
    *GNOME*) in_session "$(gnome_scale "$1")" ;;
    sway) in_session "swaymsg output '*' scale $1" ;;
    *) in_session "wlr-randr --output \$(wlr-randr | head -1 | cut -d' ' -f1) --scale $1" ;;
  esac >/dev/null 2>&1
  sleep 5
}

picture() { # KEYS FILE: presses keys, and takes the picture once all is painted
  $hands key "$1"
  sleep 6
  $hands shot "$folder/$2.png"
}

desktop=$(in_session 'echo $XDG_CURRENT_DESKTOP')
mkdir -p "$folder"
trap 'in_session "pkill -x velmaro" || true; set_scale 1' EXIT
for percent in 100 150; do
  $hands key esc  # a desktop may begin with a view of its own
  set_scale "$(awk "BEGIN{print $percent / 100}")"
  in_session 'setsid velmaro >/dev/null 2>&1 </dev/null &'
  for _ in $(seq 60); do
    in_session 'grep -q -e qwayland -e libqxcb /proc/$(pgrep -n -x velmaro)/maps' 2>/dev/null && break
    sleep 1
  done
  sleep 8
  picture alt-h "$name-$percent"
  $hands key ret  # what a desktop keeps to itself is told in a box
  sleep 3
  picture alt-l "$name-$percent-launch"
  $hands key esc
  picture alt-m "$name-$percent-memory"
  in_session 'pkill -x velmaro' || true
done
