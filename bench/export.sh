#!/usr/bin/env bash
# Times our export against the ffmpeg command-line tool doing the same cuts, in one run,
# alternating the two (ours, ffmpeg, ours, ffmpeg, ...), and prints the medians, the ratio
# ffmpeg time / our time (1.0 or more: we are at least as fast) and our peak memory. The
# processor time (user + system, children included) is printed too: on a machine shared
# with other work it varies less than the wall-clock time.
#
#   bash bench/export.sh <hushpane_bench_export> [audio] [accurate] [fast]
#
# Each recording is analysed once; both tools get the same keep list, so only the export
# is timed. ffmpeg does what a careful user would type:
#   audio     one input per keep (-ss/-t), concat filter, AAC at our bitrate
#   accurate  one input per keep (-ss/-t), concat filter, libx264 at our CRF and preset, AAC
#   fast      one stream-copy run per span (-ss/-t, -c copy), then the concat demuxer
# The frame-accurate case runs on the 5-minute slice: an hour of 720p takes too long on
# two cores to repeat. ROUNDS (default 3) sets the number of alternations.
set -euo pipefail

driver=$(realpath "$1")
shift
cases=("$@")
[ ${#cases[@]} -gt 0 ] || cases=(audio accurate fast)
here=$(cd "$(dirname "$0")/.." && pwd)
fixtures="$here/build/bench-fixtures"
rounds=${ROUNDS:-3}
# Our encoder settings (src/engine/export/H264Encoder.h, AacEncoder.cpp).
x264_preset=fast
x264_crf=18
aac_stereo=128k

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

median() {
  sort -g | awk '{ v[NR] = $1 } END { if (NR % 2) print v[(NR + 1) / 2]; else print (v[NR / 2] + v[NR / 2 + 1]) / 2 }'
}

now() {
  date +%s.%N
}

# ffmpeg input options for every keep: -ss start -t length -i input.
keep_inputs() {
  local input=$1 keeps=$2
  awk -v input="$input" '{ printf "-ss\n%.6f\n-t\n%.6f\n-i\n%s\n", $1, $2 - $1, input }' "$keeps"
}

concat_filter() {
  local keeps=$1 video=$2
  awk -v video="$video" '
    { printf (video ? "[%d:v][%d:a]" : "[%d:a]"), NR - 1, NR - 1 }
    END { printf (video ? "concat=n=%d:v=1:a=1[v][a]\n" : "concat=n=%d:v=0:a=1[a]\n"), NR }' "$keeps"
}

ffmpeg_audio() {
  local input=$1 keeps=$2 output=$3
  mapfile -t inputs < <(keep_inputs "$input" "$keeps")
  concat_filter "$keeps" 0 >"$work/filter.txt"
  ffmpeg -v error -nostdin -y "${inputs[@]}" -filter_complex_script "$work/filter.txt" \
    -map "[a]" -c:a aac -b:a "$aac_stereo" -movflags +faststart "$output"
}

ffmpeg_accurate() {
  local input=$1 keeps=$2 output=$3
  mapfile -t inputs < <(keep_inputs "$input" "$keeps")
  concat_filter "$keeps" 1 >"$work/filter.txt"
  ffmpeg -v error -nostdin -y "${inputs[@]}" -filter_complex_script "$work/filter.txt" \
    -map "[v]" -map "[a]" -c:v libx264 -preset "$x264_preset" -crf "$x264_crf" -pix_fmt yuv420p \
    -c:a aac -b:a "$aac_stereo" -movflags +faststart "$output"
}

ffmpeg_fast() {
  local input=$1 keeps=$2 output=$3
  local parts="$work/parts" n=0
  rm -rf "$parts" && mkdir -p "$parts"
  : >"$parts/list.txt"
  while read -r start end; do
    local part
    part=$(printf "%s/%05d.mp4" "$parts" "$n")
    ffmpeg -v error -nostdin -y -ss "$start" -t "$(awk -v s="$start" -v e="$end" 'BEGIN { printf "%.6f", e - s }')" \
      -i "$input" -map 0:v:0 -map 0:a:0 -c copy -avoid_negative_ts make_zero "$part"
    printf "file '%s'\n" "$part" >>"$parts/list.txt"
    n=$((n + 1))
  done <"$keeps"
  ffmpeg -v error -nostdin -y -f concat -safe 0 -i "$parts/list.txt" -c copy -movflags +faststart \
    "$output"
}

duration() {
  ffprobe -v error -show_entries format=duration -of csv=p=0 "$1"
}

run_case() {
  local mode=$1 input=$2 extension=$3
  local keeps="$work/$mode-keeps.txt"
  echo "== $mode: $(basename "$input")"
  "$driver" analyse "$input" "$keeps"
  local ours=() our_cpu=() theirs=() their_cpu=() memory=()
  for ((round = 1; round <= rounds; round++)); do
    /usr/bin/time -f "%e %U %S %M" -o "$work/time.txt" \
      "$driver" export "$input" "$keeps" "$work/ours.$extension" "$mode"
    read -r seconds user system kilobytes <"$work/time.txt"
    ours+=("$seconds")
    our_cpu+=("$(awk -v u="$user" -v s="$system" 'BEGIN { print u + s }')")
    memory+=("$kilobytes")
    local TIMEFORMAT="%R %U %S"
    { time "ffmpeg_$mode" "$input" "$keeps" "$work/theirs.$extension"; } 2>"$work/time.txt"
    read -r seconds user system <"$work/time.txt"
    theirs+=("$seconds")
    their_cpu+=("$(awk -v u="$user" -v s="$system" 'BEGIN { print u + s }')")
    echo "   round $round: ours ${ours[-1]} s (cpu ${our_cpu[-1]} s), ffmpeg ${theirs[-1]} s (cpu ${their_cpu[-1]} s)"
  done
  local our_median their_median our_cpu_median their_cpu_median peak
  our_median=$(printf "%s\n" "${ours[@]}" | median)
  their_median=$(printf "%s\n" "${theirs[@]}" | median)
  our_cpu_median=$(printf "%s\n" "${our_cpu[@]}" | median)
  their_cpu_median=$(printf "%s\n" "${their_cpu[@]}" | median)
  peak=$(printf "%s\n" "${memory[@]}" | sort -g | tail -1)
  printf "   median wall: ours %.2f s, ffmpeg %.2f s, ratio %.2f\n" "$our_median" "$their_median" \
    "$(awk -v a="$their_median" -v b="$our_median" 'BEGIN { print a / b }')"
  printf "   median cpu:  ours %.2f s, ffmpeg %.2f s, ratio %.2f\n" "$our_cpu_median" \
    "$their_cpu_median" "$(awk -v a="$their_cpu_median" -v b="$our_cpu_median" 'BEGIN { print a / b }')"
  printf "   our peak memory %d MB; output length: ours %.2f s, ffmpeg %.2f s\n" "$((peak / 1024))" \
    "$(duration "$work/ours.$extension")" "$(duration "$work/theirs.$extension")"
}

for mode in "${cases[@]}"; do
  case $mode in
  audio) run_case audio "$fixtures/talk-60min.m4a" m4a ;;
  accurate) run_case accurate "$fixtures/talk-5min.mp4" mp4 ;;
  fast) run_case fast "$fixtures/talk-60min.mp4" mp4 ;;
  *) echo "unknown case: $mode" >&2; exit 2 ;;
  esac
done
