#!/usr/bin/env bash
# Installs the Debian packages Kelvora builds, tests and benchmarks with.
# Safe to run again: only missing packages are fetched.
set -euo pipefail

packages=(
  build-essential cmake pkg-config clang-format
  qt6-base-dev qt6-base-dev-tools libgl-dev
  zlib1g-dev libgtest-dev libgmock-dev libbenchmark-dev
  libmcrypt-dev gnupg
  xvfb xauth imagemagick fonts-dejavu-core
  scdoc man-db bash-completion desktop-file-utils appstream shared-mime-info libxml2-utils
  dpkg-dev lintian file
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo=""
[ "$(id -u)" -eq 0 ] || sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
