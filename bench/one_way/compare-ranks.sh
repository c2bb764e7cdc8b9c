#!/usr/bin/env bash
# Times `tarvika-cli run --command 21` with the dependent declared ordinal (the rank
# comparison of one dependent across 5 groups, the whole process: load, mid-ranks, the rank
# group table with the relative effects, the tests of rank variances, Kruskal-Wallis, the
# rank Welch test, Kulle's tests, each group against the rest) on the 1,000,000 cases of
# compare-oneway.sh (which makes them when they are missing) against R reading the same table
# with data.table::fread and computing kruskal.test; prints the ratio of the times and both
# H. Usage: compare-ranks.sh [BUILD_DIR]
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$(cd "${1:-build}" && pwd)
cli=$build/tarvika/tarvika-cli
runs=${RUNS:-3}
source "$here/../bench_common.sh"
ensure_r_data_table

data=$build/bench/one_way/data
msw=$data/oneway_1m.msw
tsv=$data/oneway_1m.tsv
if [ ! -s "$msw" ] || [ ! -s "$tsv" ]; then
  RUNS=1 "$here/compare-oneway.sh" "$build" >/dev/null
fi
cat "$msw" "$tsv" >/dev/null
program=$(mktemp -d)
trap 'rm -rf "$program"' EXIT
cp -r "$build/tarvika/stattab" "$program/"  # no command starts without the tables

best=""
for _ in $(seq "$runs"); do
  start=$(date +%s%N)
  "$cli" --program-dir "$program" run "$msw" --command 21 --vars y --group g --set scaleType:y=ordinal \
    --lang en >"$program/report.txt"
  end=$(date +%s%N)
  t=$(( (end - start) / 1000 ))
  [ -z "$best" ] || [ "$t" -lt "$best" ] && best=$t
done

r_out=$(Rscript -e "
  suppressMessages(library(data.table))
  best <- Inf
  for (i in seq_len($runs)) best <- min(best, system.time({
    d <- fread('$tsv', sep = '\t')
    k <- kruskal.test(d\$y, factor(d\$g))
  })[['elapsed']])
  cat(round(best * 1e6), getDTthreads(), sprintf('%.3f', k\$statistic), '\n')")
read -r r_best threads r_h <<<"$r_out"
ours_h=$(sed -n 's/^    - Kruskal-Wallis test: H([^)]*) = \([0-9.]*\).*/\1/p' "$program/report.txt")

awk -v t="$best" -v f="$r_best" -v th="$threads" -v oh="$ours_h" -v rh="$r_h" 'BEGIN {
  printf "1000000 cases, one ordinal dependent across 5 groups\n";
  printf "tarvika-cli run --command 21 (whole process): %.3f s\n", t / 1e6;
  printf "R: data.table::fread (%d thread%s) + kruskal.test: %.3f s\n", th, th == 1 ? "" : "s", f / 1e6;
  printf "Kruskal-Wallis H: %s here, %s in R\n", oh, rh;
  printf "time ratio: %.2f\n", t / f;
}'
