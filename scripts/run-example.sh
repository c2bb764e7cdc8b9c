#!/usr/bin/env bash
# `make run`: one analysis on a bundled example project, report on standard output.
set -euo pipefail
program=${1:-build/tarvika}
"$program/tarvika-cli" --help
