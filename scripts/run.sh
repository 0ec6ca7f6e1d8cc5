#!/usr/bin/env bash
# Starts Hushpane on the given file, or on the demo recording when none is given.
# The window is not part of this build yet, so the command-line mode processes the file
# and reports what it removed.
set -euo pipefail
binary=$1
file=${2:-}
here=$(cd "$(dirname "$0")/.." && pwd)

if [ -z "$file" ]; then
  if [ -x "$here/scripts/make-demo.sh" ]; then
    file=$(bash "$here/scripts/make-demo.sh")
  else
    echo "No file given. Use: make run FILE=/path/to/recording"
    exit 2
  fi
fi
exec "$binary" --cli "$file"
