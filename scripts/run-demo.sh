#!/usr/bin/env bash
# Installs what is missing, builds (with the demo site, build/demo-site), and opens the demo
# project DEMO (5,000 clashes) in the approval window. Without a window system it does the same
# review without a window, with fendrix-cli, and says where the results are.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh
site="$(pwd)/build/demo-site"
echo "Demo site: $site (control file pds.cmd, project DEMO, 5000 clashes)"
# An offscreen platform shows nothing: a window there would wait for a user who can't see it.
windows=false
if [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ] || [ -n "${QT_QPA_PLATFORM:-}" ]; then
  windows=true
fi
case "${QT_QPA_PLATFORM:-}" in offscreen* | minimal*) windows=false ;; esac
if [ "$windows" = true ]; then
  exec build/bin/fendrix --cmd "$site/pds.cmd" --project DEMO --config "$site/config/DEMO.ini"
fi

exec bash scripts/demo-without-window.sh "$site" "$(pwd)/build/demo-output"
