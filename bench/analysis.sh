#!/usr/bin/env bash
# Times our analysis against ffmpeg doing the same work (decode, 16 kHz, silence detection at
# -35 dB / 0.6 s) on a 60-minute talk (.m4a, 720p .mp4 and .mp3), as whole processes,
# alternating A B A B after a warm-up.
# Prints the median wall time of each, the ratio ffmpeg / ours (>= 1.0: we are at least as
# fast) and our peak resident memory.
# Usage: bench/analysis.sh [pairs]   (default 5)
set -euo pipefail
cd "$(dirname "$0")/.."

pairs=${1:-5}
build=build/bench
fixtures=build/bench-fixtures

cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DHUSHPANE_TESTS=OFF \
  -DHUSHPANE_BENCH=ON >/dev/null
cmake --build "$build" --target hushpane_bench_analyze -j "$(nproc)" >/dev/null
bash bench/make-fixtures.sh "$fixtures"

ours=("$build/bench/hushpane_bench_analyze")
log=$(mktemp -d)
trap 'rm -rf "$log"' EXIT

# Runs a command under /usr/bin/time; appends "seconds kilobytes" to $1.
timed() {
  local record=$1 output=$2
  shift 2
  /usr/bin/time -f "%e %M" -o "$log/time" "$@" >"$output" 2>&1
  cat "$log/time" >>"$record"
}

median() {
  sort -n | awk '{ v[NR] = $1 } END { if (NR % 2) print v[(NR + 1) / 2]; else print (v[NR / 2] + v[NR / 2 + 1]) / 2 }'
}

printf '%-24s %10s %10s %8s %10s %8s\n' file "ours (s)" "ffmpeg (s)" ratio "peak MB" pauses
for file in "$fixtures/talk-60min.m4a" "$fixtures/talk-60min.mp4" "$fixtures/talk-60min.mp3"; do
  reference=(ffmpeg -hide_banner -nostdin -i "$file" -vn
    -af aresample=16000,silencedetect=n=-35dB:d=0.6 -f null -)
  : >"$log/ours"
  : >"$log/ffmpeg"
  # Warm-up: the file into the page cache, the programs into memory.
  timed /dev/null "$log/ours.out" "${ours[@]}" "$file"
  timed /dev/null "$log/ffmpeg.out" "${reference[@]}"
  for ((i = 0; i < pairs; i++)); do
    timed "$log/ours" "$log/ours.out" "${ours[@]}" "$file"
    timed "$log/ffmpeg" "$log/ffmpeg.out" "${reference[@]}"
  done
  ourTime=$(cut -d' ' -f1 "$log/ours" | median)
  ffmpegTime=$(cut -d' ' -f1 "$log/ffmpeg" | median)
  peakKb=$(cut -d' ' -f2 "$log/ours" | sort -n | tail -1)
  ourPauses=$(sed -n 's/^pauses: //p' "$log/ours.out")
  ffmpegPauses=$(grep -c 'silence_start' "$log/ffmpeg.out" || true)
  printf '%-24s %10.2f %10.2f %8.2f %10.1f %8s\n' "$(basename "$file")" "$ourTime" "$ffmpegTime" \
    "$(awk -v a="$ffmpegTime" -v b="$ourTime" 'BEGIN { print a / b }')" \
    "$(awk -v k="$peakKb" 'BEGIN { print k / 1024 }')" "$ourPauses/$ffmpegPauses"
done
echo "pauses: ours / ffmpeg silencedetect; ratio = ffmpeg time / our time; $pairs pairs after a warm-up"
