#!/bin/bash
# vkmstep-cli check and resave say the same of every program file the project has: check
# says OK exactly when resave writes the file (and the written file passes again), and
# when both refuse, check names the message that resave shows. The files cover passing
# programs and refusals by the checks and by the save itself.
. "$(dirname "$0")/lib.sh" "$@"

passed=0
messages=""
for gsp in "$SRC"/tests/data/gsp/*.gsp "$SRC"/data/samples/*.gsp; do
    name=$(basename "$gsp")
    rm -f "$WORK/out.gsp"
    checked=$("$CLI" check "$gsp" 2> "$WORK/check.err")
    crc=$?
    "$CLI" resave "$gsp" "$WORK/out.gsp" > /dev/null 2> "$WORK/resave.err"
    rrc=$?
    if [ $crc = 0 ]; then
        passed=$((passed + 1))
        [ "$checked" = OK ] || bad "$name: check exited 0 and printed '$checked'"
        [ $rrc = 0 ] || bad "$name: check says OK, resave refused: $(cat "$WORK/resave.err")"
        [ "$(stat -c %s "$WORK/out.gsp" 2>/dev/null)" = 5950 ] || bad "$name: resave wrote no 5950-byte file"
        [ "$("$CLI" check "$WORK/out.gsp" 2>&1)" = OK ] || bad "$name: the resaved file does not pass check"
    elif [ $crc = 1 ]; then
        [ $rrc = 1 ] || bad "$name: check refused ('$checked'), resave exited $rrc"
        [ -e "$WORK/out.gsp" ] && bad "$name: resave wrote a file that check refuses"
        # check prints the message, then the cell it points at.
        message=$(printf '%s\n' "$checked" | sed '$d')
        [ -n "$message" ] || bad "$name: check refused without a message"
        [ "$message" = "$(cat "$WORK/resave.err")" ] ||
            bad "$name: check says '$message', resave says '$(cat "$WORK/resave.err")'"
        messages="$messages$message"$'\n'
    else
        bad "$name: check exited $crc: $(cat "$WORK/check.err")"
    fi
done

# The files are worth comparing only if both answers and several refusals occur.
[ $passed -ge 2 ] || bad "only $passed programs pass: the comparison says little"
kinds=$(printf '%s' "$messages" | sort -u | grep -c .)
[ "$kinds" -ge 3 ] || bad "only $kinds different refusals: $(printf '%s' "$messages" | sort -u)"

finish "cli_check_resave: all passed"
