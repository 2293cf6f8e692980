#!/usr/bin/env bash
# The built program runs in place, and the installed one from its laid-out folder: both pass the
# start-up checks, write the usage text, and report a failed start in their log.
set -euo pipefail
build_dir=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

check_program() {
  local exe=$1 label=$2
  local dir; dir=$(dirname "$(readlink -f "$exe")")
  for f in Fendrix.ini tip.txt Language/English.ini; do
    [ -f "$dir/$f" ] || { echo "$label: $f missing beside the program"; exit 1; }
  done
  mkdir -p "$work/$label/temp" "$work/$label/config"
  local out
  out=$(env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM TEMP="$work/$label/temp" APPDATA="$work/$label/config" "$exe" --help)
  grep -q "Command line arguments for fendrix:" <<<"$out" || { echo "$label: no usage text"; echo "$out"; exit 1; }
  grep -q "^/batch                   - If defined Envelope Builder and$" <<<"$out" || { echo "$label: usage lines differ"; exit 1; }
  ls "$work/$label/temp/Fendrix/"*_fendrix_PID*.log >/dev/null
  [ -f "$work/$label/config/Norvane/Fendrix/Config.ini" ] || [ -d "$work/$label/config/Norvane/Fendrix" ] || { echo "$label: no config folder"; exit 1; }

  # The scripting front end lies beside the program.
  "$dir/fendrix-cli" --help | grep -q "^Usage: fendrix-cli" || { echo "$label: fendrix-cli missing or silent"; exit 1; }

  # A failed start: batch needs the check module. Exit code 1, the reason in the log, no box.
  local rc=0
  TEMP="$work/$label/temp" APPDATA="$work/$label/config" "$exe" --batch >/dev/null 2>&1 || rc=$?
  [ "$rc" -eq 1 ] || { echo "$label: batch start gave exit code $rc"; exit 1; }
  grep -q "Batch mode not available in execution mode: 'APPROVE'" "$work/$label/temp/Fendrix/"*.log || { echo "$label: failure not logged"; exit 1; }
}

check_program "$build_dir/bin/fendrix" built

cmake --install "$build_dir" --prefix "$work/prefix" >/dev/null
[ -L "$work/prefix/bin/fendrix" ] || { echo "installed: no link in bin/"; exit 1; }
check_program "$work/prefix/bin/fendrix" installed
echo "program folder checks passed"
