#!/usr/bin/env bash
# Makes the benchmark recordings: a 60-minute talk (espeak-ng sentences joined by pauses of
# 0.3 to 2.5 s in a fixed pattern, looped) as AAC in .m4a, and as 720p H.264 + AAC in .mp4.
# Usage: bench/make-fixtures.sh [folder]   (default build/bench-fixtures)
# Idempotent: files already there are kept.
set -euo pipefail

out=${1:-build/bench-fixtures}
minutes=60
mkdir -p "$out"
m4a="$out/talk-60min.m4a"
mp4="$out/talk-60min-720p.mp4"
if [[ -s "$m4a" && -s "$mp4" ]]; then
  exit 0
fi

work=$(mktemp -d "$out/.work.XXXXXX")
trap 'rm -rf "$work"' EXIT
ff=(ffmpeg -hide_banner -loglevel error -nostdin -y)

sentences=(
  "Good morning everyone and thank you for coming to this talk"
  "Today I want to show you how we record and edit our weekly podcast"
  "The first thing to know is that most of the work happens before recording"
  "We write a short outline and agree on the questions in advance"
  "Then we test the microphones and listen to a few seconds of each track"
  "During the recording we try not to interrupt each other"
  "Pauses are natural and they give the listener time to think"
  "But long silences make a recording feel slow and unfinished"
  "That is why we cut them out before we publish an episode"
  "Cutting by hand takes about as long as the recording itself"
  "A tool that finds the pauses for us saves a lot of that time"
  "Let me now show you the numbers from our last twenty episodes"
)
# Pause after each sentence, in seconds: a fixed pseudo-random pattern.
pauses=(0.3 1.7 0.8 2.5 0.45 1.1 2.0 0.6 1.4 0.35 2.2 0.9)

inputs=()
graph=""
for i in "${!sentences[@]}"; do
  espeak-ng -v en -s 150 -w "$work/s$i.wav" "${sentences[$i]}"
  inputs+=(-i "$work/s$i.wav")
  graph+="aevalsrc=0:s=22050:d=${pauses[$i]}[p$i];"
done
for i in "${!sentences[@]}"; do
  graph+="[$i][p$i]"
done
graph+="concat=n=$(( ${#sentences[@]} * 2 )):v=0:a=1"
"${ff[@]}" "${inputs[@]}" -filter_complex "$graph" "$work/cycle.wav"

seconds=$(( minutes * 60 ))
# The talk, looped to length, as a stereo recording would come from a recorder or camera.
talk=(-stream_loop -1 -i "$work/cycle.wav" -t "$seconds" -ac 2)
if [[ ! -s "$m4a" ]]; then
  "${ff[@]}" "${talk[@]}" -ar 44100 -c:a aac -b:a 128k "$work/talk.m4a"
  mv "$work/talk.m4a" "$m4a"
fi
if [[ ! -s "$mp4" ]]; then
  # One minute of picture, encoded once and looped by stream copy: its 250-frame GOPs
  # divide the minute evenly, so the copies join cleanly.
  "${ff[@]}" -f lavfi -i testsrc2=s=1280x720:r=25:d=60 -c:v libx264 -preset veryfast -crf 28 \
    -g 250 -pix_fmt yuv420p "$work/picture.mp4"
  "${ff[@]}" "${talk[@]}" -ar 48000 -c:a aac -b:a 128k "$work/sound.m4a"
  "${ff[@]}" -stream_loop -1 -i "$work/picture.mp4" -i "$work/sound.m4a" -map 0:v -map 1:a \
    -c copy -t "$seconds" -movflags +faststart "$work/talk.mp4"
  mv "$work/talk.mp4" "$mp4"
fi
