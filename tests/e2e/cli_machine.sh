#!/bin/bash
# vkmstep-cli read / write / read-custom / write-custom against vkm-sim on a pseudo-terminal:
# what reaches the machine, what comes back, the questions a user who is not there gets
# answered, and the exit codes.
. "$(dirname "$0")/lib.sh" "$@"
SAMPLES="$SRC/data/samples"
# Short times for the time-out cases; the machine's own are the defaults.
export VKM_ANSWER_TIMEOUT_MS=200 VKM_RESET_PAUSE_MS=10

frames() { grep -c " <- $1" "$WORK/sim.log"; }

# Read: the transfer text as the machine holds it, 238 records.
start_sim --load "$SAMPLES/counter.gsp"
"$CLI" read --port "$DEV" "$WORK/read.gsp" > "$WORK/out" 2> "$WORK/err" || bad "read exited $?: $(cat "$WORK/err")"
cmp -s "$WORK/read.gsp" "$SAMPLES/counter.gsp" || bad "read did not give the machine's program"
grep -q "read 238 records" "$WORK/out" || bad "read did not report its records"
grep -qx "Reading... 768/768" "$WORK/err" || bad "no line for the first range: $(cat "$WORK/err")"
grep -qx "Reading... 1136/1136" "$WORK/err" || bad "no line for the second range"

# On a terminal: one bar redrawn in place, with the bytes and the time left.
if command -v script > /dev/null; then
    "$SIM" --baud 0 --quiet --load "$SAMPLES/counter.gsp" > "$WORK/tty.out" & TTYSIM=$!
    for _ in $(seq 100); do [ -s "$WORK/tty.out" ] && break; sleep 0.05; done
    script -q -e -c "$CLI read --port $(head -n 1 "$WORK/tty.out") $WORK/tty.gsp" /dev/null < /dev/null \
        > "$WORK/tty.txt" 2>&1 || bad "read on a terminal failed"
    kill $TTYSIM; wait $TTYSIM 2> /dev/null
    grep -q $'\rReading.*\] 384/768 bytes  0:0[0-9] left' "$WORK/tty.txt" || bad "no progress bar on a terminal"
    grep -q "Reading... 768/768" "$WORK/tty.txt" && bad "a terminal got the log lines"
fi

# Write: refused without --yes, sent and verified with it.
if "$CLI" write --port "$DEV" "$SAMPLES/jumps.gsp" > /dev/null 2> "$WORK/err"; then bad "write without --yes ran"; fi
[ "$(frames W)" = 0 ] || bad "write without --yes sent records"
grep -q -- "--yes" "$WORK/err" || bad "write without --yes does not say why"
"$CLI" write --port "$DEV" --yes --verify "$SAMPLES/jumps.gsp" > "$WORK/out" 2> "$WORK/err" \
    || bad "write --verify exited $?: $(cat "$WORK/err")"
grep -q "verified" "$WORK/out" || bad "write --verify did not verify"
[ "$(frames W)" = 238 ] || bad "write sent $(frames W) records"
[ "$(frames C00003F)" = 1 ] || bad "write did not reset the machine"
"$CLI" read --port "$DEV" "$WORK/back.gsp" > /dev/null 2>&1 || bad "read back failed"
"$CLI" resave "$SAMPLES/jumps.gsp" "$WORK/jumps.gsp" 2> /dev/null
cmp -s "$WORK/back.gsp" "$WORK/jumps.gsp" || bad "the machine does not hold what the editor saves"

# A record the machine acknowledges but loses: --verify finds it.
start_sim --fault lost-write:40
if "$CLI" write --port "$DEV" --yes --verify "$SAMPLES/counter.gsp" > "$WORK/out" 2>&1; then
    bad "verify passed over a lost record"
fi
grep -q "1 records differ" "$WORK/out" || bad "verify did not count the difference: $(cat "$WORK/out")"

# A program that fails its checks is not sent (a function no catalogue knows).
python3 - "$SRC/tests/data/gsp" "$WORK/broken.gsp" <<'PY' || bad "fixture"
import sys
sys.path.insert(0, sys.argv[1])
from make_fixtures import *
open(sys.argv[2], 'wb').write(transfer_text(image([step([out(0x1234, 1, STC, 5)], [inp(X001, 0, 2)])])))
PY
start_sim
"$CLI" write --port "$DEV" --yes "$WORK/broken.gsp" > /dev/null 2>&1 && bad "a program with an unknown function was sent"
[ "$(frames W)" = 0 ] || bad "a refused program reached the machine"

# Customisation area: 96 records read, written back as they came, then the reset.
start_sim --load "$SAMPLES/counter.gsp"
"$CLI" read-custom --port "$DEV" "$WORK/custom.txt" > /dev/null 2>&1 || bad "read-custom failed"
[ "$(grep -c '^W' "$WORK/custom.txt")" = 96 ] || bad "read-custom did not give 96 records"
"$CLI" write-custom --port "$DEV" --yes "$WORK/custom.txt" > /dev/null 2>&1 || bad "write-custom failed"
[ "$(frames W)" = 96 ] || bad "write-custom sent $(frames W) records"
printf 'W0000000000000000000000\r\n' > "$WORK/badsum.txt"
"$CLI" write-custom --port "$DEV" --yes "$WORK/badsum.txt" > /dev/null 2> "$WORK/err" && bad "a bad record was sent"
grep -q "line 1" "$WORK/err" || bad "the bad line is not named: $(cat "$WORK/err")"
[ "$(frames W)" = 96 ] || bad "a file with a bad record reached the machine"

# No answer: Retry up to three times by itself, or Cancel with --no-retry.
start_sim --fault late:2:4
"$CLI" read-custom --port "$DEV" "$WORK/late.txt" > /dev/null 2> "$WORK/err" || bad "three retries did not complete"
[ "$(grep -c '(retrying)' "$WORK/err")" = 3 ] || bad "not three retries: $(cat "$WORK/err")"
start_sim --fault late:2:2
if "$CLI" read-custom --port "$DEV" --no-retry "$WORK/none.txt" > /dev/null 2> "$WORK/err"; then
    bad "--no-retry read completed"
fi
grep -q "Failed to read." "$WORK/err" || bad "--no-retry: no failure message"
[ -e "$WORK/none.txt" ] && bad "a failed read wrote a file"
start_sim --fault late:2:9
"$CLI" read-custom --port "$DEV" "$WORK/none.txt" > /dev/null 2> "$WORK/err"
[ $? = 1 ] || bad "a machine that stays silent did not give exit 1"
grep -q "Power off and on the sewing machine and retry." "$WORK/err" || bad "no power message"

# Bad calls and ports.
"$CLI" read "$WORK/x.gsp" > /dev/null 2>&1; [ $? = 2 ] || bad "read without --port is not a usage error"
"$CLI" read --port "$DEV" --fast "$WORK/x.gsp" > /dev/null 2>&1; [ $? = 2 ] || bad "an unknown option is accepted"
"$CLI" read --port "$WORK/nothing" "$WORK/x.gsp" > /dev/null 2> "$WORK/err"; [ $? = 1 ] || bad "a missing port is not exit 1"
grep -q "Unable to connect" "$WORK/err" || bad "a missing port gives no message"
"$CLI" read --port 4 "$WORK/x.gsp" > /dev/null 2> "$WORK/err"
grep -q "/dev/ttyS3" "$WORK/err" || bad "--port 4 is not the fourth serial port: $(cat "$WORK/err")"

exit $fail
