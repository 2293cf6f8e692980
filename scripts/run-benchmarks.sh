#!/usr/bin/env bash
# Installs what is missing, builds the benchmark programs, runs every benchmark of the
# performance targets and writes BENCHMARKS.md. Each benchmark is repeated
# FENDRIX_BENCH_REPETITIONS times (3 unless set); the report shows the medians.
set -euo pipefail
cd "$(dirname "$0")/.."
repetitions="${FENDRIX_BENCH_REPETITIONS:-3}"
if ! [[ "$repetitions" =~ ^[1-9][0-9]*$ ]]; then
  echo "FENDRIX_BENCH_REPETITIONS must be a positive number, not '$repetitions'" >&2
  exit 2
fi

# /usr/bin/time measures the window process's peak memory; /usr/bin/python3 writes the report.
bash scripts/install-deps.sh time python3
programs=(bench_frame bench_pds bench_store bench_grid bench_grid_ui bench_check bench_check_ui bench_approve)
bash scripts/build.sh "${programs[@]}"
for program in "${programs[@]}"; do
  [ -x "build/bench/$program" ] || { echo "build/bench/$program was not built" >&2; exit 1; }
done

results=build/bench-results
rm -rf "$results"
mkdir -p "$results"
cat /proc/loadavg >"$results/loadavg"
export QT_QPA_PLATFORM=offscreen
failed=()

# run NAME PROGRAM [ARGUMENT...]: one benchmark program, its JSON into $results/NAME.json.
run() {
  local name=$1 program=$2
  shift 2
  echo "$(date -u +%H:%M:%S) $name" >&2
  if ! "$@" "build/bench/$program" --benchmark_repetitions="$repetitions" --benchmark_report_aggregates_only=true \
      --benchmark_format=json --benchmark_out="$results/$name.json" "${filter[@]}" >"$results/$name.log" 2>&1; then
    echo "$name failed: see $results/$name.log" >&2
    failed+=("$name")
  fi
}

filter=()
run bench_frame bench_frame
run bench_pds bench_pds
run bench_store bench_store
run bench_grid bench_grid
run bench_grid_ui bench_grid_ui
run bench_check bench_check
run bench_check_ui bench_check_ui
filter=(--benchmark_filter='^WindowOpen/(10000|100000)/')
run bench_approve bench_approve
# The 500,000-clash window in a process of its own, so that its peak memory is its alone.
filter=(--benchmark_filter='/500000/')
run bench_approve_500000 bench_approve /usr/bin/time -v -o "$results/bench_approve_500000.time"

echo "$(date -u +%H:%M:%S) writing BENCHMARKS.md" >&2
/usr/bin/python3 scripts/benchmark_report.py --results "$results" --repetitions "$repetitions" --output BENCHMARKS.md
if [ ${#failed[@]} -gt 0 ]; then
  echo "Failed: ${failed[*]}" >&2
  exit 1
fi
echo "BENCHMARKS.md written (results in $results)" >&2
