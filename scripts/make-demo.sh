#!/usr/bin/env bash
# Makes the demo recordings into resources/demo/: a short spoken talk with pauses of
# different lengths between its sentences, as sound only (demo-talk.m4a) and as a video
# that shows the waveform (demo-talk.mp4). Does nothing when both exist. Prints the path
# of the sound-only demo, and nothing else, on standard output.
set -euo pipefail

here=$(cd "$(dirname "$0")/.." && pwd)
demo="$here/resources/demo"
audio="$demo/demo-talk.m4a"
video="$demo/demo-talk.mp4"

if [ -s "$audio" ] && [ -s "$video" ]; then
  echo "$audio"
  exit 0
fi

for tool in espeak-ng ffmpeg; do
  if ! command -v "$tool" >/dev/null; then
    echo "make-demo.sh: $tool is missing; run scripts/install-deps.sh" >&2
    exit 1
  fi
done

mkdir -p "$demo"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Each sentence, then the pause after it in seconds: some long enough to be cut, one too
# short to count as a pause (under 0.6 s).
sentences=(
  "Welcome to this short talk about removing pauses from recordings." 1.5
  "When we speak, we stop to think, to breathe, or to find the next word." 2.2
  "Listeners rarely miss those gaps." 0.4
  "A program can find them by measuring how loud each moment is." 1.2
  "Whatever stays quiet for long enough is a pause, and can go." 3.0
  "What remains is the same talk, only shorter." 1.0
  "Thank you for listening." 0.8
)

list="$work/parts.txt"
: >"$list"
for ((i = 0; i < ${#sentences[@]}; i += 2)); do
  text=${sentences[i]}
  pause=${sentences[i + 1]}
  espeak-ng -v en -s 150 -w "$work/speech-$i.wav" "$text"
  # The same format for every part, so the concat demuxer can join them as they are.
  ffmpeg -v error -nostdin -y -i "$work/speech-$i.wav" -ar 44100 -ac 1 -c:a pcm_s16le \
    "$work/part-$i-a.wav"
  ffmpeg -v error -nostdin -y -f lavfi -i "anullsrc=r=44100:cl=mono" -t "$pause" \
    -c:a pcm_s16le "$work/part-$i-b.wav"
  printf "file '%s'\nfile '%s'\n" "$work/part-$i-a.wav" "$work/part-$i-b.wav" >>"$list"
done
ffmpeg -v error -nostdin -y -f concat -safe 0 -i "$list" -c:a pcm_s16le "$work/talk.wav"

# A temporary name in the same folder, then a rename: a half-made demo is never used.
ffmpeg -v error -nostdin -y -i "$work/talk.wav" -c:a aac -b:a 96k \
  -metadata title="Hushpane demo talk" -metadata artist="Hushpane" "$work/talk.m4a"
mv "$work/talk.m4a" "$audio.part" && mv "$audio.part" "$audio"

ffmpeg -v error -nostdin -y -i "$work/talk.wav" -filter_complex \
  "[0:a]showwaves=s=640x360:mode=cline:rate=25:colors=0xf1faee,format=yuv420p[v]" \
  -map "[v]" -map 0:a -c:v libx264 -preset veryfast -crf 23 -g 50 -c:a aac -b:a 96k \
  -metadata title="Hushpane demo talk" -metadata artist="Hushpane" "$work/talk.mp4"
mv "$work/talk.mp4" "$video.part" && mv "$video.part" "$video"

echo "$audio"
