#!/usr/bin/env bash
# Times `tarvika-cli run --command 31` (bivariate correlation with every measure: the two
# lines, r, the percentage bend r, Kendall's tau-b and tau; the whole process with load and
# report) on two measures of the project of 1,000,000 cases, against R reading the same
# table with data.table::fread and computing cor (Pearson) and cor.test(method =
# "kendall"). R's Kendall test counts all pairs, so it runs on a subsample of 20,000 pairs
# and its time is extrapolated to 1,000,000 by the square of the ratio of sizes (2500):
# the R time printed for Kendall is such an estimate, not a measurement.
# Usage: compare-correlation.sh [BUILD_DIR]
set -euo pipefail
build=$(cd "${1:-build}" && pwd)
gen=$build/bench/project_load/gen_project_file
runs=${RUNS:-3}

if [ ! -x "$gen" ]; then
  echo "compare-correlation: the project generator of bench/project_load is not built; skipped"
  exit 0
fi
source "$(dirname "$0")/../bench_common.sh"
ensure_r_data_table
synthetic_project
scratch_program_folder

best_cli_time run "$msw" --command 31 --vars meas14 --y meas15 --lang en

r_out=$(Rscript -e "
  suppressMessages(library(data.table))
  best_p <- Inf; best_k <- Inf
  for (i in seq_len($runs)) {
    best_p <- min(best_p, system.time({
      d <- fread('$tsv', sep = '\t', select = c('meas14', 'meas15'))
      ok <- complete.cases(d); x <- d\$meas14[ok]; y <- d\$meas15[ok]
      r <- cor(x, y)
    })[['elapsed']])
    best_k <- min(best_k, system.time(
      k <- cor.test(x[1:20000], y[1:20000], method = 'kendall', exact = FALSE, continuity = FALSE)
    )[['elapsed']])
  }
  cat(round(best_p * 1e6), round(best_k * 2500 * 1e6), sprintf('%.3f', r), '\n')")
read -r r_pearson r_kendall r_value <<<"$r_out"
ours=$(awk '/^  r = / {print $3; exit}' "$program/report.txt")

awk -v t="$best" -v p="$r_pearson" -v k="$r_kendall" -v ours="$ours" -v theirs="$r_value" 'BEGIN {
  printf "1000000 cases, bivariate correlation with every measure\n";
  printf "tarvika-cli (load, all measures, report): %.3f s\n", t / 1e6;
  printf "R fread + cor (Pearson):                  %.3f s\n", p / 1e6;
  printf "R cor.test kendall, 20000 pairs x 2500:   %.0f s (extrapolated)\n", k / 1e6;
  printf "ratio to R (Pearson + extrapolated Kendall): %.5f\n", t / (p + k);
  printf "r: %s here, %s in R\n", ours, theirs;
}'
