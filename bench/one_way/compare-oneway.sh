#!/usr/bin/env bash
# Times `tarvika-cli run --command 21` (the one-way comparison of one interval dependent
# across 5 groups, the whole process: load, the group table, the tests of variances and
# means) on a project of 1,000,000 cases against R reading the same table with
# data.table::fread and computing oneway.test (Welch) and the ANOVA of aov; prints the ratio
# of the times and the F and W of both. Usage: compare-oneway.sh [BUILD_DIR]
set -euo pipefail
build=$(cd "${1:-build}" && pwd)
runs=${RUNS:-3}
source "$(dirname "$0")/../bench_common.sh"
ensure_r_data_table

# The project: y normal with a mean and SD by group, g the group code 1..5 with labels.
data=$build/bench/one_way/data
mkdir -p "$data"
msw=$data/oneway_1m.msw
tsv=$data/oneway_1m.tsv
if [ ! -s "$msw" ] || [ ! -s "$tsv" ]; then
  Rscript -e "
    suppressMessages(library(data.table))
    set.seed(21)
    n <- 1000000
    g <- sample(1:5, n, replace = TRUE, prob = c(0.1, 0.15, 0.2, 0.25, 0.3))
    y <- round(rnorm(n, mean = c(50, 50.2, 50.1, 49.9, 50.3)[g], sd = c(8, 10, 9, 12, 10)[g]), 2)
    d <- data.table(y = y, g = g)
    head <- c('<Tarvika_for_windows>=2.0;', '<variables>=2;', paste0('<cases>=', format(n, scientific = FALSE), ';'),
              '#=1;', '<name>=y;', '<longname>=Outcome;', '\$num=0_0;', '<assign>=none;', '<labels>=;',
              '<help>=;', '<missing>=;',
              '#=2;', '<name>=g;', '<longname>=Group;', '\$num=0_0;', '<assign>=codes;', '<labels>=;',
              paste0(1:5, '=group', 1:5, ';'), '<help>=;', '<missing>=;', '<datamatrix>=;')
    con <- file('$msw', 'wb'); writeBin(charToRaw(paste0(paste(head, collapse = '\r\n'), '\r\n')), con); close(con)
    fwrite(d, '$msw', sep = '\t', eol = '\r\n', col.names = FALSE, append = TRUE)
    fwrite(d, '$tsv', sep = '\t')"
fi
cat "$msw" "$tsv" >/dev/null
scratch_program_folder

best_cli_time run "$msw" --command 21 --vars y --group g --lang en

r_out=$(Rscript -e "
  suppressMessages(library(data.table))
  best <- Inf
  for (i in seq_len($runs)) best <- min(best, system.time({
    d <- fread('$tsv', sep = '\t')
    f <- factor(d\$g)
    w <- oneway.test(d\$y ~ f, var.equal = FALSE)
    a <- summary(aov(d\$y ~ f))[[1]]
  })[['elapsed']])
  cat(round(best * 1e6), getDTthreads(), sprintf('%.3f', a[1, 'F value']), sprintf('%.3f', w\$statistic), '\n')")
read -r r_best threads r_f r_w <<<"$r_out"
ours_f=$(sed -n 's/^    - ANOVA: F([^)]*) = \([0-9.]*\).*/\1/p' "$program/report.txt")
ours_w=$(sed -n 's/^    - Robust Welch ANOVA: W([^)]*) = \([0-9.]*\).*/\1/p' "$program/report.txt")

awk -v t="$best" -v f="$r_best" -v th="$threads" -v of="$ours_f" -v rf="$r_f" -v ow="$ours_w" -v rw="$r_w" 'BEGIN {
  printf "1000000 cases, one interval dependent across 5 groups\n";
  printf "tarvika-cli run --command 21 (whole process): %.3f s\n", t / 1e6;
  printf "R: data.table::fread (%d thread%s) + oneway.test + aov: %.3f s\n", th, th == 1 ? "" : "s", f / 1e6;
  printf "ANOVA F: %s here, %s in R; Welch W: %s here, %s in R\n", of, rf, ow, rw;
  printf "time ratio: %.2f\n", t / f;
}'
