#!/bin/bash
# The pulse window, the find window and whole rows as a user meets them: e2e_rows_session
# walks over a program of pulses with the keyboard, finds with Ctrl+F, copies two rows by
# their step numbers and closes without saving; the file must stay as it was.
. "$(dirname "$0")/lib.sh" "$@"
DRIVER="$BIN/e2e_rows_session"
editor_home "$DRIVER" window-system
# On a window system (a virtual X display when there is none): whether the keys stay in
# the grid when the pulse window shows itself is the window system's to decide.
display=()
if [ -z "${DISPLAY:-}" ]; then
    if command -v xvfb-run > /dev/null; then
        display=(xvfb-run -a -s "-screen 0 1280x1024x24")
    else
        export QT_QPA_PLATFORM="offscreen:configfile=$SRC/tests/support/screens.json"
    fi
fi

cp "$SRC/data/samples/pulse.gsp" "$WORK/pulse.gsp"
timeout 60 "${display[@]}" "$DRIVER" --archive "$ARCHIVE" "$WORK/pulse.gsp" > "$WORK/out" 2>&1
rc=$?
if [ $rc != 0 ]; then
    echo "FAIL: the session exited $rc:"
    grep -v '^This plugin\|^QStandardPaths' "$WORK/out"
    exit 1
fi
cmp -s "$SRC/data/samples/pulse.gsp" "$WORK/pulse.gsp" || { echo "FAIL: closing without saving changed the file"; exit 1; }
echo "rows_session: passed"
