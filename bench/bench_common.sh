# Shared by the comparison scripts of bench/: source it after setting `build`.

# R with data.table, installed from Debian when missing.
ensure_r_data_table() {
  if ! command -v Rscript >/dev/null || ! Rscript -e 'suppressMessages(library(data.table))' >/dev/null 2>&1; then
    echo "installing R and data.table"
    local sudo=""
    [ "$(id -u)" -eq 0 ] || sudo=sudo
    $sudo apt-get install -y r-base-core r-cran-data.table >/dev/null
  fi
}

# The project of 1,000,000 cases by 21 numeric variables and the same table as TSV, made
# once: sets msw and tsv, and warms the page cache for both readers alike. With "padded",
# the decimals are written as other programs write them, trailing zeros kept.
synthetic_project() {
  local form=${1:-}
  local gen=$build/bench/project_load/gen_project_file
  local data=$build/bench/project_load/data
  mkdir -p "$data"
  msw=$data/synthetic_1m${form:+_$form}.msw
  tsv=$data/synthetic_1m${form:+_$form}.tsv
  [ -s "$msw" ] && [ -s "$tsv" ] || "$gen" "$msw" "$tsv" 1000000 $form
  cat "$msw" "$tsv" >/dev/null
}

# A scratch program folder with the statistical tables (no command starts without them),
# removed when the script ends: sets program.
scratch_program_folder() {
  program=$(mktemp -d)
  trap 'rm -rf "$program"' EXIT
  cp -r "$build/tarvika/stattab" "$program/"
}

# Runs tarvika-cli in the scratch program folder `runs` times with the arguments given,
# the report to $program/report.txt: sets best to the shortest wall time in microseconds.
best_cli_time() {
  best=""
  local start end t
  for _ in $(seq "$runs"); do
    start=$(date +%s%N)
    "$build/tarvika/tarvika-cli" --program-dir "$program" "$@" >"$program/report.txt"
    end=$(date +%s%N)
    t=$(( (end - start) / 1000 ))
    if [ -z "$best" ] || [ "$t" -lt "$best" ]; then best=$t; fi
  done
}
