#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh
# Tests make their own TEMP and configuration folders; keep the user's out of reach anyway.
export QT_QPA_PLATFORM=offscreen
ctest --test-dir build --output-on-failure --parallel "$(nproc)" --no-tests=error
