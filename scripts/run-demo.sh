#!/usr/bin/env bash
# Installs what is missing, builds (with the demo site, build/demo-site), and starts Fendrix.
# Until the approval window exists the program goes through its start-up checks (TEMP,
# Fendrix.ini, the user's Config.ini, the language) and shows its command line.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh
echo "Demo site: $(pwd)/build/demo-site (control file pds.cmd, project DEMO, 5000 clashes)"
exec build/bin/fendrix --help
