#!/bin/bash
# Option 3 restarts the editor: the first run chooses it in the option menu and closes; the
# process that starts by itself afterwards has the same arguments (a quoted one with a
# blank among them), is not refused as a second instance, and builds the grid with the
# input groups first.
. "$(dirname "$0")/lib.sh" "$@"
DRIVER="$BIN/e2e_restart_session"

editor_home "$DRIVER"

MARKER="$WORK/marker"
(cd "$WORK/cwd" && timeout 30 "$DRIVER" --archive "$ARCHIVE" --marker "$MARKER" "two words" plain) > "$WORK/first" 2>&1
rc=$?
[ $rc -eq 0 ] || bad "the first run exited $rc: $(cat "$WORK/first")"
for _ in $(seq 200); do [ -s "$MARKER" ] && break; sleep 0.1; done
[ -s "$MARKER" ] || { bad "the editor did not start again"; exit 1; }
expected="restarted
--archive
$ARCHIVE
--marker
$MARKER
two words
plain
input group 1 in column 2"
[ "$(cat "$MARKER")" = "$expected" ] || bad "the restarted run: $(cat "$MARKER")"
conf="$WORK/home/.config/e2e_restart_session.conf"
grep -qx "DoesLocateInpFirst=True" "$conf" || bad "the option is not stored as True in $conf"
# The restarted run ends by itself; nothing of either run stays behind.
for _ in $(seq 100); do pgrep -f "$MARKER" > /dev/null || break; sleep 0.1; done
pgrep -f "$MARKER" > /dev/null && bad "the restarted run did not end"
exit $fail
