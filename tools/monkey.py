#!/usr/bin/env python3
"""Plays at random on the windows of one screen: monkey.py SECONDS SEED FOLDER APART... -- PROGRAM...

What it does follows from the seed alone; where that hits depends on how fast the program is. A program that was closed
is started again. It prints what it did, and for each fault what the program wrote last and the last things done."""
import os
import random
import re
import signal
import subprocess
import sys
import time

KEYS = """Tab shift+Tab Return space Escape Delete BackSpace Home End Prior Next Up Down Left Right F1 F2 F3 F5 F10 Menu
shift+F10 alt alt+f alt+o alt+h alt+a alt+e alt+Down alt+space ctrl+c ctrl+v ctrl+x ctrl+a ctrl+z ctrl+f ctrl+k ctrl+r ctrl+s
ctrl+n ctrl+o ctrl+h ctrl+m ctrl+Home ctrl+End shift+Down shift+End ctrl+Insert shift+Insert a e k n o s x y z 1 9
asterisk question bracketleft semicolon odiaeresis""".split()
# Ways into the other windows, which keys by themselves seldom find.
WAYS = ['F10 Right Down k', 'F10 Right Down o', 'F10 Down Down Return', 'ctrl+r', 'alt+h', 'alt+a', 'F1']
# What ends the program comes seldom, or nothing else is seen.
SELDOM = ['alt+F4', 'ctrl+q', 'Delete Return', 'ctrl+k Return']
# What is started can write no files but those of its screen. Other programs are there to be listed, hidden and ended.
GROUND = """
findmnt -rno TARGET,VFS-OPTIONS | while read -r place options; do
  case $place in /tmp* | /proc* | /dev* | /sys*) ;; *) mount -o "remount,bind,$options,ro" "$place" ;; esac
done 2>/dev/null
cd "$HOME"
for name in star-emu pad-mapper music-player; do cp /bin/sleep /tmp/$name 2>/dev/null; /tmp/$name 900 & done
xev -name 'Other program' >/dev/null 2>&1 &
"$@"
exit $?
"""
BROKEN = re.compile(r'AddressSanitizer|LeakSanitizer|runtime error:|Assertion|terminate called|Unhandled')


class Monkey:
    def __init__(self, seed):
        self.choose = random.Random(seed)
        self.done = []
        self.sent = 0

    def spot(self, area):
        x, y, width, height = area
        return ['mousemove', str(x + int(self.choose.random() * width)), str(y + int(self.choose.random() * height))]

    def act(self, area):
        kind = self.choose.random()
        anywhere = self.choose.random() < 0.1
        move = self.spot((0, 0, 1024, 768) if anywhere else area)
        button = self.choose.choices('12345', (52, 20, 16, 6, 6))[0]
        key = self.choose.choice(self.choose.choices((KEYS, WAYS, SELDOM), (90, 9, 1))[0])
        if kind < 0.35:
            return move + ['click', button]
        if kind < 0.42:
            return move + ['click', '--repeat', '2', '--delay', '20', '1']
        if kind < 0.47:
            return move + ['mousedown', '1'] + self.spot(area) + ['mouseup', '1']
        if kind < 0.52:
            return move
        return ['key', '--delay', '5'] + key.split()

    def play(self):
        area = active_area()
        actions = [self.act(area)]
        # Behind a way into another window the next actions belong there.
        while len(actions) < 10 and ' '.join(actions[-1][3:]) not in WAYS:
            actions.append(self.act(area))
        words = [word for action in actions for word in action + ['sleep', '0.01']]
        self.done = (self.done + actions)[-40:]
        self.sent += len(actions)
        try:
            subprocess.run(['xdotool'] + words, stderr=subprocess.DEVNULL, timeout=60)
        except subprocess.TimeoutExpired:
            print('The screen took no events for a minute.', flush=True)


def active_area():
    """Where the active window is; the middle of the screen where there is none."""
    told = subprocess.run(['xdotool', 'getactivewindow', 'getwindowgeometry', '--shell'], capture_output=True, text=True)
    facts = dict(re.findall(r'(\w+)=(-?\d+)', told.stdout))
    if told.returncode or facts.get('WIDTH', '1') == '1':
        return 200, 150, 600, 450
    return tuple(int(facts[name]) for name in ('X', 'Y', 'WIDTH', 'HEIGHT'))


def start(folder, command, log):
    env = dict(os.environ, HOME=folder + '/home', XDG_CONFIG_HOME=folder + '/home', WINEDEBUG='-all',
               ASAN_OPTIONS='exitcode=99:detect_leaks=1', UBSAN_OPTIONS='print_stacktrace=1:exitcode=99',
               LSAN_OPTIONS=f'suppressions={folder}/leaks.txt:print_suppressions=0')
    return subprocess.Popen(command, env=env, stdout=log, stderr=log, stdin=subprocess.DEVNULL)


def main():
    seconds, seed, folder = float(sys.argv[1]), int(sys.argv[2]), sys.argv[3]
    split = sys.argv.index('--')
    command = sys.argv[4:split] + ['bash', '-c', GROUND, 'ground'] + sys.argv[split + 1:]
    monkey = Monkey(seed)
    starts, faults = 0, 0
    began = time.monotonic()
    left = lambda: began + seconds - time.monotonic()
    while left() > 0:
        with open(folder + '/log', 'w+') as log:
            program = start(folder, command, log)
            starts += 1
            time.sleep(2)
            while program.poll() is None and left() > 0:
                monkey.play()
            stopped = program.poll() is None
            if stopped:
                program.kill()
            code = program.wait()
            log.seek(0)
            text = log.read()
        # A program that the monkey had it end itself was not broken.
        ended = code in (0, 128 + signal.SIGKILL, 128 + signal.SIGTERM)
        broken = BROKEN.search(text)
        if broken or not (ended or stopped):
            faults += 1
            told = text[broken.start():][:5000] if broken else text[-2000:]
            print(f'\nFault {faults} after {time.monotonic() - began:.0f} s, exit code {code}:\n{told}')
            print('Last done:', *(' '.join(action) for action in monkey.done), sep='\n  ', flush=True)
    print(f'seed {seed}: {monkey.sent} events in {seconds:.0f} s, {starts - 1} restarts, {faults} faults', flush=True)
    return faults > 0


sys.exit(main())
