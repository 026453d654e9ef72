#!/bin/bash
# tools/lhapack against an LHA reader of its own: lhasa's "lha" (Debian package lhasa,
# installed by scripts/install-deps.sh). The archive it writes must pass lha's own test
# (header and data CRCs), list every member with its size and method, and unpack to the
# very bytes that went in; bsdtar, where present, lists the same members. Exit 77 (skipped)
# when lha is not installed.
. "$(dirname "$0")/lib.sh" "$@"
PACK="$BIN/../tools/lhapack"

if ! command -v lha > /dev/null; then
    echo "SKIP: lha (Debian package lhasa) is not installed"
    exit 77
fi
[ -x "$PACK" ] || { echo "FAIL: $PACK not built"; exit 1; }

# The setting files, an empty file, a binary file of every byte value larger than 64 KiB
# (sizes beyond 16 bits), and names of one and of many characters.
mkdir -p "$WORK/in" "$WORK/out"
cp "$SRC"/data/setting/Set*.e "$WORK/in/"
: > "$WORK/in/EMPTY.DAT"
python3 -c "import sys; sys.stdout.buffer.write(bytes(range(256)) * 300)" > "$WORK/in/binary.bin"
printf 'x\r\n' > "$WORK/in/a"
printf 'long name\n' > "$WORK/in/a-rather-long-member-name.txt"
names=()
for f in "$WORK"/in/*; do names+=("$(basename "$f")"); done

(cd "$WORK/in" && "$PACK" "$WORK/all.lzh" "${names[@]}") || { echo "FAIL: lhapack failed"; exit 1; }

# lha's test reads every member and checks its CRCs.
if ! lha -t "$WORK/all.lzh" > "$WORK/test.txt" 2>&1; then
    bad "lha -t refused the archive: $(cat "$WORK/test.txt")"
fi
tested=$(grep -c -- "- Tested" "$WORK/test.txt")
[ "$tested" = "${#names[@]}" ] || bad "lha -t tested $tested members, expected ${#names[@]}"

# The verbose list: every member stored (-lh0-) with its size.
lha -v "$WORK/all.lzh" > "$WORK/list.txt" 2>&1 || bad "lha -v failed"
for n in "${names[@]}"; do
    size=$(stat -c %s "$WORK/in/$n")
    grep -qE "^\[[A-Za-z-]+\] +$size +$size .*-lh0- .* $n\$" "$WORK/list.txt" ||
        bad "lha -v does not list $n with $size bytes: $(grep -F "$n" "$WORK/list.txt")"
done

# Unpacked by lha, every member is the file that went in.
(cd "$WORK/out" && lha -xw=. "$WORK/all.lzh" > /dev/null 2>&1) || bad "lha -x failed"
for n in "${names[@]}"; do
    cmp -s "$WORK/in/$n" "$WORK/out/$n" || bad "$n unpacked by lha differs from the packed file"
done
[ "$(ls "$WORK/out" | wc -l)" = "${#names[@]}" ] || bad "lha unpacked other files: $(ls "$WORK/out")"

if command -v bsdtar > /dev/null; then
    bsdtar -tf "$WORK/all.lzh" | sort > "$WORK/bsdtar.txt" || bad "bsdtar cannot list the archive"
    printf '%s\n' "${names[@]}" | sort | cmp -s - "$WORK/bsdtar.txt" || bad "bsdtar lists other members: $(cat "$WORK/bsdtar.txt")"
fi

# The check above can fail: one flipped data byte is a CRC error to lha.
python3 - "$WORK/all.lzh" "$WORK/flipped.lzh" <<'PY'
import sys
data = bytearray(open(sys.argv[1], 'rb').read())
at = data.find(b'Set05.e') + 64  # inside the member's data, past its header
data[at] ^= 0x01
open(sys.argv[2], 'wb').write(data)
PY
if lha -t "$WORK/flipped.lzh" > "$WORK/flipped.txt" 2>&1; then
    bad "lha -t passed an archive with a flipped byte"
fi
grep -q "CRC error" "$WORK/flipped.txt" || bad "no CRC error for the flipped byte: $(cat "$WORK/flipped.txt")"

exit $fail
