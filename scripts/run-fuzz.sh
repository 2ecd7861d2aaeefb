#!/usr/bin/env bash
# Runs every fuzz target for a while: scripts/run-fuzz.sh BUILD_DIR SECONDS [TARGET...]
# Seeds are written fresh by the project's own writers; a target's corpus grows in
# BUILD_DIR/fuzz-corpus/<target>, and an input that leads to a finding is saved in
# BUILD_DIR/fuzz-findings/ (make it a regression row in the tests).
set -euo pipefail
build=$1
seconds=$2
shift 2
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(fuzz_base64 fuzz_text fuzz_index fuzz_container fuzz_records)

seeds="$build/fuzz-seeds"
rm -rf "$seeds"
"$build/fuzz/kelvora_fuzz_seeds" "$seeds"
mkdir -p "$build/fuzz-findings"
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
for target in "${targets[@]}"; do
  corpus="$build/fuzz-corpus/$target"
  mkdir -p "$corpus"
  echo "== $target for ${seconds}s"
  log="$build/fuzz-findings/$target.log"
  if ! "$build/fuzz/$target" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=2048 \
      -max_len=65536 -print_final_stats=1 -artifact_prefix="$build/fuzz-findings/$target-" \
      "$corpus" "$seeds/$target" >"$log" 2>&1; then
    tail -40 "$log"
    echo "$target found a fault; the input is in $build/fuzz-findings"
    exit 1
  fi
  grep -E '^stat::number_of_executed_units' "$log" || true
done
