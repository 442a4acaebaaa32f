#!/bin/bash
# Records tests/demos/screens_tour.tvd again: every screen driven by real X input
# (keys, held keys, typed text, clicks and the wheel) on a fresh scratch folder.
# Re-record it only when a rule or a screen changes on purpose, then check the
# replay by eye (--replay with --max-frames and --screenshot) and set the frame
# count it prints in tests/app/demo_test.cpp before committing.
#
#   tools/demos/record-screens-tour.sh [build folder, default build]
#
# Needs xvfb and xdotool (apt-get install xvfb xdotool); runs on display :91.
set -eu
top=$(cd "$(dirname "$0")/../.." && pwd)
bin="$top/${1:-build}/talven"
out="$top/tests/demos/screens_tour.tvd"
export DISPLAY=:91
pgrep -f "Xvfb :91" >/dev/null || { Xvfb :91 -screen 0 1920x1080x24 -noreset >/dev/null 2>&1 & sleep 2; }
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
XDG_DATA_HOME="$scratch" "$bin" --record "$out" &
P=$!
sleep 2
W=$(xdotool search --name TALVEN | head -1)
xdotool windowfocus --sync "$W"
eval "$(xdotool getwindowgeometry --shell "$W")"
k() { xdotool key --window "$W" "$@"; sleep 0.25; }
hold() { xdotool keydown "$1"; sleep "$2"; xdotool keyup "$1"; sleep 0.2; }
at() { xdotool mousemove $((X + 2 * $1)) $((Y + 2 * $2)); sleep 0.1; }  # view pixel in the 1280 x 720 window
# title: LOAD WORLD with nothing to load, held keys ignored
k Down; k Return; hold Down 0.7; k Up; k Up
at 320 190; xdotool click 1; sleep 0.2; at 320 224; xdotool click 1; sleep 0.2
k s; k w
k Return                                     # form
xdotool type --delay 60 'Tour é'; sleep 0.3
k Return
k BackSpace; k BackSpace
xdotool type --delay 40 'ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789'; sleep 0.3
k w; k s
at 230 290; xdotool click 1; sleep 0.2
k Tab; k Return; k Left; k Left; k Left; k Right; hold Right 0.6
k BackSpace; k Up; k BackSpace; k BackSpace; k Down
k Escape                                     # back to title
k space                                      # form again: seed starts over
k Down; k Down; k Down; k Return             # BACK
k Return                                     # NEW WORLD
xdotool type --delay 60 'Tour'; sleep 0.2
k Tab; k Right; k Right; k Down; k Return    # CREATE WORLD
sleep 1
# play: wheel, digits, walking, mining, placing
at 320 180
xdotool click 5; sleep 0.2; xdotool click 5; sleep 0.2; xdotool click 4; sleep 0.2
xdotool click 6; sleep 0.2; xdotool click 7; sleep 0.2
k 3; k 9; k 0; hold 2 0.5; k 1
hold d 1.2; k space; sleep 0.6; hold a 0.5
at 340 220; xdotool mousedown 1; sleep 1.5; xdotool mouseup 1; sleep 0.2
k 3; at 360 170; xdotool click 3; sleep 0.3; xdotool click 2; sleep 0.3
# inventory: slots by click, craft cursor, craft
k e
at 60 90; xdotool click 1; sleep 0.2
at 150 130; xdotool click 1; sleep 0.2
at 250 200; xdotool click 1; sleep 0.2
at 500 100; xdotool click 1; sleep 0.2
at 20 20; xdotool click 1; sleep 0.2
xdotool click 5; sleep 0.2; k Down; hold s 0.6; k Up; k w; k c; k Return
hold e 0.6
k e; k Escape
# pause: back to play, again, save and title, load, quit
k Escape; at 320 160; xdotool click 1; sleep 0.2; k space; k Down; k Escape
k Escape; hold Down 0.6; k Up; k Up; k s; k w; k Down; k Return     # SAVE AND TITLE
k Down; k Return                             # LOAD WORLD
sleep 0.5
k Escape; k Down; k Down; k Return           # QUIT GAME
wait "$P"
XDG_DATA_HOME="$scratch" "$bin" --replay "$out" --verify
