#!/usr/bin/env bash
# Makes the benchmark recordings (once; later runs reuse them) into the folder given, by
# default build/bench-fixtures/:
#   talk-60min.m4a   a 60-minute spoken talk with pauses, stereo 48 kHz AAC
#   talk-60min.mp4   the same talk as 720p30 H.264 (2 s GOP, B-frames) + AAC
#   talk-5min.mp4    its first 5 minutes, for the slow frame-accurate comparison
#   talk-60min.mp3   the talk as MP3, whose decoder can start anywhere (split reading)
#   sync-2min.mp4    720p30 H.264 (2 s GOP, B-frames) + AAC: black with a white flash and
#                    a 1 kHz beep together for 0.2 s every 3.3 s from 1.0 s, silent between,
#                    so every kept span holds one flash and beep a little after its start
#                    (counted in frames and samples: times in seconds would round apart)
# A 5-minute talk is made from espeak-ng sentences and pauses of 0.3 to 3 s, then repeated
# by stream copy, so the hour costs one 5-minute encode.
set -euo pipefail

here=$(cd "$(dirname "$0")/.." && pwd)
out=${1:-$here/build/bench-fixtures}
mkdir -p "$out"
if [ ! -s "$out/sync-2min.mp4" ]; then
  ffmpeg -v error -nostdin -y \
    -f lavfi -i "color=c=black:s=1280x720:r=30:d=120,drawbox=x=0:y=0:w=iw:h=ih:color=white:t=fill:enable='lt(mod(n+69,99),6)'" \
    -f lavfi -i "aevalsrc='if(lt(mod(n+110400,158400),9600),0.8*sin(2*PI*1000*t),0)':s=48000:d=120" \
    -c:v libx264 -preset veryfast -crf 23 -g 60 -pix_fmt yuv420p -c:a aac -b:a 128k \
    -movflags +faststart "$out/sync-2min.tmp.mp4"
  mv "$out/sync-2min.tmp.mp4" "$out/sync-2min.mp4"
fi
if [ -s "$out/talk-60min.m4a" ] && [ -s "$out/talk-60min.mp4" ] && [ -s "$out/talk-5min.mp4" ] &&
  [ -s "$out/talk-60min.mp3" ]; then
  exit 0
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

sentences=(
  "Good morning, and thank you all for coming to this session."
  "Today I want to talk about how we record and edit spoken audio."
  "Most recordings contain long silences where the speaker is thinking."
  "Those pauses make a lecture feel slower than it really is."
  "Editing them out by hand takes hours for every hour of material."
  "So let us look at how a program can find them instead."
  "First, we measure the loudness of the signal in short windows."
  "Then we mark every window that is quieter than a threshold."
  "A run of quiet windows that lasts long enough counts as a pause."
  "We keep a little padding on each side, so the speech does not sound clipped."
  "Finally, the kept parts are joined into a new file."
  "Let me show you an example with a real recording."
)
pauses=(0.4 1.8 0.9 2.6 0.3 1.2 3.0 0.7 1.5 2.2 0.5 1.0 2.8 0.6 1.9)

for i in "${!sentences[@]}"; do
  espeak-ng -v en -s 150 -w "$work/s$i.wav" "${sentences[i]}"
  ffmpeg -v error -nostdin -y -i "$work/s$i.wav" -ar 48000 -ac 2 -c:a pcm_s16le "$work/s$i-48k.wav"
done
for i in "${!pauses[@]}"; do
  ffmpeg -v error -nostdin -y -f lavfi -i "anullsrc=r=48000:cl=stereo" -t "${pauses[i]}" \
    -c:a pcm_s16le "$work/p$i.wav"
done

# Sentences and pauses in a fixed, irregular order until 5 minutes are filled.
list="$work/list.txt"
: >"$list"
total=0
n=0
while awk -v t="$total" 'BEGIN { exit !(t < 300) }'; do
  s=$(( (n * 7) % ${#sentences[@]} ))
  p=$(( (n * 5) % ${#pauses[@]} ))
  printf "file '%s'\nfile '%s'\n" "$work/s$s-48k.wav" "$work/p$p.wav" >>"$list"
  length=$(ffprobe -v error -show_entries format=duration -of csv=p=0 "$work/s$s-48k.wav")
  total=$(awk -v t="$total" -v l="$length" -v p="${pauses[p]}" 'BEGIN { print t + l + p }')
  n=$((n + 1))
done
ffmpeg -v error -nostdin -y -f concat -safe 0 -i "$list" -t 300 -c:a pcm_s16le "$work/talk5.wav"

# The picture: a still slide with a small moving waveform, like a screen recording.
ffmpeg -v error -nostdin -y -i "$work/talk5.wav" -filter_complex \
  "color=c=0x1d3557:s=1280x720:r=30:d=300[bg];[0:a]showwaves=s=1280x200:mode=line:rate=30:colors=0xf1faee[w];[bg][w]overlay=0:520,format=yuv420p[v]" \
  -map "[v]" -map 0:a -c:v libx264 -preset veryfast -crf 23 -g 60 -c:a aac -b:a 128k \
  -movflags +faststart "$work/talk-5min.mp4"
ffmpeg -v error -nostdin -y -i "$work/talk5.wav" -c:a aac -b:a 128k "$work/talk-5min.m4a"
ffmpeg -v error -nostdin -y -i "$work/talk5.wav" -c:a libmp3lame -b:a 128k "$work/talk-5min.mp3"

ffmpeg -v error -nostdin -y -stream_loop 11 -i "$work/talk-5min.mp4" -c copy -movflags +faststart \
  "$work/talk-60min.mp4"
ffmpeg -v error -nostdin -y -stream_loop 11 -i "$work/talk-5min.m4a" -c copy -movflags +faststart \
  "$work/talk-60min.m4a"

ffmpeg -v error -nostdin -y -stream_loop 11 -i "$work/talk-5min.mp3" -c copy "$work/talk-60min.mp3"

for name in talk-5min.mp4 talk-60min.mp4 talk-60min.m4a talk-60min.mp3; do
  mv "$work/$name" "$out/$name"
done
