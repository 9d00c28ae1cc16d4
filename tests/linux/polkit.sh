#!/usr/bin/env bash
# What the real polkit makes of the policy: polkit.sh BUILD SOURCE. In namespaces of its own it has a bus, a polkitd and an
# installation; an ordinary user asks for the right through pkexec. Ends with 77 where that can't be had.
set -u
build=$1 source=$2
skip() { echo "skipped: $1"; exit 77; }
fail() { echo "FAILED: $1"; exit 1; }
wait_for() { for _ in $(seq 200); do "$@" >/dev/null 2>&1 && return; sleep 0.05; done; fail "waited for: $*"; }

if [ -z "${VELMARO_INSIDE:-}" ]; then
  [ "$(id -u)" = 0 ] || skip 'only an administrator can make the namespaces'
  for tool in pkexec dbus-daemon dbus-send unshare setpriv; do command -v $tool >/dev/null || skip "there is no $tool"; done
  folder=$(mktemp -d) && chmod 755 "$folder" && trap 'rm -rf "$folder"' EXIT
  unshare --mount --pid --fork --kill-child true 2>/dev/null || skip 'there are no namespaces'
  # Children of the first process of all are orphans for pkexec, so this is not the first one there.
  VELMARO_INSIDE=$folder unshare --mount --pid --fork --kill-child --mount-proc bash -c '"$0" "$@"; exit $?' "$0" "$@"
  exit
fi

folder=$VELMARO_INSIDE
renice -n 0 -p $$ >/dev/null  # the caller's may be another
for place in /run /etc/polkit-1/rules.d /usr/share/polkit-1/rules.d /usr/share/polkit-1/actions; do
  mount -t tmpfs -o mode=755 none $place || skip "nothing can be mounted on $place"
done
cmake --install "$build" --prefix "$folder/usr" >/dev/null || fail 'the installation'
cp "$folder/usr/share/polkit-1/actions/"*.policy /usr/share/polkit-1/actions/
mkdir -p /run/dbus
dbus-daemon --system --fork || skip 'there is no bus'
polkitd=/usr/lib/polkit-1/polkitd
[ -x $polkitd ] || polkitd=/usr/libexec/polkitd
$polkitd --no-debug >/dev/null 2>&1 &
wait_for dbus-send --system --print-reply --dest=org.freedesktop.DBus / org.freedesktop.DBus.GetNameOwner \
  string:org.freedesktop.PolicyKit1

user=(setpriv --reuid 65534 --regid 65534 --clear-groups env SHELL=/bin/sh HOME=/)
helper=$folder/usr/libexec/velmaro/velmaro-set-class
"${user[@]}" sleep 300 &
target=$!
wait_for cmp -s /proc/$target/exe "$(command -v sleep)"
start=$(cut -d' ' -f22 /proc/$target/stat)
"${user[@]}" sleep 300 &
other=$!
wait_for cmp -s /proc/$other/exe "$(command -v sleep)"
others="$other $(cut -d' ' -f22 /proc/$other/stat)"
nice_of() { ps -o ni= -p "${1:-$target}" | tr -d ' '; }
ask() { "${user[@]}" pkexec --disable-internal-agent "$helper" "$@" 2>&1; }

ask 128 $target "$start" && fail 'nobody was asked for a password'
[ "$(nice_of)" = 0 ] || fail 'a class was set without the right to it'
cat >/etc/polkit-1/rules.d/50-test.rules <<'RULE'
polkit.addRule(function(action, subject) {
  if (action.id == "example.velmaro.set-class" && subject.user == "nobody") return polkit.Result.YES;
});
RULE
wait_for ask 128 $target "$start"
[ "$(nice_of)" = -10 ] || fail "High gave a nice value of $(nice_of)"
for words in "1 $target $start" "64 $target $((start + 1)) $others" "64 $target" "64 $target $start x" "64 x $start" \
  "64x $target $start" "64 2147483647 1" "64 -1 $start" "64 $target $start $other"; do
  ask $words && fail "it took $words"
done
[ "$(nice_of) $(nice_of $other)" = '-10 0' ] || fail 'what it refuses was done'
ask 128 $target "$start" $target 1 $others
[ "$(nice_of $other)" = -10 ] || fail 'what belongs to a process did not follow it'
ask 256 $target "$start"
[ "$(ps -o cls= -p $target | tr -d ' ')" = RR ] || fail 'Real Time was not set'
"${user[@]}" pkexec --disable-internal-agent "$(command -v sleep)" 0 2>/dev/null && fail 'another program was run'

# The same from the window: refused, set without a question, and read back.
cp "$build/velmaro_linux_desktop" "$folder/usr/bin/"
python3 "$source/packaging/linux/record_prefix.py" "$folder/usr/bin/velmaro_linux_desktop" "$folder/usr"
"${user[@]}" VELMARO_POLKIT=1 "$folder/usr/bin/velmaro_linux_desktop" \
  --gtest_filter='*ARefusedClassIsSetWithARightThatWasGiven' || fail 'the window'
echo 'polkit gives the right, for this and nothing else'
