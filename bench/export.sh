#!/usr/bin/env bash
# Times our export against the ffmpeg command-line tool doing the same cuts, in one run,
# alternating the two (ours, ffmpeg, ours, ffmpeg, ...), and prints the medians, the ratio
# ffmpeg time / our time (1.0 or more: we are at least as fast) and our peak memory. The
# processor time (user + system, children included) is printed too: on a machine shared
# with other work it varies less than the wall-clock time.
#
#   bash bench/export.sh <hushpane_bench_export> [audio] [accurate] [fast] [smart] [sync]
#
# Each recording is analysed once; both tools get the same keep list, so only the export
# is timed. ffmpeg does what a careful user would type:
#   audio     one input per keep (-ss/-t), concat filter, AAC at our bitrate
#   accurate  one input per keep (-ss/-t), concat filter, libx264 at our CRF and preset, AAC
#   fast      one stream-copy run per span (-ss/-t, -c copy), then the concat demuxer
#   smart     our fast mode on the 5-minute 720p talk (2 s keyframe interval) against both
#             the stream copy and the frame-accurate re-encode, alternating all three;
#             then what our file holds: its length against the planned keeps, in frames,
#             and what `ffmpeg -v error -i OUT -f null -` prints
#   sync      our fast mode on a flash-and-beep recording: the offset between each flash and
#             its beep in the output, one per join
# The frame-accurate case runs on the 5-minute slice: an hour of 720p takes too long on
# two cores to repeat. ROUNDS (default 3) sets the number of alternations. The machine's
# load average is printed beside each round: the figures mean little on a busy machine.
set -euo pipefail

driver=$(realpath "$1")
shift
cases=("$@")
[ ${#cases[@]} -gt 0 ] || cases=(audio accurate fast smart sync)
here=$(cd "$(dirname "$0")/.." && pwd)
fixtures="$here/build/bench-fixtures"
rounds=${ROUNDS:-3}
# Our encoder settings (src/engine/export/H264Encoder.h, AacEncoder.cpp).
x264_preset=fast
x264_crf=18
aac_stereo=128k

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
bash "$here/bench/make-fixtures.sh" "$fixtures"

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

load() {
  cut -d' ' -f1-3 /proc/loadavg
}

# Seconds, user+system seconds and peak kilobytes of one command, appended to $1.
timed() {
  local record=$1
  shift
  /usr/bin/time -f "%e %U %S %M" -o "$work/time.txt" "$@" >/dev/null
  awk '{ printf "%s %.2f %s\n", $1, $2 + $3, $4 }' "$work/time.txt" >>"$record"
}

# The same for one of the ffmpeg functions above (no memory figure).
time_function() {
  local record=$1
  shift
  local TIMEFORMAT="%R %U %S"
  { time "$@" >/dev/null; } 2>"$work/time.txt"
  awk '{ printf "%s %.2f 0\n", $1, $2 + $3 }' "$work/time.txt" >>"$record"
}

column_median() {
  awk -v c="$2" '{ print $c }' "$1" | median
}

# The planned keeps against the video of our file, and ffmpeg's decoding of it.
check_cut() {
  local keeps=$1 output=$2
  local planned video rate
  planned=$(awk '{ s += $2 - $1 } END { printf "%.4f", s }' "$keeps")
  video=$(ffprobe -v error -select_streams v:0 -show_entries stream=duration -of csv=p=0 "$output")
  rate=$(ffprobe -v error -select_streams v:0 -show_entries stream=avg_frame_rate -of csv=p=0 \
    "$output")
  printf "   planned keeps %.3f s, our video %.3f s: %+.2f frames\n" "$planned" "$video" \
    "$(awk -v v="$video" -v p="$planned" -v r="$rate" 'BEGIN { split(r, f, "/"); print (v - p) * f[1] / f[2] }')"
  ffmpeg -v error -nostdin -i "$output" -f null - >"$work/decode.txt" 2>&1 || true
  printf "   ffmpeg -v error -i OUT -f null - printed %d lines\n" "$(wc -l <"$work/decode.txt")"
  head -3 "$work/decode.txt" | sed 's/^/     /'
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

# Our fast mode against the stream copy and the re-encode, all three alternating.
run_smart() {
  local input=$1
  local keeps="$work/smart-keeps.txt"
  echo "== smart: $(basename "$input") (load $(load))"
  "$driver" analyse "$input" "$keeps"
  rm -f "$work"/smart-*.times
  for ((round = 1; round <= rounds; round++)); do
    timed "$work/smart-ours.times" "$driver" export "$input" "$keeps" "$work/ours.mp4" fast
    time_function "$work/smart-copy.times" ffmpeg_fast "$input" "$keeps" "$work/copy.mp4"
    time_function "$work/smart-reencode.times" ffmpeg_accurate "$input" "$keeps" "$work/reencode.mp4"
    echo "   round $round (load $(load)): ours $(tail -1 "$work/smart-ours.times" | cut -d' ' -f1) s," \
      "copy $(tail -1 "$work/smart-copy.times" | cut -d' ' -f1) s," \
      "re-encode $(tail -1 "$work/smart-reencode.times" | cut -d' ' -f1) s"
  done
  local ours copy reencode
  ours=$(column_median "$work/smart-ours.times" 1)
  copy=$(column_median "$work/smart-copy.times" 1)
  reencode=$(column_median "$work/smart-reencode.times" 1)
  printf "   median wall: ours %.2f s, ffmpeg copy %.2f s, ffmpeg re-encode %.2f s\n" "$ours" "$copy" "$reencode"
  printf "   ratio copy / ours %.2f, re-encode / ours %.2f (load %s)\n" \
    "$(awk -v a="$copy" -v b="$ours" 'BEGIN { print a / b }')" \
    "$(awk -v a="$reencode" -v b="$ours" 'BEGIN { print a / b }')" "$(load)"
  printf "   median cpu: ours %.2f s, copy %.2f s, re-encode %.2f s; our peak memory %d MB\n" \
    "$(column_median "$work/smart-ours.times" 2)" "$(column_median "$work/smart-copy.times" 2)" \
    "$(column_median "$work/smart-reencode.times" 2)" \
    "$(($(column_median "$work/smart-ours.times" 3) / 1024))"
  echo "   ours:"
  check_cut "$keeps" "$work/ours.mp4"
  packet_hashes "$input" >"$work/source.hashes"
  packet_hashes "$work/ours.mp4" >"$work/ours.hashes"
  printf "   pictures copied bit for bit: %d of %d\n" \
    "$(comm -12 "$work/source.hashes" "$work/ours.hashes" | wc -l)" "$(wc -l <"$work/ours.hashes")"
  echo "   ffmpeg copy:"
  check_cut "$keeps" "$work/copy.mp4"
}

# The MD5 of every video packet, sorted.
packet_hashes() {
  ffmpeg -v error -nostdin -i "$1" -map 0:v:0 -c copy -f framemd5 - | grep -v '^#' |
    awk -F, '{ print $6 }' | sort
}

# Times of the rising edges of a per-frame (or per-window) measure above a threshold.
rising_edges() {
  awk -F, -v limit="$1" '
    $2 != "" { loud = ($2 != "-inf" && $2 + 0 > limit); if (loud && !was) print $1; was = loud }'
}

run_sync() {
  local input=$1
  local keeps="$work/sync-keeps.txt" output="$work/sync.mp4"
  echo "== sync: $(basename "$input") (load $(load))"
  "$driver" analyse "$input" "$keeps"
  "$driver" export "$input" "$keeps" "$output" fast
  ffprobe -v error -f lavfi -i "movie=$output,signalstats" -show_entries \
    frame=pts_time:frame_tags=lavfi.signalstats.YAVG -of csv=p=0 | rising_edges 128 >"$work/flashes.txt"
  ffprobe -v error -f lavfi -i "amovie=$output,asetnsamples=n=240,astats=metadata=1:reset=1" \
    -show_entries frame=pts_time:frame_tags=lavfi.astats.Overall.Peak_level -of csv=p=0 |
    rising_edges -20 >"$work/beeps.txt"
  local rate
  rate=$(ffprobe -v error -select_streams v:0 -show_entries stream=avg_frame_rate -of csv=p=0 "$output")
  paste -d' ' "$work/flashes.txt" "$work/beeps.txt" | awk -v r="$rate" -v joins="$(wc -l <"$keeps")" '
    BEGIN { split(r, f, "/"); frame = f[2] / f[1] }
    NF == 2 { n++; d = $1 - $2; if (d < 0) d = -d; if (d > worst) worst = d; sum += d }
    END {
      printf "   %d keeps, %d flash/beep pairs in the output; A/V offset mean %.1f ms, worst %.1f ms (one frame %.1f ms)\n",
        joins, n, 1000 * sum / n, 1000 * worst, 1000 * frame
    }'
  if [ "$(wc -l <"$work/flashes.txt")" != "$(wc -l <"$work/beeps.txt")" ]; then
    echo "   flashes $(wc -l <"$work/flashes.txt") and beeps $(wc -l <"$work/beeps.txt") differ in number"
  fi
  check_cut "$keeps" "$output"
}

for mode in "${cases[@]}"; do
  case $mode in
  audio) run_case audio "$fixtures/talk-60min.m4a" m4a ;;
  accurate) run_case accurate "$fixtures/talk-5min.mp4" mp4 ;;
  fast) run_case fast "$fixtures/talk-60min.mp4" mp4 ;;
  smart) run_smart "$fixtures/talk-5min.mp4" ;;
  sync) run_sync "$fixtures/sync-2min.mp4" ;;
  *) echo "unknown case: $mode" >&2; exit 2 ;;
  esac
done
