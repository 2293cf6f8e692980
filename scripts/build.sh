#!/usr/bin/env bash
# Configures and builds Fendrix into build/ (the program folder is build/bin); with target names
# as arguments, builds only those.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
targets=()
[ $# -gt 0 ] && targets=(--target "$@")
cmake --build build --parallel "$(nproc)" "${targets[@]}"
