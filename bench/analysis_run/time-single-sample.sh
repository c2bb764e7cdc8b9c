#!/usr/bin/env bash
# Times the single-sample commands whose second pass reads each variable again (12 with and
# without trimming, 13, 14, 15) on the project of 1,000,000 cases by 21 numeric variables,
# 20 variables, the whole process (load, the analysis, the report): best of RUNS (3).
# Usage: time-single-sample.sh [BUILD_DIR]
set -euo pipefail
build=$(cd "${1:-build}" && pwd)
runs=${RUNS:-3}

if [ ! -x "$build/bench/project_load/gen_project_file" ]; then
  echo "time-single-sample: the project generator of bench/project_load is not built; skipped"
  exit 0
fi
source "$(dirname "$0")/../bench_common.sh"
synthetic_project
scratch_program_folder
vars=item2,item3,item4,item5,item6,score7,score8,score9,score10,score11,score12,score13
vars=$vars,meas14,meas15,meas16,meas17,meas18,meas19,meas20,meas21

for args in "--command 12" "--command 12 --set trimmingPercent=10" "--command 13" "--command 14" "--command 15"; do
  # shellcheck disable=SC2086
  best_cli_time run "$msw" $args --vars "$vars" --lang en
  awk -v t="$best" -v a="$args" 'BEGIN { printf "tarvika-cli run %s, 20 variables, 1000000 cases: %.3f s\n", a, t / 1e6 }'
done
