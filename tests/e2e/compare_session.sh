#!/bin/bash
# Comparing programs in the editor as a user does: a sample program opened from the command
# line, a copy changed by the editor's rules opened beside it as the comparison program, the
# difference marks turned on in both windows, F7, and a picture of the main window. Both
# windows must count as many differences as the command-line diff lists, and the picture
# must show marked cells (the driver looks). VKM_SHOTS names a folder to keep the picture in.
set -u
BIN=$(cd "$1" && pwd)
SRC=$(cd "$2" && pwd)
CLI="$BIN/vkmstep-cli"
DRIVER="$BIN/e2e_compare_session"
WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT
fail=0
bad() { echo "FAIL: $*"; fail=1; }

[ -x "$DRIVER" ] || { echo "FAIL: $DRIVER is not built"; exit 1; }
mkdir -p "$WORK/home" "$WORK/run" "$WORK/tmp"
chmod 700 "$WORK/run"
export HOME="$WORK/home" XDG_CONFIG_HOME="$WORK/home/.config" XDG_DATA_HOME="$WORK/home/.local/share"
export XDG_RUNTIME_DIR="$WORK/run" QT_QPA_PLATFORMTHEME=
if [ -z "${DISPLAY:-}" ]; then
    export QT_QPA_PLATFORM="offscreen:configfile=$SRC/tests/support/screens.json"
fi

cp "$SRC/data/samples/counter.gsp" "$WORK/user.gsp"
"$CLI" edit "$WORK/user.gsp" "$WORK/machine.gsp" - > "$WORK/edit.out" 2>&1 << 'EOF' || bad "edit: $(cat "$WORK/edit.out")"
type 1 remark read from machine
rem 2 2
type 3 in1 X002
EOF
"$CLI" diff "$WORK/user.gsp" "$WORK/machine.gsp" > "$WORK/diff.out" 2>&1
[ $? = 1 ] || bad "diff does not see the changes: $(cat "$WORK/diff.out")"
count=$(grep -c '^  ' "$WORK/diff.out")
[ "$count" -ge 3 ] || bad "diff lists $count differences: $(cat "$WORK/diff.out")"

shot="${VKM_SHOTS:-$WORK}/compare.png"
TMPDIR="$WORK/tmp" timeout 60 "$DRIVER" --shot "$shot" --expect "$count" "$WORK/user.gsp" "$WORK/machine.gsp" \
    > "$WORK/out" 2>&1 || bad "the compare session failed: $(cat "$WORK/out")"
[ -s "$shot" ] || bad "no picture"
grep -qx "user: $count differing cells" "$WORK/out" || bad "the user window's count: $(cat "$WORK/out")"

[ $fail = 0 ] && echo "compare_session: all passed"
exit $fail
