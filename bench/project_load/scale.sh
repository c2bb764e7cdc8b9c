#!/usr/bin/env bash
# Loads a project of CASES cases by VARIABLES numeric variables (1,000,000 by 1000 unless
# told) with `tarvika-cli info` and prints the time and the peak memory, in bytes per cell.
# Not part of `make bench`: the file of 1,000,000 by 1000 takes about 5 GB of disk, made
# once under BUILD_DIR/bench/project_load/data, and the load about 8 GB of memory.
# Usage: scale.sh [BUILD_DIR] [VARIABLES] [CASES]
set -euo pipefail
build=$(cd "${1:-build}" && pwd)
variables=${2:-1000}
cases=${3:-1000000}

source "$(dirname "$0")/../bench_common.sh"
data=$build/bench/project_load/data
mkdir -p "$data"
msw=$data/scale_${cases}x${variables}.msw
if [ ! -s "$msw" ]; then
  echo "writing $msw"
  "$build/bench/project_load/gen_project_file" "$msw" - "$cases" plain "$variables"
fi
scratch_program_folder

start=$(date +%s%N)
/usr/bin/time -v -o "$program/time.txt" "$build/tarvika/tarvika-cli" --program-dir "$program" info "$msw" >/dev/null
end=$(date +%s%N)
rss=$(awk -F: '/Maximum resident set size/ {gsub(/ /, "", $2); print $2}' "$program/time.txt")
awk -v t="$(( (end - start) / 1000 ))" -v rss="$rss" -v n="$variables" -v m="$cases" -v size="$(stat -c %s "$msw")" 'BEGIN {
  cells = n * m;
  printf "file: %.1f MB, %d cases x %d numeric variables\n", size / 1e6, m, n;
  printf "tarvika-cli info (whole process): %.2f s\n", t / 1e6;
  printf "peak memory: %.0f MB = %.2f bytes per cell (target <= 10) %s\n", rss / 1024, rss * 1024 / cells,
         rss * 1024 / cells <= 10 ? "met" : "NOT MET";
}'
