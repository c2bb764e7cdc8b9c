#!/usr/bin/env bash
# Installs the Debian packages that the build, the tests and the benchmarks need.
# Idempotent: when everything is present it only checks and returns.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config
  libfmt-dev libcli11-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  libboost-dev libboost-math-dev libeigen3-dev
  libreadstat-dev libzip-dev libpugixml-dev libxlsxwriter-dev libfreexl-dev
  qt6-base-dev qt6-svg-dev qt6-translations-l10n fonts-dejavu-core
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

if [ "${#missing[@]}" -eq 0 ]; then
  exit 0
fi

sudo=""
if [ "$(id -u)" -ne 0 ]; then sudo="sudo"; fi
echo "install-deps: installing ${missing[*]}" >&2
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
