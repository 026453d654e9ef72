#!/bin/bash
# vkmstep-cli export: a program as a PDF printout and as a workbook. The PDF is read back
# with poppler's tools (page count, orientation, the text of the first rows); a program
# the editor's checks refuse is not exported; the output's kind comes from its name.
. "$(dirname "$0")/lib.sh" "$@"
export XDG_RUNTIME_DIR="$WORK/run"
mkdir -m 700 "$XDG_RUNTIME_DIR"

python3 "$SRC/tests/e2e/print_fixtures.py" "$SRC/tests/data/gsp" "$WORK" || { echo "FAIL: fixtures"; exit 1; }

for tool in pdfinfo pdftotext; do
    command -v $tool >/dev/null || { echo "FAIL: $tool is missing (poppler-utils, scripts/install-deps.sh)"; exit 1; }
done

# PDF: one landscape page; below the page header, the first row names the program file.
"$CLI" export "$WORK/print.gsp" "$WORK/print.pdf" --memo 2> "$WORK/err" || bad "export pdf: $(cat "$WORK/err")"
[ -s "$WORK/err" ] && bad "export pdf printed: $(cat "$WORK/err")"
pdfinfo "$WORK/print.pdf" > "$WORK/info" || bad "pdfinfo cannot read the PDF"
grep -q '^Pages: *1$' "$WORK/info" || bad "not one page: $(grep Pages "$WORK/info")"
read -r w h < <(sed -n 's/^Page size: *\([0-9.]*\) x \([0-9.]*\) pts.*/\1 \2/p' "$WORK/info")
awk -v w="$w" -v h="$h" 'BEGIN { exit !(w > h) }' || bad "page is not landscape: $w x $h"
pdftotext -layout "$WORK/print.pdf" "$WORK/print.txt" || bad "pdftotext failed"
mapfile -t lines < <(grep -v '^[[:space:]]*$' "$WORK/print.txt" | sed 's/^[[:space:]]*//; s/[[:space:]]*$//')
# The header codes "&9Sheetname:&A  &PPage  &D" (the spaces as the PDF's text runs give them).
[[ "${lines[0]:-}" =~ ^Sheetname:STEP\ +1Page\ +[^\ ] ]] || bad "page header is '${lines[0]:-}'"
[ "${lines[1]:-}" = "$WORK/print.gsp" ] || bad "first row is '${lines[1]:-}', expected '$WORK/print.gsp'"
grep -q 'Check the needle' "$WORK/print.txt" || bad "memo line missing from the PDF"
grep -q '65000' "$WORK/print.txt" || bad "counter operand missing from the PDF"

# Workbook: a zip holding the sheet and the state pictures.
"$CLI" export "$WORK/print.gsp" "$WORK/print.xlsx" 2> "$WORK/err" || bad "export xlsx: $(cat "$WORK/err")"
python3 - "$WORK/print.xlsx" <<'PY' || bad "workbook parts missing"
import sys, zipfile
names = zipfile.ZipFile(sys.argv[1]).namelist()
assert 'xl/worksheets/sheet1.xml' in names, names
assert any(n.startswith('xl/media/') for n in names), names
PY

# Refused by the checks: the check's message and "Unable to print step.", no file.
"$CLI" export "$WORK/noend.gsp" "$WORK/noend.pdf" > /dev/null 2> "$WORK/err"
rc=$?
[ "$rc" = 1 ] || bad "refused program exited $rc"
grep -q 'Input block or END missed.' "$WORK/err" || bad "check message missing: $(cat "$WORK/err")"
grep -q 'Unable to print step.' "$WORK/err" || bad "message 150 missing: $(cat "$WORK/err")"
[ -e "$WORK/noend.pdf" ] && bad "a refused program was exported"

# An existing file is replaced only by a finished export.
printf 'old' > "$WORK/keep.pdf"
"$CLI" export "$WORK/noend.gsp" "$WORK/keep.pdf" > /dev/null 2>&1
[ "$(cat "$WORK/keep.pdf")" = old ] || bad "a refused export touched the existing file"

# A workbook that cannot be written: the reason and "Failed to create excel file.".
"$CLI" export "$WORK/print.gsp" "$WORK/no/such/folder/x.xlsx" > /dev/null 2> "$WORK/err"
rc=$?
[ "$rc" = 1 ] || bad "an unwritable workbook exited $rc"
grep -q 'Failed to create excel file.' "$WORK/err" || bad "message 123 missing: $(cat "$WORK/err")"
grep -q 'No such file or directory' "$WORK/err" || bad "the reason is missing: $(cat "$WORK/err")"

# Wrong calls.
"$CLI" export "$WORK/print.gsp" "$WORK/print.txt2" > /dev/null 2>&1
[ $? = 2 ] || bad "an output that is neither .xlsx nor .pdf is not refused with 2"
"$CLI" export "$WORK/print.gsp" > /dev/null 2>&1
[ $? = 2 ] || bad "a missing output is not refused with 2"
"$CLI" export "$WORK/print.gsp" "$WORK/x.pdf" --colour > /dev/null 2>&1
[ $? = 2 ] || bad "an unknown option is not refused with 2"
"$CLI" export "$WORK/missing.gsp" "$WORK/x.pdf" > /dev/null 2>&1
[ $? = 1 ] || bad "a missing program file does not exit 1"

finish "cli_export: all passed"
