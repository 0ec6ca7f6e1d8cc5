#!/usr/bin/env bash
# Starts Hushpane on the given file, or on the demo recording when none is given: in its
# window where there is a display, otherwise in the command-line mode, which removes the
# pauses and reports what it did.
set -euo pipefail
binary=$1
file=${2:-}
here=$(cd "$(dirname "$0")/.." && pwd)

if [ -z "$file" ]; then
  file=$(bash "$here/scripts/make-demo.sh")
  window_file="${file%.m4a}.mp4" # the window shows the demo's picture too
else
  window_file=$file
fi
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  exec "$binary" --open "$window_file"
fi
echo "No display found; processing the file in the terminal instead."
exec "$binary" --cli "$file"
