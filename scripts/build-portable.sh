#!/usr/bin/env bash
# Builds a kelvora-cli that runs on any x86-64 Linux without installing anything: linked
# statically, with zlib, the C and C++ libraries and every compressor the core uses inside.
# Packs it with the README into kelvora-cli-VERSION-linux-ARCH.tar.gz.
# usage: build-portable.sh [BUILD_DIR [OUT_DIR]]   (JOBS sets the parallel jobs, default 2)
set -euo pipefail
source=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$source/build-portable}
out=${2:-$source}

launcher=()
command -v ccache > /dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
# Static archives only: a library found as a shared object cannot go into a static program.
# -O2 as in the tested build (GCC 12 warns falsely about some string code at -O3).
cmake -S "$source" -B "$build" -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS_RELEASE="-O2 -DNDEBUG" \
  -DKELVORA_BUILD_GUI=OFF -DKELVORA_BUILD_TESTS=OFF -DKELVORA_BUILD_DOCS=OFF \
  -DKELVORA_BUILD_BENCH=OFF -DCMAKE_FIND_LIBRARY_SUFFIXES=.a -DZLIB_USE_STATIC_LIBS=ON \
  -DCMAKE_EXE_LINKER_FLAGS=-static "${launcher[@]}" > /dev/null
cmake --build "$build" -j "${JOBS:-2}" --target kelvora-cli > /dev/null

program=$build/src/cli/kelvora-cli
strip "$program"
version=$("$program" --version | head -n 1 | cut -d' ' -f2)
name=kelvora-cli-$version-linux-$(uname -m)
rm -rf "${build:?}/$name"
mkdir "$build/$name"
cp "$program" "$source/README.md" "$build/$name/"
mkdir -p "$out"
tar -C "$build" --owner=0 --group=0 --numeric-owner --sort=name -czf "$out/$name.tar.gz" "$name"
echo "$out/$name.tar.gz"
