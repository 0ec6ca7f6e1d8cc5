#!/usr/bin/env bash
# Installs the Debian packages Hushpane needs to build, test and run.
# Idempotent: does nothing when every package is already present.
set -euo pipefail

packages=(
  # toolchain
  g++ cmake ninja-build pkg-config make
  # media libraries
  libavformat-dev libavcodec-dev libavutil-dev libswresample-dev libswscale-dev
  # Qt 6: core, widgets, D-Bus, translations, multimedia
  qt6-base-dev qt6-base-dev-tools qt6-l10n-tools qt6-tools-dev qt6-tools-dev-tools
  qt6-multimedia-dev qt6-svg-dev libgl-dev
  gstreamer1.0-plugins-good gstreamer1.0-plugins-base gstreamer1.0-libav
  # completion sound
  libcanberra-dev sound-theme-freedesktop
  # tests: unit framework, fixture makers, virtual display
  googletest libgtest-dev libgmock-dev ffmpeg espeak-ng xvfb xauth
  # tests: a private session bus for the notification test
  dbus-daemon
  # tests: an independent XML reader for the recent-files list
  libxml2-utils
  # tests: the validators of the installed .desktop entry and AppStream metadata
  desktop-file-utils appstream
  # make package: the shared-library dependencies of the Debian package
  dpkg-dev
  # German buttons in Qt's own dialogs (and the test that checks them)
  qt6-translations-l10n
  # benchmarks: wall time and peak memory of a process (/usr/bin/time)
  time
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q '^install ok installed$'; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

echo "Installing: ${missing[*]}"
SUDO=""
[ "$(id -u)" -eq 0 ] || SUDO="sudo"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
