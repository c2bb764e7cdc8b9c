#!/usr/bin/env bash
# Times `tarvika-cli info` on a project of 1,000,000 cases by 21 numeric variables against
# R's data.table::fread reading the same table as tab-separated text, and prints the ratio
# of the times and the peak memory of the load, once for numbers as this program writes
# them and once as other programs do (trailing zeros kept). Usage: compare-fread.sh [BUILD_DIR]
# Targets: at most 0.25 of fread's time, peak memory under 2 x the file size.
set -euo pipefail
build=$(cd "${1:-build}" && pwd)
cli=$build/tarvika/tarvika-cli
runs=${RUNS:-3}

source "$(dirname "$0")/../bench_common.sh"
ensure_r_data_table
compare_form() {
  synthetic_project "$1"
  size=$(stat -c %s "$msw")

  best=""
  peak=0
  for _ in $(seq "$runs"); do
    start=$(date +%s%N)
    /usr/bin/time -v -o "$program/time.txt" "$cli" --program-dir "$program" info "$msw" >/dev/null
    end=$(date +%s%N)
    t=$(( (end - start) / 1000 ))
    rss=$(awk -F: '/Maximum resident set size/ {gsub(/ /, "", $2); print $2}' "$program/time.txt")
    [ -z "$best" ] || [ "$t" -lt "$best" ] && best=$t
    [ "$rss" -gt "$peak" ] && peak=$rss
  done

  fread_us=$(Rscript -e "
    suppressMessages(library(data.table))
    best <- Inf
    for (i in seq_len($runs)) best <- min(best, system.time(fread('$tsv', sep = '\t'))[['elapsed']])
    cat(round(best * 1e6), getDTthreads(), '\n')")
  read -r fread_best threads <<<"$fread_us"

  awk -v form="${1:-as written here}" -v t="$best" -v f="$fread_best" -v th="$threads" -v rss="$peak" -v size="$size" 'BEGIN {
    ratio = t / f; mem = rss * 1024 / size;
    printf "file: %.1f MB, 1000000 cases x 21 numeric variables, numbers %s\n", size / 1e6, form;
    printf "tarvika-cli info (whole process): %.3f s\n", t / 1e6;
    printf "data.table::fread (%d thread%s, in R): %.3f s\n", th, th == 1 ? "" : "s", f / 1e6;
    printf "time ratio: %.2f (target <= 0.25) %s\n", ratio, ratio <= 0.25 ? "met" : "NOT MET";
    printf "peak memory: %.1f MB = %.2f x file size (target < 2) %s\n", rss / 1024, mem, mem < 2 ? "met" : "NOT MET";
  }'
}

program=$(mktemp -d)
trap 'rm -rf "$program"' EXIT
cp -r "$build/tarvika/stattab" "$program/"  # no command starts without the tables
compare_form ""
compare_form padded
