#!/usr/bin/env bash
# Installs what is missing, builds (with the demo site, build/demo-site), and opens the demo
# project DEMO (5,000 clashes) in the approval window.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh
site="$(pwd)/build/demo-site"
echo "Demo site: $site (control file pds.cmd, project DEMO, 5000 clashes)"
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ] && [ -z "${QT_QPA_PLATFORM:-}" ]; then
  echo "No window system (DISPLAY or WAYLAND_DISPLAY) here: the approval window can't open." >&2
  echo "Without one, fendrix-cli works on the same site:" >&2
  echo "  build/bin/fendrix-cli --cmd $site/pds.cmd --project DEMO --config $site/config/DEMO.ini counts" >&2
  exit 1
fi
exec build/bin/fendrix --cmd "$site/pds.cmd" --project DEMO --config "$site/config/DEMO.ini"
