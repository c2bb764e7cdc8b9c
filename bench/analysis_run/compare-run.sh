#!/usr/bin/env bash
# Times `tarvika-cli run --command 11` (basic descriptive statistics of 20 variables, the
# whole process: load, validation, the analysis, the report) on the project of 1,000,000
# cases by 21 numeric variables against R reading the same table with data.table::fread and
# computing mean, sd, min and max of the same 20 columns; prints the ratio of the times.
# Target: at most 0.25 of R's time. Usage: compare-run.sh [BUILD_DIR]
set -euo pipefail
build=$(cd "${1:-build}" && pwd)
gen=$build/bench/project_load/gen_project_file
runs=${RUNS:-3}

if [ ! -x "$gen" ]; then
  echo "compare-run: the project generator of bench/project_load is not built; skipped"
  exit 0
fi
source "$(dirname "$0")/../bench_common.sh"
ensure_r_data_table
synthetic_project
scratch_program_folder
vars=item2,item3,item4,item5,item6,score7,score8,score9,score10,score11,score12,score13
vars=$vars,meas14,meas15,meas16,meas17,meas18,meas19,meas20,meas21

best_cli_time run "$msw" --command 11 --vars "$vars" --lang en

r_out=$(Rscript -e "
  suppressMessages(library(data.table))
  cols <- strsplit('$vars', ',')[[1]]
  best <- Inf
  for (i in seq_len($runs)) best <- min(best, system.time({
    d <- fread('$tsv', sep = '\t')
    s <- lapply(cols, function(v) { x <- d[[v]]; c(mean(x, na.rm = TRUE), sd(x, na.rm = TRUE),
                                               min(x, na.rm = TRUE), max(x, na.rm = TRUE)) })
  })[['elapsed']])
  cat(round(best * 1e6), getDTthreads(), sprintf('%.2f', s[[20]][1]), '\n')")
read -r r_best threads r_mean <<<"$r_out"
ours=$(awk -F'\t' '/^ 21\. / {print $4}' "$program/report.txt")

awk -v t="$best" -v f="$r_best" -v th="$threads" -v ours="$ours" -v theirs="$r_mean" 'BEGIN {
  ratio = t / f;
  printf "1000000 cases, basic descriptive statistics of 20 of 21 numeric variables\n";
  printf "tarvika-cli run --command 11 (whole process): %.3f s\n", t / 1e6;
  printf "R: data.table::fread (%d thread%s) + mean, sd, min, max: %.3f s\n", th, th == 1 ? "" : "s", f / 1e6;
  printf "mean of meas21: %s here, %s in R\n", ours, theirs;
  printf "time ratio: %.2f (target <= 0.25) %s\n", ratio, ratio <= 0.25 ? "met" : "NOT MET";
}'
