#!/bin/bash
# The help as the build delivers it beside the executables: the guide, the manual made from
# it, the sample programs it names. The manual must be a real PDF of the whole guide (every
# section title, the keyboard table), and the guide's own links must lead somewhere.
set -u
BIN=$(cd "$1" && pwd)
SRC=$(cd "$2" && pwd)
command -v pdftotext > /dev/null && command -v pdfinfo > /dev/null || { echo "SKIP: poppler-utils missing"; exit 77; }
WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT
fail=0
bad() { echo "FAIL: $*"; fail=1; }

guide="$BIN/Help/Eng/Index.html"
manual="$BIN/step_help1.pdf"
cmp -s "$guide" "$SRC/help/Eng/Index.html" || bad "the guide beside the executables is not help/Eng/Index.html"
[ -s "$manual" ] || { echo "FAIL: no $manual"; exit 1; }
[ "$manual" -nt "$SRC/help/Eng/Index.html" ] || bad "the manual is older than the guide"

pdfinfo "$manual" > "$WORK/info" 2>&1 || { cat "$WORK/info"; echo "FAIL: pdfinfo"; exit 1; }
title=$(sed -n 's/^Title: *//p' "$WORK/info")
pages=$(sed -n 's/^Pages: *//p' "$WORK/info")
guide_title=$(sed -n 's:.*<title>\(.*\)</title>.*:\1:p' "$guide")
[ "$title" = "$guide_title" ] || bad "manual title '$title', guide title '$guide_title'"
[ "${pages:-0}" -ge 4 ] || bad "the manual has ${pages:-no} pages"
grep -q 'A4' "$WORK/info" || bad "the manual is not A4: $(grep 'Page size' "$WORK/info")"

# The text of the manual, with the typographic ligatures of the font spelled out.
pdftotext -layout "$manual" - | sed 's/\xef\xac\x81/fi/g; s/\xef\xac\x82/fl/g; s/\xef\xac\x80/ff/g' > "$WORK/manual.txt" ||
    bad "pdftotext"
# The same as one line: a table cell may wrap where the guide does not.
tr -s ' \n' '  ' < "$WORK/manual.txt" > "$WORK/manual.line"
# Every section title of the guide is in the manual, in the guide's order.
sed -n 's:.*<h2>.*</a>\(.*\)</h2>.*:\1:p' "$guide" | sed 's/&amp;/\&/g; s/&gt;/>/g; s/&lt;/</g' > "$WORK/titles"
[ "$(wc -l < "$WORK/titles")" -ge 10 ] || bad "the guide has only $(wc -l < "$WORK/titles") sections"
# The contents list repeats the titles: the sections are looked for after its last entry.
last=$(grep -nF -- "$(tail -1 "$WORK/titles" | sed 's/^[0-9]*\. //')" "$WORK/manual.txt" | head -1 | cut -d: -f1)
while IFS= read -r t; do
    line=$(awk -v t="$t" -v from="${last:-0}" 'NR > from && index($0, t) { print NR; exit }' "$WORK/manual.txt")
    if [ -z "$line" ]; then
        bad "section '$t' is not in the manual (in the guide's order)"
    else
        last=$line
    fi
done < "$WORK/titles"
# The keyboard table: every shortcut the guide lists, also in the manual.
sed -n 's:.*<td class="key">\([^<]*\)</td>.*:\1:p' "$guide" > "$WORK/keys"
[ "$(wc -l < "$WORK/keys")" -ge 15 ] || bad "the keyboard table has $(wc -l < "$WORK/keys") rows"
sed 's: / :\n:g; s:, :\n:g' "$WORK/keys" | while IFS= read -r k; do
    grep -qF -- "$k" "$WORK/manual.line" || echo "$k"
done > "$WORK/lost-keys"
[ ! -s "$WORK/lost-keys" ] || bad "shortcuts not in the manual: $(tr '\n' ' ' < "$WORK/lost-keys")"
# Page numbers at the foot: the last page carries its number.
tail -5 "$WORK/manual.txt" | grep -qw "$pages" || bad "no page number $pages at the end of the manual"

# Every link inside the guide has its anchor.
grep -o 'href="#[^"]*"' "$guide" | sed 's/href="#\(.*\)"/\1/' | sort -u > "$WORK/links"
grep -o 'name="[^"]*"' "$guide" | sed 's/name="\(.*\)"/\1/' | sort -u > "$WORK/anchors"
missing=$(comm -23 "$WORK/links" "$WORK/anchors")
[ -z "$missing" ] || bad "links without anchors in the guide: $missing"
# The sample programs the guide names are delivered beside it.
for s in $(grep -o '<code>[a-z]\+\.gsp</code>' "$guide" | sed 's:</\?code>::g' | sort -u); do
    [ -f "$BIN/Help/SampleCodes/Eng/$s" ] || bad "the guide names $s, which is not delivered"
done
ls "$BIN"/Help/SampleCodes/Eng/*.gsp > /dev/null 2>&1 || bad "no sample programs beside the guide"

[ $fail = 0 ] && echo "PASS"
exit $fail
