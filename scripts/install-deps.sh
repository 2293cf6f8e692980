#!/usr/bin/env bash
# Installs the Debian packages that building, running and testing Fendrix need, if missing;
# packages named as arguments too.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config
  qt6-base-dev libgl-dev
  libsqlite3-dev sqlite3 unixodbc-dev odbc-postgresql libsqliteodbc
  postgresql clang libclang-rt-14-dev
  googletest libgtest-dev libgmock-dev libbenchmark-dev
  fonts-dejavu-core perl python3
  "$@"
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
sudo=""
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || { echo "Need root (or sudo) to install: ${missing[*]}" >&2; exit 1; }
  sudo="sudo"
fi
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq "${missing[@]}"
