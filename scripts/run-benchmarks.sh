#!/usr/bin/env bash
# Runs every micro-benchmark binary built under bench/, then the whole-program comparisons
# and timings.
set -euo pipefail
build=${1:-build}
for b in "$build"/bench/*/bench_*; do
  [ -x "$b" ] || continue
  echo "== $(basename "$b")"
  "$b" --benchmark_counters_tabular=true
done
for s in bench/*/compare-*.sh bench/*/time-*.sh; do
  [ -x "$s" ] || continue
  echo "== $(basename "$s")"
  "$s" "$build"
done
