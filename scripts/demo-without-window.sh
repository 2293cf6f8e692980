#!/usr/bin/env bash
# The demo's review where no window can open: fendrix-cli on the demo site prints the counts of
# the status line, approves five clashes into a clash file, exports the approved clashes as CSV,
# and says where all of it is.
#
#   demo-without-window.sh SITE OUTPUT_FOLDER [PROGRAM_FOLDER]      (after the build)
#
# PROGRAM_FOLDER is the folder of fendrix and fendrix-cli, build/bin unless given.
set -euo pipefail
site=$1
out=$2
bin=${3:-$(cd "$(dirname "$0")/.." && pwd)/build/bin}
mkdir -p "$out"
reviewed="$out/DEMO_reviewed.fxdb"
approved="$out/DEMO_approved.csv"
rm -f "$reviewed" "$approved"
cli=("$bin/fendrix-cli" --cmd "$site/pds.cmd" --project DEMO --config "$site/config/DEMO.ini")
# Five of the unapproved clashes, whatever earlier runs left approved in the project.
five="clash_id IN (SELECT clash_id FROM clashes WHERE status = 'Unapproved' ORDER BY clash_id LIMIT 5)"

cat <<TEXT
No window system here (DISPLAY or WAYLAND_DISPLAY is not set): the approval window can't open.
The same review without a window, with fendrix-cli: the counts of the status line, five clashes
approved as real clashes into a clash file, and the approved clashes exported as CSV.

TEXT
"${cli[@]}" counts approve-real "$five" counts save-file "$reviewed" \
  filter "status = 'Approved'" export-csv "$approved"
cat <<TEXT

Written:
  $reviewed   the clash file with the five reviews (the project itself is unchanged)
  $approved   the approved clashes, comma-separated
The log of the run is under \$TEMP/Fendrix/ (TEMP, else TMPDIR, else /tmp).

To review in the approval window, run this command on a machine with a display, or open the
clash file there:
  $bin/fendrix --cmd $site/pds.cmd --project DEMO --config $site/config/DEMO.ini
  $bin/fendrix --project $reviewed --config $site/config/DEMO.ini
TEXT
