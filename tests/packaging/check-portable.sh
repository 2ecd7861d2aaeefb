#!/usr/bin/env bash
# Builds the portable kelvora-cli as "make portable" does and checks that it needs no
# libraries at all and that its texts and containers open with the normal build, and the
# reverse.
# usage: check-portable.sh SOURCE_DIR KELVORA_CLI SCRATCH
source "$(dirname "$0")/check-lib.sh"
source=$1 normal=$2 scratch=$3

rm -rf "$scratch/data" "$scratch"/*.tar.gz
archive=$("$source/scripts/build-portable.sh" "$scratch/build" "$scratch")
name=$(basename "$archive" .tar.gz)
contents=$(tar -tzf "$archive" | LC_ALL=C sort)
[ "$contents" = "$(printf '%s/\n%s/README.md\n%s/kelvora-cli' "$name" "$name" "$name")" ] ||
  fail "the archive holds: $contents"
mkdir -p "$scratch/data"
tar -C "$scratch/data" -xzf "$archive"
portable=$scratch/data/$name/kelvora-cli

# No dynamic section: the loader has no library to look for.
readelf -d "$portable" | grep -q 'There is no dynamic section' || fail "it has a dynamic section"

# A folder with a name holding a blank, an empty file, and a file one byte over a chunk.
tree=$scratch/data/tree
mkdir -p "$tree/sub folder"
head -c 2097153 /dev/urandom > "$tree/sub folder/big.bin"
: > "$tree/empty"
echo "Meet me at noon." > "$tree/note.txt"
export KELVORA_PASSPHRASE="portable round trip"

# round_trip MAKER READER: what MAKER encrypts, READER restores unchanged.
round_trip() {
  local maker=$1 reader=$2 out=$scratch/data/out-$3
  "$maker" encrypt -q -o "$out.vexo" "$tree" || { fail "$3: encrypt failed"; return; }
  "$reader" decrypt -q -C "$out" "$out.vexo" > /dev/null || { fail "$3: decrypt failed"; return; }
  diff -r "$tree" "$out/tree" || fail "$3: the restored tree differs"
  local text
  text=$("$maker" encrypt-text < "$tree/note.txt" | "$reader" decrypt-text --no-banner)
  [ "$text" = "Meet me at noon." ] || fail "$3: the text came back as '$text'"
}
round_trip "$portable" "$normal" portable-to-normal
round_trip "$normal" "$portable" normal-to-portable
exit $status
