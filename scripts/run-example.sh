#!/usr/bin/env bash
# `make run`: basic descriptive statistics of the bundled student survey, one block for
# non-smokers and one for smokers, report on standard output.
set -euo pipefail
program=${1:-build/tarvika}
"$program/tarvika-cli" run "$program/dat/survey.msw" --command 11 \
  --vars Wr.Hnd,NW.Hnd,Pulse,Height,Age --cond Smoke --lang en
