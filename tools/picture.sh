#!/usr/bin/env bash
# Waits until the main window of a running program has been painted, and saves a picture of it:
# picture.sh PROCESS FILE. Gives up where the program ends before.
program=$1
picture=$2
title="Zeld's Velmaro Process"
while kill -0 "$program" 2>/dev/null; do
  if xwininfo -name "$title" 2>/dev/null | grep -q IsViewable; then
    # A window that two looks in a row find the same has been painted.
    seen=$(import -window "$title" rgb:- | cksum)
    [ "$seen" = "$(import -window "$title" rgb:- | cksum)" ] && import -window "$title" "$picture" || continue
    echo "There is no display: the window was opened on a virtual one. Its picture is $picture"
    break
  fi
  sleep 0.1
done
