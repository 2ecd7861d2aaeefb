#!/usr/bin/env bash
# Takes a picture of the desktop program's window for the README:
#   scripts/screenshot.sh <kelvora binary> <output png> [language] [command line...]
# It starts the program on a virtual X display (Xvfb), waits until the window has been drawn,
# captures the screen with ImageMagick, crops it to the window and keeps the PNG small.
# In the command line, DEMO stands for a small sample folder made for the picture ("Holiday
# photos" with a few files), so the files pages can be shown with something on them.
set -euo pipefail

binary=${1:?usage: screenshot.sh <kelvora binary> <output png> [language] [arguments...]}
output=${2:?usage: screenshot.sh <kelvora binary> <output png> [language] [arguments...]}
language=${3:-en_US}
shift $(( $# < 3 ? $# : 3 ))

for tool in Xvfb import convert identify; do
  command -v "$tool" >/dev/null || { echo "screenshot.sh: $tool is missing (run make deps)" >&2; exit 1; }
done

display=:$(( 90 + RANDOM % 100 ))
workdir=$(mktemp -d)
Xvfb "$display" -screen 0 1000x820x24 -nolisten tcp >/dev/null 2>&1 &
xvfb_pid=$!
app_pid=""
cleanup() {
  [ -n "$app_pid" ] && kill "$app_pid" 2>/dev/null || true
  kill "$xvfb_pid" 2>/dev/null || true
  rm -rf "$workdir"
}
trap cleanup EXIT

demo="$workdir/Holiday photos"
mkdir -p "$demo/Day 1" "$demo/Day 2"
for name in "Day 1/beach.jpg" "Day 1/harbour.jpg" "Day 2/market.jpg" "notes.txt"; do
  head -c $(( 40000 + RANDOM )) /dev/urandom > "$demo/$name"
done
arguments=()
for argument in "$@"; do
  arguments+=("${argument//DEMO/$demo}")
done

# Wait for the display to take clients.
for _ in $(seq 50); do
  xdpyinfo -display "$display" >/dev/null 2>&1 && break
  [ -e "/tmp/.X11-unix/X${display#:}" ] && break
  sleep 0.1
done

DISPLAY=$display LANG=$language.UTF-8 LC_ALL=$language.UTF-8 QT_QPA_PLATFORM=xcb \
  "$binary" ${arguments[@]+"${arguments[@]}"} >/dev/null 2>&1 &
app_pid=$!
sleep 3

DISPLAY=$display import -window root "$workdir/screen.png"
# Crop to the window (the desk is black), then paint the desk behind the rounded corners
# a calm grey by flooding it from the four corners, and keep the palette small.
desk='#2f3640'
convert "$workdir/screen.png" -trim +repage -bordercolor black -border 24 "$workdir/framed.png"
size=$(identify -format '%w %h' "$workdir/framed.png")
width=${size% *}
height=${size#* }
convert "$workdir/framed.png" -fill "$desk" -fuzz 1% \
  -floodfill +0+0 black -floodfill +$((width - 1))+0 black \
  -floodfill +0+$((height - 1)) black -floodfill +$((width - 1))+$((height - 1)) black \
  "$workdir/framed.png"
convert "$workdir/framed.png" -strip +dither -colors 256 PNG8:"$output"
echo "screenshot.sh: wrote $output"
