#!/bin/bash
# The editor as a user meets it: a copy of a sample program opened from the command line, a
# delay value changed with the keyboard, saved with the Save button and the window closed;
# then a change closed away with Cancel and No. Checks what is on disk afterwards and that
# the editor leaves no temporary or unpacked setting file behind.
set -u
BIN=$(cd "$1" && pwd)
SRC=$(cd "$2" && pwd)
CLI="$BIN/vkmstep-cli"
DRIVER="$BIN/e2e_editor_session"
ARCHIVE="${VKM_ARCHIVE:-$BIN/VKM.e}"
WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT
fail=0
bad() { echo "FAIL: $*"; fail=1; }

[ -x "$DRIVER" ] || { echo "FAIL: $DRIVER is not built"; exit 1; }

# A private home, settings store, runtime folder (instance lock) and temporary folder, so the
# run touches nothing of the user's and everything it leaves behind can be seen.
mkdir -p "$WORK/home" "$WORK/run" "$WORK/cwd"
chmod 700 "$WORK/run"
export HOME="$WORK/home" XDG_CONFIG_HOME="$WORK/home/.config" XDG_DATA_HOME="$WORK/home/.local/share"
export XDG_RUNTIME_DIR="$WORK/run" QT_QPA_PLATFORMTHEME=
if [ -z "${DISPLAY:-}" ]; then
    export QT_QPA_PLATFORM="offscreen:configfile=$SRC/tests/support/screens.json"
fi

# Row 1 is the first step; column 9 is the delay value of its second output group (a timer
# in both samples, where 40 is a valid new delay).
ROW=1
COL=9
run_session() { # scenario, temporary folder, program file
    mkdir -p "$2"
    (cd "$WORK/cwd" && TMPDIR="$2" timeout 60 "$DRIVER" --archive "$ARCHIVE" --scenario "$1" \
        --row $ROW --col $COL --value "$NEW" "$3") > "$WORK/out" 2>&1
}
no_leftovers() { # scenario, temporary folder
    left=$(find "$2" -mindepth 1 | head -5)
    [ -z "$left" ] || bad "$1: left in the temporary folder: $left"
    sets=$(find "$WORK/cwd" "$WORK/home" -iname 'Set*.e' | head -5)
    [ -z "$sets" ] || bad "$1: unpacked setting files left: $sets"
}

for sample in counter pulse; do
    cp "$SRC/data/samples/$sample.gsp" "$WORK/$sample.gsp"
    "$CLI" dump "$WORK/$sample.gsp" > "$WORK/before.dump" 2> "$WORK/err" || { bad "dump $sample: $(cat "$WORK/err")"; continue; }
    NEW=40

    # 1. Edit, save, close.
    run_session edit-save "$WORK/tmp-$sample" "$WORK/$sample.gsp"
    rc=$?
    [ $rc = 0 ] || bad "$sample edit-save exited $rc: $(cat "$WORK/out")"
    [ "$(stat -c %s "$WORK/$sample.gsp")" = 5950 ] || bad "$sample: saved file is not 5950 bytes"
    "$CLI" dump "$WORK/$sample.gsp" > "$WORK/after.dump" 2> "$WORK/err" || bad "dump saved $sample: $(cat "$WORK/err")"
    changed=$(diff "$WORK/before.dump" "$WORK/after.dump" | grep -c '^[<>]')
    [ "$changed" = 2 ] || bad "$sample: expected one changed dump line, got: $(diff "$WORK/before.dump" "$WORK/after.dump")"
    after=$(diff "$WORK/before.dump" "$WORK/after.dump" | sed -n 's/^> //p')
    [[ "$after" == *" $NEW"* ]] || bad "$sample: the changed line does not carry $NEW: $after"
    "$CLI" check "$WORK/$sample.gsp" > /dev/null 2>&1 || bad "$sample: the saved program fails the check"
    no_leftovers "$sample edit-save" "$WORK/tmp-$sample"

    # 2. Edit, close: Cancel keeps the editor open, No closes it without writing.
    cp "$WORK/$sample.gsp" "$WORK/kept.gsp"
    NEW=80
    run_session close-unsaved "$WORK/tmp2-$sample" "$WORK/$sample.gsp"
    rc=$?
    [ $rc = 0 ] || bad "$sample close-unsaved exited $rc: $(cat "$WORK/out")"
    cmp -s "$WORK/kept.gsp" "$WORK/$sample.gsp" || bad "$sample: No on the close question changed the file"
    no_leftovers "$sample close-unsaved" "$WORK/tmp2-$sample"

    # 3. A timer delay beyond its range: one message, the cell and the file stay as they were.
    NEW=130002
    run_session refuse-entry "$WORK/tmp3-$sample" "$WORK/$sample.gsp"
    rc=$?
    [ $rc = 0 ] || bad "$sample refuse-entry exited $rc: $(cat "$WORK/out")"
    cmp -s "$WORK/kept.gsp" "$WORK/$sample.gsp" || bad "$sample: a refused value changed the file"
    no_leftovers "$sample refuse-entry" "$WORK/tmp3-$sample"
done

[ $fail = 0 ] && echo "editor_session: all passed"
exit $fail
