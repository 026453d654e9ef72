#!/bin/bash
# The editor as a user meets it: a copy of a sample program opened from the command line, a
# delay value changed with the keyboard, saved with the Save button and the window closed;
# then a change closed away with Cancel and No. Checks what is on disk afterwards and that
# the editor leaves no temporary or unpacked setting file behind.
. "$(dirname "$0")/lib.sh" "$@"
DRIVER="$BIN/e2e_editor_session"

editor_home "$DRIVER"

# Row 1 is the first step; column 9 is the delay value of its second output group (a timer
# in both samples, where 40 is a valid new delay).
ROW=1
COL=9
# Plays a scenario on the sample's copy with its own temporary folder; the driver must end
# with 0 and leave nothing behind: no temporary file, no unpacked setting file.
run_session() { # scenario
    local tmp="$WORK/tmp-$1-$sample"
    mkdir -p "$tmp"
    (cd "$WORK/cwd" && TMPDIR="$tmp" timeout 60 "$DRIVER" --archive "$ARCHIVE" --scenario "$1" \
        --row $ROW --col $COL --value "$NEW" "$WORK/$sample.gsp") > "$WORK/out" 2>&1 \
        || bad "$sample $1 exited $?: $(cat "$WORK/out")"
    left=$(find "$tmp" -mindepth 1 | head -5)
    [ -z "$left" ] || bad "$sample $1: left in the temporary folder: $left"
    sets=$(find "$WORK/cwd" "$WORK/home" -iname 'Set*.e' | head -5)
    [ -z "$sets" ] || bad "$sample $1: unpacked setting files left: $sets"
}

for sample in counter pulse; do
    cp "$SRC/data/samples/$sample.gsp" "$WORK/$sample.gsp"
    "$CLI" dump "$WORK/$sample.gsp" > "$WORK/before.dump" 2> "$WORK/err" || { bad "dump $sample: $(cat "$WORK/err")"; continue; }
    NEW=40

    # 1. Edit, save, close.
    run_session edit-save
    [ "$(stat -c %s "$WORK/$sample.gsp")" = 5950 ] || bad "$sample: saved file is not 5950 bytes"
    "$CLI" dump "$WORK/$sample.gsp" > "$WORK/after.dump" 2> "$WORK/err" || bad "dump saved $sample: $(cat "$WORK/err")"
    changed=$(diff "$WORK/before.dump" "$WORK/after.dump" | grep -c '^[<>]')
    [ "$changed" = 2 ] || bad "$sample: expected one changed dump line, got: $(diff "$WORK/before.dump" "$WORK/after.dump")"
    after=$(diff "$WORK/before.dump" "$WORK/after.dump" | sed -n 's/^> //p')
    [[ "$after" == *" $NEW"* ]] || bad "$sample: the changed line does not carry $NEW: $after"
    "$CLI" check "$WORK/$sample.gsp" > /dev/null 2>&1 || bad "$sample: the saved program fails the check"

    # 2. Edit, close: Cancel keeps the editor open, No closes it without writing.
    cp "$WORK/$sample.gsp" "$WORK/kept.gsp"
    NEW=80
    run_session close-unsaved
    cmp -s "$WORK/kept.gsp" "$WORK/$sample.gsp" || bad "$sample: No on the close question changed the file"

    # 3. A timer delay beyond its range: one message, the cell and the file stay as they were.
    NEW=130002
    run_session refuse-entry
    cmp -s "$WORK/kept.gsp" "$WORK/$sample.gsp" || bad "$sample: a refused value changed the file"
done

finish "editor_session: all passed"
