#!/usr/bin/env bash
# Times `tarvika-cli run --command 54` (Ward's clustering of distinct patterns, the whole
# process: load, standardization, the distance matrix, every fusion with its row, the
# statistics of 2 clusters) on 10,000 distinct patterns of 5 variables against R reading
# the same table with data.table::fread, standardizing, and clustering with
# fastcluster::hclust(method = "ward.D") on the mean squared differences, then cutree.
# Prints the times, their ratio and the EESS% of 2 clusters of both.
# Usage: compare-cluster.sh [BUILD_DIR]; CASES=50000 ONLY_OURS=1 for the large run (R's
# dist() alone would need 10 GB there).
set -euo pipefail
build=$(cd "${1:-build}" && pwd)
runs=${RUNS:-3}
cases=${CASES:-10000}
source "$(dirname "$0")/../bench_common.sh"
ensure_r_data_table
Rscript -e 'suppressMessages(library(fastcluster))' >/dev/null 2>&1 || {
  sudo=""; [ "$(id -u)" -eq 0 ] || sudo=sudo; $sudo apt-get install -y r-cran-fastcluster >/dev/null; }

data=$build/bench/cluster/data
mkdir -p "$data"
msw=$data/patterns_$cases.msw
tsv=$data/patterns_$cases.tsv
if [ ! -s "$msw" ] || [ ! -s "$tsv" ]; then
  Rscript -e "
    suppressMessages(library(data.table))
    set.seed(54)
    n <- $cases
    centre <- sample(1:6, n, replace = TRUE)
    d <- as.data.table(lapply(1:5, function(v) round(rnorm(n, mean = centre * (v %% 3 + 1), sd = 2), 3)))
    setnames(d, paste0('X', 1:5))
    head <- c('<Tarvika_for_windows>=2.0;', '<variables>=5;', paste0('<cases>=', format(n, scientific = FALSE), ';'))
    for (v in 1:5) head <- c(head, paste0('#=', v, ';'), paste0('<name>=X', v, ';'), '<longname>=;', '\$num=0_0;',
                                  '<assign>=none;', '<labels>=;', '<help>=;', '<missing>=;')
    head <- c(head, '<datamatrix>=;')
    con <- file('$msw', 'wb'); writeBin(charToRaw(paste0(paste(head, collapse = '\r\n'), '\r\n')), con); close(con)
    fwrite(d, '$msw', sep = '\t', eol = '\r\n', col.names = FALSE, append = TRUE)
    fwrite(d, '$tsv', sep = '\t')"
fi
cat "$msw" "$tsv" >/dev/null
scratch_program_folder

best_cli_time run "$msw" --command 54 --vars X1,X2,X3,X4,X5 --set reportFrom=2 --set reportTo=2 --lang en
# One more run for the peak memory and the processor time (the machine may be shared).
/usr/bin/time -o "$program/usage" -f '%M %U %S' "$build/tarvika/tarvika-cli" --program-dir "$program" run "$msw" \
  --command 54 --vars X1,X2,X3,X4,X5 --set reportFrom=2 --set reportTo=2 --lang en >/dev/null 2>&1
read -r peak user sys <"$program/usage"
cpu=$(awk -v u="$user" -v s="$sys" 'BEGIN { print u + s }')

if [ -n "${ONLY_OURS:-}" ]; then
  awk -v t="$best" -v n="$cases" -v kb="$peak" -v cpu="$cpu" 'BEGIN {
    printf "%d distinct patterns of 5 variables, Ward: %.1f s (processor %.1f s), peak memory %.0f MB\n", n, t / 1e6, cpu,
           kb / 1024 }'
  exit 0
fi
r_cpu=$( { /usr/bin/time -f '%U %S %M' Rscript -e "
  suppressMessages({library(data.table); library(fastcluster)})
  d <- fread('$tsv', sep = '\t'); z <- scale(as.matrix(d))
  h <- fastcluster::hclust(dist(z)^2 / ncol(z), method = 'ward.D'); cl <- cutree(h, 2)" >/dev/null; } 2>&1 | tail -1)
read -r r_user r_sys r_peak <<<"$r_cpu"
r_out=$(Rscript -e "
  suppressMessages({library(data.table); library(fastcluster)})
  best <- Inf
  for (i in seq_len($runs)) best <- min(best, system.time({
    d <- fread('$tsv', sep = '\t')
    z <- scale(as.matrix(d))
    h <- fastcluster::hclust(dist(z)^2 / ncol(z), method = 'ward.D')
    cl <- cutree(h, 2)
  })[['elapsed']])
  within <- sum(sapply(split(as.data.frame(z), cl), function(g) sum(scale(g, scale = FALSE)^2)))
  cat(round(best * 1e6), sprintf('%.2f', 100 * (1 - within / sum(scale(z, scale = FALSE)^2))), '\n')")
read -r r_best r_eess <<<"$r_out"
ours_eess=$(sed -n 's/^Explained ESS% = \([0-9.]*\).*/\1/p' "$program/report.txt" | tail -1)

awk -v t="$best" -v f="$r_best" -v oe="$ours_eess" -v re="$r_eess" -v n="$cases" -v kb="$peak" -v cpu="$cpu" \
    -v rcpu="$(awk -v u="$r_user" -v s="$r_sys" 'BEGIN { print u + s }')" -v rkb="$r_peak" 'BEGIN {
  printf "%d distinct patterns of 5 variables, Ward\n", n;
  printf "tarvika-cli run --command 54 (whole process): %.3f s, processor %.2f s, peak memory %.0f MB\n", t / 1e6, cpu,
         kb / 1024;
  printf "R: data.table::fread + scale + dist + fastcluster::hclust(ward.D) + cutree: %.3f s, processor %.2f s (whole Rscript), peak memory %.0f MB\n",
         f / 1e6, rcpu, rkb / 1024;
  printf "EESS%% of 2 clusters: %s here, %s in R\n", oe, re;
  printf "time ratio: %.2f\n", t / f;
}'
