#!/usr/bin/env bash
# Times the timeline strip on a 3-minute and a 3-hour analysis (synthetic levels at 0.05 s,
# a pause every few seconds), 600 px wide on the offscreen platform: the median time of a
# full paint, of the repaint a playhead step asks for and of a full paint with a pause
# outlined under the pointer; of the precomputation after a width change and of taking in
# new data; and the ratio 3 h / 3 min of each (close to 1: painting does not grow with the
# recording).
# Usage: bench/timeline.sh [paints]   (default 2000 per recording)
set -euo pipefail
cd "$(dirname "$0")/.."

paints=${1:-2000}
build=build/bench

cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DHUSHPANE_TESTS=OFF \
  -DHUSHPANE_BENCH=ON >/dev/null
cmake --build "$build" --target hushpane_bench_timeline -j "$(nproc)" >/dev/null

echo "load: $(uptime | sed 's/.*load average: //')"
QT_QPA_PLATFORM=offscreen "$build/bench/hushpane_bench_timeline" "$paints"
