#!/bin/bash
# vkmstep-cli check / resave: the editor's checks over program files and what saving
# a program through the editor writes. The program files are built here with the
# fixture writer of tests/data/gsp, one per check outcome.
. "$(dirname "$0")/lib.sh" "$@"

python3 - "$SRC/tests/data/gsp" "$WORK" <<'PY' || { echo "FAIL: fixtures"; exit 1; }
import os, sys
sys.path.insert(0, sys.argv[1])
from make_fixtures import *
files = {
    'ok.gsp': image([
        step([out(Y001, 1, TIMER, 100)], [inp(X001, 0, 0), inp(X002, 2, 2)]),
        step([out(EMAKE, 1, STC, 3)], [inp(X002, 1, 2)]),
        step([out(CN16, 7)], [inp(CN16, 0, 3), inp(50, 0, 2)]),
        step([out(JMP(1), 3)], [inp(ALL, 0, 2)]),
    ], remarks={1: 'first', 6: 'remark only'}),
    'noend.gsp': image([step([out(Y001, 1, TIMER, 100)],
                             [inp(X001, 0, 0), inp(X002, 0, 0), inp(X003, 0, 1), inp(X001, 0, 0)])]),
    'range.gsp': image([step([out(Y001, 1, STC, 10000)], [inp(X001, 0, 2)])]),
    'edge.gsp': image([step([out(Y001, 1, STC, 10)], [inp(X001, 1, 2)])]),
    'unknown.gsp': image([step([out(0x1234, 1, STC, 5)], [inp(X001, 0, 2)])]),
}
for name, img in files.items():
    with open(os.path.join(sys.argv[2], name), 'wb') as f:
        f.write(transfer_text(img))
PY

expect_check() { # file, exit code, expected output
    out=$("$CLI" check "$WORK/$1" 2> "$WORK/err")
    rc=$?
    [ "$rc" = "$2" ] || bad "check $1 exited $rc, expected $2 ($(cat "$WORK/err"))"
    [ "$out" = "$3" ] || bad "check $1 printed '$out', expected '$3'"
}
expect_check ok.gsp 0 "OK"
expect_check noend.gsp 1 "Input block or END missed.
row 1 column 10"
expect_check range.gsp 1 "Delay value is out of range.
row 1 column 5"
expect_check edge.gsp 1 "You must input EMAKE at OUTPUT when EDGE is input at INPUT.
row - column -"
# check reports what a save would report: the unknown function blocks its row.
expect_check unknown.gsp 1 "Make sure that all the information are set.
row - column -"

# Saving through the editor keeps what the program says.
"$CLI" resave "$WORK/ok.gsp" "$WORK/ok2.gsp" 2> "$WORK/err" || bad "resave ok.gsp: $(cat "$WORK/err")"
[ "$(stat -c %s "$WORK/ok2.gsp" 2>/dev/null)" = 5950 ] || bad "resaved file is not 5950 bytes"
"$CLI" dump "$WORK/ok.gsp" > "$WORK/ok.dump"
"$CLI" dump "$WORK/ok2.gsp" > "$WORK/ok2.dump"
cmp -s "$WORK/ok.dump" "$WORK/ok2.dump" || bad "resave changed the program: $(diff "$WORK/ok.dump" "$WORK/ok2.dump")"
expect_check ok2.gsp 0 "OK"

# A failing check or a function the catalogue does not know writes nothing.
echo "keep" > "$WORK/old.gsp"
if "$CLI" resave "$WORK/noend.gsp" "$WORK/old.gsp" 2> "$WORK/err"; then bad "resave of a failing program succeeded"; fi
grep -q "Input block or END missed." "$WORK/err" || bad "resave: no check message ($(cat "$WORK/err"))"
if "$CLI" resave "$WORK/unknown.gsp" "$WORK/old.gsp" 2> "$WORK/err"; then bad "resave with an unknown function succeeded"; fi
grep -q "Make sure that all the information are set." "$WORK/err" || bad "resave: no message 80 ($(cat "$WORK/err"))"
[ "$(cat "$WORK/old.gsp")" = "keep" ] || bad "a failed resave changed the destination"

# Bad input: a missing file and a wrong argument count.
if "$CLI" check "$WORK/missing.gsp" > /dev/null 2> "$WORK/err"; then bad "check of a missing file succeeded"; fi
[ -s "$WORK/err" ] || bad "check of a missing file said nothing"
"$CLI" check > /dev/null 2>&1
[ $? = 2 ] || bad "check without a file did not exit 2"

finish "cli_check: all passed"
