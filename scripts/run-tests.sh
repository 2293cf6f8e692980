#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test, with a throwaway PostgreSQL server up
# for the tests of the SQL gateway kinds (stopped on every way out); ends by telling how many
# tests were skipped and why.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh
# Tests make their own TEMP and configuration folders; keep the user's out of reach anyway.
export QT_QPA_PLATFORM=offscreen

# A short path: the server's socket name must stay under the system's limit.
pg_dir=$(mktemp -d /tmp/fxpg.XXXXXX)
trap 'bash scripts/pg-test-cluster.sh stop "$pg_dir"' EXIT
trap 'exit 130' INT TERM
if bash scripts/pg-test-cluster.sh start "$pg_dir"; then
  # shellcheck disable=SC1091
  . "$pg_dir/env"
elif [ "${CI:-}" = true ]; then
  echo "The PostgreSQL test server did not start" >&2
  exit 1
else
  echo "No PostgreSQL test server: the tests that need one are skipped" >&2
fi

results="$(pwd)/build/test-results.xml"
rm -f "$results"
status=0
ctest --test-dir build --output-on-failure --parallel "$(nproc)" --no-tests=error --output-junit "$results" \
  || status=$?
# Last, so that it is what a reader of the run sees: how many tests were skipped, and why.
python3 scripts/skipped_tests_report.py "$results" || status=1
exit "$status"
