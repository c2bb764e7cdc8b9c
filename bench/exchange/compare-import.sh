#!/usr/bin/env bash
# Times the import of a table of 1,000,000 cases by 21 numeric variables, as CSV and as an
# SPSS .sav file, against R reading the same files: data.table::fread for the CSV and
# haven::read_sav for the .sav. Both sides are timed in-process (the read alone: no program
# start, no save), best of RUNS; wall time and CPU time (user + system) are printed, as
# the CPU time is what stays comparable on a shared machine. Usage: compare-import.sh [BUILD_DIR]
# Target: at most 2 x the time of R's reader.
set -euo pipefail
build=$(cd "${1:-build}" && pwd)
runs=${RUNS:-3}

source "$(dirname "$0")/../bench_common.sh"
ensure_r_data_table
synthetic_project
data=$(dirname "$tsv")
csv=$data/synthetic_1m.csv
sav=$data/synthetic_1m.sav
[ -s "$csv" ] || tr '\t' ',' <"$tsv" >"$csv"
[ -s "$sav" ] || Rscript -e "suppressMessages(library(data.table)); haven::write_sav(as.data.frame(fread('$csv')), '$sav')"
cat "$csv" "$sav" >/dev/null

# Prints "wall cpu" in seconds: the best of the runs of our import.
ours() {
  local best_wall="" best_cpu=""
  for _ in $(seq "$runs"); do
    /usr/bin/time -f "%U %S" -o "$data/cpu.txt" "$build/bench/exchange/time_import" "$1" 1 >"$data/wall.txt"
    local wall cpu
    wall=$(cut -d' ' -f1 "$data/wall.txt")
    cpu=$(awk '{print $1 + $2}' "$data/cpu.txt")
    best_wall=$(awk -v a="$wall" -v b="$best_wall" 'BEGIN {print (b == "" || a < b) ? a : b}')
    best_cpu=$(awk -v a="$cpu" -v b="$best_cpu" 'BEGIN {print (b == "" || a < b) ? a : b}')
  done
  echo "$best_wall $best_cpu"
}

# Prints "wall cpu" in seconds for the R expression on the file f.
theirs() {
  Rscript -e "
    suppressMessages({library(data.table); library(haven)})
    f <- '$2'; w <- Inf; c <- Inf
    for (i in seq_len($runs)) { t <- system.time($1); w <- min(w, t[['elapsed']]); c <- min(c, t[['user.self']] + t[['sys.self']]) }
    cat(w, c, '\n')"
}

read -r csv_wall csv_cpu <<<"$(ours "$csv")"
read -r fread_wall fread_cpu <<<"$(theirs "fread(f)" "$csv")"
read -r sav_wall sav_cpu <<<"$(ours "$sav")"
read -r haven_wall haven_cpu <<<"$(theirs "read_sav(f)" "$sav")"
threads=$(Rscript -e 'suppressMessages(library(data.table)); cat(getDTthreads())')

awk -v cw="$csv_wall" -v cc="$csv_cpu" -v fw="$fread_wall" -v fc="$fread_cpu" \
    -v sw="$sav_wall" -v sc="$sav_cpu" -v hw="$haven_wall" -v hc="$haven_cpu" -v th="$threads" 'BEGIN {
  printf "1,000,000 cases x 21 numeric variables; wall / CPU seconds, best of runs\n";
  printf "CSV:  tarvika import %.2f / %.2f   data.table::fread (%d thread%s) %.2f / %.2f   ratio %.2f / %.2f (target <= 2) %s\n",
         cw, cc, th, th == 1 ? "" : "s", fw, fc, cw / fw, cc / fc, cw / fw <= 2 ? "met" : "NOT MET";
  printf ".sav: tarvika import %.2f / %.2f   haven::read_sav %.2f / %.2f   ratio %.2f / %.2f (target <= 2) %s\n",
         sw, sc, hw, hc, sw / hw, sc / hc, sw / hw <= 2 ? "met" : "NOT MET";
}'
