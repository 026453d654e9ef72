#!/bin/bash
# vkmstep-cli image / text / dump over the program files of tests/data/gsp: text -> image ->
# text is byte-identical, short inputs exit 1 with a message, the listing shows what the
# editor would show.
. "$(dirname "$0")/lib.sh" "$@"
DATA="$SRC/tests/data/gsp"

for gsp in "$DATA"/*.gsp; do
    name=$(basename "$gsp" .gsp)
    "$CLI" image "$gsp" "$WORK/$name.bin" 2> "$WORK/err" || bad "image $name: $(cat "$WORK/err")"
    [ "$(stat -c %s "$WORK/$name.bin")" = 1904 ] || bad "image $name is not 1904 bytes"
    [ -s "$WORK/err" ] && bad "image $name printed: $(cat "$WORK/err")"
    "$CLI" text "$WORK/$name.bin" "$WORK/$name.gsp" || bad "text $name"
    cmp -s "$gsp" "$WORK/$name.gsp" || bad "text -> image -> text differs for $name"
    "$CLI" dump "$gsp" > "$WORK/$name.dump" || bad "dump $name"
    "$CLI" dump "$WORK/$name.gsp" | cmp -s - "$WORK/$name.dump" || bad "dump of the copy differs for $name"
done

# A wrong checksum is shown and the record is used all the same.
sed '1s/29\r$/2A\r/' "$DATA/counters.gsp" > "$WORK/sum.gsp"
"$CLI" image "$WORK/sum.gsp" "$WORK/sum.bin" 2> "$WORK/err" || bad "image with a checksum error exited non-zero"
grep -q "checksum error" "$WORK/err" || bad "no checksum error shown"
cmp -s "$WORK/sum.bin" "$WORK/counters.bin" || bad "the record with the wrong checksum was not used"

# Too short: no image, a message, exit 1, and nothing written.
head -n 237 "$DATA/flow.gsp" > "$WORK/short.gsp"
if "$CLI" image "$WORK/short.gsp" "$WORK/short.bin" 2> "$WORK/err"; then bad "short file gave an image"; fi
[ -s "$WORK/err" ] || bad "short file: no message"
[ -e "$WORK/short.bin" ] && bad "short file: an image was written"
head -c 1903 "$WORK/flow.bin" > "$WORK/short.bin"
if "$CLI" text "$WORK/short.bin" "$WORK/short2.gsp" 2> "$WORK/err"; then bad "short image gave a text"; fi
[ -s "$WORK/err" ] || bad "short image: no message"

# The listing: texts in UTF-8, timer values as shown, unknown functions by number.
expect() { grep -qF -- "$2" "$WORK/$1.dump" || bad "dump $1 lacks: $2"; }
expect texts "author: AUTHOR"
expect texts "memo file: NOTE1.TXT"
expect texts "  | Second line"
expect texts 'step 2 "糸切り"'
expect texts "out1: Y001 HIGH TIMER 200"
expect texts "out1: #4660 DEC #10 7"
expect texts "in1: #17185 POS EDG END"
expect counters "in2: 50 END"
expect counters "in2: R001 ="
expect counters "in3: 7 END"
expect flow 'step 5 disabled "pulse, disabled"'
expect flow "out1: C004 CALL"
expect flow "inputs: -"
grep -q "step 6" "$WORK/flow.dump" && bad "empty steps are listed"

exit $fail
