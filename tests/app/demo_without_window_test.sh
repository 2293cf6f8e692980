#!/usr/bin/env bash
# The README's first command where no window can open: the demo's review runs with fendrix-cli,
# ends with exit code 0, and leaves a clash file with five more approved clashes and a CSV file.
set -euo pipefail
build_dir=$1
source_dir=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/temp" "$work/config"

rc=0
out=$(env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM TEMP="$work/temp" APPDATA="$work/config" \
  bash "$source_dir/scripts/demo-without-window.sh" "$build_dir/demo-site" "$work/out" "$build_dir/bin" 2>&1) || rc=$?
[ "$rc" -eq 0 ] || { echo "exit code $rc"; echo "$out"; exit 1; }

# The counts before and after the approval: five fewer unapproved clashes.
mapfile -t unapproved < <(grep -o 'unapproved: [0-9,]*' <<<"$out" | head -2 | tr -dc '0-9\n')
[ "${#unapproved[@]}" -eq 2 ] || { echo "no two counts in the output"; echo "$out"; exit 1; }
[ $((unapproved[0] - unapproved[1])) -eq 5 ] || { echo "unapproved ${unapproved[*]}: not five fewer"; echo "$out"; exit 1; }

reviewed="$work/out/DEMO_reviewed.fxdb"
csv="$work/out/DEMO_approved.csv"
approved=$(sqlite3 "$reviewed" "SELECT COUNT(*) FROM clashes WHERE status = 'Approved';")
lines=$(($(wc -l <"$csv") - 1))
[ "$lines" -eq "$approved" ] || { echo "CSV has $lines rows, the clash file $approved approved clashes"; exit 1; }
[ "$approved" -ge 5 ] || { echo "only $approved approved clashes"; exit 1; }
head -1 "$csv" | grep -q "clash_id" || { echo "no header line in the CSV"; exit 1; }
# The user is told where the files are and how to open the window elsewhere.
grep -qF "$reviewed" <<<"$out" && grep -qF "$csv" <<<"$out" && grep -q "fendrix --cmd" <<<"$out" \
  || { echo "the output does not say where the files are"; echo "$out"; exit 1; }
echo "demo without a window: OK"
