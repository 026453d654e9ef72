#!/bin/bash
# vkmstep-cli custom: the terminals of a customisation text, read from vkm-sim with
# read-custom, listed one a line with the function's digital text and every value by name.
# The expected values are worked out by hand from the bundled Set04.e / Set05.e: an address
# minus 1792 is the byte, a mask's value is shifted down to its lowest bit.
. "$(dirname "$0")/lib.sh" "$@"

# The customisation area: IN01 (1792..1796 -> bytes 0..4), IN09 (1856.. -> 64..), OUT01
# (2176..2181 -> 0x180..0x185), OUT02 with a function no catalogue entry has.
python3 - "$WORK/area.txt" <<'EOF'
import sys
img = bytearray(768)
img[0:5] = bytes([0x85, 0xB5, 200, 0xF6, 7])   # IN01
img[64:68] = bytes([0x40, 0x21, 0, 0x07])      # IN09: function 64
img[0x180:0x186] = bytes([0x02, 0x05, 30, 0xB5, 0x02, 99])  # OUT01
img[0x188] = 100                               # OUT02: function 100
img[0x100:0x103] = bytes([0x01, 0x05, 0x20])   # the machine's identification
with open(sys.argv[1], 'w', newline='') as f:
    for a in range(0, 768, 8):
        body = '%04X' % a + ''.join('%02X' % b for b in img[a:a + 8])
        f.write('W' + body + '%02X' % (~sum(body.encode()) & 0xFF) + '\r\n')
EOF

start_sim --load "$WORK/area.txt"
"$CLI" read-custom --port "$DEV" "$WORK/read.txt" > /dev/null 2> "$WORK/err" || bad "read-custom: $(cat "$WORK/err")"
stop_sim

if ! "$CLI" custom "$WORK/read.txt" > "$WORK/list" 2> "$WORK/err"; then
    bad "custom exited non-zero: $(cat "$WORK/err")"
fi
T=$'\t'
expect() { # location, expected line
    got=$(grep "^$1$T" "$WORK/list")
    [ "$got" = "$2" ] || bad "$1: expected [$2], got [$got]"
}
# IN01: 0x85 is function 5 (bit 7 is not part of it), "HU" in Set06.e. 0xB5 = 1011 0101:
# Logic (1) 1, Alt (2) 0, Dosa (12) 01 = 1, IgnoreI1 (16) 1, Al (32) 1, RSFDosaClear (64) 0.
# 0xF6 = 1111 0110: DengenOn (1) 0, Untenoff (2) 1, Tome (4) 1, RSFSet (48) 11 = 3,
# RSFReset (192) 11 = 3.
expect IN01 "IN01${T}HU  ${T}Kino=5${T}Logic=1${T}Alt=0${T}Dosa=1${T}IgnoreI1=1${T}Al=1${T}RSFDosaClear=0${T}RSFDosaDelay=200${T}DengenOn=0${T}Untenoff=1${T}Tome=1${T}RSFSet=3${T}RSFReset=3${T}RSFResetStc=7"
# IN09 has no RSFDosaClear, RSFDosaDelay, RSFSet, RSFReset or RSFResetStc address.
expect IN09 "IN09${T}GP1 ${T}Kino=64${T}Logic=1${T}Alt=0${T}Dosa=0${T}IgnoreI1=0${T}Al=1${T}RSFDosaClear=-${T}RSFDosaDelay=-${T}DengenOn=1${T}Untenoff=1${T}Tome=1${T}RSFSet=-${T}RSFReset=-${T}RSFResetStc=-"
# OUT01: function 2 "WP" in Set07.e; 0x05: Logic 1, Chop 0, KyoseiOff 1; 0xB5 under 7 is 5
# ("62"), under 112 is 3 ("40msec"); Hoji 2 is "A". OffDelay never lives in the image.
expect OUT01 "OUT01${T}WP  ${T}Kino=2${T}Logic=1${T}Chop=0${T}KyoseiOff=1${T}OffDelay=-${T}OnDelay=30${T}ChopDuty=5(62)${T}Zenpa=3(40msec)${T}Hoji=2(A)${T}FUM=99"
grep -q "^OUT02$T#100$T" "$WORK/list" || bad "a function without a catalogue entry is not shown as #100"
terminals=$(($(grep -c . "$SRC/data/setting/Set04.e") + $(grep -c . "$SRC/data/setting/Set05.e")))
[ "$(wc -l < "$WORK/list")" -eq "$terminals" ] || bad "not one line per terminal of Set04.e and Set05.e"
head -n 1 "$WORK/list" | grep -q "^IN01$T" || bad "inputs do not come first"

# A text that ends before the output terminals, and a file that is not there.
head -n 40 "$WORK/area.txt" > "$WORK/short.txt"
"$CLI" custom "$WORK/short.txt" > "$WORK/out" 2> "$WORK/err"
rc=$?
[ $rc -eq 1 ] || bad "a short text exited $rc"
grep -q "Failed to read data." "$WORK/err" && grep -q "CUSTOMIZE" "$WORK/err" || bad "short text: $(cat "$WORK/err")"
grep -q "terminal OUT01" "$WORK/err" || bad "the first terminal outside the text is not named"
[ ! -s "$WORK/out" ] || bad "a short text listed terminals"
"$CLI" custom "$WORK/none.txt" > /dev/null 2> "$WORK/err"
rc=$?
[ $rc -eq 1 ] && grep -q "none.txt" "$WORK/err" || bad "a missing file: exit $rc, $(cat "$WORK/err")"
"$CLI" custom > /dev/null 2>&1
[ $? -eq 2 ] || bad "no file is a wrong call"
exit $fail
