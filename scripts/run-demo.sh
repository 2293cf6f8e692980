#!/usr/bin/env bash
# Installs what is missing, builds, and starts Fendrix. The program goes through its start-up
# checks (TEMP, Fendrix.ini, the user's Config.ini, the language) and shows its command line.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh
exec build/bin/fendrix --help
